#pragma once

// Where everything is in the main window, and what lies under the pointer. Pixels, from the window's top left corner.

#include <atltypes.h>
#include <kadata/skin_info.h>

#include <array>
#include <cstddef>

enum EItem {
    ITEM_NONE = -1,
    ITEM_CLOSE_BOX,
    ITEM_MAXIMIZE_BOX,
    ITEM_MINIMIZE_BOX,
    ITEM_FIRST,
    ITEM_PREVIOUS,
    ITEM_NEXT,
    ITEM_LAST,
    ITEM_PICTURES,
    ITEM_CLOSE,
    ITEMS,
};

struct SMainLayout {
    CRect window;
    CRect inner;    // inside of the frame, below the caption
    CRect content;  // what the inner frame surrounds
    CRect title;
    CRect toolBar;
    CRect list;    // with its line around it
    CRect header;  // the list's uppermost row
    CRect rows;    // the others
    CRect statusBar;
    std::array<CRect, 2> panes;
    std::array<CRect, ITEMS> items;
    int rowHeight = 0;
    int line = 0;  // the width of a line
    int text = 0;  // the distance of text from a line

    EItem ItemAt(CPoint point) const;
    // Counted from the first one shown; -1 for none.
    int RowAt(CPoint point) const;
    int RowsShown() const { return rowHeight > 0 ? rows.Height() / rowHeight : 0; }
    // HTCAPTION and the like; HTCLIENT over items and content.
    UINT FramePart(CPoint point) const;
};

SMainLayout LayOut(const SkinInfo& skin, int percent, CSize size);
