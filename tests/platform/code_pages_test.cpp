#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <numeric>
#include <string>
#include <string_view>

#include "support/temp_folder.h"

namespace {

using test::Text;

Text Decode(UINT code_page, std::string_view bytes) {
    TCHAR target[600];
    const int count = MultiByteToWideChar(code_page, 0, bytes.data(), static_cast<int>(bytes.size()), target, 600);
    EXPECT_GT(count, 0);
    return Text(target, static_cast<std::size_t>(count));
}

struct Encoded {
    std::string bytes;
    BOOL used_default = FALSE;
};

Encoded Encode(UINT code_page, DWORD flags, const Text& text, const char* default_char = nullptr) {
    char target[600];
    Encoded result;
    BOOL* const used = code_page == CP_UTF8 ? nullptr : &result.used_default;
    const int count =
        WideCharToMultiByte(code_page, flags, text.data(), static_cast<int>(text.size()), target, 600, default_char, used);
    EXPECT_GT(count, 0);
    result.bytes.assign(target, static_cast<std::size_t>(count));
    return result;
}

TEST(CodePages, ReadAndWriteWhatTheirBytesStandFor) {
    const struct {
        UINT code_page;
        std::string bytes;
        Text text;
    } rows[] = {
        {1252, "M\xFCller \x80 \x8A\x9E", _T("M\u00FCller \u20AC \u0160\u017E")},
        {437, "\x81\x94\xE1 \x7F\x1A", _T("\u00FC\u00F6\u00DF \x7F\x1A")},
        {850, "\x81\xD5\x9B", _T("\u00FC\u0131\u00F8")},
        {1250, "\xA3\xF3\x64\x9F", _T("\u0141\u00F3d\u017A")},
        {1251, "\xCF\xF0", _T("\u041F\u0440")},
        {1253, "\xC1\xFE", _T("\u0391\u03CE")},
        {28591, "\xE4\x80", _T("\u00E4\u0080")},
        {932, "A\x83\x65\xB1\x81\x5C", _T("A\u30C6\uFF71\u2015")},
        {936, "\xC4\xE3\x80", _T("\u4F60\u20AC")},
        {949, "\xB0\xA1", _T("\uAC00")},
        {950, "\xA4\xA4", _T("\u4E2D")},
        {CP_UTF8, "\xC3\xA4\xE2\x82\xAC\xF0\x9F\xA6\xB7", _T("\u00E4\u20AC\U0001F9B7")},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.code_page);
        EXPECT_EQ(Decode(row.code_page, row.bytes), row.text);
        const Encoded encoded = Encode(row.code_page, 0, row.text);
        EXPECT_EQ(encoded.bytes, row.bytes);
        EXPECT_FALSE(encoded.used_default);
    }
}

TEST(CodePages, KeepEveryByteOf1252BothWays) {
    std::string all(256, '\0');
    std::iota(all.begin(), all.end(), '\0');
    const Text text = Decode(1252, all);
    ASSERT_EQ(text.size(), 256u);
    for (const unsigned unused : {0x81u, 0x8Du, 0x8Fu, 0x90u, 0x9Du}) {
        EXPECT_EQ(static_cast<unsigned>(text[unused]), unused);
    }
    EXPECT_EQ(Encode(1252, 0, text).bytes, all);
}

TEST(CodePages, ReplaceWhatTheyCannotSay) {
    const Text text = _T("a\u4E2Db");
    EXPECT_EQ(Encode(1252, 0, text).bytes, "a?b");
    EXPECT_TRUE(Encode(1252, 0, text).used_default);
    EXPECT_EQ(Encode(1252, 0, text, "_").bytes, "a_b");
    EXPECT_EQ(Encode(1252, 0, _T("\U0001F9B7")).bytes, "??");
    EXPECT_EQ(Decode(CP_UTF8, "a\xC3("), _T("a\uFFFD("));
}

TEST(CodePages, FitTheNearestCharacterUnlessForbidden) {
    const Text text = _T("\u0141ukasz \u0100\uFF21");
    EXPECT_EQ(Encode(1252, 0, text).bytes, "Lukasz AA");
    EXPECT_FALSE(Encode(1252, 0, text).used_default);
    EXPECT_EQ(Encode(1252, WC_NO_BEST_FIT_CHARS, text).bytes, "?ukasz ??");
    EXPECT_TRUE(Encode(1252, WC_NO_BEST_FIT_CHARS, text).used_default);
}

TEST(CodePages, CountWithTheTerminatorOnlyForALengthOfMinusOne) {
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "\xC3\xA4z", -1, nullptr, 0), 3);
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "\xC3\xA4z", 3, nullptr, 0), 2);
    EXPECT_EQ(WideCharToMultiByte(1252, 0, _T("\u00E4z"), -1, nullptr, 0, nullptr, nullptr), 3);
    EXPECT_EQ(WideCharToMultiByte(932, 0, _T("\u30C6z"), 2, nullptr, 0, nullptr, nullptr), 3);
}

TEST(CodePages, TellWhatIsWrongWithADecoding) {
    TCHAR target[4];
    const struct {
        UINT code_page;
        DWORD flags;
        const char* text;
        int length;
        TCHAR* target;
        int capacity;
        DWORD error;
    } rows[] = {
        {1252, 0, "abc", 3, target, 2, ERROR_INSUFFICIENT_BUFFER},
        {CP_UTF8, 0, "abc", -1, target, 3, ERROR_INSUFFICIENT_BUFFER},
        {1252, 0, nullptr, 3, target, 4, ERROR_INVALID_PARAMETER},
        {1252, 0, "abc", 0, target, 4, ERROR_INVALID_PARAMETER},
        {1252, 0, "abc", 3, target, -1, ERROR_INVALID_PARAMETER},
        {1252, 0, "abc", 3, nullptr, 4, ERROR_INVALID_PARAMETER},
        {4711, 0, "abc", 3, target, 4, ERROR_INVALID_PARAMETER},
        {1252, 0x40000000, "abc", 3, target, 4, ERROR_INVALID_FLAGS},
        {CP_UTF8, MB_PRECOMPOSED, "abc", 3, target, 4, ERROR_INVALID_FLAGS},
        {CP_UTF8, MB_ERR_INVALID_CHARS, "a\x80", 2, target, 4, ERROR_NO_UNICODE_TRANSLATION},
        {CP_UTF8, MB_ERR_INVALID_CHARS, "\xED\xA0\x80", 3, target, 4, ERROR_NO_UNICODE_TRANSLATION},
        {932, MB_ERR_INVALID_CHARS, "\x85\x40", 2, target, 4, ERROR_NO_UNICODE_TRANSLATION},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        SetLastError(ERROR_SUCCESS);
        EXPECT_EQ(MultiByteToWideChar(row.code_page, row.flags, row.text, row.length, row.target, row.capacity), 0);
        EXPECT_EQ(GetLastError(), row.error);
    }
}

TEST(CodePages, TellWhatIsWrongWithAnEncoding) {
    char target[4];
    BOOL used = FALSE;
    const TCHAR lone[] = {static_cast<TCHAR>(0xD800), 0};
    const struct {
        UINT code_page;
        DWORD flags;
        const TCHAR* text;
        int capacity;
        const char* default_char;
        BOOL* used;
        DWORD error;
    } rows[] = {
        {1252, 0, _T("abc"), 3, nullptr, nullptr, ERROR_INSUFFICIENT_BUFFER},
        {CP_UTF8, 0, _T("\u20AC\u20AC"), 4, nullptr, nullptr, ERROR_INSUFFICIENT_BUFFER},
        {1252, 0, nullptr, 4, nullptr, nullptr, ERROR_INVALID_PARAMETER},
        {CP_UTF8, 0, _T("a"), 4, "?", nullptr, ERROR_INVALID_PARAMETER},
        {CP_UTF8, 0, _T("a"), 4, nullptr, &used, ERROR_INVALID_PARAMETER},
        {CP_UTF8, WC_NO_BEST_FIT_CHARS, _T("a"), 4, nullptr, nullptr, ERROR_INVALID_FLAGS},
        {1252, WC_ERR_INVALID_CHARS, _T("a"), 4, nullptr, nullptr, ERROR_INVALID_FLAGS},
        {CP_UTF8, WC_ERR_INVALID_CHARS, lone, 4, nullptr, nullptr, ERROR_NO_UNICODE_TRANSLATION},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        SetLastError(ERROR_SUCCESS);
        EXPECT_EQ(WideCharToMultiByte(row.code_page, row.flags, row.text, -1, target, row.capacity, row.default_char, row.used),
                  0);
        EXPECT_EQ(GetLastError(), row.error);
    }
}

TEST(CodePages, WriteWhatFitsIntoABufferThatIsTooSmall) {
    char target[4] = {'x', 'x', 'x', 'x'};
    EXPECT_EQ(WideCharToMultiByte(1252, 0, _T("M\u00FCller"), -1, target, 3, nullptr, nullptr), 0);
    EXPECT_EQ(std::string(target, 4), "M\xFClx");
}

TEST(CodePages, DescribeThemselves) {
    CPINFO info{};
    ASSERT_TRUE(GetCPInfo(932, &info));
    EXPECT_EQ(info.MaxCharSize, 2u);
    EXPECT_EQ(std::string(info.LeadByte, info.LeadByte + 5), std::string("\x81\x9F\xE0\xFC\0", 5));
    ASSERT_TRUE(GetCPInfo(1252, &info));
    EXPECT_EQ(info.MaxCharSize, 1u);
    EXPECT_EQ(info.LeadByte[0], 0);
    EXPECT_FALSE(GetCPInfo(4711, &info));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    EXPECT_TRUE(IsDBCSLeadByteEx(932, 0xE0));
    EXPECT_FALSE(IsDBCSLeadByteEx(932, 0xB1));
    EXPECT_TRUE(IsValidCodePage(437));
    EXPECT_TRUE(IsValidCodePage(GetACP()));
    EXPECT_TRUE(IsValidCodePage(GetOEMCP()));
    EXPECT_FALSE(IsValidCodePage(4711));
}

}  // namespace
