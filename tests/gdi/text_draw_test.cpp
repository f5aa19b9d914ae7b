// Text in a rectangle: its lines, where they break, and what happens to text that is too long.

#include <gtest/gtest.h>

#include "support/wine.h"
#include "text_canvas.h"

namespace {

using test::Area;
using test::Text;
using test::TextCanvas;

struct Measured {
    int height;
    RECT rect;
};

Measured Measure(const TextCanvas& canvas, const Text& text, UINT format, int width, int height = 50) {
    RECT rect = {10, 20, 10 + width, 20 + height};
    const int result = DrawTextW(canvas, text.c_str(), -1, &rect, format | DT_CALCRECT);
    return {result, rect};
}

std::vector<DWORD> Drawn(TextCanvas& canvas, const Text& text, UINT format, RECT rect) {
    canvas.Clear();
    DrawTextW(canvas, text.c_str(), static_cast<int>(text.size()), &rect, format);
    return canvas.Pixels();
}

TEST(TextInRectangle, BreaksLines) {
    const TextCanvas canvas;
    struct {
        Text text;
        UINT format;
        Text room;  // as wide as it; empty: without end
        int lines;
        Text widest;
    } const rows[] = {
        {_T("one two three"), 0, _T("o"), 1, _T("one two three")},
        {_T("one two three"), DT_WORDBREAK, _T(""), 1, _T("one two three")},
        {_T("one two three"), DT_WORDBREAK, _T("one two "), 2, test::UnlessWine<Text>(_T("one two"), _T("one two "))},
        {_T("one two three"), DT_WORDBREAK, _T("three"), 3, _T("three")},
        {_T("a bigger-than-that b"), DT_WORDBREAK, _T("bigger"), 3, _T("bigger-than-that")},
        {_T("one two three"), DT_WORDBREAK | DT_SINGLELINE, _T("one"), 1, _T("one two three")},
        {_T("iiiiiiii"), DT_WORDBREAK, _T("iii"), 1, _T("iiiiiiii")},
        {_T("iiiiiiii"), DT_WORDBREAK | DT_EDITCONTROL, _T("iii"), 3, _T("iii")},
        {_T("one\ntwo\rthree\r\nfour"), 0, _T(""), 4, _T("three")},
        {_T("one\n\ntwo"), 0, _T(""), 3, _T("one")},
        {_T("one\n"), 0, _T(""), 1, _T("one")},
        {_T("\n\n"), 0, _T(""), 2, _T("")},
        {_T("one two\nthree four"), DT_WORDBREAK, _T("one two"), 3, _T("one two")},
    };
    for (const auto& row : rows) {
        const Measured got = Measure(canvas, row.text, row.format, row.room.empty() ? 1000 : canvas.Width(row.room));
        const std::string what(row.text.begin(), row.text.end());
        EXPECT_EQ(got.height, row.lines * canvas.LineHeight()) << what;
        EXPECT_EQ(got.rect.bottom - got.rect.top, got.height) << what;
        EXPECT_EQ(got.rect.right - got.rect.left, canvas.Width(row.widest)) << what;
        EXPECT_TRUE(got.rect.left == 10 && got.rect.top == 20) << what;
    }
    EXPECT_EQ(Measure(canvas, _T("a\nb"), DT_EXTERNALLEADING, 100).height,
              2 * (canvas.LineHeight() + static_cast<int>(canvas.Metrics().tmExternalLeading)));
}

TEST(TextInRectangle, EmptyTextIsALineWithoutARectangle) {
    const TextCanvas canvas;
    const Measured terminated = Measure(canvas, _T(""), 0, 50);
    EXPECT_EQ(terminated.height, canvas.LineHeight());
    EXPECT_EQ(terminated.rect.right, 10);
    EXPECT_EQ(terminated.rect.bottom, 20);
    EXPECT_EQ(Measure(canvas, _T(""), DT_SINGLELINE, 50).rect.bottom, 20 + canvas.LineHeight());
    RECT rect = {10, 20, 60, 70};
    EXPECT_EQ(DrawTextW(canvas, _T("a"), 0, &rect, DT_CALCRECT), canvas.LineHeight());
    EXPECT_EQ(rect.bottom, 70);
}

TEST(TextInRectangle, AlignsInTheRectangle) {
    TextCanvas canvas;
    const RECT rect = {20, 10, 240, 105};
    const Text text = _T("Hxg");
    Drawn(canvas, text, DT_SINGLELINE, rect);
    const Area first = canvas.Ink();
    const int across = 220 - canvas.Width(text);
    const int down = 95 / 2 - canvas.LineHeight() / 2;
    struct {
        UINT format;
        int dx, dy;
    } const rows[] = {
        {DT_SINGLELINE | DT_RIGHT, across, 0},
        {DT_SINGLELINE | DT_CENTER, across / 2, 0},
        {DT_CENTER, across / 2, 0},
        {DT_SINGLELINE | DT_VCENTER, 0, down},
        {DT_SINGLELINE | DT_BOTTOM | DT_RIGHT, across, 95 - canvas.LineHeight()},
        {DT_VCENTER, 0, 0},
    };
    for (const auto& row : rows) {
        Drawn(canvas, text, row.format, rect);
        const Area ink = canvas.Ink();
        EXPECT_NEAR(ink.left, first.left + row.dx, 1) << row.format;
        EXPECT_NEAR(ink.top, first.top + row.dy, 1) << row.format;
        EXPECT_EQ(ink.right - ink.left, first.right - first.left) << row.format;
    }
    RECT bottom = rect;
    EXPECT_EQ(DrawTextW(canvas, _T("Hxg"), 3, &bottom, DT_SINGLELINE | DT_BOTTOM), 95);
}

TEST(TextInRectangle, DrawsWhatItMeasures) {
    TextCanvas canvas;
    const Text text = _T("A paragraph of \u00C4mter, \u00FCbel & gut, that needs\tsome lines, gjpq.\nAnother one.");
    constexpr UINT kCases[] = {DT_WORDBREAK, DT_WORDBREAK | DT_CENTER | DT_NOPREFIX, DT_WORDBREAK | DT_RIGHT | DT_EXPANDTABS};
    for (const UINT format : kCases) {
        const Measured measured = Measure(canvas, text, format, 120);
        const RECT wide = {10, 20, 130, measured.rect.bottom};
        const auto drawn = Drawn(canvas, text, format | DT_NOCLIP, wide);
        EXPECT_TRUE(canvas.Ink().IsIn({9, 19, 131, wide.bottom})) << canvas.Ink();
        EXPECT_GT(canvas.Ink().bottom, wide.bottom - canvas.LineHeight()) << format;
        if ((format & (DT_CENTER | DT_RIGHT)) == 0 && !test::RunsOnWine()) {  // which breaks before a word that just fits
            EXPECT_EQ(Drawn(canvas, text, format | DT_NOCLIP, measured.rect), drawn);
        }
    }
}

TEST(TextInRectangle, CutsAtTheRectangleUnlessToldNot) {
    TextCanvas canvas;
    const RECT rect = {30, 30, 60, 40};
    Drawn(canvas, _T("Wide text\nand two\nthree lines"), 0, rect);
    EXPECT_TRUE(canvas.Ink().IsIn({30, 30, 60, 40})) << canvas.Ink();
    Drawn(canvas, _T("Wide text\nand two\nthree lines"), DT_NOCLIP, rect);
    EXPECT_GT(canvas.Ink().right, 65);
    EXPECT_GT(canvas.Ink().bottom, 30 + 2 * canvas.LineHeight());

    const int line = canvas.LineHeight();
    RECT partial = {10, 10, 200, 10 + 2 * line + line / 2};
    EXPECT_EQ(DrawTextW(canvas, _T("1\n2\n3\n4"), -1, &partial, 0), 3 * line);
    EXPECT_EQ(DrawTextW(canvas, _T("1\n2\n3\n4"), -1, &partial, DT_EDITCONTROL), 2 * line);
    EXPECT_EQ(DrawTextW(canvas, _T("1\n2\n3\n4"), -1, &partial, DT_NOCLIP), 4 * line);
}

TEST(TextInRectangle, UnderlinesWhatAPrefixMarks) {
    TextCanvas canvas;
    const RECT rect = {10, 10, 200, 60};
    const auto plain = Drawn(canvas, _T("abc"), DT_NOPREFIX, rect);
    const Area ink = canvas.Ink();
    EXPECT_NE(Drawn(canvas, _T("a&bc"), 0, rect), plain);
    EXPECT_GT(canvas.Ink().bottom, ink.bottom);
    EXPECT_EQ(Drawn(canvas, _T("a&&b"), 0, rect), Drawn(canvas, _T("a&b"), DT_NOPREFIX, rect));
    EXPECT_EQ(Drawn(canvas, _T("ab&"), 0, rect), Drawn(canvas, _T("ab&"), DT_NOPREFIX, rect));
    EXPECT_EQ(Measure(canvas, _T("&abc&&"), 0, 100).rect.right - 10, canvas.Width(_T("abc&")));
    if (test::RunsOnWine()) {
        return;  // knows neither of the two flags that follow
    }
    EXPECT_EQ(Drawn(canvas, _T("a&bc"), DT_HIDEPREFIX, rect), plain);
    Drawn(canvas, _T("a&bc"), DT_PREFIXONLY, rect);
    const int before = canvas.Width(_T("a"));
    const Area mark = canvas.Ink();
    EXPECT_NEAR(mark.left, 10 + before, 1);
    EXPECT_NEAR(mark.right, 10 + before + canvas.Width(_T("b")), 1);
    EXPECT_GE(mark.top, 10 + canvas.Metrics().tmAscent);
    EXPECT_LE(mark.bottom, 10 + canvas.LineHeight());
}

TEST(TextInRectangle, EndsWithAnEllipsisWhereItDoesNotFit) {
    const TextCanvas canvas;
    struct {
        Text text;
        Text room;
        UINT format;
        Text shown;
    } const rows[] = {
        {_T("Patient record"), _T("Patient record"), DT_END_ELLIPSIS, _T("Patient record")},
        {_T("Patient record"), _T("Patient..."), DT_END_ELLIPSIS, _T("Patient...")},
        {_T("Pa&tient record"), _T("Patient..."), DT_END_ELLIPSIS, _T("Patient...")},
        {_T("Pa&tient"), _T("Patient"), DT_END_ELLIPSIS, _T("Pa&tient")},
        {_T("Patient record"), _T("."), DT_END_ELLIPSIS, _T("...")},
        {_T("Patient record"), _T("Patient..."), DT_WORD_ELLIPSIS, _T("Patient...")},
        {_T("C:\\folder\\sub\\file.txt"), _T("C:\\fol...\\file.txt"), DT_PATH_ELLIPSIS, _T("C:\\fol...\\file.txt")},
        {_T("C:\\folder\\sub\\file.txt"), _T("...\\file"), DT_PATH_ELLIPSIS, _T("...\\file.txt")},
        {_T("C:\\folder\\sub\\file.txt"), _T("...\\fi..."), DT_PATH_ELLIPSIS | DT_END_ELLIPSIS, _T("...\\fi...")},
    };
    for (const auto& row : rows) {
        Text text = row.text;
        text.resize(text.size() + 5, _T('#'));
        text[row.text.size()] = 0;
        RECT rect = {10, 20, 10 + canvas.Width(row.room), 60};
        DrawTextW(canvas, text.data(), -1, &rect, row.format | DT_SINGLELINE | DT_MODIFYSTRING | DT_CALCRECT);
        EXPECT_EQ(Text(text.c_str()), row.shown) << std::string(row.shown.begin(), row.shown.end());
        EXPECT_EQ(text.back(), _T('#'));
        Text without = row.shown;
        std::erase(without, _T('&'));
        EXPECT_EQ(rect.right - rect.left, canvas.Width(without));
    }
}

TEST(TextInRectangle, ALastLineThatIsNotAllEndsWithAnEllipsis) {
    if (test::RunsOnWine()) {
        GTEST_SKIP() << "keeps only the last line of the text";
    }
    TextCanvas canvas;
    RECT rect = {10, 10, 10 + canvas.Width(_T("second...")), 10 + 2 * canvas.LineHeight()};
    TCHAR text[40] = _T("first\nsecond line\nthird");
    EXPECT_EQ(DrawTextW(canvas, text, -1, &rect, DT_END_ELLIPSIS | DT_MODIFYSTRING), 2 * canvas.LineHeight());
    EXPECT_EQ(Text(text), Text(_T("first\nsecond...")));
    TCHAR short_line[40] = _T("first\n2\nthird");
    DrawTextW(canvas, short_line, -1, &rect, DT_END_ELLIPSIS | DT_MODIFYSTRING);
    EXPECT_EQ(Text(short_line), Text(_T("first\n2...")));
}

TEST(TextInRectangle, TabsAndMarginsAreInMeanWidths) {
    const TextCanvas canvas;
    const int mean = static_cast<int>(canvas.Metrics().tmAveCharWidth);
    const int b = canvas.Width(_T("b"));
    EXPECT_EQ(Measure(canvas, _T("a\tb"), DT_EXPANDTABS, 500).rect.right, 10 + 8 * mean + b);
    EXPECT_EQ(Measure(canvas, _T("\t\tb"), DT_EXPANDTABS, 500).rect.right, 10 + 16 * mean + b);
    DRAWTEXTPARAMS params = {sizeof params, 5, 2, 1, 0};
    RECT rect = {10, 20, 400, 50};
    TCHAR text[] = _T("a\tb");
    DrawTextExW(canvas, text, -1, &rect, DT_EXPANDTABS | DT_TABSTOP | DT_CALCRECT, &params);
    const int margins = 3 * test::UnlessWine(mean, 1);
    EXPECT_EQ(rect.right, 10 + margins + 5 * mean + b);
    EXPECT_EQ(params.uiLengthDrawn, 3u);
    params.cbSize = 7;
    EXPECT_EQ(DrawTextExW(canvas, text, -1, &rect, 0, &params), 0);
}

TEST(TextInRectangle, TellsHowMuchOfTheTextIsDone) {
    TextCanvas canvas;
    DRAWTEXTPARAMS params = {sizeof params, 0, 0, 0, 0};
    TCHAR text[] = _T("&one\ntw&&o\nthree");
    RECT rect = {10, 10, 100, 10 + canvas.LineHeight() + 2};
    DrawTextExW(canvas, text, -1, &rect, 0, &params);
    EXPECT_EQ(params.uiLengthDrawn, test::UnlessWine(11u, 0u));
    DrawTextExW(canvas, text, -1, &rect, DT_NOCLIP, &params);
    EXPECT_EQ(params.uiLengthDrawn, test::UnlessWine(16u, 0u));
}

}  // namespace
