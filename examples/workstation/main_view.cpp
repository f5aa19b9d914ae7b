#include "main_view.h"

#include <algorithm>
#include <utility>

#include "skin/skin_ids.h"

namespace {

constexpr int TEXT_SIZE = 13;

struct SButton {
    EItem item;
    UINT text;
};
constexpr SButton TOOLS[] = {
    {ITEM_FIRST, IDS_FIRST}, {ITEM_PREVIOUS, IDS_PREVIOUS}, {ITEM_NEXT, IDS_NEXT}, {ITEM_LAST, IDS_LAST}};
constexpr SButton BUTTONS[] = {{ITEM_SAVE, IDS_SAVE_PATIENT}, {ITEM_PICTURES, IDS_PICTURES}, {ITEM_CLOSE, IDS_CLOSE}};

}  // namespace

CMainView::CMainView(const SkinInfo& skin, int percent, LANGID language, std::vector<SPatientRow> rows)
    : m_percent(percent), m_language(language), m_rows(std::move(rows)), m_skin(skin) {
    MakeFont(m_font, Pixels(TEXT_SIZE));
    MakeFont(m_boldFont, Pixels(TEXT_SIZE), FW_BOLD);
}

bool CMainView::IsEnabled(EItem item, const SMainState& state) const {
    switch (item) {
        case ITEM_FIRST:
        case ITEM_PREVIOUS:
            return state.selected > 0;
        case ITEM_NEXT:
        case ITEM_LAST:
            return state.selected + 1 < Rows();
        case ITEM_SAVE:
        case ITEM_PICTURES:
            return Rows() > 0;
        default:
            return true;
    }
}

CSkin::ESkinBitmapType CMainView::StateOf(EItem item, const SMainState& state) const {
    const bool isDefault = item == ITEM_PICTURES;
    int type = CSkin::SkinNormal;
    if (!IsEnabled(item, state)) {
        type = CSkin::SkinDisabled;
    } else if (state.pressed == item) {
        type = state.hot == item ? CSkin::SkinPressed : CSkin::SkinHot;
    } else if (state.hot == item && state.pressed == ITEM_NONE) {
        type = CSkin::SkinHot;
    }
    return static_cast<CSkin::ESkinBitmapType>(type + (isDefault ? CSkin::SkinDefault : 0));
}

void CMainView::Draw(CDC& dc, Gdiplus::Graphics& graphics, const SMainState& state) {
    const STarget target{dc, graphics, state};
    dc.SetBkMode(TRANSPARENT);
    DrawBars(target);
    DrawButtons(target);
    graphics.Flush(Gdiplus::FlushIntentionSync);
    DrawList(target);
}

void CMainView::DrawBars(const STarget& target) {
    m_surfaces.toolBar.DrawButtonBitmap(&target.graphics, CSkin::SkinNormal, m_layout.toolBar);
    for (const SButton& tool : TOOLS) {
        const CRect& rect = m_layout.items[tool.item];
        const auto type = StateOf(tool.item, target.state);
        m_surfaces.toolBarButton.DrawButtonBitmap(&target.graphics, type, rect);
        m_surfaces.toolBarButton.DrawButtonCaption(&target.graphics, type, rect, Text(tool.text), &m_font, &target.dc);
    }
    CString count;
    count.Format(Text(IDS_PATIENTS), Rows());
    m_surfaces.statusBar.DrawButtonBitmap(&target.graphics, CSkin::SkinNormal, m_layout.statusBar);
    m_surfaces.statusBarPane.DrawButtonBitmap(&target.graphics, CSkin::SkinNormal, m_layout.panes[0]);
    target.graphics.Flush(Gdiplus::FlushIntentionSync);
    DrawCell(target, m_layout.panes[0], count, m_font, QUIET_TEXT_COLOR);
    DrawCell(target, m_layout.panes[1], target.state.status, m_font, QUIET_TEXT_COLOR);
}

void CMainView::DrawButtons(const STarget& target) {
    for (const SButton& button : BUTTONS) {
        const CRect& rect = m_layout.items[button.item];
        const auto type = StateOf(button.item, target.state);
        m_surfaces.button.DrawButtonBitmap(&target.graphics, type, rect);
        m_surfaces.button.DrawButtonCaption(&target.graphics, type, rect, Text(button.text), &m_font, &target.dc);
    }
}

void CMainView::DrawList(const STarget& target) {
    CDC& dc = target.dc;
    dc.FillSolidRect(m_layout.list, LINE_COLOR);
    dc.FillSolidRect(m_layout.header, LIST_HEADER_COLOR);
    dc.FillSolidRect(m_layout.rows, LIST_COLOR);
    DrawRow(target, m_layout.header, {Text(IDS_NAME), Text(IDS_FIRST_NAME), Text(IDS_BORN), Text(IDS_NUMBER)}, m_boldFont,
            QUIET_TEXT_COLOR);
    const int end = std::min(Rows(), target.state.first + m_layout.RowsShown() + 1);
    for (int i = target.state.first; i < end; ++i) {
        CRect rect = m_layout.rows;
        rect.top += (i - target.state.first) * m_layout.rowHeight;
        rect.bottom = std::min(rect.top + m_layout.rowHeight, m_layout.rows.bottom);
        const bool selected = i == target.state.selected;
        dc.FillSolidRect(rect, selected ? SELECTION_COLOR : i % 2 != 0 ? LIST_STRIPE_COLOR : LIST_COLOR);
        if (selected) {
            dc.FillSolidRect(CRect(rect.left, rect.top, rect.left + 3 * m_layout.line, rect.bottom), ACCENT_COLOR);
        }
        DrawRow(target, rect, {Row(i).name, Row(i).firstName, Row(i).born, Row(i).number}, m_font, TEXT_COLOR);
    }
}

void CMainView::DrawRow(const STarget& target, const CRect& rect, const CString (&cells)[4], CFont& font, COLORREF color) {
    static constexpr int EDGES[] = {0, 34, 64, 82, 100};  // of the columns, in hundredths of the width
    if (rect.Height() < m_layout.rowHeight) {
        return;  // a text that is cut through says nothing
    }
    for (int i = 0; i < 4; ++i) {
        DrawCell(target,
                 CRect(rect.left + rect.Width() * EDGES[i] / 100, rect.top, rect.left + rect.Width() * EDGES[i + 1] / 100,
                       rect.bottom),
                 cells[i], font, color);
    }
}

void CMainView::DrawCell(const STarget& target, CRect rect, const CString& text, CFont& font, COLORREF color) {
    rect.DeflateRect(m_layout.text, 0);
    CFont* const before = target.dc.SelectObject(&font);
    target.dc.SetTextColor(color);
    target.dc.DrawText(text, rect, DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS | DT_NOPREFIX);
    target.dc.SelectObject(before);
}
