// Lines, outlines and fills as pictures of letters.

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <string>

#include "gdi/picture.h"
#include "support/wine.h"

using test::Picture;

TEST(GdiLines, LeaveOutTheirLastPointAndRoundTowardsTheOrigin) {
    struct {
        int dx, dy;
        const char* art;  // of 7 x 7 pixels, from the middle
    } const kRows[] = {
        {3, 0, "       |       |       |   ### |       |       |       |"},
        {-3, 0, "       |       |       | ###   |       |       |       |"},
        {0, -3, "       |   #   |   #   |   #   |       |       |       |"},
        {3, 1, "       |       |       |   ##  |     # |       |       |"},
        {2, 1, "       |       |       |   ##  |       |       |       |"},
        {2, -1, "       |       |    #  |   #   |       |       |       |"},
        {-2, 1, "       |       |       |  ##   |       |       |       |"},
        {1, 2, "       |       |       |   #   |   #   |       |       |"},
        {-1, 2, "       |       |       |   #   |  #    |       |       |"},
        {-1, -2, "       |       |  #    |   #   |       |       |       |"},
        {3, 3, "       |       |       |   #   |    #  |     # |       |"},
        {-3, -2, "       |       | ##    |   #   |       |       |       |"},
        {0, 0, "       |       |       |       |       |       |       |"},
    };
    for (const auto& row : kRows) {
        const Picture picture(7, 7);
        MoveToEx(picture, 3, 3, nullptr);
        EXPECT_TRUE(LineTo(picture, 3 + row.dx, 3 + row.dy));
        std::string art = row.art;
        std::replace(art.begin(), art.end(), ' ', '.');
        std::replace(art.begin(), art.end(), '|', '\n');
        EXPECT_EQ(picture.Art(), art) << row.dx << ", " << row.dy;
    }
}

TEST(GdiLines, HaveDashesThatGoOnAroundCorners) {
    struct {
        int style, mode;
        const char* art;
    } const kRows[] = {
        {PS_SOLID, OPAQUE, "##########################"},     {PS_DASH, OPAQUE, "##################gggggg##"},
        {PS_DASH, TRANSPARENT, "##################......##"}, {PS_DOT, OPAQUE, "###ggg###ggg###ggg###ggg##"},
        {PS_DASHDOT, OPAQUE, "#########gggggg###gggggg##"},   {PS_DASHDOTDOT, OPAQUE, "#########ggg###ggg###ggg##"},
        {PS_NULL, OPAQUE, ".........................."},
    };
    for (const auto& row : kRows) {
        const test::Pen pen(CreatePen(row.style, 1, test::kBlack));
        Picture picture(26, 1);
        const test::Selected selected(picture, pen);
        SetBkMode(picture, row.mode);
        SetBkColor(picture, test::kGreen);
        LineTo(picture, 26, 0);
        EXPECT_EQ(picture.Art(), std::string(row.art) + '\n');

        // The same bent: 13 pixels to the right, 13 down, then read off along the way.
        Picture bent(14, 14);
        const test::Selected also(bent, pen);
        SetBkMode(bent, row.mode);
        SetBkColor(bent, test::kGreen);
        const POINT corner[] = {{0, 0}, {13, 0}, {13, 13}};
        EXPECT_TRUE(Polyline(bent, corner, 3));
        const std::string art = bent.Art();
        std::string way;
        for (std::size_t at = 0; at < 26; ++at) {
            way += at < 13 ? art[at] : art[(at - 13) * 15 + 13];
        }
        EXPECT_EQ(way, row.art);
    }
}

TEST(GdiShapes, AreFilledInsideAndOutlinedAtTheEdge) {
    struct {
        const char* name;
        int style, width;
        void (*draw)(HDC);
        const char* art;
    } const kRows[] = {
        {"rectangle", PS_SOLID, 1, [](HDC dc) { Rectangle(dc, 1, 1, 7, 5); },
         "........\n.######.\n.#rrrr#.\n.#rrrr#.\n.######.\n........\n"},
        {"corners in another order", PS_SOLID, 1, [](HDC dc) { Rectangle(dc, 7, 5, 1, 1); },
         "........\n.######.\n.#rrrr#.\n.#rrrr#.\n.######.\n........\n"},
        {"without outline", PS_NULL, 1, [](HDC dc) { Rectangle(dc, 1, 1, 7, 5); },
         "........\n.rrrrr..\n.rrrrr..\n.rrrrr..\n........\n........\n"},
        {"wide", PS_SOLID, 2, [](HDC dc) { Rectangle(dc, 2, 2, 7, 6); },
         "........\n.######.\n.######.\n.##rr##.\n.######.\n.######.\n"},
        {"inside", PS_INSIDEFRAME, 2, [](HDC dc) { Rectangle(dc, 1, 0, 8, 6); },
         ".#######\n.#######\n.##rrr##\n.##rrr##\n.#######\n.#######\n"},
        {"thin", PS_SOLID, 1, [](HDC dc) { Rectangle(dc, 3, 1, 4, 5); },
         "........\n...#....\n...#....\n...#....\n...#....\n........\n"},
        {"empty", PS_SOLID, 1, [](HDC dc) { Rectangle(dc, 3, 1, 3, 5); },
         "........\n........\n........\n........\n........\n........\n"},
        {"triangle", PS_SOLID, 1,
         [](HDC dc) {
             const POINT points[] = {{0, 0}, {6, 0}, {3, 3}};
             Polygon(dc, points, 3);
         },
         "#######.\n.#rrr#..\n..#r#...\n...#....\n........\n........\n"},
        {"wide line", PS_SOLID, 2,
         [](HDC dc) {
             MoveToEx(dc, 2, 2, nullptr);
             LineTo(dc, 6, 2);
         },
         "........\n.######.\n.######.\n........\n........\n........\n"},
    };
    for (const auto& row : kRows) {
        const test::Pen pen(CreatePen(row.style, row.width, test::kBlack));
        const test::Brush brush(CreateSolidBrush(test::kRed));
        const Picture picture(8, 6);
        const test::Selected with_pen(picture, pen);
        const test::Selected with_brush(picture, brush);
        row.draw(picture);
        EXPECT_EQ(picture.Art(), row.art) << row.name;
    }
}

TEST(GdiShapes, WithCurvesStayInTheirBoundsAndAreTheSameFromAllSides) {
    void (*const kShapes[])(HDC) = {[](HDC dc) { Ellipse(dc, 1, 2, 19, 12); }, [](HDC dc) { RoundRect(dc, 1, 2, 19, 12, 7, 5); }};
    for (const auto draw : kShapes) {
        const test::Brush brush(CreateSolidBrush(test::kRed));
        const Picture picture(20, 14);
        const test::Selected with_brush(picture, brush);
        draw(picture);
        EXPECT_EQ(picture.At(1, 2), test::kWhite) << "the corner is cut";
        EXPECT_EQ(picture.At(10, 7), test::kRed);
        for (int y = 0; y < 14; ++y) {
            for (int x = 0; x < 20; ++x) {
                const COLORREF color = picture.At(x, y);
                EXPECT_EQ(color, picture.At(19 - x, 13 - y)) << x << ", " << y;
                const bool outside = x < 1 || x > 18 || y < 2 || y > 11;
                EXPECT_TRUE(!outside || color == test::kWhite) << x << ", " << y;
            }
        }
        for (const POINT edge : {POINT{1, 7}, POINT{18, 6}, POINT{9, 2}, POINT{10, 11}}) {
            EXPECT_EQ(picture.At(edge.x, edge.y), test::kBlack);
        }
    }
}

TEST(GdiBrushes, RepeatFromTheirOrigin) {
    for (int hatch = HS_HORIZONTAL; hatch <= HS_DIAGCROSS; ++hatch) {
        const test::Brush brush(CreateHatchBrush(hatch, test::kBlack));
        const RECT all = {0, 0, 24, 24};
        Picture opaque(24, 24, test::kRed);
        SetBkColor(opaque, test::kGreen);
        FillRect(opaque, &all, brush);
        Picture moved(24, 24, test::kRed);
        SetBkMode(moved, TRANSPARENT);
        SetBrushOrgEx(moved, 3, 5, nullptr);
        SetViewportOrgEx(moved, 2, 2, nullptr);  // does not move the pattern
        SetWindowOrgEx(moved, 2, 2, nullptr);
        FillRect(moved, &all, brush);
        int lines = 0;
        for (int y = 8; y < 16; ++y) {
            for (int x = 8; x < 16; ++x) {
                const bool line = opaque.At(x, y) == test::kBlack;
                lines += line;
                EXPECT_EQ(opaque.At(x, y), line ? test::kBlack : test::kGreen);
                EXPECT_EQ(opaque.At(x - 8, y), opaque.At(x, y - 8)) << "every eight pixels";
                EXPECT_EQ(moved.At(x + 3, y + 5), line ? test::kBlack : test::kRed) << "gaps show what was there";
            }
        }
        EXPECT_EQ(lines, hatch < HS_CROSS ? 8 : hatch == HS_CROSS ? 15 : 16);
    }
    EXPECT_EQ(CreatePatternBrush(nullptr), nullptr);

    Picture picture(3, 1);
    const test::Selected selected(picture, GetStockObject(DC_BRUSH));
    EXPECT_EQ(SetDCBrushColor(picture, test::kBlue), test::kWhite);
    PatBlt(picture, 0, 0, 2, 1, PATCOPY);
    EXPECT_EQ(picture.Art(), "bb.\n");
    EXPECT_FALSE(PatBlt(nullptr, 0, 0, 1, 1, PATCOPY));
}

TEST(GdiFills, FrameInvertAndFollowRegions) {
    const Picture picture(8, 6);
    const RECT rect = {1, 1, 7, 5};
    EXPECT_NE(FrameRect(picture, &rect, test::StockBrush(BLACK_BRUSH)), 0);
    EXPECT_EQ(picture.Art(), "........\n.######.\n.#....#.\n.#....#.\n.######.\n........\n");
    EXPECT_TRUE(InvertRect(picture, &rect));
    EXPECT_EQ(picture.Art(), "........\n........\n..####..\n..####..\n........\n........\n");
    EXPECT_NE(FillRect(picture, &rect, reinterpret_cast<HBRUSH>(ULONG_PTR{COLOR_BTNFACE + 1})), 0);
    EXPECT_EQ(picture.At(3, 3), GetSysColor(COLOR_BTNFACE));
    PatBlt(picture, 0, 0, 8, 6, WHITENESS);
    const RECT inverted = {5, 1, 1, 5};
    EXPECT_EQ(FrameRect(picture, &inverted, test::StockBrush(BLACK_BRUSH)), 0);

    // Regions are in logical coordinates when they are drawn.
    const test::Region region(CreateRectRgn(0, 0, 6, 4));
    const test::Region hole(CreateRectRgn(2, 1, 4, 3));
    CombineRgn(region, region, hole, RGN_DIFF);
    SetViewportOrgEx(picture, 1, 1, nullptr);
    PatBlt(picture, -1, -1, 8, 6, WHITENESS);
    EXPECT_TRUE(FillRgn(picture, region, test::StockBrush(BLACK_BRUSH)));
    EXPECT_EQ(picture.At(2, 1), test::kWhite);
    SetViewportOrgEx(picture, 0, 0, nullptr);
    EXPECT_EQ(picture.Art(), "........\n.######.\n.##..##.\n.##..##.\n.######.\n........\n");
    EXPECT_TRUE(InvertRgn(picture, region));
    EXPECT_EQ(picture.Art(),
              "######..\n#.##..#.\n#.#.#.#.\n"
              "#..##.#.\n.######.\n........\n");
    EXPECT_TRUE(FrameRgn(picture, hole, test::StockBrush(BLACK_BRUSH), 1, 1));
    EXPECT_FALSE(FrameRgn(picture, nullptr, test::StockBrush(BLACK_BRUSH), 1, 1));
}
