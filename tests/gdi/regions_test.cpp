// Regions and clips against a model: a grid of cells that are in or out.

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <array>
#include <bitset>
#include <cstring>
#include <random>
#include <vector>

#include "gdi/picture.h"
#include "support/wine.h"

namespace {

using test::Picture;
using test::Region;

constexpr int kSide = 24;

// Cells from -kSide to kSide in both directions.
class Grid {
public:
    Grid() = default;
    explicit Grid(const RECT& rect) {
        ForEach([&](int x, int y, auto cell) {
            cell = x >= std::min(rect.left, rect.right) && x < std::max(rect.left, rect.right) &&
                   y >= std::min(rect.top, rect.bottom) && y < std::max(rect.top, rect.bottom);
        });
    }

    bool At(int x, int y) const { return x >= -kSide && x < kSide && y >= -kSide && y < kSide && cells_[Index(x, y)]; }
    bool Any() const { return cells_.any(); }
    Grid Moved(int dx, int dy) const {
        Grid moved;
        moved.ForEach([&](int x, int y, auto cell) { cell = At(x - dx, y - dy); });
        return moved;
    }
    Grid Combined(const Grid& other, int mode) const {
        Grid result;
        switch (mode) {
            case RGN_AND:
                result.cells_ = cells_ & other.cells_;
                break;
            case RGN_OR:
                result.cells_ = cells_ | other.cells_;
                break;
            case RGN_XOR:
                result.cells_ = cells_ ^ other.cells_;
                break;
            case RGN_DIFF:
                result.cells_ = cells_ & ~other.cells_;
                break;
            default:
                result.cells_ = other.cells_;
                break;
        }
        return result;
    }
    RECT Box() const {
        RECT box = {kSide, kSide, -kSide, -kSide};
        for (int y = -kSide; y < kSide; ++y) {
            for (int x = -kSide; x < kSide; ++x) {
                if (At(x, y)) {
                    box = {std::min<LONG>(box.left, x), std::min<LONG>(box.top, y), std::max<LONG>(box.right, x + 1),
                           std::max<LONG>(box.bottom, y + 1)};
                }
            }
        }
        return Any() ? box : RECT{};
    }
    // Of the answers of a function that tells how much is in a region.
    int Kind() const { return !Any() ? NULLREGION : cells_ == Grid(Box()).cells_ ? SIMPLEREGION : COMPLEXREGION; }
    bool operator==(const Grid&) const = default;

    template <class Each>
    void ForEach(Each&& each) {
        for (int y = -kSide; y < kSide; ++y) {
            for (int x = -kSide; x < kSide; ++x) {
                each(x, y, cells_[Index(x, y)]);
            }
        }
    }

private:
    static std::size_t Index(int x, int y) { return static_cast<std::size_t>((y + kSide) * 2 * kSide + x + kSide); }
    std::bitset<4 * kSide * kSide> cells_;
};

Grid GridOf(HRGN region) {
    Grid grid;
    grid.ForEach([&](int x, int y, auto cell) { cell = PtInRegion(region, x, y) != FALSE; });
    return grid;
}

class Dice {
public:
    int Roll(int least, int most) { return std::uniform_int_distribution(least, most)(engine_); }
    RECT Rect() { return {Roll(-9, 9), Roll(-9, 9), Roll(-9, 9), Roll(-9, 9)}; }

private:
    std::mt19937 engine_{20261121};
};

bool SameRect(const RECT& a, const RECT& b) {
    return std::memcmp(&a, &b, sizeof(RECT)) == 0;
}

}  // namespace

TEST(GdiRegions, CombineAsSetsDo) {
    Dice dice;
    const Region region(CreateRectRgn(0, 0, 0, 0));
    const Region other(CreateRectRgn(0, 0, 0, 0));
    Grid model;
    for (int step = 0; step < 400; ++step) {
        const RECT rect = dice.Rect();
        const int mode = dice.Roll(RGN_AND, RGN_DIFF);
        SetRectRgn(other, rect.left, rect.top, rect.right, rect.bottom);
        int kind;
        if (model.Any() && step % 5 == 0) {  // towards the middle, so that nothing leaves the model
            const int dx = model.Box().left > 0 ? -2 : 1;
            const int dy = model.Box().top > 0 ? -2 : 1;
            model = model.Moved(dx, dy);
            kind = OffsetRgn(region, dx, dy);
        } else {
            model = model.Combined(Grid(rect), mode == RGN_AND && step % 7 != 0 ? RGN_OR : mode);
            kind = CombineRgn(region, region, other, mode == RGN_AND && step % 7 != 0 ? RGN_OR : mode);
        }
        ASSERT_EQ(kind, model.Kind()) << "step " << step;
        ASSERT_TRUE(GridOf(region) == model) << "step " << step;
        RECT box;
        ASSERT_EQ(GetRgnBox(region, &box), kind);
        ASSERT_TRUE(SameRect(box, model.Box())) << "step " << step;
        const bool empty = rect.left == rect.right || rect.top == rect.bottom;
        ASSERT_TRUE(empty || (RectInRegion(region, &rect) != FALSE) == model.Combined(Grid(rect), RGN_AND).Any())
            << "step " << step;
    }
}

TEST(GdiRegions, TravelAsRectangles) {
    const Region region(CreateRectRgn(-9, -8, 12, 10));
    CombineRgn(region, region, Region(CreateRectRgn(0, 0, 30, 3)), RGN_XOR);
    const DWORD size = GetRegionData(region, 0, nullptr);
    std::vector<char> bytes(size + 8);
    auto* const data = reinterpret_cast<RGNDATA*>(bytes.data());
    EXPECT_EQ(GetRegionData(region, size - 1, data), 0u);
    ASSERT_EQ(GetRegionData(region, size, data), size);
    const Region again(ExtCreateRegion(nullptr, size, data));
    EXPECT_TRUE(EqualRgn(region, again));
    EXPECT_EQ(OffsetRgn(again, 1, 0), COMPLEXREGION);
    EXPECT_FALSE(EqualRgn(region, again));
}

TEST(GdiRegions, HaveTheShapeOfPolygonsAndCurves) {
    const POINT square[] = {{0, 0}, {9, 0}, {9, 9}, {0, 9}};
    EXPECT_TRUE(GridOf(Region(CreatePolygonRgn(square, 4, ALTERNATE))) == Grid({0, 0, 9, 9}));
    // A square inside another in the same direction: a hole for ALTERNATE only.
    const POINT nested[] = {{0, 0}, {12, 0}, {12, 12}, {0, 12}, {0, 0}, {3, 3}, {9, 3}, {9, 9}, {3, 9}, {3, 3}};
    EXPECT_TRUE(GridOf(Region(CreatePolygonRgn(nested, 10, WINDING))) == Grid({0, 0, 12, 12}));
    EXPECT_TRUE(GridOf(Region(CreatePolygonRgn(nested, 10, ALTERNATE))) ==
                Grid({0, 0, 12, 12}).Combined(Grid({3, 3, 9, 9}), RGN_DIFF));
    const POINT triangle[] = {{5, 0}, {10, 10}, {0, 10}};
    const Grid cone = GridOf(Region(CreatePolygonRgn(triangle, 3, ALTERNATE)));
    EXPECT_FALSE(cone.At(5, 0));
    EXPECT_TRUE(cone.At(5, 1) && !cone.At(4, 1) && !cone.At(6, 1));
    EXPECT_TRUE(cone.At(1, 9) && cone.At(9, 9) && !cone.At(0, 9) && !cone.At(5, 10));

    // Without last column and row, and the same from all sides.
    const Grid ellipse = GridOf(Region(CreateEllipticRgn(-8, -6, 9, 7)));
    EXPECT_TRUE(SameRect(ellipse.Box(), {-8, -6, 8, 6}));
    for (int y = -6; y < 6; ++y) {
        for (int x = -8; x < 8; ++x) {
            EXPECT_EQ(ellipse.At(x, y), ellipse.At(-1 - x, -1 - y));
        }
    }
    EXPECT_FALSE(ellipse.At(-8, -6));
}

TEST(GdiRegions, RefuseWhatIsNone) {
    const Region region(CreateRectRgn(0, 0, 5, 5));
    RECT box;
    EXPECT_EQ(CombineRgn(region, region, region, 6), RGN_ERROR);
    EXPECT_EQ(CombineRgn(region, region, nullptr, RGN_OR), RGN_ERROR);
    EXPECT_EQ(CombineRgn(region, region, nullptr, RGN_COPY), SIMPLEREGION);
    EXPECT_EQ(GetRgnBox(static_cast<HRGN>(GetStockObject(WHITE_BRUSH)), &box), RGN_ERROR);
    EXPECT_FALSE(PtInRegion(nullptr, 0, 0));
    EXPECT_FALSE(EqualRgn(region, nullptr));
}

// Random scripts of origins and clips; after each step a fill must change just the cells of the model.
TEST(GdiClips, CutDrawingWhateverTheOrigins) {
    Dice dice;
    constexpr int kPicture = 16;
    const Picture picture(kPicture, kPicture);
    const Grid whole({0, 0, kPicture, kPicture});
    const Region region(CreateRectRgn(0, 0, 0, 0));
    Grid clip = whole;
    POINT shift = {};  // logical to device
    for (int step = 0; step < 300; ++step) {
        const RECT rect = {dice.Roll(-4, 14), dice.Roll(-4, 14), dice.Roll(4, 18), dice.Roll(4, 18)};
        const Grid device = Grid(rect).Moved(shift.x, shift.y);
        switch (step % 10 == 0 ? 0 : dice.Roll(1, 6)) {
            case 0:
                SelectClipRgn(picture, nullptr);
                clip = whole;
                break;
            case 1:
                SetWindowOrgEx(picture, dice.Roll(-3, 3), dice.Roll(-3, 3), nullptr);
                break;
            case 2:
                SetViewportOrgEx(picture, dice.Roll(-3, 3), dice.Roll(-3, 3), nullptr);
                break;
            case 3:
                clip = clip.Combined(device, RGN_AND);
                EXPECT_EQ(IntersectClipRect(picture, rect.left, rect.top, rect.right, rect.bottom), clip.Kind());
                break;
            case 4:
                clip = clip.Combined(device, RGN_DIFF);
                EXPECT_EQ(ExcludeClipRect(picture, rect.left, rect.top, rect.right, rect.bottom), clip.Kind());
                break;
            default:
                SetRectRgn(region, 2, std::max<LONG>(rect.top, 0), 9, std::min<LONG>(rect.bottom, kPicture));
                clip = clip.Combined(GridOf(region), RGN_OR);
                ExtSelectClipRgn(picture, region, RGN_OR);
                break;
        }
        POINT origin = {0, 0};
        LPtoDP(picture, &origin, 1);
        shift = origin;
        const Grid drawn = clip.Combined(whole, RGN_AND);
        RECT box;
        ASSERT_EQ(GetClipBox(picture, &box) == NULLREGION, !drawn.Any()) << "step " << step;
        if (drawn.Any()) {
            const RECT expected = drawn.Box();
            ASSERT_TRUE(SameRect(
                box, {expected.left - shift.x, expected.top - shift.y, expected.right - shift.x, expected.bottom - shift.y}))
                << "step " << step;
        }
        const RECT all = {-99, -99, 99, 99};
        FillRect(picture, &all, test::StockBrush(BLACK_BRUSH));
        Grid black;
        black.ForEach([&](int x, int y, auto cell) {
            const bool inside = x >= 0 && y >= 0 && x < kPicture && y < kPicture;
            cell = inside && (picture.Pixels()[static_cast<std::size_t>(y * kPicture + x)] & 0xFFFFFF) == 0;
        });
        ASSERT_TRUE(black == drawn) << "step " << step;
        std::fill(picture.Pixels().begin(), picture.Pixels().end(), DWORD{0xFFFFFF});
    }
}

TEST(GdiClips, AreCopiesOfTheRegion) {
    const Picture picture(9, 9);
    const Region region(CreateRectRgn(1, 1, 4, 4));
    const Region read(CreateRectRgn(0, 0, 0, 0));
    EXPECT_EQ(GetClipRgn(picture, read), 0);
    EXPECT_EQ(SelectObject(picture, region), reinterpret_cast<HGDIOBJ>(ULONG_PTR{SIMPLEREGION}));
    OffsetRgn(region, 3, 0);
    EXPECT_TRUE(PtVisible(picture, 1, 1));
    EXPECT_FALSE(PtVisible(picture, 4, 1));
    EXPECT_EQ(GetClipRgn(picture, read), 1);
    EXPECT_TRUE(PtInRegion(read, 1, 1));
    EXPECT_EQ(OffsetClipRgn(picture, 2, 0), SIMPLEREGION);
    const RECT left = {0, 0, 3, 9};
    EXPECT_FALSE(RectVisible(picture, &left));
    EXPECT_EQ(ExtSelectClipRgn(picture, nullptr, RGN_AND), RGN_ERROR);
    EXPECT_EQ(SelectClipRgn(picture, nullptr), SIMPLEREGION);
    EXPECT_TRUE(RectVisible(picture, &left));
}
