// Bitmaps with transparent pixels.

#include <kadata/transparent_bitmap.h>

#include <random>
#include <set>

#include "skin_window_fixture.h"

namespace {

constexpr UINT COLOR_ICON = 110;
constexpr UINT LINE_ICON = 111;
constexpr COLORREF KEY = RGB(255, 0, 255);
constexpr COLORREF PAPER = RGB(40, 50, 60);

class HitBitmap : public CTransparentBitmap {
public:
    using CTransparentBitmap::CreateHitInfo;
};

// A bitmap as the screen has them.
HBITMAP Drawn(int width, int height, const std::function<COLORREF(int x, int y)>& color) {
    const HDC screen = GetDC(nullptr);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, width, height);
    const HDC dc = CreateCompatibleDC(screen);
    const HGDIOBJ before = SelectObject(dc, bitmap);
    for (int i = 0; i < width * height; ++i) {
        SetPixelV(dc, i % width, i / width, color(i % width, i / width));
    }
    SelectObject(dc, before);
    DeleteDC(dc);
    ReleaseDC(nullptr, screen);
    return bitmap;
}

std::function<bool(int, int)> Scattered(unsigned seed) {
    return [seed](int x, int y) { return std::mt19937(seed * 10007U + static_cast<unsigned>(y * 101 + x))() % 3 == 0; };
}

// The first point in which the hits are not those, from one pixel outside on.
std::string Miss(const CTransparentBitmap& bitmap, CSize size, const std::function<bool(int, int)>& isOpaque) {
    for (int y = -1; y <= size.cy; ++y) {
        for (int x = -1; x <= size.cx; ++x) {
            const bool inside = x >= 0 && y >= 0 && x < size.cx && y < size.cy;
            if ((bitmap.HitTest(CPoint(x, y)) != 0) != (inside && isOpaque(x, y))) {
                return std::to_string(x) + "," + std::to_string(y);
            }
        }
    }
    return {};
}

TEST(TransparentBitmap, IsHitWhereItIsOpaque) {
    CTransparentBitmap bitmap;
    EXPECT_EQ(bitmap.Width() + bitmap.Height(), 0);
    EXPECT_EQ(Miss(bitmap, CSize(3, 3), [](int, int) { return false; }), "");
    unsigned seed = 0;
    for (const CSize size : {CSize(37, 11), CSize(1, 1), CSize(32, 5), CSize(33, 3), CSize(31, 2), CSize(8, 9)}) {
        const auto isOpaque = [&, drawn = Scattered(++seed)](int x, int y) { return (x != 0 || y != 0) && drawn(x, y); };
        bitmap.DeleteObject();
        bitmap.Attach(Drawn(size.cx, size.cy, [&](int x, int y) { return isOpaque(x, y) ? RGB(x, y, 9) : KEY; }));
        EXPECT_EQ(CSize(bitmap.Width(), bitmap.Height()), size);
        EXPECT_EQ(Miss(bitmap, size, isOpaque), "") << size.cx;
    }
    bitmap.DeleteObject();
    EXPECT_FALSE(bitmap.HitTest(CPoint(1, 1)));
}

TEST(TransparentBitmap, TakesAMaskAndLearnsOfWhatIsDrawnIntoIt) {
    constexpr int WIDTH = 37;
    constexpr int HEIGHT = 11;
    HitBitmap bitmap;
    bitmap.Attach(Drawn(WIDTH, HEIGHT, [](int, int) { return KEY; }));
    EXPECT_EQ(Miss(bitmap, CSize(WIDTH, HEIGHT), [](int, int) { return false; }), "");

    const auto isOpaque = Scattered(99);
    CBitmap mask;
    mask.CreateBitmap(WIDTH, HEIGHT, 1, 1, nullptr);
    CDC dc;
    dc.CreateCompatibleDC(nullptr);
    CBitmap* const before = dc.SelectObject(&mask);
    for (int i = 0; i < WIDTH * HEIGHT; ++i) {
        dc.SetPixelV(i % WIDTH, i / WIDTH, isOpaque(i % WIDTH, i / WIDTH) ? RGB(0, 0, 0) : RGB(255, 255, 255));
    }
    dc.SelectObject(before);
    EXPECT_TRUE(bitmap.CreateHitInfo(dc, mask));
    EXPECT_EQ(Miss(bitmap, CSize(WIDTH, HEIGHT), isOpaque), "");
    EXPECT_FALSE(bitmap.CreateHitInfo(dc, nullptr));
    EXPECT_FALSE(bitmap.HitTest(CPoint(5, 5)));

    CBitmap* const shown = dc.SelectObject(static_cast<CBitmap*>(&bitmap));
    dc.SetPixelV(5, 5, RGB(1, 2, 3));
    dc.SelectObject(shown);
    bitmap.UpdateHitInfo();
    EXPECT_EQ(Miss(bitmap, CSize(WIDTH, HEIGHT), [](int x, int y) { return x == 5 && y == 5; }), "");
}

TEST(TransparentBitmap, LoadsIconsWithTheirMask) {
    const auto isOpaque = [](int x, int y) { return (x + y) % 3 != 0; };
    for (const UINT id : {COLOR_ICON, LINE_ICON}) {
        CTransparentBitmap bitmap;
        EXPECT_FALSE(bitmap.LoadIcon(999));
        EXPECT_FALSE(bitmap.LoadIcon(0x10000 + id));
        ASSERT_TRUE(bitmap.LoadIcon(id));
        EXPECT_EQ(Miss(bitmap, CSize(32, 32), isOpaque), "") << id;
        EXPECT_FALSE(bitmap.LoadIcon(999));
        EXPECT_TRUE(bitmap.HitTest(CPoint(1, 0)));

        const desktop_test::Picture picture(32, 32, PAPER);
        CDC dc;
        dc.Attach(picture.Context());
        bitmap.DrawTransparent(&dc, 0, 0, RGB(8 * 7, 8 * 12, 0x40));
        for (int i = 0; i < 32 * 32; ++i) {
            const int x = i % 32;
            const int y = i / 32;
            const bool isKey = id == COLOR_ICON && x == 7 && y == 12;
            const COLORREF color = id == COLOR_ICON ? RGB(8 * x, 8 * y, 0x40) : y % 2 != 0 ? RGB(255, 255, 255) : 0;
            ASSERT_EQ(dc.GetPixel(x, y), isOpaque(x, y) && !isKey ? color : PAPER) << id << ": " << x << "," << y;
        }
        dc.Detach();
    }
}

TEST(TransparentBitmap, DrawsWithoutTheTransparentColor) {
    constexpr COLORREF OTHER = RGB(10, 20, 30);
    constexpr COLORREF INK = RGB(200, 100, 0);
    CTransparentBitmap bitmap;  // the top left pixel is the key
    bitmap.Attach(Drawn(3, 2, [](int x, int y) { return x == 0 ? KEY : x == 1 ? OTHER : y == 0 ? INK : RGB(0, 0, 0); }));
    const auto pale = [](int grey) {
        const COLORREF face = GetSysColor(COLOR_3DFACE);
        return RGB((grey + GetRValue(face)) / 2, (grey + GetGValue(face)) / 2, (grey + GetBValue(face)) / 2);
    };
    const struct {
        COLORREF transparent;
        BOOL disabled;
        std::vector<COLORREF> first;  // row
    } rows[] = {{KEY, FALSE, {PAPER, OTHER, INK}},
                {OTHER, FALSE, {KEY, PAPER, INK}},
                {RGB(1, 1, 1), FALSE, {KEY, OTHER, INK}},
                {CTransparentBitmap::BY_HIT_MASK, FALSE, {PAPER, OTHER, INK}},
                {KEY, TRUE, {PAPER, pale((10 * 30 + 20 * 59 + 30 * 11) / 100), pale((200 * 30 + 100 * 59) / 100)}}};
    for (const auto& row : rows) {
        for (const BOOL buffered : {FALSE, TRUE}) {
            const desktop_test::Picture picture(9, 7, PAPER);
            CDC dc;
            dc.Attach(picture.Context());
            dc.SetBkColor(RGB(1, 2, 3));
            dc.SetTextColor(RGB(4, 5, 6));
            bitmap.DrawTransparent(&dc, 4, 3, row.transparent, row.disabled, buffered);
            EXPECT_EQ((std::vector<COLORREF>{dc.GetPixel(4, 3), dc.GetPixel(5, 3), dc.GetPixel(6, 3)}), row.first)
                << row.transparent << " " << row.disabled << " " << buffered;
            EXPECT_EQ(dc.GetPixel(6, 4), row.disabled ? pale(0) : RGB(0, 0, 0));
            EXPECT_EQ(dc.GetPixel(3, 3), PAPER);
            EXPECT_EQ(dc.GetPixel(7, 4), PAPER);
            EXPECT_EQ(dc.GetBkColor(), RGB(1, 2, 3));
            EXPECT_EQ(dc.GetTextColor(), RGB(4, 5, 6));
            dc.Detach();
        }
    }
    bitmap.DrawTransparent(nullptr, 0, 0, KEY);
}

// A dialog without controls, in letters of 24 points.
HWND MakeDialog() {
    alignas(4) static constexpr WORD TEMPLATE[] = {0x0040, 0x8000, 0, 0,  0,   0,   0,   100, 50,  // WS_POPUP | DS_SETFONT
                                                   0,      0,      0, 24, 'A', 'r', 'i', 'a', 'l', 0};
    return CreateDialogIndirectParamW(GetModuleHandleW(nullptr), reinterpret_cast<LPCDLGTEMPLATE>(TEMPLATE), nullptr, nullptr, 0);
}

TEST(TransparentBitmap, IsEnlargedForLargeLettersInWidth) {
    const HWND dialog = MakeDialog();
    ASSERT_NE(dialog, nullptr);
    RECT units = {0, 0, 100, 100};
    ASSERT_TRUE(MapDialogRect(dialog, &units));
    const double factor = (units.right * 4 / 100) / 6.0;
    ASSERT_GT(factor, 1.2);
    const HWND child = CreateWindowExW(0, _T("Static"), _T(""), WS_CHILD, 0, 0, 1, 1, dialog, nullptr, nullptr, nullptr);
    for (const HWND window : {dialog, child}) {
        CTransparentBitmap bitmap;
        EXPECT_FALSE(bitmap.LoadBitmapScaled(999, window));
        ASSERT_TRUE(bitmap.LoadBitmapScaled(test::POSITIONS, window));
        EXPECT_EQ(bitmap.Width(), static_cast<int>(std::lround(32 * factor)));
        EXPECT_EQ(bitmap.Height(), 128);
        EXPECT_FALSE(bitmap.HitTest(CPoint(0, 0)));
        EXPECT_TRUE(bitmap.HitTest(CPoint(bitmap.Width() - 1, 127)));

        CDC dc;
        dc.CreateCompatibleDC(nullptr);
        CBitmap* const before = dc.SelectObject(static_cast<CBitmap*>(&bitmap));
        std::set<int> reds;
        for (int x = 0; x < bitmap.Width(); ++x) {
            reds.insert(GetRValue(dc.GetPixel(x, 64)));
        }
        EXPECT_GT(reds.size(), 34U);  // not only those that the columns had
        dc.SelectObject(before);
    }
    CTransparentBitmap sharp;  // magenta / green, nearly magenta / magenta
    ASSERT_TRUE(sharp.LoadBitmapScaled(test::TWO_BY_TWO, dialog));
    const COLORREF allowed[] = {KEY, RGB(0, 255, 0), RGB(255, 0, 254)};
    CDC dc;
    dc.CreateCompatibleDC(nullptr);
    CBitmap* const before = dc.SelectObject(static_cast<CBitmap*>(&sharp));
    for (int x = 0; x < sharp.Width(); ++x) {
        EXPECT_TRUE(std::count(std::begin(allowed), std::end(allowed), dc.GetPixel(x, 0)) == 1) << x << ": " << dc.GetPixel(x, 0);
    }
    dc.SelectObject(before);
    DestroyWindow(dialog);

    // Nothing is shrunk: the screen has 96 dots per inch.
    CTransparentBitmap plain;
    ASSERT_TRUE(plain.LoadBitmapScaled(test::POSITIONS, nullptr));
    EXPECT_EQ(CSize(plain.Width(), plain.Height()), CSize(32, 128));
}

class TransparentStatic : public test::SkinWindowTest {};

TEST_F(TransparentStatic, ShowsTheSkinAroundItsBitmap) {
    constexpr UINT ID = 7;
    CSkinStubWnd stub(CSkinStubWnd::SkinBackground);
    ASSERT_TRUE(stub.SetSkinInfo(test::SkinOfWindows()));
    Make(WS_POPUP, CSize(120, 90));
    CWnd parent;
    ASSERT_TRUE(parent.SubclassWindow(window_));  // gives controls what they have sent
    ASSERT_TRUE(stub.Apply(&parent));
    CreateWindowExW(0, _T("Static"), _T(""), WS_CHILD | WS_VISIBLE, 30, 20, 50, 50, window_,
                    reinterpret_cast<HMENU>(UINT_PTR{ID}), GetModuleHandleW(nullptr), nullptr);
    CTransparentBitmapStatic control;
    EXPECT_FALSE(control.SubclassDlgItem(ID + 1, &parent));
    ASSERT_TRUE(control.SubclassDlgItem(ID, &parent));
    EXPECT_EQ(control.GetStyle() & SS_TYPEMASK, DWORD{SS_OWNERDRAW});
    Show();
    EXPECT_EQ(Seam(), "");  // no bitmap yet
    control.GetTransparentBitmap().Attach(Drawn(40, 40, [](int x, int y) { return x == 20 && y == 10 ? PAPER : KEY; }));
    control.Invalidate();
    Show();
    EXPECT_EQ(Seam().substr(0, 6), "50,30:");  // the one opaque pixel, and
    EXPECT_EQ(Seam(51), "");                   // nothing behind it
    control.DestroyWindow();
}

}  // namespace
