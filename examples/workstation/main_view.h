#pragma once

// What the main window shows upon its background: a list of patients. It draws, and knows nothing of windows.

#include <afxwin.h>
#include <gdiplus.h>

#include <vector>

#include "main_layout.h"
#include "skin_setup.h"
#include "texts.h"

struct SPatientRow {
    CString name;
    CString firstName;
    CString born;
    CString number;
};

// What changes while the window is used.
struct SMainState {
    EItem hot = ITEM_NONE;
    EItem pressed = ITEM_NONE;
    int selected = 0;  // of all rows
    int first = 0;     // the row that is shown uppermost
    CString status;
};

class CMainView {
public:
    // `percent` is 100 or 200, as in the skin's measures. The bitmaps have to be loaded before anything is drawn.
    CMainView(const SkinInfo& skin, int percent, LANGID language, std::vector<SPatientRow> rows);

    BOOL Load() { return m_surfaces.Load(m_skin); }
    void SetSize(CSize size) { m_layout = LayOut(m_skin, m_percent, size); }
    const SMainLayout& Layout() const { return m_layout; }
    int Rows() const { return static_cast<int>(m_rows.size()); }
    const SkinInfo& Skin() const { return m_skin; }
    CFont& BoldFont() { return m_boldFont; }
    const SPatientRow& Row(int index) const { return m_rows[static_cast<std::size_t>(index)]; }
    CString Text(UINT id) const { return LoadText(id, m_language); }
    int Pixels(int length) const { return length * m_percent / 100; }

    bool IsEnabled(EItem item, const SMainState& state) const;
    // Both have to draw into the same picture, which shows the background already.
    void Draw(CDC& dc, Gdiplus::Graphics& graphics, const SMainState& state);

private:
    struct STarget {
        CDC& dc;
        Gdiplus::Graphics& graphics;
        const SMainState& state;
    };

    CSkin::ESkinBitmapType StateOf(EItem item, const SMainState& state) const;
    void DrawBars(const STarget& target);
    void DrawButtons(const STarget& target);
    void DrawList(const STarget& target);
    void DrawRow(const STarget& target, const CRect& rect, const CString (&cells)[4], CFont& font, COLORREF color);
    void DrawCell(const STarget& target, CRect rect, const CString& text, CFont& font, COLORREF color);

    int m_percent;
    LANGID m_language;
    std::vector<SPatientRow> m_rows;
    SkinInfo m_skin;
    SSurfaces m_surfaces;
    SMainLayout m_layout;
    CFont m_font;
    CFont m_boldFont;
};
