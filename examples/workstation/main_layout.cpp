#include "main_layout.h"

namespace {

void LayOutBars(SMainLayout& layout, const SkinInfo& skin, int percent) {
    layout.toolBar = layout.content;
    layout.toolBar.bottom = layout.toolBar.top + static_cast<int>(skin.nToolBarHeight);
    int left = layout.toolBar.left + 4 * layout.line;
    for (const EItem tool : {ITEM_FIRST, ITEM_PREVIOUS, ITEM_NEXT, ITEM_LAST}) {
        const int width = 84 * percent / 100;
        layout.items[tool] =
            CRect(left, layout.toolBar.top + 4 * layout.line, left + width, layout.toolBar.bottom - 5 * layout.line);
        left += width + 2 * layout.line;
    }
    layout.statusBar = layout.content;
    layout.statusBar.top = layout.statusBar.bottom - static_cast<int>(skin.nStatusBarHeight);
    layout.panes.fill(layout.statusBar);
    layout.panes[0].right = layout.panes[1].left = layout.statusBar.left + 150 * percent / 100;
}

void LayOutContent(SMainLayout& layout, const SkinInfo& skin, int percent) {
    const int margin = static_cast<int>(skin.nContentMargin);
    const int width = 110 * percent / 100;
    CRect area(layout.content.left, layout.toolBar.bottom, layout.content.right, layout.statusBar.top);
    area.DeflateRect(margin, margin);
    int right = area.right;
    for (const EItem button : {ITEM_CLOSE, ITEM_PICTURES, ITEM_SAVE}) {
        layout.items[button] = CRect(right - width, area.bottom - static_cast<int>(skin.nButtonHeight), right, area.bottom);
        right -= width + static_cast<int>(skin.nButtonGap);
    }
    layout.list = area;
    layout.list.bottom = layout.items[ITEM_CLOSE].top - margin;
    layout.rowHeight = 26 * percent / 100;
    layout.rows = layout.list;
    layout.rows.DeflateRect(layout.line, layout.line);
    layout.header = layout.rows;
    layout.header.bottom = layout.rows.top = layout.header.top + layout.rowHeight;
}

}  // namespace

SMainLayout LayOut(const SkinInfo& skin, int percent, CSize size) {
    SMainLayout layout;
    layout.content = CRect(CPoint(), size);
    layout.line = percent / 100;
    layout.text = 8 * percent / 100;
    LayOutBars(layout, skin, percent);
    LayOutContent(layout, skin, percent);
    return layout;
}

EItem SMainLayout::ItemAt(CPoint point) const {
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (items[i].PtInRect(point)) {
            return static_cast<EItem>(i);
        }
    }
    return ITEM_NONE;
}

int SMainLayout::RowAt(CPoint point) const {
    return rows.PtInRect(point) && rowHeight > 0 ? (point.y - rows.top) / rowHeight : -1;
}
