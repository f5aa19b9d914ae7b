// Loading: what is kept and what is refused.

#include "skin_fixture.h"

namespace {

using test::PAPER;
using test::POSITIONS;
using test::SkinTest;

TEST_F(SkinTest, IsEmptyAtFirstAndAfterRelease) {
    const auto expect_empty = [&] {
        EXPECT_FALSE(skin_.HasButtonBitmap() || skin_.HasButtonCaptionBitmap() || skin_.HasWindowBitmap() ||
                     skin_.HasWindowBackgroundBitmap());
        EXPECT_EQ(skin_.GetButtonBitmapInfo().nCorner + skin_.GetWindowBitmapInfo().nPadding, 0U);
        EXPECT_EQ(skin_.GetWindowBackgroundBitmapInfo().nBitmapID + skin_.GetButtonCaptionBitmapInfo().nBitmapID, 0U);
        EXPECT_EQ(skin_.GetButtonCaptionBitmapInfo().crTransparent, 0xFFFFFFFE);
    };
    expect_empty();
    skin_.SetCaptionTextColors(1, 2, 3, 4);
    SetAll();
    EXPECT_TRUE(skin_.HasButtonBitmap() && skin_.HasButtonCaptionBitmap() && skin_.HasWindowBitmap() &&
                skin_.HasWindowBackgroundBitmap());
    EXPECT_EQ(skin_.GetWindowBitmapInfo().nPadding, 2U);
    EXPECT_EQ(skin_.GetButtonCaptionBitmapInfo().nGlyphHeight, 4U);
    skin_.Release();
    expect_empty();

    DWORD colors[4];
    skin_.GetCaptionTextColors(colors[0], colors[1], colors[2], colors[3]);
    EXPECT_EQ(colors[0] * 1000 + colors[1] * 100 + colors[2] * 10 + colors[3], 1234U);
}

TEST_F(SkinTest, HasTheSystemsCaptionColorsUnlessToldOtherwise) {
    constexpr DWORD NONE = 0xFFFFFFFF;
    const DWORD text = GetSysColor(COLOR_BTNTEXT);
    const DWORD shadow = GetSysColor(COLOR_BTNSHADOW);
    const DWORD highlight = GetSysColor(COLOR_BTNHIGHLIGHT);
    const struct {
        DWORD set[4], expected[4];
    } rows[] = {{{NONE, NONE, NONE, NONE}, {text, shadow, shadow, highlight}},
                {{0xFFFFFFFE, 1, NONE, 2}, {0xFFFFFFFE, 1, shadow, 2}},
                {{3, NONE, 4, NONE}, {3, shadow, 4, highlight}}};
    DWORD seen[4];
    CSkin().GetCaptionTextColors(seen[0], seen[1], seen[2], seen[3]);
    EXPECT_TRUE(std::equal(seen, seen + 4, rows[0].expected));
    for (const auto& row : rows) {
        skin_.SetCaptionTextColors(row.set[0], row.set[1], row.set[2], row.set[3]);
        skin_.GetCaptionTextColors(seen[0], seen[1], seen[2], seen[3]);
        EXPECT_TRUE(std::equal(seen, seen + 4, row.expected)) << &row - rows;
    }
}

// 0, missing, cut to a number that exists by MAKEINTRESOURCE, and the damaged ones of resources.rc.
class RefusedBitmaps : public SkinTest, public testing::WithParamInterface<UINT> {};

TEST_P(RefusedBitmaps, LeaveEverythingAsItWas) {
    SkinBitmapInfo bad{GetParam(), 1, 1, 1, 1, 1};
    SkinCaptionBitmapInfo other{POSITIONS, 7, 7};
    for (const bool loaded : {false, true}) {
        if (loaded) {
            SetAll();
        }
        EXPECT_FALSE(skin_.SetButtonBitmapInfo(bad, other) || skin_.SetWindowBitmapInfo(bad) ||
                     skin_.SetWindowBackgroundBitmapInfo(bad));
        EXPECT_EQ(skin_.HasButtonBitmap() != FALSE, loaded);
        EXPECT_EQ(skin_.HasButtonCaptionBitmap() != FALSE, loaded);
        EXPECT_EQ(skin_.HasWindowBitmap() != FALSE, loaded);
        EXPECT_EQ(skin_.HasWindowBackgroundBitmap() != FALSE, loaded);
        EXPECT_EQ(skin_.GetButtonBitmapInfo().nCellWidth, loaded ? 13U : 0U);
        EXPECT_EQ(skin_.GetButtonCaptionBitmapInfo().nGlyphWidth, loaded ? 5U : 0U);
        EXPECT_EQ(skin_.GetWindowBitmapInfo().nInnerCorner, loaded ? 3U : 0U);
        EXPECT_EQ(skin_.GetWindowBackgroundBitmapInfo().nCellHeight, loaded ? 128U : 0U);
    }

    // The glyph alone: 0 is none.
    SkinBitmapInfo next{POSITIONS, 12, 10, 2};
    SkinCaptionBitmapInfo badGlyph{GetParam(), 1, 1};
    const bool none = GetParam() == 0;
    EXPECT_EQ(skin_.SetButtonBitmapInfo(next, badGlyph) != FALSE, none);
    EXPECT_EQ(skin_.GetButtonBitmapInfo().nCellWidth, 12U);
    EXPECT_EQ(skin_.GetButtonCaptionBitmapInfo().nGlyphWidth, none ? 1U : 5U);
    EXPECT_TRUE(skin_.HasButtonCaptionBitmap());
    EXPECT_EQ(skin_.DrawButtonBitmap(Target(), CSkin::SkinNormal, CRect(0, 0, 12, 10)), Gdiplus::Ok);
    EXPECT_EQ(PixelAt(1, 1), test::PositionColor(1, 1));
}

INSTANTIATE_TEST_SUITE_P(Each, RefusedBitmaps,
                         testing::Values(0, 99, 0x10000 + POSITIONS, 200, 201, 202, 203, 204, 205, 206, 207));

}  // namespace
