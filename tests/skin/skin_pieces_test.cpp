// Which part of a bitmap goes where.

#include "skin_fixture.h"

namespace {

using Calls = std::vector<std::string>;
using test::PositionColor;
using test::SkinTest;

TEST_F(SkinTest, CutsAButtonIntoNinePieces) {
    SetButton();
    CRect inner;
    EXPECT_EQ(skin_.DrawButtonBitmap(Target(), CSkin::SkinPressed, CRect(10, 20, 30, 40), inner), Gdiplus::Ok);
    EXPECT_EQ(skin_.calls, (Calls{"0,22,3,25 > 10,20,13,23", "10,22,13,25 > 27,20,30,23", "0,30,3,33 > 10,37,13,40",
                                  "10,30,13,33 > 27,37,30,40", "0,25,3,29 > 10,23,13,37", "10,25,13,29 > 27,23,30,37",
                                  "3,22,9,25 > 13,20,27,23", "3,30,9,33 > 13,37,27,40", "4,26,9,29 > 13,23,27,37"}));
    EXPECT_EQ(test::Shown(inner), "13,23,27,37");
}

// In this size only the centre is scaled.
TEST_F(SkinTest, DrawsUnscaledPiecesToThePixel) {
    SetButton();
    EXPECT_EQ(skin_.DrawButtonBitmap(Target(), CSkin::SkinHot, CRect(10, 20, 22, 30)), Gdiplus::Ok);
    for (int y = 0; y < 10; ++y) {
        for (int x = 0; x < 12; ++x) {
            const Gdiplus::Color pixel(PixelAt(10 + x, 20 + y));
            if (x >= 3 && x < 9 && y >= 3 && y < 7) {  // nothing of another piece
                EXPECT_TRUE(pixel.GetR() >= 3 * 8 && pixel.GetR() <= 9 * 8) << x << "," << y << ": " << int{pixel.GetR()};
                EXPECT_TRUE(pixel.GetG() >= 14 * 2 && pixel.GetG() <= 18 * 2) << x << "," << y << ": " << int{pixel.GetG()};
            } else {
                EXPECT_EQ(pixel.GetValue(), PositionColor(x < 9 ? x : x + 1, (y < 7 ? y : y + 1) + 11)) << x << "," << y;
            }
        }
    }
    EXPECT_EQ(PixelAt(9, 20), test::PAPER);
    EXPECT_EQ(PixelAt(22, 29), test::PAPER);
    EXPECT_EQ(PixelAt(21, 30), test::PAPER);
}

TEST_F(SkinTest, DrawsOnlyCornersWhereThereIsNoRoomForMore) {
    SetButton();
    CRect inner;
    EXPECT_EQ(skin_.DrawButtonBitmap(Target(), CSkin::SkinNormal, CRect(10, 20, 14, 24), inner), Gdiplus::Ok);
    EXPECT_EQ(test::Shown(inner), "13,23,11,21");
    EXPECT_EQ(skin_.calls.size(), 9U);
    EXPECT_EQ(skin_.calls[8], "4,4,9,7 > 13,23,11,21");
    const struct {
        int x, y;
        Gdiplus::ARGB color;
    } rows[] = {{0, 0, PositionColor(0, 0)},  {2, 0, PositionColor(11, 0)},  {0, 2, PositionColor(0, 9)},
                {2, 2, PositionColor(11, 9)}, {3, 3, PositionColor(12, 10)}, {4, 2, test::PAPER},
                {2, 4, test::PAPER},          {-1, 2, test::PAPER}};
    for (const auto& row : rows) {
        EXPECT_EQ(PixelAt(10 + row.x, 20 + row.y), row.color) << row.x << "," << row.y;
    }
    // What lies outside of 32 bits is drawn nowhere, and nothing overflows.
    SkinBitmapInfo vast{test::POSITIONS, 0xFFFFFFFF, 0xFFFFFFFF, 0x80000000};
    SkinCaptionBitmapInfo glyph;
    ASSERT_TRUE(skin_.SetButtonBitmapInfo(vast, glyph));
    Clear();
    EXPECT_EQ(skin_.DrawButtonBitmap(Target(), CSkin::SkinDefaultDisabled, CRect(10, 20, 14, 24), inner), Gdiplus::Ok);
    EXPECT_EQ(test::Shown(inner), "2147483647,2147483647,-2147483634,-2147483624");
}

TEST_F(SkinTest, CutsAWindowFrameIntoItsTwoParts) {
    const Calls outer = {"2,2,6,6 > 0,0,4,4",         "18,2,22,6 > 36,0,40,4",   "2,14,6,18 > 0,36,4,40",
                         "18,14,22,18 > 36,36,40,40", "2,6,6,13 > 0,4,4,36",     "18,6,22,13 > 36,4,40,36",
                         "6,2,17,6 > 4,0,36,4",       "6,14,17,18 > 4,36,36,40", "7,7,17,13 > 4,4,36,36"};
    const Calls inner = {"2,22,5,25 > 5,6,8,9",       "19,22,22,25 > 32,6,35,9", "2,35,5,38 > 5,31,8,34",
                         "19,35,22,38 > 32,31,35,34", "2,25,5,34 > 5,9,8,31",    "19,25,22,34 > 32,9,35,31",
                         "5,22,18,25 > 8,6,32,9",     "5,35,18,38 > 8,31,32,34", "6,26,18,34 > 8,9,32,31"};
    // The other state's, with a client area that lies 1, 2, 5 and 0 pixels inside.
    const Calls trimmed = {"3,64,5,65 > 5,6,8,9",       "19,64,20,65 > 32,6,35,9", "3,75,5,78 > 5,31,8,34",
                           "19,75,20,78 > 32,31,35,34", "3,65,5,74 > 5,9,8,31",    "19,65,20,74 > 32,9,35,31",
                           "5,64,18,65 > 8,6,32,9",     "5,75,18,78 > 8,31,32,34", "6,66,18,74 > 8,9,32,31"};
    const auto both = [&](const Calls& first, const Calls& second) {
        Calls all = first;
        all.insert(all.end(), second.begin(), second.end());
        return all;
    };
    const CRect frame(0, 0, 40, 40);
    const CRect content(5, 6, 35, 34);
    const CRect none(5, 5, 5, 9);
    const struct {
        CSkin::ESkinBitmapType type;
        CRect outer, inner, client;
        Calls calls;
    } rows[] = {{CSkin::SkinActive, frame, content, content, both(outer, inner)},
                {CSkin::SkinActive, frame, content, frame, both(outer, inner)},
                {CSkin::SkinActive, frame, none, content, outer},
                {CSkin::SkinActive, CRect(9, 0, 5, 9), content, content, inner},
                {CSkin::SkinInactive, none, content, CRect(6, 8, 30, 34), trimmed},
                {CSkin::SkinDefaultDisabled, none, content, CRect(6, 8, 30, 34), trimmed},
                {CSkin::SkinActive, none, none, none, {}}};
    SetWindow();
    for (const auto& row : rows) {
        Clear();
        EXPECT_EQ(skin_.DrawWindowBitmap(Target(), row.type, row.outer, row.inner, row.client), Gdiplus::Ok);
        EXPECT_EQ(skin_.calls, row.calls) << &row - rows;
    }
}

TEST_F(SkinTest, DrawsEachPartOfAFrameAlone) {
    const struct {
        int part, state;
        const char* source;
    } rows[] = {{CSkin::FrameCaption, 1, "6,2,17,6"},      {CSkin::FrameSmallCaption, 1, "6,2,17,6"},
                {CSkin::FrameLeft, 1, "2,6,6,13"},         {CSkin::FrameRight, 1, "18,6,22,13"},
                {CSkin::FrameBottom, 1, "6,14,17,18"},     {CSkin::FrameSmallLeft, 1, "2,6,6,13"},
                {CSkin::FrameSmallRight, 1, "18,6,22,13"}, {CSkin::FrameSmallBottom, 1, "6,14,17,18"},
                {CSkin::FrameCaption, 2, "6,42,17,46"},    {CSkin::FrameBottom, 2, "6,54,17,58"},
                {CSkin::FrameLeft, 0, "2,6,6,13"},         {CSkin::FrameRight, 3, "18,6,22,13"}};
    SetWindow();
    for (const auto& row : rows) {
        Clear();
        EXPECT_EQ(skin_.DrawWindowBitmap(Target(), row.part, row.state, CRect(3, 4, 40, 9)), Gdiplus::Ok);
        EXPECT_EQ(skin_.calls, Calls{std::string(row.source) + " > 3,4,40,9"}) << row.part;
    }
    Clear();
    for (const int part : {-1, 0, 3, 4, 5, 6, 13}) {
        EXPECT_EQ(skin_.DrawWindowBitmap(Target(), part, 1, CRect(3, 4, 40, 9)), Gdiplus::InvalidParameter) << part;
    }
    EXPECT_TRUE(skin_.calls.empty());
}

TEST_F(SkinTest, StretchesTheBackgroundWithoutItsLastColumnAndRow) {
    SetAll();
    EXPECT_EQ(skin_.DrawWindowBackgroundBitmap(Target(), CRect(8, 8, 39, 40)), Gdiplus::Ok);
    EXPECT_EQ(skin_.calls, Calls{"0,0,31,127 > 8,8,39,40"});
    const Gdiplus::Color last(PixelAt(38, 39));
    EXPECT_TRUE(last.GetR() >= 29 * 8 && last.GetR() <= 30 * 8 && last.GetG() >= 120 * 2) << std::hex << last.GetValue();
    EXPECT_EQ(PixelAt(39, 39), test::PAPER);
}

// What there is to draw, each of which has to leave the modes alone.
struct Operation {
    const char* name;
    Gdiplus::Status (*draw)(CSkin&, Gdiplus::Graphics*, CRect);
    Gdiplus::InterpolationMode interpolation;
    Gdiplus::PixelOffsetMode offset;
    Gdiplus::Status inverted = Gdiplus::InvalidParameter;  // the result for a rectangle with edges in the wrong order
};

const Operation OPERATIONS[] = {
    {"button", [](auto& skin, auto* graphics, auto rect) { return skin.DrawButtonBitmap(graphics, CSkin::SkinNormal, rect); },
     Gdiplus::InterpolationModeDefault, Gdiplus::PixelOffsetModeHighQuality, Gdiplus::Ok},
    {"glyph",
     [](auto& skin, auto* graphics, auto rect) {
         return skin.DrawButtonCaption(graphics, CSkin::SkinNormal, rect, CString(), test::AnyFont(), nullptr);
     },
     Gdiplus::InterpolationModeDefault, Gdiplus::PixelOffsetModeHighQuality},
    {"frame part",
     [](auto& skin, auto* graphics, auto rect) { return skin.DrawWindowBitmap(graphics, CSkin::FrameLeft, 1, rect); },
     Gdiplus::InterpolationModeBilinear, Gdiplus::PixelOffsetModeHighQuality},
    {"background", [](auto& skin, auto* graphics, auto rect) { return skin.DrawWindowBackgroundBitmap(graphics, rect); },
     Gdiplus::InterpolationModeDefault, Gdiplus::PixelOffsetModeNone},
    {"frame",
     [](auto& skin, auto* graphics, auto rect) { return skin.DrawWindowBitmap(graphics, CSkin::SkinActive, rect, rect, rect); },
     Gdiplus::InterpolationModeBilinear, Gdiplus::PixelOffsetModeHighQuality, Gdiplus::Ok},
};

TEST_F(SkinTest, UsesItsOwnModesAndRestoresThem) {
    SetAll();
    for (const Operation& operation : OPERATIONS) {
        Target()->SetSmoothingMode(Gdiplus::SmoothingModeNone);
        Target()->SetInterpolationMode(operation.interpolation);
        Target()->SetPixelOffsetMode(operation.offset);
        const std::string expected = test::ModesOf(*Target());
        Target()->SetSmoothingMode(Gdiplus::SmoothingModeAntiAlias);
        Target()->SetInterpolationMode(Gdiplus::InterpolationModeHighQualityBicubic);
        Target()->SetPixelOffsetMode(Gdiplus::PixelOffsetModeHalf);
        const std::string before = test::ModesOf(*Target());
        EXPECT_EQ(operation.draw(skin_, Target(), CRect(0, 0, 20, 20)), Gdiplus::Ok) << operation.name;
        EXPECT_EQ(skin_.modes, expected) << operation.name;
        EXPECT_EQ(test::ModesOf(*Target()), before) << operation.name;
    }
}

TEST_F(SkinTest, SaysWhenThereIsNothingToDraw) {
    const CRect some(0, 0, 20, 20);
    for (const Operation& operation : OPERATIONS) {
        EXPECT_EQ(operation.draw(skin_, Target(), some), Gdiplus::InvalidParameter) << operation.name << " without bitmap";
    }
    SetAll();
    for (const Operation& operation : OPERATIONS) {
        const bool frame = std::string_view(operation.name) == "frame";
        EXPECT_EQ(operation.draw(skin_, nullptr, some), Gdiplus::InvalidParameter) << operation.name << " on nothing";
        for (const CRect& rect : {CRect(5, 5, 5, 20), CRect(5, 5, 20, 5)}) {
            EXPECT_EQ(operation.draw(skin_, Target(), rect), frame ? Gdiplus::Ok : Gdiplus::InvalidParameter) << operation.name;
        }
        EXPECT_TRUE(skin_.calls.empty() && IsClear()) << operation.name;
        EXPECT_EQ(operation.draw(skin_, Target(), CRect(40, 40, 20, 20)), operation.inverted) << operation.name << " inverted";
        Clear();
    }
}

TEST_F(SkinTest, DrawsAPartInTheModesOfTheCaller) {
    Gdiplus::Bitmap bitmap(4, 4, PixelFormat32bppARGB);
    const CRect whole(0, 0, 4, 4);
    Gdiplus::Graphics(&bitmap).Clear(Gdiplus::Color(0xFF, 1, 2, 3));
    for (const CRect& target : {CRect(3, 3, 3, 9), CRect(3, 3, 9, 3), CRect(9, 3, 3, 9), CRect(3, 9, 9, 3)}) {
        const bool negative = target.Width() < 0 || target.Height() < 0;
        EXPECT_EQ(skin_.DrawBitmapPart(Target(), &bitmap, whole, target), negative ? Gdiplus::Ok : Gdiplus::InvalidParameter);
        EXPECT_TRUE(IsClear());
    }
    EXPECT_EQ(skin_.CSkin::DrawBitmapPart(nullptr, &bitmap, whole, whole), Gdiplus::InvalidParameter);
    EXPECT_EQ(skin_.DrawBitmapPart(Target(), nullptr, whole, whole), Gdiplus::InvalidParameter);
    Target()->SetInterpolationMode(Gdiplus::InterpolationModeNearestNeighbor);
    const std::string modes = test::ModesOf(*Target());
    EXPECT_EQ(skin_.DrawBitmapPart(Target(), &bitmap, whole, CRect(3, 3, 9, 9)), Gdiplus::Ok);
    EXPECT_EQ(skin_.modes, modes);
    EXPECT_EQ(PixelAt(5, 5), 0xFF010203);
    EXPECT_EQ(PixelAt(2, 5), test::PAPER);
}

}  // namespace
