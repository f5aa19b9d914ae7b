// Any text with any flags: nothing is written or drawn where it should not be.

#include <gtest/gtest.h>

#include <random>

#include "support/wine.h"
#include "text_canvas.h"

namespace {

using test::Area;
using test::Text;

constexpr UINT kFormats[] = {DT_CENTER,        DT_RIGHT,      DT_VCENTER,    DT_BOTTOM,      DT_WORDBREAK,      DT_SINGLELINE,
                             DT_EXPANDTABS,    DT_NOCLIP,     DT_NOPREFIX,   DT_EDITCONTROL, DT_END_ELLIPSIS,   DT_PATH_ELLIPSIS,
                             DT_WORD_ELLIPSIS, DT_HIDEPREFIX, DT_PREFIXONLY, DT_RTLREADING,  DT_EXTERNALLEADING};

class Random {
public:
    int Below(int end) { return static_cast<int>(engine_() % static_cast<unsigned>(end)); }

    // Letters, marks, right-to-left and full-width ones, pairs of surrogates and halves, what DrawText and lines know, controls.
    Text AnyText() {
        static const TCHAR kUnits[] = {'a',    'W',    'i',    ' ',    ' ',    '&',    '\n',   '\r',   '\t',   '\\',   '.',
                                       0x00C4, 0x0301, 0x0308, 0x05D0, 0x05D1, 0x0627, 0x0644, 0x200D, 0x200F, 0x202E, 0x2028,
                                       0xD83D, 0xDE00, 0xD83D, 0xDC00, 0x65E5, 0x3001, 0xFEFF, 0xFFFF, 0x0007, 0x0E33};
        Text text(static_cast<std::size_t>(Below(Below(8) == 0 ? 1500 : 40)), 0);
        for (TCHAR& unit : text) {
            unit = kUnits[Below(static_cast<int>(std::size(kUnits)))];
        }
        return text;
    }

    UINT AnyFormat() {
        UINT format = 0;
        for (const UINT flag : kFormats) {
            format |= Below(4) == 0 ? flag : 0;
        }
        // Wine's process ends over ellipses of such texts.
        return test::RunsOnWine() ? format & ~(DT_END_ELLIPSIS | DT_PATH_ELLIPSIS | DT_WORD_ELLIPSIS) : format;
    }

private:
    std::mt19937 engine_{20260};
};

TEST(TextRandom, StaysInClipAndRectangle) {
    Random random;
    test::TextCanvas canvas;
    const Area clip = {40, 30, 200, 120};
    IntersectClipRect(canvas, clip.left, clip.top, clip.right, clip.bottom);
    for (int round = 0; round < 400; ++round) {
        const Text text = random.AnyText();
        const UINT format = random.AnyFormat();
        RECT rect = {random.Below(250), random.Below(150), 0, 0};
        rect.right = rect.left + random.Below(120) - 10;
        rect.bottom = rect.top + random.Below(80) - 10;
        canvas.Clear();
        SetBkMode(canvas, round % 2 == 0 ? OPAQUE : TRANSPARENT);
        SetBkColor(canvas, test::kGreen);
        DrawTextW(canvas, text.c_str(), static_cast<int>(text.size()), &rect, format);
        const Area ink = canvas.Ink();
        ASSERT_TRUE(ink == Area{} || ink.IsIn(clip)) << "round " << round << ": " << ink;
        if ((format & DT_NOCLIP) == 0 && !test::RunsOnWine()) {  // which does not always cut
            ASSERT_TRUE(ink == Area{} || ink.IsIn({rect.left, rect.top, rect.right, rect.bottom}))
                << "round " << round << ": " << ink;
        }
    }
}

TEST(TextRandom, MeasuresAreConsistent) {
    Random random;
    test::TextCanvas canvas;
    for (int round = 0; round < 300; ++round) {
        const Text text = random.AnyText();
        const int count = static_cast<int>(text.size());
        std::vector<int> extents(text.size() + 1, 0);
        int fit = -1;
        SIZE size = {};
        ASSERT_TRUE(GetTextExtentExPointW(canvas, text.c_str(), count, 100000, &fit, extents.data(), &size));
        ASSERT_EQ(fit, count);
        ASSERT_TRUE(std::is_sorted(extents.begin(), extents.end() - 1)) << "round " << round;
        ASSERT_EQ(count == 0 ? 0 : extents[text.size() - 1], size.cx) << "round " << round;

        // What is measured does not depend on being drawn, and the text's room is never overrun.
        Text room = text + Text(5, 0x7FFF);
        room[text.size()] = 0;
        RECT rect = {10, 10, 10 + random.Below(200), 60};
        const UINT format = (random.AnyFormat() & ~UINT{DT_VCENTER | DT_BOTTOM}) | DT_CALCRECT;
        const int height = DrawTextW(canvas, room.data(), count, &rect, format | DT_MODIFYSTRING);
        ASSERT_EQ(room[text.size() + 4], 0x7FFF) << "round " << round;
        ASSERT_GE(rect.right, rect.left) << "round " << round;
        const int line =
            canvas.LineHeight() + ((format & DT_EXTERNALLEADING) != 0 ? static_cast<int>(canvas.Metrics().tmExternalLeading) : 0);
        ASSERT_EQ(height % line, 0) << "round " << round;
        ASSERT_TRUE(count == 0 || rect.bottom - rect.top == height) << "round " << round;
    }
}

}  // namespace
