// Text of any length, on several threads, and where no font is installed.

#include <gtest/gtest.h>

#include <thread>

#include "support/child_process.h"
#include "support/environment.h"
#include "support/native_path_linux.h"
#include "support/temp_folder.h"
#include "text_canvas.h"

namespace {

using test::Area;
using test::Text;
using test::TextCanvas;

TEST(LinuxText, PartsOfACharacterHaveOneExtentAndAreNotParted) {
    const TextCanvas canvas;
    const TCHAR text[] = {0xD83D, 0xDE00, 'e', 0x0301, 'b', 0};
    int extents[5] = {};
    SIZE size = {};
    ASSERT_TRUE(GetTextExtentExPointW(canvas, text, 5, -1, nullptr, extents, &size));
    EXPECT_EQ(extents[0], extents[1]);
    EXPECT_EQ(extents[2], extents[3]);
    EXPECT_LT(extents[1], extents[2]);
    EXPECT_EQ(canvas.Width(_T("\xD800")), canvas.Width(_T("\xFFFD")));
    int fit = 0;
    ASSERT_TRUE(GetTextExtentExPointW(canvas, text, 5, extents[1] - 1, &fit, nullptr, &size));
    EXPECT_EQ(fit, 0);
    ASSERT_TRUE(GetTextExtentExPointW(canvas, text, 5, extents[2], &fit, nullptr, &size));
    EXPECT_EQ(fit, 4);
}

TEST(LinuxText, FixedPitchFacesAreFixed) {
    const TextCanvas fixed(test::MakeFont(-13, 0, false, false, _T("Courier New")));
    EXPECT_EQ(fixed.Width(_T("iiii")), fixed.Width(_T("MMMM")));
    EXPECT_EQ(fixed.Metrics().tmPitchAndFamily & TMPF_FIXED_PITCH, 0);
    const TextCanvas sans;
    EXPECT_LT(sans.Width(_T("iiii")), sans.Width(_T("MMMM")));
    EXPECT_NE(sans.Metrics().tmPitchAndFamily & TMPF_FIXED_PITCH, 0);
}

TEST(LinuxText, AFullStopFollowsTheReadingOrder) {
    TextCanvas canvas;
    const Text letters(3, 0x05D0);
    const auto drawn = [&](const Text& text, UINT align) {
        SetTextAlign(canvas, align);
        canvas.Clear();
        canvas.Out(10, 10, text);
        return canvas.Pixels();
    };
    EXPECT_EQ(drawn(letters + _T("."), TA_RTLREADING), drawn(_T(".") + letters, TA_LEFT));
    EXPECT_NE(drawn(letters + _T("."), TA_LEFT), drawn(_T(".") + letters, TA_LEFT));
}

TEST(LinuxText, AFullWidthTextBreaksBetweenItsCharacters) {
    const TextCanvas canvas;
    const Text text(10, 0x65E5);
    RECT rect = {0, 0, canvas.Width(text.substr(0, 4)), 0};
    EXPECT_EQ(DrawTextW(canvas, text.c_str(), 10, &rect, DT_WORDBREAK | DT_CALCRECT), 3 * canvas.LineHeight());
    EXPECT_EQ(DrawTextW(canvas, text.c_str(), 10, &rect, DT_WORDBREAK | DT_CALCRECT | DT_NOFULLWIDTHCHARBREAK),
              canvas.LineHeight());
}

TEST(LinuxText, AMillionCharactersAreMeasuredToTheLast) {
    TextCanvas canvas;
    constexpr int kWords = 200000;
    Text text;
    for (int word = 0; word < kWords; ++word) {
        text += _T("word ");
    }
    RECT rect = {0, 0, canvas.Width(_T("word word")), 0};
    EXPECT_EQ(DrawTextW(canvas, text.c_str(), -1, &rect, DT_WORDBREAK | DT_CALCRECT), kWords / 2 * canvas.LineHeight());
}

TEST(LinuxText, ThreadsDrawOnTheirOwnContexts) {
    std::vector<std::vector<DWORD>> pictures(4);
    std::vector<std::thread> threads;
    for (auto& picture : pictures) {
        threads.emplace_back([&picture] {
            TextCanvas canvas;
            for (int round = 0; round < 40; ++round) {
                canvas.Clear();
                const test::Object<HFONT> font(test::MakeFont(-10 - round % 8));
                const test::Selected selected(canvas, font);
                RECT rect = {5, 5, 200, 150};
                DrawTextW(canvas, _T("Each thread draws its own text, with \u00E4 and \u05D0."), -1, &rect, DT_WORDBREAK);
            }
            picture = canvas.Pixels();
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (const auto& picture : pictures) {
        EXPECT_EQ(picture, pictures.front());
    }
}

// Ends with 0 when text is measured and leaves no ink.
int DrawWithoutFonts(const test::ChildArgs&) {
    TextCanvas canvas;
    const int line = canvas.LineHeight();
    RECT rect = {0, 0, 60, 100};
    const int height = DrawTextW(canvas, _T("No font at all, &and words"), -1, &rect, DT_WORDBREAK | DT_NOPREFIX);
    canvas.Out(5, 5, _T("text"));
    int width = 0;
    GetCharWidth32W(canvas, 'a', 'a', &width);
    const bool measured = line > 0 && height > line && height % line == 0 && canvas.Width(_T("aa")) == 2 * width && width > 0;
    return measured && canvas.Ink() == Area{} ? 0 : 1;
}
REGISTER_CHILD(DrawWithoutFonts)

TEST(LinuxText, WithoutFontsTextIsMeasuredAndNotDrawn) {
    const test::TempFolder folder;
    const std::string file = test::Native(folder.Write(_T("fonts.conf"), "<?xml version=\"1.0\"?><fontconfig></fontconfig>"));
    const test::InEnvironment configuration(_T("FONTCONFIG_FILE"), test::Widen(file).c_str());
    EXPECT_EQ(test::ChildProcess({_T("DrawWithoutFonts")}).Wait(20000), 0u);
}

}  // namespace
