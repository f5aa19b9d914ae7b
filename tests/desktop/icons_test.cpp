// Icons from bytes and bitmaps, drawn and taken apart.

#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <vector>

#include "../support/wine.h"
#include "picture.h"

namespace {

using desktop_test::Picture;

constexpr COLORREF kBehind = RGB(10, 20, 30);
constexpr DWORD kVersion = 0x00030000;

void Put(std::vector<BYTE>& bytes, DWORD value, int count) {
    for (int index = 0; index < count; ++index) {
        bytes.push_back(static_cast<BYTE>(value >> (8 * index)));
    }
}

std::vector<BYTE> Header(int width, int height, WORD depth) {
    std::vector<BYTE> bytes;
    for (const DWORD field : {DWORD{40}, static_cast<DWORD>(width), static_cast<DWORD>(2 * height)}) {
        Put(bytes, field, 4);
    }
    Put(bytes, 1, 2);
    Put(bytes, depth, 2);
    bytes.resize(40);
    return bytes;
}

// 4 x 2 pixels, the lower row first. Left half: 0x80 or 0xFF of alpha, red. Right half: nothing.
std::vector<BYTE> AlphaIcon() {
    std::vector<BYTE> bytes = Header(4, 2, 32);
    for (const DWORD alpha : {DWORD{0x80}, DWORD{0xFF}}) {
        const DWORD red = (alpha << 24) | 0xFF0000;
        for (const DWORD pixel : {red, red, DWORD{0}, DWORD{0}}) {
            Put(bytes, pixel, 4);
        }
    }
    Put(bytes, 0x30, 4);  // the mask: one bit a pixel, from the left
    Put(bytes, 0x30, 4);
    return bytes;
}

// 8 x 1 pixels of 24 bits without alpha: green, over a mask whose right half shows what is behind and is inverted there.
std::vector<BYTE> MaskedIcon() {
    std::vector<BYTE> bytes = Header(8, 1, 24);
    for (int x = 0; x < 8; ++x) {
        Put(bytes, x < 4 ? 0x00FF00 : x < 6 ? 0x000000 : 0xFFFFFF, 3);
    }
    Put(bytes, 0x0F, 4);
    return bytes;
}

HICON MakeIcon(std::vector<BYTE> bytes, int width = 0, int height = 0, BOOL icon = TRUE) {
    return CreateIconFromResourceEx(bytes.data(), static_cast<DWORD>(bytes.size()), icon, kVersion, width, height,
                                    LR_DEFAULTCOLOR);
}

std::vector<COLORREF> Row(const Picture& picture, int y, int width) {
    std::vector<COLORREF> row;
    for (int x = 0; x < width; ++x) {
        row.push_back(GetPixel(picture.Context(), x, y));
    }
    return row;
}

void ExpectNear(COLORREF color, COLORREF wanted) {
    EXPECT_NEAR(GetRValue(color), GetRValue(wanted), 1);
    EXPECT_NEAR(GetGValue(color), GetGValue(wanted), 1);
    EXPECT_NEAR(GetBValue(color), GetBValue(wanted), 1);
}

TEST(Icons, AlphaBlends) {
    const HICON icon = MakeIcon(AlphaIcon());
    ASSERT_NE(icon, nullptr);
    const Picture picture(6, 4, kBehind);
    ASSERT_TRUE(DrawIconEx(picture.Context(), 1, 1, icon, 0, 0, 0, nullptr, DI_NORMAL));
    EXPECT_EQ(GetPixel(picture.Context(), 0, 1), kBehind);
    EXPECT_EQ(GetPixel(picture.Context(), 1, 1), RGB(255, 0, 0));
    EXPECT_EQ(GetPixel(picture.Context(), 3, 1), kBehind);
    ExpectNear(GetPixel(picture.Context(), 2, 2), RGB(133, 10, 15));
    EXPECT_EQ(GetPixel(picture.Context(), 1, 3), kBehind);
    EXPECT_TRUE(DestroyIcon(icon));
    EXPECT_FALSE(DrawIconEx(picture.Context(), 0, 0, icon, 0, 0, 0, nullptr, DI_NORMAL));
    EXPECT_FALSE(DestroyIcon(icon));
}

TEST(Icons, MasksCutAndInvert) {
    const HICON icon = MakeIcon(MaskedIcon());
    ASSERT_NE(icon, nullptr);
    const COLORREF green = RGB(0, 255, 0);
    const COLORREF inverted = RGB(245, 235, 225);
    const COLORREF white = RGB(255, 255, 255);
    const struct {
        UINT flags;
        std::vector<COLORREF> row;
    } cases[] = {
        {DI_NORMAL, {green, green, green, green, kBehind, kBehind, inverted, inverted}},
        {DI_IMAGE, {green, green, green, green, 0, 0, white, white}},
        {DI_MASK, {0, 0, 0, 0, white, white, white, white}},
    };
    for (const auto& each : cases) {
        const Picture picture(8, 1, kBehind);
        EXPECT_TRUE(DrawIconEx(picture.Context(), 0, 0, icon, 8, 1, 0, nullptr, each.flags));
        EXPECT_EQ(Row(picture, 0, 8), each.row) << each.flags;
    }
    const Picture scaled(16, 2, kBehind);
    EXPECT_TRUE(DrawIconEx(scaled.Context(), 0, 0, icon, 16, 2, 0, nullptr, DI_NORMAL));
    EXPECT_EQ(GetPixel(scaled.Context(), 7, 1), green);
    EXPECT_EQ(GetPixel(scaled.Context(), 8, 1), kBehind);
    EXPECT_EQ(GetPixel(scaled.Context(), 15, 0), inverted);

    const HBRUSH brush = CreateSolidBrush(RGB(255, 255, 0));
    const Picture over(8, 1, kBehind);
    EXPECT_TRUE(DrawIconEx(over.Context(), 0, 0, icon, 8, 1, 0, brush, DI_NORMAL));
    EXPECT_EQ(GetPixel(over.Context(), 0, 0), green);
    EXPECT_EQ(GetPixel(over.Context(), 4, 0), RGB(255, 255, 0));
    EXPECT_EQ(GetPixel(over.Context(), 7, 0), RGB(0, 0, 255));
    DeleteObject(brush);
    DestroyIcon(icon);
}

TEST(Icons, DamagedBytesMakeNone) {
    const std::vector<BYTE> good = AlphaIcon();
    const auto damaged = [&good](std::size_t at, DWORD value) {
        std::vector<BYTE> bytes = good;
        for (std::size_t index = 0; index < 4; ++index) {
            bytes[at + index] = static_cast<BYTE>(value >> (8 * index));
        }
        return bytes;
    };
    const struct {
        std::vector<BYTE> bytes;
        bool wine_takes;
    } cases[] = {
        {std::vector<BYTE>(good.begin(), good.begin() + 39), false},
        {std::vector<BYTE>(good.begin(), good.begin() + 60), false},
        {damaged(0, 4), false},
        {damaged(4, 0), true},
        {damaged(4, 0x7FFFFFFF), false},
        {damaged(8, 0), true},
        {damaged(16, 99), false},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(MakeIcon(each.bytes) != nullptr, test::UnlessWine(false, each.wine_takes)) << &each - cases;
    }
    std::vector<BYTE> bytes = good;
    const HICON of_old = CreateIconFromResourceEx(bytes.data(), static_cast<DWORD>(good.size()), TRUE, 0x00010000, 0, 0, 0);
    EXPECT_EQ(of_old != nullptr, test::UnlessWine(false, true));
}

TEST(Icons, TheNearestPictureIsChosen) {
    std::vector<BYTE> directory;
    Put(directory, 0, 2);
    Put(directory, 1, 2);
    const struct {
        BYTE side;
        WORD depth;
        WORD id;
    } entries[] = {{32, 4, 1}, {16, 8, 2}, {32, 32, 3}, {0, 32, 4}, {48, 32, 5}};
    Put(directory, static_cast<DWORD>(std::size(entries)), 2);
    for (const auto& each : entries) {
        Put(directory, each.side, 1);
        Put(directory, each.side, 1);
        Put(directory, 0, 2);
        Put(directory, 1, 2);
        Put(directory, each.depth, 2);
        Put(directory, 100, 4);
        Put(directory, each.id, 2);
    }
    const struct {
        int side;
        int id;
    } cases[] = {{16, 2}, {32, 3}, {48, 5}, {256, 4}, {0, 3}};
    for (const auto& each : cases) {
        EXPECT_EQ(LookupIconIdFromDirectoryEx(directory.data(), TRUE, each.side, each.side, LR_DEFAULTCOLOR), each.id)
            << each.side;
    }
}

TEST(Icons, AreTakenApartAndPutTogether) {
    const HICON icon = MakeIcon(MaskedIcon());
    ICONINFO info = {};
    ASSERT_TRUE(GetIconInfo(icon, &info));
    EXPECT_TRUE(info.fIcon);
    EXPECT_EQ(info.xHotspot, 4U);
    BITMAP mask = {};
    ASSERT_NE(GetObjectW(info.hbmMask, sizeof mask, &mask), 0);
    EXPECT_EQ(mask.bmWidth, 8);
    EXPECT_EQ(mask.bmHeight, 1);
    EXPECT_EQ(mask.bmBitsPixel, 1);

    const HICON again = CreateIconIndirect(&info);
    const HICON copy = CopyIcon(again);
    EXPECT_NE(copy, again);
    for (const HICON each : {again, copy}) {
        const Picture picture(8, 1, kBehind);
        ASSERT_TRUE(DrawIconEx(picture.Context(), 0, 0, each, 0, 0, 0, nullptr, DI_NORMAL));
        EXPECT_EQ(GetPixel(picture.Context(), 0, 0), RGB(0, 255, 0));
        EXPECT_EQ(GetPixel(picture.Context(), 7, 0), RGB(245, 235, 225));
        EXPECT_TRUE(DestroyIcon(each));
    }
    DeleteObject(info.hbmMask);
    DeleteObject(info.hbmColor);
    DestroyIcon(icon);

    // Without a colour bitmap the mask is of double height.
    const BYTE bits[] = {0xF0, 0, 0x0F, 0};
    ICONINFO mono = {FALSE, 2, 0, CreateBitmap(8, 2, 1, 1, bits), nullptr};
    const HCURSOR cursor = CreateIconIndirect(&mono);
    ASSERT_NE(cursor, nullptr);
    const Picture picture(8, 1, kBehind);
    EXPECT_TRUE(DrawIconEx(picture.Context(), 0, 0, cursor, 8, 1, 0, nullptr, DI_NORMAL));
    EXPECT_EQ(GetPixel(picture.Context(), 0, 0), kBehind);
    EXPECT_EQ(GetPixel(picture.Context(), 7, 0), RGB(255, 255, 255));
    ICONINFO back = {};
    ASSERT_TRUE(GetIconInfo(cursor, &back));
    EXPECT_FALSE(back.fIcon);
    EXPECT_EQ(back.xHotspot, 2U);
    EXPECT_EQ(back.hbmColor, nullptr);
    DeleteObject(back.hbmMask);
    DestroyCursor(cursor);
    DeleteObject(mono.hbmMask);
    ICONINFO empty = {};
    EXPECT_EQ(CreateIconIndirect(&empty), nullptr);
}

TEST(Icons, TheSystemsOwnAreSharedAndDrawn) {
    for (const LPCTSTR name : {IDI_APPLICATION, IDI_ERROR, IDI_QUESTION, IDI_WARNING, IDI_INFORMATION}) {
        const HICON icon = LoadIconW(nullptr, name);
        ASSERT_NE(icon, nullptr);
        EXPECT_EQ(LoadIconW(nullptr, name), icon);
        DestroyIcon(icon);
        const Picture picture(34, 34, kBehind);
        ASSERT_TRUE(DrawIcon(picture.Context(), 1, 1, icon));
        EXPECT_NE(GetPixel(picture.Context(), 17, 17), kBehind);
        EXPECT_EQ(GetPixel(picture.Context(), 0, 17), kBehind);
        EXPECT_EQ(GetPixel(picture.Context(), 33, 17), kBehind);
    }
    EXPECT_EQ(LoadIconW(nullptr, MAKEINTRESOURCEW(31)), nullptr);
    EXPECT_EQ(LoadCursorW(nullptr, MAKEINTRESOURCEW(31)), nullptr);
    const HCURSOR arrow = LoadCursorW(nullptr, IDC_ARROW);
    ASSERT_NE(arrow, nullptr);
    const HCURSOR before = SetCursor(arrow);
    EXPECT_EQ(GetCursor(), arrow);
    EXPECT_EQ(SetCursor(before), arrow);
    const int count = ShowCursor(TRUE);
    EXPECT_EQ(ShowCursor(FALSE), count - 1);
}

}  // namespace
