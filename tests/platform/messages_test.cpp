#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <cstdarg>
#include <string>
#include <utility>

#include "support/last_error.h"
#include "support/temp_folder.h"
#include "support/wine.h"

namespace {

using test::Text;

constexpr DWORD kSystem = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
constexpr DWORD kArray = FORMAT_MESSAGE_FROM_STRING | FORMAT_MESSAGE_ARGUMENT_ARRAY;

Text System(DWORD flags, DWORD id) {
    TCHAR text[300];
    return Text(text, FormatMessageW(kSystem | flags, nullptr, id, 0, text, 300, nullptr));
}

Text Format(DWORD flags, const TCHAR* source, DWORD_PTR* arguments = nullptr) {
    TCHAR text[300];
    return Text(text, FormatMessageW(kArray | flags, source, 0, 0, text, 300, reinterpret_cast<va_list*>(arguments)));
}

Text FormatList(const TCHAR* source, ...) {
    TCHAR text[300];
    va_list arguments;
    va_start(arguments, source);
    const DWORD count = FormatMessageW(FORMAT_MESSAGE_FROM_STRING, source, 0, 0, text, 300, &arguments);
    va_end(arguments);
    return Text(text, count);
}

TEST(SystemMessages, EndTheirLineAndComeInABlockOfTheirOwn) {
    const Text denied = System(0, ERROR_ACCESS_DENIED);
    ASSERT_GT(denied.size(), 4u);
    EXPECT_EQ(denied.substr(denied.size() - 2), _T("\r\n"));
    EXPECT_EQ(System(0, static_cast<DWORD>(HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED))), denied);
    EXPECT_EQ(System(FORMAT_MESSAGE_MAX_WIDTH_MASK, ERROR_ACCESS_DENIED), denied.substr(0, denied.size() - 2) + _T(" "));
    TCHAR* text = nullptr;
    const DWORD count = FormatMessageW(kSystem | FORMAT_MESSAGE_ALLOCATE_BUFFER, nullptr, ERROR_FILE_NOT_FOUND, 0,
                                       reinterpret_cast<LPTSTR>(&text), 0, nullptr);
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(Text(text), System(0, ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(count, static_cast<DWORD>(lstrlenW(text)));
    EXPECT_EQ(LocalFree(text), nullptr);
    auto* const block = static_cast<char*>(LocalAlloc(LPTR, 64));
    EXPECT_EQ(std::string(block, 64), std::string(64, '\0'));
    EXPECT_EQ(LocalFree(block), nullptr);
}

TEST(Messages, TellWhatIsWrong) {
    TCHAR text[300];
    DWORD_PTR none[1] = {};
    const auto error = [&](DWORD flags, const TCHAR* source, DWORD id, DWORD capacity) {
        va_list* const arguments = (flags & FORMAT_MESSAGE_ARGUMENT_ARRAY) != 0 ? reinterpret_cast<va_list*>(none) : nullptr;
        return test::ErrorOf(FormatMessageW(flags, source, id, 0, text, capacity, arguments));
    };
    EXPECT_EQ(error(kSystem, nullptr, 0xE1234567, 300), ERROR_MR_MID_NOT_FOUND);
    EXPECT_EQ(error(kSystem, nullptr, ERROR_ACCESS_DENIED, 5), ERROR_INSUFFICIENT_BUFFER);
    EXPECT_EQ(error(FORMAT_MESSAGE_IGNORE_INSERTS, _T("abc"), 0, 300), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(error(FORMAT_MESSAGE_FROM_STRING, _T("%1"), 0, 300), ERROR_INVALID_PARAMETER);
}

TEST(Messages, PutTheirInsertsIn) {
    const auto word = [](const void* text) { return reinterpret_cast<DWORD_PTR>(text); };
    DWORD_PTR arguments[] = {word(_T("first")), word(_T("second")), static_cast<DWORD_PTR>(-7), 0xBEEF,
                             0x123456789ABCull, word("narrow")};
    const std::pair<const TCHAR*, const TCHAR*> rows[] = {
        {_T("%2 before %1"), _T("second before first")},
        {_T("%1!s!|%1!8s!|%1!-8s!|%1!.3s!"), _T("first|   first|first   |fir")},
        {_T("%3!d! %3!5d! %4!04X! %4!u! %4!x!"), _T("-7    -7 BEEF 48879 beef")},
        {_T("%4!08lx! %6!S! %6!hs!"), _T("0000beef narrow narrow")},
        {_T("%5!I64X!"), _T("123456789ABC")},
        {_T("100%% sure%!%."), _T("100% sure!.")},
        {_T("a%nb%tc%bd"), test::UnlessWine(_T("a\r\nb\tc d"), _T("a\r\nb\tcbd"))},
        {_T("kept%0dropped"), _T("kept")},
    };
    for (const auto& [source, expected] : rows)
        EXPECT_EQ(Format(0, source, arguments), expected) << test::Narrow(source);
    EXPECT_EQ(FormatList(_T("%2 %1!s! %3!d!"), _T("one"), _T("two"), DWORD_PTR{3}), _T("two one 3"));
    EXPECT_EQ(Format(FORMAT_MESSAGE_IGNORE_INSERTS, _T("keep %1 and %2!d!")), _T("keep %1 and %2!d!"));
    EXPECT_EQ(Format(FORMAT_MESSAGE_MAX_WIDTH_MASK, _T("a\r\nb\nc%nd")), _T("a b c\r\nd"));
}

}  // namespace
