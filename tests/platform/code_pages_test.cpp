#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <numeric>
#include <string>
#include <string_view>
#include <tuple>

#include "support/last_error.h"
#include "support/temp_folder.h"
#include "support/wine.h"

namespace {

using test::ErrorOf, test::Text;

Text Decode(UINT code_page, std::string_view bytes) {
    TCHAR target[300];
    const int count = MultiByteToWideChar(code_page, 0, bytes.data(), static_cast<int>(bytes.size()), target, 300);
    return Text(target, static_cast<std::size_t>(count));
}

std::string Encode(UINT code_page, DWORD flags, const Text& text, const char* default_char = nullptr, BOOL* used = nullptr) {
    char target[300];
    const int length = static_cast<int>(text.size());
    const int count = WideCharToMultiByte(code_page, flags, text.data(), length, target, 300, default_char, used);
    return std::string(target, static_cast<std::size_t>(count));
}

TEST(CodePages, ReadAndWriteWhatTheirBytesStandFor) {
    const std::tuple<UINT, std::string, Text> rows[] = {
        {1252, "M\xFCller \x80 \x8A\x9E", _T("M\u00FCller \u20AC \u0160\u017E")},
        {437, "\x81\x94\xE1 \x7F\x1A", _T("\u00FC\u00F6\u00DF \x7F\x1A")},
        {1253, "\xC1\xFE", _T("\u0391\u03CE")},
        {28591, "\xE4\x80", _T("\u00E4\u0080")},
        {932, "A\x83\x65\xB1\x81\x5C", _T("A\u30C6\uFF71\u2015")},
        {936, "\xC4\xE3\x80", _T("\u4F60\u20AC")},
        {CP_UTF8, "\xC3\xA4\xE2\x82\xAC\xF0\x9F\xA6\xB7", _T("\u00E4\u20AC\U0001F9B7")}};
    for (const auto& [code_page, bytes, text] : rows) {
        SCOPED_TRACE(code_page);
        EXPECT_EQ(Decode(code_page, bytes), text);
        EXPECT_EQ(Encode(code_page, 0, text), bytes);
    }
    std::string all(256, '\0');
    std::iota(all.begin(), all.end(), '\0');
    const Text text = Decode(1252, all);
    ASSERT_EQ(text.size(), 256u);
    for (const unsigned unused : {0x81u, 0x8Du, 0x8Fu, 0x90u, 0x9Du})
        EXPECT_EQ(static_cast<unsigned>(text[unused]), unused);
    EXPECT_EQ(Encode(1252, 0, text), all);
}

TEST(CodePages, ReplaceWhatTheyCannotSayAndFitTheNearestUnlessForbidden) {
    const std::tuple<DWORD, const TCHAR*, const char*, const char*, BOOL> rows[] = {
        {0, _T("a\u4E2Db"), nullptr, "a?b", TRUE},
        {0, _T("a\u4E2Db"), "_", "a_b", TRUE},
        {0, _T("\U0001F9B7"), nullptr, "??", TRUE},
        {0, _T("\u0141ukasz \u0100\uFF21\u00FC"), nullptr, "Lukasz AA\xFC", FALSE},
        {WC_NO_BEST_FIT_CHARS, _T("\u0141ukasz \u0100\uFF21"), nullptr, "?ukasz ??", TRUE}};
    for (const auto& [flags, text, default_char, bytes, replaced] : rows) {
        BOOL used = 7;
        EXPECT_EQ(Encode(1252, flags, text, default_char, &used), bytes);
        EXPECT_EQ(used, replaced) << bytes;
    }
}

TEST(CodePages, HaveUnitsForWhatStandsForNothing) {
    const std::tuple<UINT, std::string, Text, bool> rows[] = {
        {932, std::string("a\x85\x40") + "b\x81", _T("a\u30FBb\u30FB"), true},
        {932, "\x80\xF0\x40", _T("\u0080\uE000"), false},  // a user's own character
        {936, "\x81", _T("?"), true},
        {1253, "\xAA\xD2\xFF", _T("\uF8F9\uF8FA\uF8FB"), true},
        {437, "\xE6", _T("\u00B5"), false},
        {720, "\x80\x84", _T("\u0080\u0084"), false},
        {20127, "\xE1\x9A", _T("a\x1A"), false},
        {CP_UTF8, "a\xC3(\xF0\x9F\xA6-\xC0\xAF", _T("a\uFFFD(\uFFFD-\uFFFD\uFFFD"), true}};
    for (const auto& [code_page, bytes, text, refused] : rows) {
        EXPECT_EQ(Decode(code_page, bytes), text) << code_page;
        const int length = static_cast<int>(bytes.size());
        const int count = MultiByteToWideChar(code_page, MB_ERR_INVALID_CHARS, bytes.data(), length, nullptr, 0);
        EXPECT_EQ(count == 0, refused) << code_page;
    }
    EXPECT_EQ(Encode(1253, 0, _T("\uF8FA")) + Encode(20127, 0, Text(_T("\0a"), 2)), std::string("\xD2\0a", 3));
}

TEST(CodePages, CountWithTheTerminatorOnlyForALengthOfMinusOne) {
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "\xC3\xA4z", -1, nullptr, 0), 3);
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "\xC3\xA4z", 3, nullptr, 0), 2);
    EXPECT_EQ(WideCharToMultiByte(1252, 0, _T("\u00E4z"), -1, nullptr, 0, nullptr, nullptr), 3);
}

TEST(CodePages, TellWhatIsWrong) {
    const auto wrong_parameter = test::UnlessWine<DWORD>(ERROR_INVALID_PARAMETER, ERROR_SUCCESS);
    const auto wrong_flags = test::UnlessWine<DWORD>(ERROR_INVALID_FLAGS, ERROR_SUCCESS);
    TCHAR wide[4];
    const auto decode = [](UINT page, DWORD flags, const char* text, int length, TCHAR* target, int capacity) {
        SetLastError(ERROR_SUCCESS);
        return MultiByteToWideChar(page, flags, text, length, target, capacity) != 0 ? ERROR_SUCCESS : GetLastError();
    };
    EXPECT_EQ(decode(1252, 0, "abc", 3, wide, 2), ERROR_INSUFFICIENT_BUFFER);
    EXPECT_EQ(decode(1252, 0, nullptr, 3, wide, 4), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(decode(1252, 0, "abc", 0, wide, 4), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(decode(1252, 0, "abc", 3, wide, -1), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(decode(4711, 0, "abc", 3, wide, 4), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(decode(1252, 0x40000000, "abc", 3, wide, 4), ERROR_INVALID_FLAGS);
    EXPECT_EQ(decode(CP_UTF8, MB_PRECOMPOSED, "abc", 3, wide, 4), wrong_flags);
    EXPECT_EQ(decode(CP_UTF8, MB_ERR_INVALID_CHARS, "\xED\xA0\x80", 3, wide, 4), ERROR_NO_UNICODE_TRANSLATION);

    char target[4];
    BOOL used = FALSE;
    const TCHAR lone[] = {static_cast<TCHAR>(0xD800), 0};
    const auto encode = [&](UINT page, DWORD flags, const TCHAR* text, const char* default_char = nullptr, BOOL* flag = nullptr) {
        SetLastError(ERROR_SUCCESS);
        return WideCharToMultiByte(page, flags, text, -1, target, 4, default_char, flag) != 0 ? ERROR_SUCCESS : GetLastError();
    };
    EXPECT_EQ(encode(1252, 0, nullptr), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(encode(CP_UTF8, 0, _T("a"), "?"), wrong_parameter);
    EXPECT_EQ(encode(CP_UTF8, 0, _T("a"), nullptr, &used), wrong_parameter);
    EXPECT_EQ(encode(CP_UTF8, WC_NO_BEST_FIT_CHARS, _T("a")), wrong_flags);
    EXPECT_EQ(encode(1252, WC_ERR_INVALID_CHARS, _T("a")), wrong_flags);
    EXPECT_EQ(encode(CP_UTF8, WC_ERR_INVALID_CHARS, lone), ERROR_NO_UNICODE_TRANSLATION);
    EXPECT_EQ(encode(1252, 0, _T("M\u00FCller")), ERROR_INSUFFICIENT_BUFFER);
    EXPECT_EQ(std::string(target, 4), "M\xFCll");  // what fits is written
}

TEST(CodePages, DescribeThemselves) {
    CPINFO info{};
    ASSERT_TRUE(GetCPInfo(932, &info));
    EXPECT_EQ(info.MaxCharSize, 2u);
    EXPECT_EQ(std::string(info.LeadByte, info.LeadByte + 5), std::string("\x81\x9F\xE0\xFC\0", 5));
    ASSERT_TRUE(GetCPInfo(1252, &info));
    EXPECT_TRUE(info.MaxCharSize == 1 && info.LeadByte[0] == 0);
    EXPECT_EQ(ErrorOf(GetCPInfo(4711, &info)), ERROR_INVALID_PARAMETER);
    EXPECT_TRUE(IsDBCSLeadByteEx(932, 0xE0) && !IsDBCSLeadByteEx(932, 0xB1));
    EXPECT_TRUE(IsValidCodePage(437) && IsValidCodePage(GetACP()) && IsValidCodePage(GetOEMCP()) && !IsValidCodePage(4711));
}

}  // namespace
