// Copies: raster operations, depths, scaling, masks and blends, pixel by pixel.

#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <algorithm>
#include <random>
#include <vector>

#include "gdi/picture.h"
#include "support/wine.h"

using test::Picture;

namespace {

// One row: the numbers as the pixels' blue, and back.
void SetRow(const Picture& picture, std::initializer_list<DWORD> values) {
    std::copy(values.begin(), values.end(), picture.Pixels().begin());
}

std::vector<DWORD> Row(const Picture& picture) {
    std::vector<DWORD> row(picture.Pixels().begin(), picture.Pixels().begin() + picture.Width());
    std::transform(row.begin(), row.end(), row.begin(), [](DWORD pixel) { return pixel & 0xFFFFFF; });
    return row;
}

}  // namespace

TEST(GdiRasterOperations, FollowTheirTruthTables) {
    // Of these three bytes the bits run through all eight combinations, so that the result is the operation's own number.
    const Picture target(1, 1);
    const Picture source(1, 1);
    const test::Brush pattern(CreateSolidBrush(RGB(0xF0, 0xF0, 0xF0)));
    const test::Selected selected(target, pattern);
    source.Pixels()[0] = 0xCCCCCC;
    for (DWORD table = 0; table < 256; ++table) {
        target.Pixels()[0] = 0xAAAAAA;
        EXPECT_TRUE(BitBlt(target, 0, 0, 1, 1, source, 0, 0, table << 16));
        EXPECT_EQ(target.Pixels()[0] & 0xFFFFFF, table * 0x010101) << "operation " << table;
    }
    const std::pair<DWORD, DWORD> kNamed[] = {{BLACKNESS, 0x00},  {NOTSRCERASE, 0x11}, {NOTSRCCOPY, 0x33}, {SRCERASE, 0x44},
                                              {DSTINVERT, 0x55},  {PATINVERT, 0x5A},   {SRCINVERT, 0x66},  {SRCAND, 0x88},
                                              {MERGEPAINT, 0xBB}, {MERGECOPY, 0xC0},   {SRCCOPY, 0xCC},    {SRCPAINT, 0xEE},
                                              {PATCOPY, 0xF0},    {PATPAINT, 0xFB},    {WHITENESS, 0xFF}};
    for (const auto& [operation, result] : kNamed) {
        target.Pixels()[0] = 0xAAAAAA;
        BitBlt(target, 0, 0, 1, 1, source, 0, 0, operation);
        EXPECT_EQ(target.Pixels()[0] & 0xFF, result);
    }
    for (int mix = R2_BLACK; mix <= R2_WHITE; ++mix) {
        target.Pixels()[0] = 0xAAAAAA;
        SetROP2(target, mix);
        const test::Selected none(target, GetStockObject(NULL_PEN));
        Rectangle(target, 0, 0, 2, 2);
        const DWORD table = static_cast<DWORD>(mix - 1);
        const DWORD expected = ((table & 1) * 0x05) | (table >> 1 & 1) * 0x0A | (table >> 2 & 1) * 0x50 | (table >> 3) * 0xA0;
        EXPECT_EQ(target.Pixels()[0] & 0xFF, expected) << "mix " << mix;
    }
}

TEST(GdiBitBlt, CopiesOntoItselfInAnyDirection) {
    std::mt19937 engine(7);
    std::uniform_int_distribution<int> place(-4, 15);
    constexpr int kSide = 12;
    Picture down(kSide, kSide);
    Picture up = Picture::Upwards(kSide, kSide);
    for (const Picture* picture : {&down, &up}) {
        for (int round = 0; round < 200; ++round) {
            std::generate(picture->Pixels().begin(), picture->Pixels().end(), [&] { return engine() & 0xFFFFFF; });
            std::vector<COLORREF> before;
            for (int at = 0; at < kSide * kSide; ++at) {
                before.push_back(picture->At(at % kSide, at / kSide));
            }
            const int x = place(engine), y = place(engine), from_x = place(engine), from_y = place(engine);
            BitBlt(*picture, x, y, 7, 6, *picture, from_x, from_y, SRCCOPY);
            for (int at = 0; at < kSide * kSide; ++at) {
                const int dx = at % kSide - x, dy = at / kSide - y;
                const int sx = from_x + dx, sy = from_y + dy;
                const bool copied = dx >= 0 && dx < 7 && dy >= 0 && dy < 6 && sx >= 0 && sx < kSide && sy >= 0 && sy < kSide;
                ASSERT_EQ(picture->At(at % kSide, at / kSide), before[static_cast<std::size_t>(copied ? sy * kSide + sx : at)]);
            }
        }
    }
}

TEST(GdiBitBlt, ConvertsBetweenOneBitAndColours) {
    const Picture mono = Picture::Mono(4, 1, "\x90");
    const Picture color(4, 1);
    SetTextColor(color, test::kBlue);
    SetBkColor(color, test::kGreen);
    SetTextColor(mono, test::kRed);  // only the target's count
    BitBlt(color, 0, 0, 4, 1, mono, 0, 0, SRCCOPY);
    EXPECT_EQ(color.Art(), "gbbg\n");

    SetRow(color, {0xFF0000, 0xFFFFFF, 0xFF0001, 0xFF0000});
    SetBkColor(color, test::kRed);  // of the source: what becomes 1
    BitBlt(mono, 0, 0, 4, 1, color, 0, 0, SRCCOPY);
    EXPECT_EQ(mono.Art(), ".##.\n");
    BitBlt(mono, 0, 0, 4, 1, color, 0, 0, NOTSRCCOPY);
    EXPECT_EQ(mono.Art(), "#..#\n");
    BitBlt(mono, 0, 0, 2, 1, mono, 2, 0, SRCAND);
    EXPECT_EQ(mono.Art(), "##.#\n");

    const test::Brush pattern(CreatePatternBrush(mono.Handle()));
    PatBlt(mono, 0, 0, 4, 1, BLACKNESS);  // the brush has a copy
    const test::Selected selected(color, pattern);
    SetBrushOrgEx(color, 1, 0, nullptr);
    PatBlt(color, 0, 0, 4, 1, PATCOPY);
    EXPECT_EQ(color.Art(), "bbbr\n");
}

TEST(GdiStretchBlt, TakesOneOfTheSourcePixelsOrCombinesThem) {
    struct {
        int mode, width, source_x, source_width;
        std::vector<DWORD> result;
    } const kRows[] = {
        {COLORONCOLOR, 6, 0, 3, {1, 1, 2, 2, 4, 4, 0, 0}},  {COLORONCOLOR, 4, 0, 3, {1, 2, 2, 4, 0, 0, 0, 0}},
        {COLORONCOLOR, 3, 0, 6, {2, 8, 32, 0, 0, 0, 0, 0}}, {WHITEONBLACK, 3, 0, 6, {3, 12, 48, 0, 0, 0, 0, 0}},
        {BLACKONWHITE, 3, 2, 6, {0, 0, 64, 0, 0, 0, 0, 0}}, {COLORONCOLOR, 8, 6, 4, {64, 64, 192, 192, 0, 0, 0, 0}},
        {COLORONCOLOR, 8, -2, 4, {0, 0, 0, 0, 1, 1, 2, 2}}, {HALFTONE, 2, 7, 1, {192, 192, 0, 0, 0, 0, 0, 0}},
    };
    const Picture source(8, 1);
    SetRow(source, {1, 2, 4, 8, 16, 32, 64, 192});
    for (const auto& row : kRows) {
        Picture target(8, 1, test::kBlack);
        SetStretchBltMode(target, row.mode);
        EXPECT_TRUE(StretchBlt(target, 0, 0, row.width, 1, source, row.source_x, 0, row.source_width, 1, SRCCOPY));
        EXPECT_EQ(Row(target), row.result) << "mode " << row.mode << ", " << row.source_width << " to " << row.width;
    }
    Picture target(8, 1, test::kBlack);
    StretchBlt(target, 3, 0, -4, 1, source, 0, 0, 4, 1, SRCCOPY);
    EXPECT_EQ(Row(target), (std::vector<DWORD>{8, 4, 2, 1, 0, 0, 0, 0})) << "mirrored, from the corner's pixel";
    StretchBlt(target, 4, 0, 2, 1, source, 5, 0, -2, 1, SRCPAINT);
    EXPECT_EQ(Row(target), (std::vector<DWORD>{8, 4, 2, 1, 32, 16, 0, 0}));
}

TEST(GdiMaskBlt, ChoosesTheOperationByTheMask) {
    const test::Bitmap mask(CreateBitmap(8, 2, 1, 1, "\xF0\0\x3C"));
    Picture target(6, 1);
    const Picture source(6, 1, test::kBlue);
    EXPECT_TRUE(MaskBlt(target, 0, 0, 6, 1, source, 0, 0, mask, 1, 0, MAKEROP4(SRCCOPY, BLACKNESS)));
    EXPECT_EQ(target.Art(), "bbb###\n");
    target.Clear(test::kWhite);
    EXPECT_TRUE(MaskBlt(target, 1, 0, 4, 1, source, 0, 0, mask, 0, 1, MAKEROP4(SRCCOPY, DSTINVERT)));
    EXPECT_EQ(target.Art(), ".##bb.\n");
    EXPECT_EQ(MaskBlt(target, 0, 0, 6, 1, source, 0, 0, mask, 3, 0, MAKEROP4(SRCCOPY, BLACKNESS)), test::UnlessWine(FALSE, TRUE))
        << "the mask ends before the target";
}

TEST(GdiTransparentBlt, LeavesOutOneColour) {
    Picture target(6, 1);
    const Picture source(3, 1);
    SetRow(source, {0xFF0000, 0x00FF00, 0x0000FF});
    EXPECT_TRUE(TransparentBlt(target, 0, 0, 6, 1, source, 0, 0, 3, 1, test::kGreen));
    EXPECT_EQ(target.Art(), "rr..bb\n");
    EXPECT_FALSE(TransparentBlt(target, 0, 0, -6, 1, source, 0, 0, 3, 1, 0));
}

TEST(GdiAlphaBlend, WeighsByConstantAndByPixel) {
    struct {
        BYTE constant, format;
        DWORD source, result;  // over 0x204060
    } const kRows[] = {
        {255, 0, 0xC8102030, 0x102030},
        {0, 0, 0x102030, 0x204060},
        {100, 0, 0x000000, 0x13273A},
        {255, AC_SRC_ALPHA, 0x80402010, 0x504040},
        {255, AC_SRC_ALPHA, 0x00000000, 0x204060},
        {255, AC_SRC_ALPHA, 0xFF123456, 0x123456},
        {128, AC_SRC_ALPHA, 0xFF804020, 0x504040},
    };
    for (const auto& row : kRows) {
        const Picture target(1, 1);
        const Picture source(1, 1);
        target.Pixels()[0] = 0x204060;
        source.Pixels()[0] = row.source;
        EXPECT_TRUE(AlphaBlend(target, 0, 0, 1, 1, source, 0, 0, 1, 1, {AC_SRC_OVER, 0, row.constant, row.format}));
        EXPECT_EQ(target.Pixels()[0] & 0xFFFFFF, row.result) << std::hex << row.source << " by " << int{row.constant};
    }
    const Picture target(4, 4);
    const Picture source(2, 2);
    EXPECT_FALSE(AlphaBlend(target, 0, 0, 4, 4, source, 1, 1, 2, 2, {AC_SRC_OVER, 0, 255, 0})) << "out of the source";
    EXPECT_FALSE(AlphaBlend(target, 0, 0, -4, 4, source, 0, 0, 2, 2, {AC_SRC_OVER, 0, 255, 0}));
}

TEST(GdiGradientFill, GoesFromVertexToVertex) {
    TRIVERTEX corners[] = {{1, 1, 0x1000, 0x8000, 0xFF00, 0}, {5, 3, 0x5000, 0x0000, 0xFF00, 0}};
    GRADIENT_RECT rect = {0, 1};
    for (const ULONG mode : {GRADIENT_FILL_RECT_H, GRADIENT_FILL_RECT_V}) {
        const Picture picture(6, 4);
        EXPECT_TRUE(GradientFill(picture, corners, 2, &rect, 1, mode));
        EXPECT_EQ(picture.At(1, 1), RGB(0x10, 0x80, 0xFF));
        EXPECT_EQ(picture.At(3, 2), mode == GRADIENT_FILL_RECT_H ? RGB(0x30, 0x40, 0xFF) : RGB(0x30, 0x40, 0xFF));
        EXPECT_EQ(picture.At(4, 1), mode == GRADIENT_FILL_RECT_H ? RGB(0x40, 0x20, 0xFF) : RGB(0x10, 0x80, 0xFF));
        EXPECT_EQ(picture.At(5, 1), test::kWhite);
        EXPECT_EQ(picture.At(1, 3), test::kWhite);
    }
    rect.LowerRight = 2;
    EXPECT_FALSE(GradientFill(Picture(6, 4), corners, 2, &rect, 1, GRADIENT_FILL_RECT_H));
}

TEST(GdiCopies, AreFoundByNameInTheirModule) {
    const HMODULE module = LoadLibraryW(_T("msimg32.dll"));
    ASSERT_NE(module, nullptr);
    for (const char* name : {"AlphaBlend", "GradientFill"}) {
        EXPECT_NE(GetProcAddress(module, name), nullptr);
    }
    const auto blit =
        reinterpret_cast<decltype(&TransparentBlt)>(reinterpret_cast<void*>(GetProcAddress(module, "TransparentBlt")));
    Picture target(2, 1);
    ASSERT_NE(blit, nullptr);
    EXPECT_TRUE(blit(target, 0, 0, 2, 1, Picture(1, 1, test::kRed), 0, 0, 1, 1, test::kGreen));
    EXPECT_EQ(target.Art(), "rr\n");
    FreeLibrary(module);
}

TEST(GdiCopies, NeedASource) {
    const Picture picture(1, 1);
    EXPECT_FALSE(BitBlt(picture, 0, 0, 1, 1, nullptr, 0, 0, SRCCOPY));
    EXPECT_TRUE(BitBlt(picture, 0, 0, 1, 1, nullptr, 0, 0, BLACKNESS));
    EXPECT_EQ(picture.At(0, 0), test::kBlack);
    EXPECT_FALSE(BitBlt(nullptr, 0, 0, 1, 1, picture, 0, 0, SRCCOPY));
    const HDC empty = CreateCompatibleDC(nullptr);
    EXPECT_TRUE(BitBlt(empty, 0, 0, 1, 1, picture, 0, 0, SRCCOPY));
    DeleteDC(empty);
}
