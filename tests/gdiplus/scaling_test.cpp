// Where DrawImage takes its pixels from.

#include <memory>

#include "gdiplus/pictures.h"

namespace {

using namespace test;

class ScalingTest : public GdiplusTest {
protected:
    static constexpr INT kWidth = 12;

    // One row of 40 100 200 60 80 20, drawn on a row of 9s that is replaced.
    std::string Draw(InterpolationMode mode, PixelOffsetMode offset, REAL x, REAL width, REAL source, REAL source_width) {
        const auto row = MakeRow({Gray(40), Gray(100), Gray(200), Gray(60), Gray(80), Gray(20)});
        Bitmap target(kWidth, 1);
        Graphics graphics(&target);
        graphics.Clear(Color(Gray(9)));
        graphics.SetCompositingMode(CompositingModeSourceCopy);
        graphics.SetInterpolationMode(mode);
        graphics.SetPixelOffsetMode(offset);
        EXPECT_EQ(graphics.DrawImage(row.get(), RectF(x, 0, width, 1), source, 0, source_width, 1, UnitPixel), Ok);
        return RowText(target, 0, kWidth);
    }
};

TEST_F(ScalingTest, PixelsComeFromWhereTheModeSays) {
    constexpr auto smooth = InterpolationModeBilinear;
    constexpr auto nearest = InterpolationModeNearestNeighbor;
    constexpr auto none = PixelOffsetModeNone;
    constexpr auto half = PixelOffsetModeHalf;
    const struct {
        const char* what;
        InterpolationMode mode;
        PixelOffsetMode offset;
        REAL x, width, source, source_width;
        const char* expected;
    } cases[] = {
        {"twice", smooth, none, 1, 4, 1, 2, "9 100 150 200 129 9 9 9 9 9 9 9"},
        {"twice, by default", InterpolationModeDefault, none, 1, 4, 1, 2, "9 100 150 200 129 9 9 9 9 9 9 9"},
        {"bicubic", InterpolationModeHighQualityBicubic, none, 1, 4, 1, 2, "9 100 150 200 129 9 9 9 9 9 9 9"},
        {"the offset does not move it", smooth, half, 1, 4, 1, 2, "9 100 150 200 129 9 9 9 9 9 9 9"},
        {"half", smooth, none, 1, 3, 0, 6, "9 40 200 80 9 9 9 9 9 9 9 9"},
        {"fades behind the last pixel", smooth, none, 2, 4, 4, 2, "9 9 80 49 20 20/127 9 9 9 9 9 9"},
        {"begins between pixels", smooth, none, 1.3F, 6, 1, 3, "9 . 134 185 151 80 66 9 9 9 9 9"},
        {"half a pixel goes up", smooth, none, 2.5F, 3, 0, 6, "9 9 9 100 60 20 9 9 9 9 9 9"},
        {"backwards", smooth, none, 8, -6, 1, 3, "9 9 . 70 60 129 200 150 9 9 9 9"},
        {"source backwards", smooth, none, 1, 6, 4, -3, "9 . 70 60 129 200 150 9 9 9 9 9"},
        {"both backwards", smooth, none, 8, -6, 4, -3, "9 9 100 150 200 129 60 70 9 9 9 9"},
        {"source begins before the picture", smooth, none, 2, 9, -1, 6, "9 9 . 40/170 60 100 166 153 60 73 60 9"},
        {"nearest", nearest, none, 1, 6, 1, 3, "9 100 200 200 60 60 80 9 9 9 9 9"},
        {"nearest, by high speed", nearest, PixelOffsetModeHighSpeed, 1, 6, 1, 3, "9 100 200 200 60 60 80 9 9 9 9 9"},
        {"nearest by halves", nearest, half, 1, 6, 1, 3, "9 100 100 200 200 60 60 9 9 9 9 9"},
        {"high quality is by halves", nearest, PixelOffsetModeHighQuality, 1, 6, 1, 3, "9 100 100 200 200 60 60 9 9 9 9 9"},
        {"nearest backwards", nearest, none, 8, -6, 1, 3, "9 9 . 80 60 60 200 200 9 9 9 9"},
        {"unscaled", smooth, none, 1, 3, 1, 3, "9 100 200 60 9 9 9 9 9 9 9 9"},
        {"unscaled between target pixels", smooth, none, 2.5F, 3, 1, 3, "9 9 9 100 200 60 9 9 9 9 9 9"},
        {"unscaled between source pixels", smooth, none, 1, 3, 1.75F, 3, "9 100 200 60 9 9 9 9 9 9 9 9"},
        {"unscaled beyond the picture", smooth, none, 1, 4, 4, 4, "9 80 20 . . 9 9 9 9 9 9 9"},
        {"left of the target", smooth, none, -2, 4, 0, 2, "100 150 9 9 9 9 9 9 9 9 9 9"},
        {"no width", smooth, none, 3, 0, 0, 4, "9 9 9 9 9 9 9 9 9 9 9 9"},
        {"no source", smooth, none, 3, 4, 1, 0, "9 9 9 9 9 9 9 9 9 9 9 9"},
        {"less than half a pixel", smooth, none, 1, 0.4F, 0, 4, "9 9 9 9 9 9 9 9 9 9 9 9"},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(Draw(row.mode, row.offset, row.x, row.width, row.source, row.source_width), row.expected);
    }
}

TEST_F(ScalingTest, BothAxesAreFiltered) {
    Bitmap source(2, 2);
    const int corners[2][2] = {{0, 255}, {254, 3}};
    for (int i = 0; i < 4; ++i) {
        source.SetPixel(i % 2, i / 2, Color(Gray(corners[i / 2][i % 2])));
    }
    for (const PixelFormat format : {PixelFormat32bppARGB, PixelFormat24bppRGB}) {
        Bitmap target(14, 14, format);
        Graphics graphics(&target);
        const std::unique_ptr<Bitmap> copy(source.Clone(0, 0, 2, 2, format));
        graphics.DrawImage(copy.get(), RectF(0, 0, 14, 14), 0, 0, 2, 2, UnitPixel);
        EXPECT_EQ(RowText(target, 0, 7), "0 36 73 109 146 182 219");
        EXPECT_EQ(RowText(target, 3, 7), "108 113 119 124 130 135 141");
        EXPECT_EQ(RowText(target, 6, 7), "218 192 166 140 115 89 63");
    }
}

// Colours are weighed by alpha: what is transparent does not darken its neighbour.
TEST_F(ScalingTest, AlphaWeighsColours) {
    const auto source = MakeRow({0xFF285078, 0x40C80A00});
    Bitmap target(8, 1);
    Graphics graphics(&target);
    graphics.DrawImage(source.get(), RectF(0, 0, 8, 1), 0, 0, 2, 1, UnitPixel);
    const ARGB expected[] = {0xFF285078, 0xCF344A6E, 0x9F48415F, 0x6F6C3244, 0x40C80A00, 0x2FC80A00, 0x1FC80A00, 0x10C80A00};
    for (INT x = 0; x < 8; ++x) {
        EXPECT_EQ(PixelAt(target, x, 0), expected[x]) << x;
    }
}

TEST_F(ScalingTest, NumbersThatAreNoneAreRefused) {
    const auto source = MakeRow({Gray(1)});
    Bitmap target(2, 1);
    Graphics graphics(&target);
    EXPECT_EQ(graphics.DrawImage(static_cast<Image*>(nullptr), 0, 0), InvalidParameter);
    EXPECT_EQ(graphics.GetLastStatus(), InvalidParameter);
    EXPECT_EQ(graphics.GetLastStatus(), Ok);
    for (const REAL away : {1e9F, -1e9F, 3e38F}) {  // no crash, nothing drawn
        graphics.DrawImage(source.get(), RectF(away, away, 10, 10), 0, 0, 1, 1, UnitPixel);
        graphics.DrawImage(source.get(), RectF(1, 0, 1, 1), away, 0, 1, 1, UnitPixel);
    }
    EXPECT_EQ(RowText(target, 0, 2), ". .");
}

}  // namespace
