// What is kept of scaled pieces.

#include <thread>
#include <vector>

#include "gdiplus/pictures.h"
#include "win32/gdiplus/piece_cache.h"

namespace {

using namespace test;

class LinuxPieceCacheTest : public GdiplusTest {
protected:
    static void Draw(Bitmap& source, Graphics& graphics, REAL size, int times) {
        for (int i = 0; i < times; ++i) {
            ASSERT_EQ(graphics.DrawImage(&source, RectF(0, 0, size, size), 0, 0, 16, 16, UnitPixel), Ok);
        }
    }
    static std::size_t BytesFor(std::size_t side) { return side * side * sizeof(ARGB); }
};

TEST_F(LinuxPieceCacheTest, PiecesAreKeptFromTheSecondDrawingOnAndEndWithTheirPicture) {
    Bitmap target(200, 200);
    Graphics graphics(&target);
    const std::size_t before = kawin::CountPieceBytes();
    {
        Bitmap source(16, 16, PixelFormat24bppRGB);
        Draw(source, graphics, 100, 1);
        EXPECT_EQ(kawin::CountPieceBytes(), before);
        Draw(source, graphics, 100, 1);
        const std::size_t kept = kawin::CountPieceBytes() - before;
        EXPECT_GE(kept, BytesFor(100));
        Draw(source, graphics, 100, 2);
        Draw(source, graphics, 16, 3);  // unscaled
        EXPECT_EQ(kawin::CountPieceBytes() - before, kept);
        source.SetPixel(0, 0, Color(1, 2, 3));
        Draw(source, graphics, 100, 1);
        EXPECT_EQ(kawin::CountPieceBytes(), before);
        Draw(source, graphics, 100, 1);
        EXPECT_EQ(kawin::CountPieceBytes() - before, kept);
    }
    EXPECT_EQ(kawin::CountPieceBytes(), before);
}

TEST_F(LinuxPieceCacheTest, ThereIsNeverMoreThanTheLimit) {
    constexpr int kSide = 1500;  // 9 MB
    Bitmap source(16, 16, PixelFormat24bppRGB);
    Bitmap target(kSide + 10, kSide + 10, PixelFormat24bppRGB);
    Graphics graphics(&target);
    for (int i = 0; i < 6; ++i) {
        Draw(source, graphics, static_cast<REAL>(kSide + i), 2);
        EXPECT_LE(kawin::CountPieceBytes(), kawin::kMostPieceBytes);
    }
    EXPECT_GE(kawin::CountPieceBytes(), 3 * BytesFor(kSide));
}

// Several threads draw from one picture, each on its own.
TEST_F(LinuxPieceCacheTest, ThreadsShareWhatIsKept) {
    Bitmap source(16, 16, PixelFormat24bppRGB);
    Graphics(&source).Clear(Color(10, 20, 30));
    std::vector<std::thread> threads;
    std::vector<int> wrong(4, 0);
    for (std::size_t thread = 0; thread < wrong.size(); ++thread) {
        threads.emplace_back([&, thread] {
            Bitmap target(80, 80, PixelFormat24bppRGB);
            Graphics graphics(&target);
            for (int i = 0; i < 200; ++i) {
                const int side = 40 + i % 40;
                graphics.Clear(Color(0, 0, 0));
                graphics.DrawImage(&source, Rect(0, 0, side, side), 0, 0, 16, 16, UnitPixel);
                wrong[thread] += PixelAt(target, side / 2, side / 2) != 0xFF0A141E ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(wrong, std::vector<int>(4, 0));
}

}  // namespace
