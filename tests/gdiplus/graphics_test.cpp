// Contexts, clips and modes of a Graphics, and starting and ending GDI+.

#include "gdiplus/pictures.h"
#include "support/wine.h"

namespace {

using namespace test;

class GraphicsTest : public GdiplusTest {
protected:
    std::unique_ptr<Bitmap> row_;
    void SetUp() override {
        GdiplusTest::SetUp();
        row_ = MakeRow({Gray(40), Gray(100), Gray(200), Gray(60)});
    }
    void TearDown() override {
        row_.reset();
        GdiplusTest::TearDown();
    }
};

TEST_F(GraphicsTest, OriginsAndClipOfTheContextCountAsTheyWere) {
    MemoryCanvas canvas(8, 3, 0);
    SetWindowOrgEx(canvas.Context(), -1, 0, nullptr);
    SetViewportOrgEx(canvas.Context(), 2, 1, nullptr);
    const HRGN clip = CreateRectRgn(4, 0, 6, 3);
    SelectClipRgn(canvas.Context(), clip);
    Graphics graphics(canvas.Context());
    SetWindowOrgEx(canvas.Context(), 0, 0, nullptr);
    SetViewportOrgEx(canvas.Context(), 0, 0, nullptr);
    SelectClipRgn(canvas.Context(), nullptr);
    graphics.DrawImage(row_.get(), 0, 0);
    EXPECT_EQ(canvas.Row(0), "0 0 0 0 0 0 0 0");
    EXPECT_EQ(canvas.Row(1), "0 0 0 0 100 200 0 0");
    graphics.ResetClip();
    graphics.DrawImage(row_.get(), 0, 1);
    EXPECT_EQ(canvas.Row(2), "0 0 0 0 100 200 0 0");
    DeleteObject(clip);
}

TEST_F(GraphicsTest, ClipsAreCombined) {
    MemoryCanvas canvas(8, 1, 0);
    Graphics graphics(canvas.Context());
    const SolidBrush brush(Color(7, 7, 7));
    const struct {
        CombineMode mode;
        RectF rect;
        const char* expected;
    } steps[] = {
        {CombineModeReplace, {2, 0, 3, 1}, "0 0 7 7 7 0 0 0"},      {CombineModeUnion, {4, 0, 3, 1}, "0 0 7 7 7 7 7 0"},
        {CombineModeIntersect, {2.6F, 0, 3, 1}, "0 0 0 7 7 7 0 0"}, {CombineModeXor, {5, 0, 2, 1}, "0 0 0 7 7 0 7 0"},
        {CombineModeExclude, {4, 0, 1, 1}, "0 0 0 7 0 0 7 0"},      {CombineModeComplement, {1, 0, 4, 1}, "0 7 7 0 7 0 0 0"},
        {CombineModeReplace, {0, 0, 0, 0}, "0 0 0 0 0 0 0 0"},
    };
    for (const auto& step : steps) {
        graphics.SetClip(step.rect, step.mode);
        canvas.Fill(0);
        graphics.FillRectangle(&brush, 0, 0, 8, 1);
        EXPECT_EQ(canvas.Row(0), step.expected) << step.mode;
    }
    graphics.ResetClip();
    graphics.SetClip(Rect(3, 0, 2, 1), CombineModeExclude);
    graphics.FillRectangle(&brush, 0, 0, 8, 1);
    EXPECT_EQ(canvas.Row(0), "7 7 7 0 0 7 7 7");
}

TEST_F(GraphicsTest, ModesAreKeptSavedAndRestored) {
    Bitmap target(8, 1);
    Graphics graphics(&target);
    EXPECT_EQ(graphics.GetInterpolationMode(), InterpolationModeBilinear);
    EXPECT_EQ(graphics.GetPixelOffsetMode(), PixelOffsetModeDefault);
    graphics.SetPixelOffsetMode(PixelOffsetModeHighQuality);
    graphics.SetSmoothingMode(SmoothingModeAntiAlias);
    graphics.SetInterpolationMode(InterpolationModeHighQuality);
    EXPECT_EQ(graphics.GetInterpolationMode(), InterpolationModeHighQualityBicubic);
    EXPECT_EQ(graphics.SetInterpolationMode(InterpolationModeInvalid), InvalidParameter);
    EXPECT_EQ(graphics.GetInterpolationMode(), InterpolationModeHighQualityBicubic);
    graphics.SetClip(Rect(2, 0, 2, 1));
    const GraphicsState outer = graphics.Save();
    graphics.ResetClip();
    graphics.SetInterpolationMode(InterpolationModeNearestNeighbor);
    const GraphicsState inner = graphics.Save();
    graphics.SetSmoothingMode(SmoothingModeNone);
    EXPECT_EQ(graphics.Restore(outer), Ok);
    EXPECT_EQ(graphics.Restore(inner), Ok);  // forgotten
    EXPECT_EQ(graphics.GetInterpolationMode(), InterpolationModeHighQualityBicubic);
    EXPECT_EQ(graphics.GetPixelOffsetMode(), PixelOffsetModeHighQuality);
    EXPECT_EQ(graphics.GetSmoothingMode(), SmoothingModeAntiAlias);
    graphics.DrawImage(row_.get(), 0, 0);
    EXPECT_EQ(RowText(target, 0, 8), ". . 200 60 . . . .");
}

TEST_F(GraphicsTest, NothingToDrawOnIsSaid) {
    Graphics none(static_cast<HDC>(nullptr));
    EXPECT_EQ(none.GetLastStatus(), OutOfMemory);
    EXPECT_NE(none.DrawImage(row_.get(), 0, 0), Ok);
    Graphics nothing(static_cast<Image*>(nullptr));
    EXPECT_EQ(nothing.GetLastStatus(), InvalidParameter);
    Bitmap target(1, 1);
    Graphics graphics(&target);
    Bitmap failed(0, 1, PixelFormat32bppARGB);
    EXPECT_EQ(graphics.DrawImage(&failed, 0, 0), InvalidParameter);
}

TEST_F(GraphicsTest, TheContextIsLentAndTakenBack) {
    MemoryCanvas canvas(4, 1, 0);
    Graphics graphics(canvas.Context());
    const HDC lent = graphics.GetHDC();
    EXPECT_EQ(lent, canvas.Context());
    EXPECT_EQ(graphics.DrawImage(row_.get(), 0, 0), UnlessWine(ObjectBusy, Ok));
    graphics.ReleaseHDC(lent);
    graphics.DrawImage(row_.get(), 0, 0);
    EXPECT_EQ(canvas.Row(0), "40 100 200 60");
}

TEST(StartupTest, EveryStartIsShutDown) {
    const GdiplusStartupInput input;
    GdiplusStartupInput unknown;
    unknown.GdiplusVersion = 3;
    ULONG_PTR first = 0;
    ULONG_PTR second = 0;
    EXPECT_EQ(GdiplusStartup(nullptr, &input, nullptr), InvalidParameter);
    EXPECT_EQ(GdiplusStartup(&first, nullptr, nullptr), InvalidParameter);
    EXPECT_EQ(GdiplusStartup(&first, &unknown, nullptr), UnsupportedGdiplusVersion);
    ASSERT_EQ(GdiplusStartup(&first, &input, nullptr), Ok);
    ASSERT_EQ(GdiplusStartup(&second, &input, nullptr), Ok);
    GdiplusShutdown(first);
    {
        Bitmap made(1, 1);
        EXPECT_EQ(made.GetLastStatus(), Ok);
    }
    GdiplusShutdown(second);
    const Status documented = UnlessWine(GdiplusNotInitialized, Ok);
    Bitmap late(1, 1);
    EXPECT_EQ(late.GetLastStatus(), documented);
    MemoryCanvas canvas(1, 1, 0);
    Graphics graphics(canvas.Context());
    EXPECT_EQ(graphics.GetLastStatus(), documented);
    EXPECT_EQ(graphics.Clear(Color(1, 2, 3)), documented);
    UINT count = 0;
    UINT size = 0;
    EXPECT_EQ(GetImageEncodersSize(&count, &size), documented);
}

}  // namespace
