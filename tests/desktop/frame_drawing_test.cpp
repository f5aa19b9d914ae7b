// Edges, push buttons and focus rectangles, by their pixels.

#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <string>
#include <vector>

#include "picture.h"

namespace {

using desktop_test::Picture;

constexpr int kSide = 8;

// A system colour's letter; a point for the background.
char Letter(COLORREF color) {
    const struct {
        int index;
        char letter;
    } names[] = {{COLOR_3DLIGHT, 'l'},    {COLOR_BTNHIGHLIGHT, 'h'}, {COLOR_BTNSHADOW, 's'},
                 {COLOR_3DDKSHADOW, 'd'}, {COLOR_BTNFACE, 'f'},      {COLOR_WINDOWFRAME, 'w'}};
    for (const auto& [index, letter] : names) {
        if (GetSysColor(index) == color) {
            return letter;
        }
    }
    return color == RGB(1, 2, 3) ? '.' : '?';
}

// All rows inside of a margin of one pixel, which must be as it was.
std::string Rows(const Picture& picture) {
    std::string text;
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) {
            const char letter = Letter(GetPixel(picture.Context(), x, y));
            if (y > 0 && y < kSide - 1 && x > 0 && x < kSide - 1) {
                text += letter;
            } else {
                EXPECT_EQ(letter, '.') << x << "," << y;
            }
        }
        text += y > 0 && y < kSide - 2 ? " " : "";
    }
    return text;
}

TEST(FrameDrawing, EdgesHaveTheirColours) {
    const struct {
        UINT edge;
        UINT flags;
        const char* rows;
    } cases[] = {
        {EDGE_RAISED, BF_RECT, "llllld lhhhsd lh..sd lh..sd lssssd dddddd"},
        {EDGE_SUNKEN, BF_RECT, "sssssh sdddlh sd..lh sd..lh sllllh hhhhhh"},
        {EDGE_ETCHED, BF_RECT, "sssssh shhhsh sh..sh sh..sh sssssh hhhhhh"},
        {EDGE_BUMP, BF_RECT, "llllld ldddld ld..ld ld..ld llllld dddddd"},
        {EDGE_RAISED, BF_RECT | BF_SOFT, "hhhhhd hlllsd hl..sd hl..sd hssssd dddddd"},
        {EDGE_SUNKEN, BF_RECT | BF_SOFT, "dddddh dssslh ds..lh ds..lh dllllh hhhhhh"},
        {EDGE_RAISED, BF_RECT | BF_FLAT, "ssssss sffffs sf..fs sf..fs sffffs ssssss"},
        {BDR_SUNKENOUTER, BF_RECT | BF_MIDDLE, "sssssh sffffh sffffh sffffh sffffh hhhhhh"},
        {BDR_RAISEDINNER, BF_TOPLEFT, "hhhhhh h..... h..... h..... h..... h....."},
        {EDGE_RAISED, BF_BOTTOMRIGHT, "....sd ....sd ....sd ....sd sssssd dddddd"},
        {EDGE_RAISED, BF_LEFT, "lh.... lh.... lh.... lh.... lh.... lh...."},
        {EDGE_SUNKEN, BF_TOP | BF_RIGHT, "sssssh ddddlh ....lh ....lh ....lh ....lh"},
    };
    for (const auto& each : cases) {
        const Picture picture(kSide, kSide, RGB(1, 2, 3));
        RECT rect = {1, 1, kSide - 1, kSide - 1};
        EXPECT_TRUE(DrawEdge(picture.Context(), &rect, each.edge, each.flags));
        EXPECT_EQ(Rows(picture), each.rows) << std::hex << each.edge << " " << each.flags;
    }
}

TEST(FrameDrawing, AdjustedRectanglesLieInsideOfWhatWasDrawn) {
    const struct {
        UINT edge;
        UINT sides;
        RECT inside;
    } cases[] = {
        {EDGE_RAISED, BF_RECT, {3, 3, 5, 5}},
        {BDR_SUNKENOUTER, BF_RECT, {2, 2, 6, 6}},
        {EDGE_SUNKEN, BF_LEFT | BF_BOTTOM, {3, 1, 7, 5}},
        {0, BF_RECT, {1, 1, 7, 7}},
    };
    for (const auto& each : cases) {
        const Picture picture(kSide, kSide, RGB(1, 2, 3));
        RECT rect = {1, 1, kSide - 1, kSide - 1};
        DrawEdge(picture.Context(), &rect, each.edge, each.sides | BF_ADJUST);
        EXPECT_TRUE(EqualRect(&rect, &each.inside)) << each.edge << " " << each.sides;
    }
}

TEST(FrameDrawing, AFocusRectangleIsDottedAndGoesWhenDrawnAgain) {
    const Picture picture(kSide, kSide, RGB(255, 255, 255));
    const RECT rect = {1, 1, 7, 6};
    ASSERT_TRUE(DrawFocusRect(picture.Context(), &rect));
    int dark = 0;
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) {
            const bool on_rim = PtInRect(&rect, {x, y}) && (x == 1 || x == 6 || y == 1 || y == 5);
            const bool inverted = GetPixel(picture.Context(), x, y) == RGB(0, 0, 0);
            EXPECT_TRUE(on_rim || !inverted) << x << "," << y;
            dark += inverted;
        }
    }
    EXPECT_EQ(dark, 9);
    ASSERT_TRUE(DrawFocusRect(picture.Context(), &rect));
    EXPECT_EQ(GetPixel(picture.Context(), 1, 2), RGB(255, 255, 255));
    EXPECT_EQ(GetPixel(picture.Context(), 2, 1), RGB(255, 255, 255));
}

// Every kind of box draws something, differs from state to state, and stays inside its rectangle.
TEST(FrameDrawing, BoxesShowTheirState) {
    const struct {
        UINT kind;
        UINT states[4];
    } cases[] = {
        {DFC_BUTTON, {DFCS_BUTTONPUSH, DFCS_BUTTONPUSH | DFCS_PUSHED}},
        {DFC_BUTTON,
         {DFCS_BUTTONCHECK, DFCS_BUTTONCHECK | DFCS_CHECKED, DFCS_BUTTON3STATE | DFCS_CHECKED,
          DFCS_BUTTONCHECK | DFCS_CHECKED | DFCS_INACTIVE}},
        {DFC_BUTTON, {DFCS_BUTTONRADIO, DFCS_BUTTONRADIO | DFCS_CHECKED}},
        {DFC_CAPTION, {DFCS_CAPTIONCLOSE, DFCS_CAPTIONMIN, DFCS_CAPTIONMAX, DFCS_CAPTIONRESTORE}},
    };
    constexpr int side = 24;
    for (const auto& each : cases) {
        std::vector<std::vector<DWORD>> seen;
        for (const UINT state : each.states) {
            const Picture picture(side, side, RGB(1, 2, 3));
            RECT rect = {2, 2, side - 2, side - 2};
            ASSERT_TRUE(DrawFrameControl(picture.Context(), &rect, each.kind, state));
            seen.emplace_back(picture.Pixels(), picture.Pixels() + side * side);
            EXPECT_EQ(GetPixel(picture.Context(), 1, side / 2), RGB(1, 2, 3));
            EXPECT_EQ(GetPixel(picture.Context(), side - 2, side / 2), RGB(1, 2, 3));
        }
        EXPECT_NE(seen[0], seen[1]) << each.kind << " " << each.states[0];
        EXPECT_TRUE(each.states[2] == 0 || seen[1] != seen[2]) << each.kind << " " << each.states[2];
        EXPECT_TRUE(each.states[3] == 0 || seen[1] != seen[3]) << each.kind << " " << each.states[3];
    }
}

}  // namespace
