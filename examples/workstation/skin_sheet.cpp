#include "skin_sheet.h"

#include <iterator>

#include "picture_file.h"
#include "skin/skin_ids.h"
#include "skin_setup.h"

namespace {

constexpr int WIDTH = 936;
constexpr int HEIGHT = 660;
constexpr int MARGIN = 16;
constexpr int COLUMN = 113;
constexpr int STATES = 8;

// Lengths are those of the 100 % skin; they are scaled where they are drawn.
class CSheet {
public:
    CSheet(CDC* like, int percent, LANGID language)
        : m_picture(like, WIDTH * percent / 100, HEIGHT * percent / 100), m_percent(percent), m_language(language) {
        MakeFont(m_font, Pixels(13));
        MakeFont(m_small, Pixels(11));
    }

    BOOL Draw() {
        if (!m_skin.Load(MakeSkinInfo(m_percent))) {
            return FALSE;
        }
        m_skin.window.DrawWindowBackgroundBitmap(Target(), Scaled(0, 0, WIDTH, HEIGHT));
        if (m_language != NO_TEXT) {
            DrawStateNames();
        }
        int y = 36;
        for (const Row& row : ROWS) {
            for (int state = 0; state < STATES; ++state) {
                DrawButton(row, static_cast<CSkin::ESkinBitmapType>(state), MARGIN + state * COLUMN, y);
            }
            y += row.height + 12;
        }
        DrawFrame(CSkin::SkinActive, MARGIN, y);
        DrawFrame(CSkin::SkinInactive, WIDTH / 2 + MARGIN / 2, y);
        return TRUE;
    }
    BOOL Save(const CString& path) { return SaveBitmapPicture(m_picture.Bitmap(), path); }

private:
    struct Row {
        CSkin SSurfaces::*surface;
        int width, height;
        UINT text;
    };
    static constexpr Row ROWS[] = {{&SSurfaces::button, 105, 30, IDS_CLOSE}, {&SSurfaces::button, 105, 30, IDS_RETRY},
                                   {&SSurfaces::button, 60, 24, IDS_YES},    {&SSurfaces::button, 105, 48, IDS_CANCEL},
                                   {&SSurfaces::checkButton, 40, 30, 0},     {&SSurfaces::toolBarButton, 100, 32, IDS_PICTURES},
                                   {&SSurfaces::closeBox, 40, 24, 0},        {&SSurfaces::minimizeBox, 40, 24, 0},
                                   {&SSurfaces::maximizeBox, 40, 24, 0},     {&SSurfaces::restoreBox, 40, 24, 0}};

    int Pixels(int length) const { return length * m_percent / 100; }
    CRect Scaled(int x, int y, int width, int height) const {
        return {Pixels(x), Pixels(y), Pixels(x + width), Pixels(y + height)};
    }
    CString Text(UINT id) const { return id != 0 && m_language != NO_TEXT ? LoadText(id, m_language) : CString(); }
    Gdiplus::Graphics* Target() { return &m_picture.Graphics(); }

    void DrawStateNames() {
        static constexpr LPCTSTR NAMES[STATES] = {
            _T("normal"),  _T("hot"),         _T("pressed"),         _T("disabled"),
            _T("default"), _T("default hot"), _T("default pressed"), _T("default disabled")};
        CDC& dc = m_picture.Context();
        CFont* const before = dc.SelectObject(&m_small);
        dc.SetBkMode(TRANSPARENT);
        dc.SetTextColor(QUIET_TEXT_COLOR);
        for (int state = 0; state < STATES; ++state) {
            dc.DrawText(NAMES[state], Scaled(MARGIN + state * COLUMN, 10, COLUMN - 8, 18), DT_SINGLELINE | DT_VCENTER);
        }
        dc.SelectObject(before);
    }

    void DrawButton(const Row& row, CSkin::ESkinBitmapType state, int x, int y) {
        const CRect rect = Scaled(x, y, row.width, row.height);
        CSkin& surface = m_skin.*row.surface;
        CRect inner;
        surface.DrawButtonBitmap(Target(), state, rect, inner);
        surface.DrawButtonCaption(Target(), state, rect, Text(row.text), &m_font, &m_picture.Context());
    }

    void DrawFrame(CSkin::ESkinBitmapType type, int x, int y) {
        const int width = WIDTH / 2 - MARGIN * 3 / 2;
        const int height = HEIGHT - y - MARGIN;
        const CRect inner = Scaled(x + 4, y + 32, width - 8, height - 36);
        CRect client = inner;
        client.DeflateRect(Pixels(1), Pixels(1));
        m_skin.window.DrawWindowBitmap(Target(), type, Scaled(x, y, width, height), inner, client);
        m_skin.window.DrawWindowBackgroundBitmap(Target(), client);
        m_skin.window.SetCaptionTextColors(type == CSkin::SkinActive ? TEXT_COLOR : QUIET_TEXT_COLOR, QUIET_TEXT_COLOR,
                                           QUIET_TEXT_COLOR, HIGHLIGHT_COLOR);
        m_skin.window.DrawWindowCaption(Target(), type, Scaled(x, y + 2, width, 30), Text(IDS_TITLE), &m_font,
                                        &m_picture.Context());
        m_skin.toolBar.DrawButtonBitmap(Target(), CSkin::SkinNormal, Scaled(x + 5, y + 33, width - 10, 40));
        m_skin.statusBar.DrawButtonBitmap(Target(), CSkin::SkinNormal, Scaled(x + 5, y + height - 31, width - 10, 26));
    }

    CPicture m_picture;
    int m_percent;
    LANGID m_language;
    SSurfaces m_skin;
    CFont m_font;
    CFont m_small;
};

}  // namespace

BOOL SaveSkinSheet(int percent, LANGID language, const CString& path) {
    CDC screen;
    if (!screen.CreateDC(_T("DISPLAY"), nullptr, nullptr, nullptr)) {
        return FALSE;
    }
    CSheet sheet(&screen, percent, language);
    return sheet.Draw() && sheet.Save(path);
}
