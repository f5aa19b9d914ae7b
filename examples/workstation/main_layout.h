#pragma once

// Where everything is in the main window's client area, and what lies under the pointer. Pixels.

#include <atltypes.h>
#include <kadata/skin_info.h>

#include <array>
#include <cstddef>

enum EItem {
    ITEM_NONE = -1,
    ITEM_FIRST,
    ITEM_PREVIOUS,
    ITEM_NEXT,
    ITEM_LAST,
    ITEM_SAVE,
    ITEM_PICTURES,
    ITEM_CLOSE,
    ITEMS,
};

struct SMainLayout {
    CRect content;
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
};

SMainLayout LayOut(const SkinInfo& skin, int percent, CSize size);
