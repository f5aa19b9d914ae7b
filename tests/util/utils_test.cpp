#include <gtest/gtest.h>
#include <kadata/utils.h>

#include <bit>
#include <climits>
#include <cmath>
#include <limits>
#include <numeric>
#include <tuple>

#include "directory_test_support.h"
#include "support/child_process.h"
#include "support/environment.h"

namespace {

using test::ChildArgs, test::ChildProcess, test::Handle, test::Narrow, test::Text;

constexpr DWORD kPatience = 20'000;
const TCHAR* const kEventVariable = _T("KADATA_TEST_EVENT");

// Joined with "|".
std::string Pieces(const CString& text, TCHAR separator) {
    CStringArray pieces;
    pieces.Add(_T("before"));
    CKalidoUtils::StringTokenizer(text, separator, pieces);
    std::string all;
    for (INT_PTR i = 0; i < pieces.GetSize(); ++i) {
        all += (i == 0 ? "" : "|") + Narrow(pieces[i]);
    }
    return all;
}

TEST(Utils, ReadsAndWritesTextsOfTheHost) {
    test::ExpectTexts({{CKalidoUtils::FilterMnemonic(_T("&File &Open")), "File &Open"},
                       {CKalidoUtils::FilterMnemonic(_T("none")), "none"},
                       {CKalidoUtils::LoadStringW(500), "&Mill && &more"},
                       {CKalidoUtils::LoadStringFilterMnemonic(500), "Mill && &more"},
                       {CKalidoUtils::LoadStringW(999), ""},
                       {CKalidoUtils::FormatDWord(0), "0"},
                       {CKalidoUtils::FormatDWord(999), "999"},
                       {CKalidoUtils::FormatDWord(1000), "1.000"},
                       {CKalidoUtils::FormatDWord(4'294'967'295), "4.294.967.295"},
                       {CKalidoUtils::FormatDWord(4'294'967'296), "0"}});
    EXPECT_EQ(Pieces(_T("a..b"), _T('.')), "before|a||b");
    EXPECT_EQ(Pieces(_T(".a."), _T('.')), "before||a");
    EXPECT_EQ(Pieces(_T(""), _T('.')), "before");
}

TEST(Utils, ComparesFloatsByTheirSteps) {
    using Limits = std::numeric_limits<float>;
    const float one = 1.0F, next = std::nextafter(one, 2.0F), least = Limits::denorm_min(), inf = Limits::infinity();
    const float nan = std::bit_cast<float>(0xFFFFFFFFU);  // the last pattern below zero
    const struct {
        float a, b;
        int steps;
        bool equal;
    } rows[] = {{0.0F, -0.0F, 0, true},           {one, next, 1, true},        {one, next, 0, false},
                {-one, -next, 1, true},           {least, -least, 2, true},    {least, -least, 1, false},
                {inf, Limits::max(), 1, true},    {inf, -inf, INT_MAX, false}, {one, one, -1, false},
                {-nan, nan, INT_MAX, false},      {nan, nan, 0, true},         {one, -one, 2'130'706'432, true},
                {one, -one, 2'130'706'431, false}};
    for (const auto& row : rows) {
        EXPECT_EQ(CKalidoUtils::FloatAlmostEqual(row.a, row.b, row.steps) != 0, row.equal) << row.a << ' ' << row.b;
        EXPECT_EQ(CKalidoUtils::FloatAlmostEqual(row.b, row.a, row.steps) != 0, row.equal) << row.a << ' ' << row.b;
    }
}

TEST(Utils, MatchesDottedTexts) {
    CStringArrayEx patterns;
    EXPECT_FALSE(patterns.ContainsStringWithWildcards(_T("")));
    for (const TCHAR* const pattern : {_T("Mill.Motor*.Speed"), _T("a.*"), _T("*x.b")}) {
        patterns.Add(pattern);
    }
    const std::pair<const TCHAR*, BOOL> rows[] = {{_T("Mill.Motor.Speed"), TRUE},
                                                  {_T("Mill.Motor12.Speed"), TRUE},
                                                  {_T("Mill.Mot.Speed"), FALSE},
                                                  {_T("mill.Motor.Speed"), FALSE},
                                                  {_T("Mill.Motor"), FALSE},
                                                  {_T("Mill.Motor.Speed.x"), FALSE},
                                                  {_T("Mill.Motor.Speed."), FALSE},
                                                  {_T("a."), TRUE},
                                                  {_T("a.b"), TRUE},
                                                  {_T("a"), FALSE},
                                                  {_T("a.b.c"), FALSE},
                                                  {_T("*x.b"), TRUE},
                                                  {_T("yx.b"), FALSE},
                                                  {_T(""), FALSE}};
    for (const auto& [text, expected] : rows) {
        EXPECT_EQ(patterns.ContainsStringWithWildcards(text), expected) << Narrow(text);
    }
    patterns.Add(_T("*"));
    EXPECT_TRUE(patterns.ContainsStringWithWildcards(_T("")));
}

TEST(HexDump, ShowsBytesInLinesOfSixteen) {
    BYTE bytes[33];
    std::iota(std::begin(bytes), std::end(bytes), BYTE{0xF0});
    const std::string first = "f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, fa, fb, fc, fd, fe, ff";
    const std::string second = "00, 01, 02, 03, 04, 05, 06, 07, 08, 09, 0a, 0b, 0c, 0d, 0e, 0f";
    const std::tuple<int, std::string, std::string> rows[] = {
        {-1, "", ""},
        {0, "", ""},
        {2, "f0, f1", "f0, f1"},
        {16, first, first},
        {17, first + ", 00", first + "\n00"},
        {33, first + ", " + second + ", 10", first + "\n" + second + "\n10"}};
    for (const auto& [count, line, text] : rows) {
        EXPECT_EQ(Narrow(CHexDump::ToLine(bytes, count, 0)), line);
        EXPECT_EQ(Narrow(CHexDump::ToString(bytes, count, 1)), text);
    }
}

// What "osk.exe" does here: says that it is there, and stays until it is ended.
int BeTheKeyboard(const ChildArgs& /*args*/) {
    TCHAR name[MAX_PATH];
    GetEnvironmentVariableW(kEventVariable, name, MAX_PATH);
    SetEvent(Handle(OpenEventW(EVENT_MODIFY_STATE, FALSE, name)));
    return static_cast<int>(WaitForSingleObject(Handle(CreateEventW(nullptr, TRUE, FALSE, nullptr)), kPatience));
}
REGISTER_CHILD(BeTheKeyboard)

// The number of the step that failed, 0 when none did. It has a keyboard in its own folder.
int UseTheKeyboard(const ChildArgs& args) {
    if (CKalidoUtils::IsVirtualKeyboardRunning()) {
        return 1;
    }
    const Handle up(OpenEventW(SYNCHRONIZE, FALSE, args[0].c_str()));
    CKalidoUtils::StartVirtualKeyboard();
    if (WaitForSingleObject(up, kPatience) != WAIT_OBJECT_0) {
        return 2;
    }
    if (!CKalidoUtils::IsVirtualKeyboardRunning()) {
        return 3;
    }
    CKalidoUtils::CloseVirtualKeyboard();
    const DWORD start = GetTickCount();
    while (CKalidoUtils::IsVirtualKeyboardRunning()) {
        if (GetTickCount() - start > kPatience) {
            return 4;
        }
    }
    CKalidoUtils::CloseVirtualKeyboard();
    return 0;
}
REGISTER_CHILD(UseTheKeyboard)

TEST(VirtualKeyboard, IsStartedFoundAndEnded) {
    if (CKalidoUtils::IsVirtualKeyboardRunning()) {
        GTEST_SKIP() << "the user of this machine needs the one that runs";
    }
    const test::TempFolder folder;
    const Text event = test::UniqueName(_T("Keyboard"));
    const Handle up(CreateEventW(nullptr, TRUE, FALSE, event.c_str()));
    const test::InEnvironment role(test::kNameVariable, _T("BeTheKeyboard")), name(kEventVariable, event.c_str());
    const Text host = folder.Path(_T("host.exe"));
    ASSERT_TRUE(CopyFileW(test::OwnPath().c_str(), host.c_str(), TRUE));
    ASSERT_TRUE(CopyFileW(test::OwnPath().c_str(), folder.Path(_T("osk.exe")).c_str(), TRUE));
    const ChildProcess child({_T("UseTheKeyboard"), event}, host);
    EXPECT_EQ(child.Wait(3 * kPatience), 0U);
}

TEST(Utils, LosesNothingOnTheWayToBytesAndBack) {
    const std::pair<CString, std::string> rows[] = {
        {CString(), ""},
        {_T("\u00E4\u00F6\u00FC\u00DF\u20AC \u8BC1 \U0001F9B7"),
         "\xC3\xA4\xC3\xB6\xC3\xBC\xC3\x9F\xE2\x82\xAC \xE8\xAF\x81 \xF0\x9F\xA6\xB7"},
        {CString(_T("a\0b\0"), 4), std::string("a\0b\0", 4)},
    };
    for (const auto& [text, bytes] : rows) {
        EXPECT_EQ(CKalidoUtils::WC2MB(text), bytes);
        EXPECT_EQ(CKalidoUtils::MB2WC(bytes), text);
    }
    const TCHAR half[] = {_T('x'), 0xD800, _T('y'), 0};
    EXPECT_EQ(CKalidoUtils::WC2MB(half), "x\xEF\xBF\xBDy");
    EXPECT_EQ(CKalidoUtils::MB2WC("M\xFCller"), _T("M\u00FCller"));  // an older file's
    const CString book(_T('\u20AC'), 4'000'000);
    EXPECT_EQ(CKalidoUtils::MB2WC(CKalidoUtils::WC2MB(book)), book);
}

}  // namespace
