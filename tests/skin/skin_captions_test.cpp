// Glyphs, texts, and drawing into device contexts.

#include "skin_fixture.h"

namespace {

using Calls = std::vector<std::string>;
using test::PAPER;
using test::POSITIONS;
using test::SkinTest;

TEST_F(SkinTest, MakesTheKeysColorTransparent) {
    constexpr Gdiplus::ARGB MAGENTA = 0xFFFF00FF;
    constexpr Gdiplus::ARGB GREEN = 0xFF00FF00;
    constexpr Gdiplus::ARGB NEARLY = 0xFFFF00FE;
    const struct {
        COLORREF key;
        Gdiplus::ARGB pixels[4];  // 0,0  1,0  0,1  1,1
    } rows[] = {{0xFFFFFFFE, {PAPER, GREEN, NEARLY, PAPER}},
                {0xFFFFFFFF, {MAGENTA, GREEN, NEARLY, MAGENTA}},
                {RGB(0, 0xFF, 0), {MAGENTA, PAPER, NEARLY, MAGENTA}},
                {RGB(0xFF, 0, 0xFE), {MAGENTA, GREEN, PAPER, MAGENTA}},
                {RGB(1, 2, 3), {MAGENTA, GREEN, NEARLY, MAGENTA}}};
    for (const auto& row : rows) {
        Clear();
        SetButton({test::TWO_BY_TWO, 2, 2, FALSE, row.key});
        EXPECT_EQ(skin_.DrawButtonCaption(Target(), CSkin::SkinNormal, CRect(4, 4, 6, 6), CString(), test::AnyFont(), nullptr),
                  Gdiplus::Ok);
        for (int i = 0; i < 4; ++i) {
            EXPECT_EQ(PixelAt(4 + i % 2, 4 + i / 2), row.pixels[i]) << std::hex << row.key << " " << i;
        }
    }
}

TEST_F(SkinTest, PlacesTheGlyph) {
    const struct {
        CSkin::ESkinBitmapType type;
        BOOL stretch;
        CRect rect;
        const char* call;
    } rows[] = {{CSkin::SkinDisabled, FALSE, CRect(10, 10, 20, 21), "0,12,5,16 > 13,14,18,18"},
                {CSkin::SkinPressed, FALSE, CRect(10, 10, 20, 21), "0,8,5,12 > 14,15,19,19"},
                {CSkin::SkinDefaultPressed, FALSE, CRect(10, 10, 20, 21), "0,24,5,28 > 14,15,19,19"},
                {CSkin::SkinHot, FALSE, CRect(10, 10, 12, 12), "0,4,5,8 > 8,9,13,13"},
                {CSkin::SkinPressed, FALSE, CRect(10, 10, 12, 12), "0,8,5,12 > 10,10,12,12"},
                {CSkin::SkinPressed, TRUE, CRect(10, 10, 20, 21), "0,8,5,12 > 10,10,20,21"}};
    for (const auto& row : rows) {
        SetButton({POSITIONS, 5, 4, row.stretch, SKIN_NO_COLOR_KEY});
        Clear();
        EXPECT_EQ(skin_.DrawButtonCaption(Target(), row.type, row.rect, CString(), test::AnyFont(), nullptr), Gdiplus::Ok);
        EXPECT_EQ(skin_.calls, Calls{row.call}) << &row - rows;
    }
    // Loaded still, but not drawn any more.
    SkinCaptionBitmapInfo none;
    EXPECT_TRUE(skin_.SetButtonCaptionBitmapInfo(none));
    Clear();
    EXPECT_EQ(skin_.DrawButtonCaption(Target(), CSkin::SkinHot, CRect(0, 0, 9, 9), CString(), test::AnyFont(), nullptr),
              Gdiplus::Ok);
    EXPECT_TRUE(skin_.calls.empty() && skin_.HasButtonCaptionBitmap());
}

// A picture that both GDI and GDI+ draw into.
class SkinTexts : public SkinTest {
protected:
    static constexpr int WIDTH = 120;
    static constexpr int HEIGHT = 60;
    static constexpr COLORREF WHITE = RGB(0xFF, 0xFF, 0xFF);

    SkinTexts() {
        CDC screen;
        EXPECT_TRUE(screen.CreateDC(_T("DISPLAY"), nullptr, nullptr, nullptr));
        EXPECT_TRUE(dc_.CreateCompatibleDC(nullptr));
        EXPECT_TRUE(bitmap_.CreateCompatibleBitmap(&screen, WIDTH, HEIGHT));
        before_ = dc_.SelectObject(&bitmap_);
        EXPECT_TRUE(font_.CreatePointFont(300, _T("Arial")));
        skin_.SetCaptionTextColors(TEXT_COLOR, DISABLED, 0, HIGHLIGHT);
        Wipe();
    }
    ~SkinTexts() override { dc_.SelectObject(before_); }

    void Wipe() { dc_.FillSolidRect(CRect(0, 0, WIDTH, HEIGHT), WHITE); }

    // Where pixels have the colour; empty for none.
    CRect Ink(COLORREF color) {
        CRect ink;
        for (int y = 0; y < HEIGHT; ++y) {
            for (int x = 0; x < WIDTH; ++x) {
                if (dc_.GetPixel(x, y) == color) {
                    ink.UnionRect(ink, CRect(x, y, x + 1, y + 1));
                }
            }
        }
        return ink;
    }

    static constexpr COLORREF TEXT_COLOR = RGB(0xC0, 0, 0);
    static constexpr COLORREF DISABLED = RGB(0, 0, 0xC0);
    static constexpr COLORREF HIGHLIGHT = RGB(0, 0xC0, 0);

    CDC dc_;
    CBitmap bitmap_;
    CFont font_;
    CBitmap* before_ = nullptr;
};

TEST_F(SkinTexts, AreDrawnAsTheStateAsks) {
    const struct {
        CSkin::ESkinBitmapType type;
        int shift;
        COLORREF color;
    } rows[] = {{CSkin::SkinNormal, 0, TEXT_COLOR},         {CSkin::SkinHot, 0, TEXT_COLOR},
                {CSkin::SkinPressed, 1, TEXT_COLOR},        {CSkin::SkinDisabled, 0, DISABLED},
                {CSkin::SkinDefault, 0, TEXT_COLOR},        {CSkin::SkinDefaultHot, 0, TEXT_COLOR},
                {CSkin::SkinDefaultPressed, 1, TEXT_COLOR}, {CSkin::SkinDefaultDisabled, 0, DISABLED}};
    SetButton();
    SetWindow();
    const CRect rect(4, 6, WIDTH - 4, HEIGHT - 6);
    for (const auto draw : {&CSkin::DrawButtonCaption, &CSkin::DrawWindowCaption}) {
        CRect normal;
        for (const auto& row : rows) {
            Gdiplus::Graphics graphics(dc_.GetSafeHdc());
            Wipe();
            EXPECT_EQ((skin_.*draw)(&graphics, row.type, rect, _T("HLE"), &font_, &dc_), Gdiplus::Ok);
            const CRect ink = Ink(row.color);
            normal = row.type == CSkin::SkinNormal ? ink : normal;
            EXPECT_EQ(test::Shown(ink), test::Shown(normal + CPoint(row.shift, row.shift))) << row.type;
            const bool disabled = row.color == DISABLED;
            const CRect embossed = disabled ? (normal + CPoint(1, 1)) | normal : normal;
            EXPECT_EQ(test::Shown(Ink(HIGHLIGHT) | normal), test::Shown(embossed)) << row.type;
            EXPECT_EQ(Ink(TEXT_COLOR).IsRectEmpty() != FALSE, disabled) << row.type;
        }
        EXPECT_NEAR(normal.left - rect.left, rect.right - normal.right, 6);
        EXPECT_NEAR(normal.top - rect.top, rect.bottom - normal.bottom, 12);
    }
}

TEST_F(SkinTexts, LeaveTheDeviceContextAsItWas) {
    SetButton();
    SetWindow();
    CFont* const own = CFont::FromHandle(static_cast<HFONT>(GetStockObject(SYSTEM_FONT)));
    dc_.SelectObject(own);
    dc_.SetTextColor(RGB(1, 2, 3));
    dc_.SetBkMode(OPAQUE);
    dc_.SetBkColor(RGB(9, 9, 9));
    Gdiplus::Graphics graphics(dc_.GetSafeHdc());
    for (const auto type : {CSkin::SkinNormal, CSkin::SkinPressed, CSkin::SkinDisabled}) {
        EXPECT_EQ(skin_.DrawButtonCaption(&graphics, type, CRect(0, 0, 50, 50), _T("A"), &font_, &dc_), Gdiplus::Ok);
        EXPECT_EQ(skin_.DrawWindowCaption(&graphics, type, CRect(0, 0, 50, 50), _T("A"), &font_, &dc_), Gdiplus::Ok);
    }
    EXPECT_EQ(dc_.GetTextColor(), RGB(1, 2, 3));
    EXPECT_EQ(dc_.GetBkMode(), OPAQUE);
    EXPECT_EQ(dc_.GetCurrentFont()->GetSafeHandle(), own->GetSafeHandle());
    EXPECT_TRUE(Ink(RGB(9, 9, 9)).IsRectEmpty());
}

TEST_F(SkinTexts, SayWhenThereIsNothingToDraw) {
    const CRect some(0, 0, 50, 50);
    Gdiplus::Graphics graphics(dc_.GetSafeHdc());
    CFont none;
    const auto button = [&](CRect rect, const CString& text, CFont* font, CDC* dc) {
        return skin_.DrawButtonCaption(&graphics, CSkin::SkinNormal, rect, text, font, dc);
    };
    const auto window = [&](CRect rect, const CString& text, CFont* font, CDC* dc) {
        return skin_.DrawWindowCaption(&graphics, CSkin::SkinNormal, rect, text, font, dc);
    };
    EXPECT_EQ(button(some, _T("A"), &font_, &dc_), Gdiplus::InvalidParameter);  // no bitmap
    EXPECT_EQ(window(some, _T("A"), &font_, &dc_), Gdiplus::InvalidParameter);
    SetButton();
    SetWindow();
    const struct {
        CRect rect;
        LPCTSTR text;
        CFont* font;
        CDC* dc;
        Gdiplus::Status status;
    } rows[] = {{CRect(5, 5, 5, 9), _T("A"), &font_, &dc_, Gdiplus::InvalidParameter},
                {CRect(9, 5, 5, 9), _T("A"), &font_, &dc_, Gdiplus::InvalidParameter},
                {some, _T("A"), nullptr, &dc_, Gdiplus::InvalidParameter},
                {some, _T("A"), &none, &dc_, Gdiplus::InvalidParameter},
                {some, _T("A"), &font_, nullptr, Gdiplus::InvalidParameter},
                {some, _T(""), &font_, nullptr, Gdiplus::Ok}};
    for (const auto& row : rows) {
        EXPECT_EQ(button(row.rect, row.text, row.font, row.dc), row.status) << &row - rows;
        EXPECT_EQ(window(row.rect, row.text, row.font, row.dc), row.status) << &row - rows;
    }
    EXPECT_TRUE(Ink(TEXT_COLOR).IsRectEmpty());
}

TEST_F(SkinTexts, ShareADeviceContextWithButtons) {
    SetButton();
    const auto at = [](int x, int y) { return Gdiplus::Color(test::PositionColor(x, y)).ToCOLORREF(); };

    EXPECT_TRUE(skin_.DrawButtonBitmap(dc_, CSkin::SkinNormal, CRect(10, 10, 30, 30), CRect()));
    EXPECT_EQ(dc_.GetPixel(10, 10), at(0, 0));
    EXPECT_EQ(dc_.GetPixel(29, 29), at(12, 10));
    EXPECT_EQ(dc_.GetPixel(9, 10), WHITE);

    // Off screen: drawn at the rectangle's place, copied from the picture's corner.
    Wipe();
    EXPECT_TRUE(skin_.DrawButtonBitmap(dc_, CSkin::SkinHot, CRect(0, 0, 20, 20), CRect(40, 30, 60, 50)));
    EXPECT_EQ(dc_.GetPixel(40, 30), at(0, 11));
    EXPECT_EQ(dc_.GetPixel(59, 49), at(12, 21));
    EXPECT_EQ(dc_.GetPixel(39, 30), WHITE);
    EXPECT_EQ(dc_.GetPixel(60, 49), WHITE);
    EXPECT_TRUE(skin_.DrawButtonBitmap(dc_, CSkin::SkinNormal, CRect(5, 6, 25, 26), CRect(70, 10, 90, 30)));
    EXPECT_EQ(dc_.GetPixel(75, 16), at(0, 0));

    // Nothing drawn is nothing copied.
    Wipe();
    EXPECT_TRUE(skin_.DrawButtonBitmap(dc_, CSkin::SkinNormal, CRect(5, 5, 5, 25), CRect(0, 0, 50, 50)));
    EXPECT_EQ(test::Shown(Ink(WHITE)), test::Shown(CRect(0, 0, WIDTH, HEIGHT)));
    EXPECT_EQ(dc_.GetPixel(10, 10), WHITE);
    CDC none;
    EXPECT_FALSE(skin_.DrawButtonBitmap(none, CSkin::SkinNormal, CRect(0, 0, 20, 20), CRect()));
}

}  // namespace
