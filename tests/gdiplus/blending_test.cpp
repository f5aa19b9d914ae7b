// What drawing does to the pixels that are there.

#include "gdiplus/pictures.h"

namespace {

using namespace test;

class BlendingTest : public GdiplusTest {};

constexpr ARGB kSource[] = {0x80FF8040, 0x01FFFFFF, 0xFE102030, 0x00FFFFFF, 0x7FC8C8C8, 0xFFFF0000};
constexpr INT kCount = 6;

std::unique_ptr<Bitmap> Source(PixelFormat format = PixelFormat32bppARGB) {
    return MakeRow({kSource[0], kSource[1], kSource[2], kSource[3], kSource[4], kSource[5]}, format);
}

TEST_F(BlendingTest, BitmapsBlendStraightPixels) {
    constexpr ARGB opaque = 0xFF30A0F0;
    const struct {
        PixelFormat format;
        ARGB before;
        CompositingMode mode;
        ARGB expected[kCount];
    } cases[] = {
        {PixelFormat32bppARGB,
         opaque,
         CompositingModeSourceOver,
         {0xFF978F97, 0xFF30A0F0, 0xFF102030, 0xFF30A0F0, 0xFF7BB3DC, 0xFFFF0000}},
        {PixelFormat32bppRGB,
         opaque,
         CompositingModeSourceOver,
         {0xFF978F97, 0xFF30A0F0, 0xFF102030, 0xFF30A0F0, 0xFF7BB3DC, 0xFFFF0000}},
        {PixelFormat24bppRGB,
         opaque,
         CompositingModeSourceOver,
         {0xFF978F97, 0xFF30A0F0, 0xFF102030, 0xFF30A0F0, 0xFF7BB3DC, 0xFFFF0000}},
        {PixelFormat32bppARGB,
         0x8030A0F0,
         CompositingModeSourceOver,
         {0xBFBA8A7A, 0x8031A0F0, 0xFE102030, 0x8030A0F0, 0xBF95BAD5, 0xFFFF0000}},
        {PixelFormat32bppARGB,
         opaque,
         CompositingModeSourceCopy,
         {0x80FF8040, 0x01FFFFFF, 0xFE102030, 0x00000000, 0x7FC8C8C8, 0xFFFF0000}},
        {PixelFormat24bppRGB,
         opaque,
         CompositingModeSourceCopy,
         {0xFFFF8040, 0xFFFFFFFF, 0xFF102030, 0xFF000000, 0xFFC8C8C8, 0xFFFF0000}},
    };
    const auto source = Source();
    for (const auto& row : cases) {
        Bitmap target(kCount, 1, row.format);
        Graphics graphics(&target);
        graphics.Clear(Color(row.before));
        graphics.SetCompositingMode(row.mode);
        graphics.DrawImage(source.get(), 0, 0);
        for (INT x = 0; x < kCount; ++x) {
            EXPECT_EQ(PixelAt(target, x, 0), row.expected[x]) << std::hex << row.format << " mode " << row.mode << " at " << x;
        }
    }
}

TEST_F(BlendingTest, ContextsBlendPremultipliedPixels) {
    const ARGB over[] = {0x989098, 0x31A0F0, 0x102131, 0x30A0F0, 0x7CB4DC, 0xFF0000};
    const ARGB copied[] = {0x804020, 0x010101, 0x102030, 0x000000, 0x646464, 0xFF0000};
    const auto source = Source();
    MemoryCanvas canvas(8, 2, 0x30A0F0);
    Graphics graphics(canvas.Context());
    graphics.DrawImage(source.get(), 1, 0);
    graphics.SetCompositingMode(CompositingModeSourceCopy);
    graphics.DrawImage(source.get(), 1, 1);
    for (INT x = 0; x < kCount; ++x) {
        EXPECT_EQ(canvas.At(1 + x, 0) & 0xFFFFFF, over[x]) << x;
        EXPECT_EQ(canvas.At(1 + x, 1) & 0xFFFFFF, copied[x]) << x;
    }
    EXPECT_EQ(canvas.At(0, 0) & 0xFFFFFF, 0x30A0F0U);
    EXPECT_EQ(canvas.At(7, 0) & 0xFFFFFF, 0x30A0F0U);
}

// A picture without alpha is copied; enlarged, it fades behind its last row and column.
TEST_F(BlendingTest, OpaquePicturesFadeAtTheirEndOnly) {
    const auto source = Source(PixelFormat24bppRGB);
    MemoryCanvas canvas(8, 2, 0x30A0F0);
    Graphics graphics(canvas.Context());
    graphics.DrawImage(source.get(), RectF(0, 0, 8, 2), 0, 0, 2, 1, UnitPixel);
    const ARGB expected[2][8] = {{0xFF8040, 0xFF9F6F, 0xFFBF9F, 0xFFDFCF, 0xFFFFFF, 0xC3C7CB, 0x878F97, 0x4B5763},
                                 {0x979098, 0x979FAF, 0x97AFC7, 0x97BFDF, 0x97CFF7, 0x79B3DD, 0x5B97C3, 0x3D7BA9}};
    for (int i = 0; i < 16; ++i) {
        for (int shift = 0; shift < 24; shift += 8) {
            EXPECT_NEAR(static_cast<int>(canvas.At(i % 8, i / 8) >> shift & 0xFF),
                        static_cast<int>(expected[i / 8][i % 8] >> shift & 0xFF), i / 8 == 0 ? 0 : 1)
                << i;
        }
    }
}

TEST_F(BlendingTest, RectanglesAreFilledToTheNearestPixel) {
    const struct {
        REAL x, width;
        const char* expected;
    } cases[] = {{1, 2.5F, "0 3 3 3 0 0"}, {1.4F, 2.2F, "0 3 3 3 0 0"}, {1.5F, 2, "0 0 3 3 0 0"},
                 {4, -2, "0 0 0 0 0 0"},   {1, 0, "0 0 0 0 0 0"},       {-5, 100, "3 3 3 3 3 3"}};
    const SolidBrush brush(Color(3, 3, 3));
    for (const auto& row : cases) {
        MemoryCanvas canvas(6, 1, 0);
        Graphics graphics(canvas.Context());
        EXPECT_EQ(graphics.FillRectangle(&brush, RectF(row.x, 0, row.width, 1)), Ok);
        EXPECT_EQ(canvas.Row(0), row.expected) << row.x;
    }
    MemoryCanvas canvas(2, 1, 0x30A0F0);
    Graphics graphics(canvas.Context());
    const SolidBrush half(Color(0x80FF0000));
    graphics.FillRectangle(&half, 0, 0, 1, 1);
    EXPECT_EQ(canvas.At(0, 0) & 0xFFFFFF, 0x985078U);
    graphics.Clear(Color(0x80, 0, 255, 0));
    EXPECT_EQ(canvas.At(1, 0) & 0xFFFFFF, 0x008000U);
    EXPECT_EQ(graphics.FillRectangle(static_cast<Brush*>(nullptr), 0, 0, 1, 1), InvalidParameter);
}

// Drawn three times over, the picture changed, then again: what was kept is not shown any more.
TEST_F(BlendingTest, AChangedPictureIsDrawnAsItIs) {
    Bitmap source(20, 20, PixelFormat24bppRGB);
    Bitmap target(40, 40, PixelFormat32bppARGB);
    Graphics graphics(&target);
    const auto drawn = [&] {
        for (int i = 0; i < 3; ++i) {
            graphics.Clear(Color(1, 2, 3));
            graphics.DrawImage(&source, RectF(0, 0, 40, 40), 0, 0, 20, 20, UnitPixel);
        }
        return PixelAt(target, 20, 20);
    };
    EXPECT_EQ(drawn(), 0xFF000000);
    source.SetPixel(10, 10, Color(10, 20, 30));
    EXPECT_EQ(drawn(), 0xFF0A141E);
    Graphics(&source).Clear(Color(40, 50, 60));
    EXPECT_EQ(drawn(), 0xFF28323C);
    BitmapData data;
    source.LockBits(nullptr, ImageLockModeRead | ImageLockModeWrite, PixelFormat32bppRGB, &data);
    static_cast<ARGB*>(data.Scan0)[10 * data.Stride / 4 + 10] = 0xFF778899;
    source.UnlockBits(&data);
    EXPECT_EQ(drawn(), 0xFF778899);
    EXPECT_EQ(PixelAt(target, 22, 20), 0xFF28323C);
}

TEST_F(BlendingTest, APictureCanBeDrawnOnItself) {
    const auto row = MakeRow({Gray(1), Gray(2), Gray(3), Gray(4)});
    Graphics graphics(row.get());
    EXPECT_EQ(graphics.DrawImage(row.get(), 1, 0), Ok);
    EXPECT_EQ(RowText(*row, 0, 4), "1 1 2 3");
}

}  // namespace
