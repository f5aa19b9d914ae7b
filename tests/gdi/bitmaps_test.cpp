// Bitmaps: how they are made, read and written as bytes, and loaded from resources.

#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "gdi/picture.h"
#include "support/wine.h"

using test::Bitmap;
using test::DibInfo;
using test::Picture;

namespace {

BITMAP DescriptionOf(HBITMAP bitmap) {
    BITMAP description = {};
    GetObjectW(bitmap, sizeof(description), &description);
    return description;
}

}  // namespace

TEST(GdiBitmaps, HaveTheDepthOfTheirContext) {
    const Picture section(2, 2);
    const Picture mono = Picture::Mono(2, 2);
    const HDC screen = CreateDCW(_T("DISPLAY"), nullptr, nullptr, nullptr);
    struct {
        HDC like;
        int width, height, depth, row_bytes;
    } const kRows[] = {{screen, 5, 3, 32, 20}, {section, 5, 3, 32, 20}, {mono, 17, 3, 1, 4}, {screen, 0, 9, 1, 2}};
    for (const auto& row : kRows) {
        const Bitmap bitmap(CreateCompatibleBitmap(row.like, row.width, row.height));
        const BITMAP made = DescriptionOf(bitmap);
        EXPECT_EQ(made.bmWidth, std::max(row.width, 1));
        EXPECT_EQ(made.bmBitsPixel, row.depth);
        EXPECT_EQ(made.bmWidthBytes, row.row_bytes);
        EXPECT_EQ(made.bmBits != nullptr, row.like == section) << "a section makes sections";
    }
    DeleteDC(screen);
    EXPECT_EQ(CreateCompatibleBitmap(nullptr, 1, 1), nullptr);
    EXPECT_EQ(CreateCompatibleBitmap(section, 0x7FFFFFFF, 0x7FFFFFFF), nullptr);
    EXPECT_EQ(CreateBitmapIndirect(nullptr), nullptr);
}

TEST(GdiBitmaps, ExchangeBytesInEvenRows) {
    const BYTE bits[] = {0b10110000, 0xFF, 0b01000000, 0x00};
    const Bitmap bitmap(CreateBitmap(4, 2, 1, 1, bits));
    BYTE read[4] = {};
    EXPECT_EQ(GetBitmapBits(bitmap, 0, nullptr), 4);
    EXPECT_EQ(GetBitmapBits(bitmap, 4, read), 4);
    EXPECT_EQ(read[0] & 0xF0, 0b10110000);
    EXPECT_EQ(read[2] & 0xF0, 0b01000000);
    const BYTE upper[] = {0b00010000, 0};
    EXPECT_EQ(SetBitmapBits(bitmap, 2, upper), 2);
    EXPECT_EQ(GetBitmapBits(bitmap, 3, read), 3) << "as much as there is room for";
    EXPECT_EQ(read[0] & 0xF0, 0b00010000);
    EXPECT_EQ(read[2] & 0xF0, 0b01000000);

    const Picture picture = Picture::Mono(8, 1, "\xA5");
    EXPECT_EQ(picture.Art(), ".#.##.#.\n");
}

TEST(GdiBitmaps, ShareTheirPixelsWithTheCaller) {
    Picture up = Picture::Upwards(2, 3);
    SetPixelV(up, 0, 0, test::kRed);
    EXPECT_EQ(up.Pixels()[4] & 0xFFFFFF, 0xFF0000u) << "the uppermost row is the last in memory";
    up.Pixels()[1] = 0x0000FF;
    EXPECT_EQ(up.Art(), "r#\n##\n#b\n");
    const RECT column = {1, 0, 2, 3};
    FillRect(up, &column, test::StockBrush(WHITE_BRUSH));
    EXPECT_EQ(up.Art(), "r.\n#.\n#.\n");

    void* bits = &bits;
    BITMAPINFO info = DibInfo(2, 2);
    info.bmiHeader.biHeight = 0;
    EXPECT_EQ(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0), nullptr);
    EXPECT_EQ(CreateDIBSection(nullptr, nullptr, DIB_RGB_COLORS, &bits, nullptr, 0), nullptr);
}

// Rows of the DIB count from its lowest, and its upper left corner is the bitmap's; the caller has just the rows that are copied.
TEST(GdiDibs, CopyTheRowsThatWereAskedFor) {
    struct {
        int height;
        UINT first;
        const char* set;  // the column after two rows, 1 and 2, were written
        DWORD got[2];     // the rows read of a column that counts from 1
    } const kRows[] = {
        {6, 0, "....21", {6, 5}}, {-6, 0, "....12", {5, 6}}, {6, 3, ".21...", {3, 2}},
        {4, 0, "..21..", {4, 3}}, {-4, 1, ".12...", {2, 3}}, {8, 1, ".....2", {0, 6}},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(testing::Message() << row.height << " from " << row.first);
        const Bitmap bitmap(CreateBitmap(2, 6, 1, 32, nullptr));
        const HDC context = CreateCompatibleDC(nullptr);
        const BITMAPINFO info = DibInfo(2, row.height);
        DWORD rows[4] = {1, 1, 2, 2};
        EXPECT_GE(SetDIBits(context, bitmap, row.first, 2, rows, &info, DIB_RGB_COLORS), 1);
        DWORD pixels[12];
        GetBitmapBits(bitmap, sizeof(pixels), pixels);
        std::string column;
        for (std::size_t y = 0; y < 6; ++y) {
            column += ".12"[pixels[2 * y] & 3];
        }
        EXPECT_EQ(column, row.set);

        for (DWORD at = 0; at < 12; ++at) {
            pixels[at] = at / 2 + 1;
        }
        SetBitmapBits(bitmap, sizeof(pixels), pixels);
        BITMAPINFO asked = info;
        std::fill(std::begin(rows), std::end(rows), 0);
        EXPECT_GE(GetDIBits(context, bitmap, row.first, 2, rows, &asked, DIB_RGB_COLORS), 1);
        EXPECT_EQ(rows[0] & 0xFFFFFF, row.got[0]);
        EXPECT_EQ(rows[2] & 0xFFFFFF, row.got[1]);
        DeleteDC(context);
    }
}

TEST(GdiDibs, ChangeTheDepth) {
    const Picture picture(3, 1);
    struct {
        BITMAPINFO info;
        RGBQUAD more[3];
    } dib = {DibInfo(3, 1, 24), {}};
    const BYTE triples[12] = {0, 0, 255, 255, 255, 255, 1, 2, 3};
    EXPECT_EQ(SetDIBits(picture, picture.Handle(), 0, 1, triples, &dib.info, DIB_RGB_COLORS), 1);
    EXPECT_EQ(picture.At(0, 0), test::kRed);
    EXPECT_EQ(picture.At(2, 0), RGB(3, 2, 1));
    BYTE read[12] = {};
    EXPECT_EQ(GetDIBits(picture, picture.Handle(), 0, 1, read, &dib.info, DIB_RGB_COLORS), 1);
    EXPECT_EQ(std::memcmp(read, triples, 9), 0);

    dib.info = DibInfo(3, 1, 8);
    dib.info.bmiHeader.biClrUsed = 2;
    dib.info.bmiColors[0] = {255, 0, 0, 0};
    dib.more[0] = {0, 255, 0, 0};
    const BYTE indices[4] = {1, 0, 200};
    EXPECT_EQ(SetDIBits(picture, picture.Handle(), 0, 1, indices, &dib.info, DIB_RGB_COLORS), 1);
    EXPECT_EQ(picture.Art(), "gb#\n") << "numbers behind the palette are black";

    const Picture mono = Picture::Mono(3, 1, "\xA0");
    dib.info = DibInfo(3, 1, 32);
    DWORD colors[3];
    EXPECT_EQ(GetDIBits(mono, mono.Handle(), 0, 1, colors, &dib.info, DIB_RGB_COLORS), 1);
    EXPECT_EQ(colors[0] & 0xFFFFFF, 0xFFFFFFu);
    EXPECT_EQ(colors[1] & 0xFFFFFF, 0u);

    dib.info.bmiHeader.biBitCount = 0;
    EXPECT_NE(GetDIBits(picture, picture.Handle(), 0, 0, nullptr, &dib.info, DIB_RGB_COLORS), 0);
    EXPECT_EQ(dib.info.bmiHeader.biBitCount, 32);
    EXPECT_EQ(dib.info.bmiHeader.biSizeImage, 12u);
    EXPECT_EQ(SetDIBits(picture, picture.Handle(), 0, 1, triples, nullptr, DIB_RGB_COLORS), 0);
    EXPECT_EQ(GetDIBits(picture, nullptr, 0, 1, read, &dib.info, DIB_RGB_COLORS), 0);
}

TEST(GdiBitmaps, ComeFromResources) {
    const HINSTANCE program = GetModuleHandleW(nullptr);
    struct {
        WORD id;
        int depth;
        const char* art;
    } const kRows[] = {{1, 32, "rgb\n.#.\n"}, {2, 1, "#..#\n"}};
    const HDC context = CreateCompatibleDC(nullptr);
    for (const auto& row : kRows) {
        const Bitmap bitmap(LoadBitmapW(program, MAKEINTRESOURCEW(row.id)));
        const BITMAP made = DescriptionOf(bitmap);
        EXPECT_EQ(made.bmBitsPixel, row.depth);
        Picture picture(made.bmWidth, made.bmHeight);
        {
            const test::Selected selected(context, bitmap);
            SetTextColor(picture, test::kBlack);
            BitBlt(picture, 0, 0, made.bmWidth, made.bmHeight, context, 0, 0, SRCCOPY);
        }
        EXPECT_EQ(picture.Art(), row.art);
    }
    DeleteDC(context);
    EXPECT_EQ(LoadBitmapW(program, MAKEINTRESOURCEW(4)), nullptr);
    EXPECT_EQ(LoadBitmapW(program, _T("none")), nullptr);
}
