// Fonts as they are asked for and measured, and the extents of texts.

#include <gtest/gtest.h>

#include <array>
#include <numeric>

#include "support/wine.h"
#include "text_canvas.h"

namespace {

using test::Text;
using test::TextCanvas;

TEST(TextMeasure, AFontHasTheHeightThatIsAskedFor) {
    for (const int height : {-8, -11, -13, -24, -60, 0, 8, 13, 16, 17, 20, 24, 100}) {
        const TextCanvas canvas(test::MakeFont(height));
        const TEXTMETRICW metrics = canvas.Metrics();
        EXPECT_EQ(metrics.tmHeight, metrics.tmAscent + metrics.tmDescent) << height;
        EXPECT_GT(metrics.tmAscent, metrics.tmDescent) << height;
        EXPECT_GT(metrics.tmAveCharWidth, 0) << height;
        EXPECT_GE(metrics.tmMaxCharWidth, metrics.tmAveCharWidth) << height;
        const LONG asked = height == 0 ? 16 : height;
        if (asked < 0) {
            EXPECT_EQ(metrics.tmHeight - metrics.tmInternalLeading, -asked);
        } else {
            EXPECT_LE(metrics.tmHeight, asked + test::UnlessWine(0, 1));
            EXPECT_GE(metrics.tmHeight, asked - 2);
        }
    }
}

TEST(TextMeasure, AFontTellsWhatItIs) {
    LOGFONTW asked = {};
    asked.lfHeight = -20;
    asked.lfWeight = FW_BOLD;
    asked.lfItalic = asked.lfUnderline = asked.lfStrikeOut = TRUE;
    Text(_T("Times New Roman")).copy(asked.lfFaceName, LF_FACESIZE - 1);
    const HFONT font = CreateFontIndirectW(&asked);
    const TextCanvas canvas(font);
    LOGFONTW told = {};
    EXPECT_EQ(GetObjectW(font, sizeof told, &told), int{sizeof told});
    EXPECT_EQ(Text(told.lfFaceName), Text(asked.lfFaceName));
    EXPECT_EQ(told.lfHeight, -20);
    const TEXTMETRICW metrics = canvas.Metrics();
    EXPECT_EQ(metrics.tmWeight, FW_BOLD);
    EXPECT_TRUE(metrics.tmItalic != 0 && metrics.tmUnderlined != 0 && metrics.tmStruckOut != 0);

    const int needed = GetTextFaceW(canvas, 0, nullptr);
    Text face(static_cast<std::size_t>(needed), _T('#'));
    EXPECT_EQ(GetTextFaceW(canvas, needed, face.data()), needed);
    EXPECT_EQ(face.find(_T('\0')), face.size() - 1);
    EXPECT_GT(needed, 3);
    EXPECT_EQ(GetTextFaceW(canvas, 3, face.data()), 3);
    EXPECT_EQ(face[2], _T('\0'));
    EXPECT_EQ(CreateFontIndirectW(nullptr), nullptr);
}

TEST(TextMeasure, ExtentsAreSumsOfCharacters) {
    const TextCanvas canvas;
    const Text text = _T("AVATAR fi fl To, Gr\u00F6\u00DFe");
    int sum = 0;
    for (const TCHAR letter : text) {
        int width = 0;
        EXPECT_TRUE(GetCharWidth32W(canvas, letter, letter, &width));
        ABC abc = {};
        EXPECT_TRUE(GetCharABCWidthsW(canvas, letter, letter, &abc));
        EXPECT_EQ(abc.abcA + static_cast<int>(abc.abcB) + abc.abcC, width) << static_cast<int>(letter);
        sum += width;
    }
    EXPECT_EQ(canvas.Width(text), sum);
    EXPECT_EQ(canvas.Extent(text).cy, canvas.LineHeight());
    EXPECT_EQ(canvas.Extent(_T("")).cx, 0);
    Text three_thousand;
    for (int count = 0; count < 3000 / 20; ++count) {
        three_thousand += _T("Twenty letters, all. ");
    }
    EXPECT_EQ(canvas.Width(three_thousand), canvas.Width(_T("Twenty letters, all. ")) * 150);
}

TEST(TextMeasure, WhatFitsIsCountedWithItsExtents) {
    const TextCanvas canvas;
    const Text text = _T("Fits or not");
    std::array<int, 11> extents = {};
    int fit = 0;
    SIZE size = {};
    for (int limit = 0; limit <= canvas.Width(text) + 1; ++limit) {
        ASSERT_TRUE(GetTextExtentExPointW(canvas, text.c_str(), 11, limit, &fit, extents.data(), &size));
        EXPECT_EQ(size.cx, canvas.Width(text));
        const auto units = static_cast<std::size_t>(fit);
        EXPECT_LE(canvas.Width(text.substr(0, units)), limit);
        EXPECT_TRUE(units == text.size() || canvas.Width(text.substr(0, units + 1)) > limit) << limit;
        for (std::size_t unit = 0; unit < units; ++unit) {
            EXPECT_EQ(extents[unit], canvas.Width(text.substr(0, unit + 1)));
        }
    }
}

TEST(TextMeasure, RefusesWhatIsNoContext) {
    SIZE size = {};
    TEXTMETRICW metrics = {};
    RECT rect = {0, 0, 10, 10};
    const TextCanvas canvas;
    EXPECT_FALSE(GetTextExtentPoint32W(nullptr, _T("a"), 1, &size));
    EXPECT_FALSE(GetTextMetricsW(nullptr, &metrics));
    EXPECT_FALSE(TextOutW(nullptr, 0, 0, _T("a"), 1));
    EXPECT_EQ(DrawTextW(nullptr, _T("a"), 1, &rect, 0), 0);
    EXPECT_FALSE(GetTextExtentPoint32W(canvas, _T("a"), -1, &size));
    EXPECT_FALSE(TextOutW(canvas, 0, 0, _T("a"), -1));
    EXPECT_TRUE(TextOutW(canvas, 0, 0, _T("a"), 0));
}

}  // namespace
