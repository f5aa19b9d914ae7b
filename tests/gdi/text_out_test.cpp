// Text on a line: where its ink is, and what is filled behind it.

#include <gtest/gtest.h>

#include "text_canvas.h"

namespace {

using test::Area;
using test::Text;
using test::TextCanvas;

constexpr int kX = 150;
constexpr int kY = 80;
const TCHAR* const kText = _T("Hxg \u00C4");

void ExpectInside(const Area& ink, const Area& area) {
    EXPECT_TRUE(ink.IsIn(area)) << ink;
    EXPECT_GT(ink.right, ink.left);
}

TEST(TextDrawing, InkIsInTheCell) {
    for (const int height : {-9, -11, -13, -16, -24, -48}) {
        TextCanvas canvas(test::MakeFont(height));
        canvas.Out(20, 10, kText);
        const SIZE size = canvas.Extent(kText);
        ExpectInside(canvas.Ink(), {20 - 1, 10 - 1, 20 + size.cx + 1, 10 + size.cy});
        EXPECT_GT(canvas.Ink().bottom - canvas.Ink().top, size.cy / 2) << height;
    }
}

TEST(TextDrawing, AlignmentMovesTheReferencePoint) {
    TextCanvas canvas;
    canvas.Out(kX, kY, kText);
    const Area normal = canvas.Ink();
    const int width = canvas.Width(kText);
    const auto metrics = canvas.Metrics();
    const int ascent = static_cast<int>(metrics.tmAscent);
    const int height = static_cast<int>(metrics.tmHeight);
    struct {
        UINT align;
        int dx, dy;
        int pen;  // with TA_UPDATECP
    } const rows[] = {
        {TA_LEFT | TA_TOP, 0, 0, width},
        {TA_RIGHT | TA_TOP, -width, 0, -width},
        {TA_CENTER | TA_TOP, -width / 2, 0, 0},
        {TA_LEFT | TA_BASELINE, 0, -ascent, width},
        {TA_RIGHT | TA_BOTTOM, -width, -height, -width},
    };
    for (const auto& row : rows) {
        canvas.Clear();
        SetTextAlign(canvas, row.align);
        canvas.Out(kX, kY, kText);
        EXPECT_EQ(canvas.Ink(), normal.Moved(row.dx, row.dy)) << row.align;

        canvas.Clear();
        SetTextAlign(canvas, row.align | TA_UPDATECP);
        MoveToEx(canvas, kX, kY, nullptr);
        canvas.Out(1, 2, kText);
        EXPECT_EQ(canvas.Ink(), normal.Moved(row.dx, row.dy)) << row.align;
        POINT pen = {};
        GetCurrentPositionEx(canvas, &pen);
        EXPECT_EQ(pen.x, kX + row.pen) << row.align;
        EXPECT_EQ(pen.y, kY) << row.align;
    }
}

TEST(TextDrawing, AnOpaqueBackgroundFillsTheCell) {
    TextCanvas canvas;
    SetBkMode(canvas, OPAQUE);
    SetBkColor(canvas, test::kGreen);
    canvas.Out(kX, kY, kText);
    const SIZE size = canvas.Extent(kText);
    EXPECT_EQ(canvas.Ink(), (Area{kX, kY, kX + size.cx, kY + size.cy}));
    EXPECT_EQ(GetPixel(canvas, kX, kY), test::kGreen);
    EXPECT_EQ(GetPixel(canvas, kX + size.cx - 1, kY + size.cy - 1), test::kGreen);
}

TEST(TextDrawing, OptionsFillAndCutByTheRectangle) {
    TextCanvas canvas;
    const RECT area = {kX + 5, kY - 4, kX + 15, kY + 9};
    SetBkColor(canvas, test::kRed);
    EXPECT_TRUE(ExtTextOutW(canvas, kX, kY, ETO_OPAQUE, &area, _T(""), 0, nullptr));
    EXPECT_EQ(canvas.Ink(), (Area{kX + 5, kY - 4, kX + 15, kY + 9}));
    EXPECT_EQ(GetPixel(canvas, kX + 5, kY - 4), test::kRed);

    canvas.Clear();
    ExtTextOutW(canvas, kX, kY, ETO_CLIPPED, &area, _T("WWWW"), 4, nullptr);
    ExpectInside(canvas.Ink(), {kX + 5, kY - 4, kX + 15, kY + 9});

    canvas.Clear();
    IntersectClipRect(canvas, kX, kY, kX + 3, kY + 300);
    canvas.Out(kX, kY, _T("WWWW"));
    ExpectInside(canvas.Ink(), {kX, kY, kX + 3, kY + 50});
}

TEST(TextDrawing, GivenWidthsPlaceTheCharacters) {
    TextCanvas canvas;
    const INT widths[] = {40, 60, 20};
    SetTextAlign(canvas, TA_UPDATECP);
    MoveToEx(canvas, 10, 10, nullptr);
    ExtTextOutW(canvas, 0, 0, 0, nullptr, _T("III"), 3, widths);
    POINT pen = {};
    GetCurrentPositionEx(canvas, &pen);
    EXPECT_EQ(pen.x, 10 + 120);

    SetTextAlign(canvas, TA_LEFT);
    const std::vector<DWORD> spread = canvas.Pixels();
    canvas.Clear();
    for (const int x : {10, 50, 110}) {
        canvas.Out(x, 10, _T("I"));
    }
    EXPECT_EQ(canvas.Pixels(), spread);
}

TEST(TextDrawing, OriginsAndColourCount) {
    TextCanvas canvas;
    canvas.Out(kX, kY, kText);
    const Area normal = canvas.Ink();
    canvas.Clear();
    SetViewportOrgEx(canvas, 20, 30, nullptr);
    SetWindowOrgEx(canvas, 5, 7, nullptr);
    SetTextColor(canvas, test::kRed);
    canvas.Out(kX, kY, kText);
    EXPECT_EQ(canvas.Ink(), normal.Moved(15, 23));
    for (const DWORD pixel : canvas.Pixels()) {
        ASSERT_EQ(pixel >> 16, 0xFFu);  // red on white
    }
}

TEST(TextDrawing, EscapementTurnsTheLine) {
    for (const int turn : {900, 1800, 2700}) {
        TextCanvas canvas(test::MakeFont(-13, turn));
        SetTextAlign(canvas, TA_BASELINE);
        canvas.Out(kX, kY, _T("Turned"));
        const int width = canvas.Width(_T("Turned"));
        const Area ink = canvas.Ink();
        const Area along = turn == 900    ? Area{kX - 20, kY - width - 1, kX + 8, kY + 2}
                           : turn == 1800 ? Area{kX - width - 1, kY - 8, kX + 2, kY + 20}
                                          : Area{kX - 8, kY - 1, kX + 20, kY + width + 2};
        ExpectInside(ink, along);
        const LONG length = turn == 1800 ? ink.right - ink.left : ink.bottom - ink.top;
        EXPECT_GT(length, width - 5) << turn;
    }
}

TEST(TextDrawing, LinesUnderAndThroughText) {
    TextCanvas plain;
    TextCanvas under(test::MakeFont(-13, 0, true));
    TextCanvas through(test::MakeFont(-13, 0, false, true));
    const Text blanks = _T("    ");
    for (TextCanvas* const canvas : {&plain, &under, &through}) {
        canvas->Out(10, 10, blanks);
    }
    const LONG baseline = 10 + plain.Metrics().tmAscent;
    EXPECT_EQ(plain.Ink(), Area{});
    EXPECT_EQ(under.Ink().right - under.Ink().left, under.Width(blanks));
    EXPECT_GE(under.Ink().top, baseline);
    EXPECT_LE(under.Ink().bottom, 10 + under.LineHeight());
    EXPECT_EQ(through.Ink().right - through.Ink().left, through.Width(blanks));
    EXPECT_LT(through.Ink().bottom, baseline);
}

TEST(TextDrawing, MonochromePixelsAreBlackOrWhite) {
    const auto picture = test::Picture::Mono(60, 30);
    PatBlt(picture, 0, 0, 60, 30, WHITENESS);
    const test::Object<HFONT> font(test::MakeFont(-13));
    const test::Selected selected(picture, font);
    SetBkMode(picture, TRANSPARENT);
    TextOutW(picture, 2, 2, _T("Mono"), 4);
    const std::string art = picture.Art();
    EXPECT_EQ(art.find_first_not_of("#.\n"), art.npos);
    EXPECT_NE(art.find('#'), art.npos);
}

TEST(TextDrawing, RowsThatGoUpwardsShowTheSame) {
    const test::Picture down(60, 30);
    const auto up = test::Picture::Upwards(60, 30);
    PatBlt(up, 0, 0, 60, 30, WHITENESS);
    TextOutW(down, 2, 2, _T("Rows"), 4);
    TextOutW(up, 2, 2, _T("Rows"), 4);
    EXPECT_EQ(down.Art(), up.Art());
    EXPECT_NE(down.Art().find('#'), std::string::npos);
}

}  // namespace
