#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include "support/last_error.h"
#include "support/temp_folder.h"
#include "support/wine.h"

namespace {

using test::ErrorOf, test::Text;

constexpr LCID kAmerican = 0x0409, kGerman = 0x0407;

TCHAR comma[] = _T(","), point[] = _T(".");

Text Format(LCID locale, const TCHAR* value, const NUMBERFMTW* format) {
    TCHAR text[64] = _T("failed");
    EXPECT_EQ(GetNumberFormatW(locale, 0, value, format, nullptr, 0), GetNumberFormatW(locale, 0, value, format, text, 64));
    return text;
}

DWORD Error(const TCHAR* value, const NUMBERFMTW* format, DWORD flags = 0, int capacity = 64) {
    TCHAR text[64];
    return ErrorOf(GetNumberFormatW(kAmerican, flags, value, format, text, capacity));
}

TEST(NumberFormats, FollowTheirForm) {
    const struct {
        const TCHAR* value;
        UINT digits, leading_zero, grouping, negative_order;
        const TCHAR* expected;
    } rows[] = {{_T("1234567"), 0, 0, 3, 1, _T("1.234.567")},
                {_T("4294967295"), 0, 0, 3, 1, _T("4.294.967.295")},
                {_T("0"), 0, 0, 3, 1, test::UnlessWine(_T("0"), _T(""))},
                {_T("007"), 0, 0, 3, 1, _T("7")},
                {_T("123"), 2, 0, 3, 1, _T("123,00")},
                {_T("0.5"), 2, 0, 3, 1, _T(",50")},
                {_T(".5"), 2, 1, 3, 1, _T("0,50")},
                {_T("999.995"), 2, 1, 3, 1, test::UnlessWine(_T("1.000,00"), _T("1000,00"))},
                {_T("2.5"), 0, 1, 3, 1, _T("3")},
                {_T("-12345.678"), 1, 1, 3, 0, _T("(12.345,7)")},
                {_T("-1.25"), 1, 1, 3, 1, _T("-1,3")},
                {_T("-1"), 0, 1, 3, 2, _T("- 1")},
                {_T("-1"), 0, 1, 3, 3, _T("1-")},
                {_T("-1"), 0, 1, 3, 4, _T("1 -")},
                {_T("-0.001"), 1, 1, 3, 1, test::UnlessWine(_T("0,0"), _T("-0,0"))},
                {_T("123456789"), 0, 1, 32, 1, _T("12.34.56.789")},
                {_T("123456789"), 0, 1, 0, 1, _T("123456789")}};
    for (const auto& row : rows) {
        const NUMBERFMTW format = {row.digits, row.leading_zero, row.grouping, comma, point, row.negative_order};
        EXPECT_EQ(Format(LOCALE_USER_DEFAULT, row.value, &format), row.expected) << test::Narrow(row.value);
    }
    EXPECT_EQ(Format(kAmerican, _T("-1234567.891"), nullptr), test::UnlessWine(_T("-1,234,567.89"), _T("-1234,567.89")));
    EXPECT_EQ(Format(kGerman, _T("1234.5"), nullptr), _T("1.234,50"));
}

TEST(NumberFormats, RefuseWhatIsNone) {
    const NUMBERFMTW format = {0, 0, 3, comma, point, 1};
    for (const TCHAR* const value : {_T("1,5"), _T("1.2.3"), _T("+1"), _T("1-"), _T(" 1"), _T("1e3")})
        EXPECT_EQ(Error(value, &format), ERROR_INVALID_PARAMETER) << test::Narrow(value);
    for (const NUMBERFMTW& wrong : {NUMBERFMTW{10, 0, 3, comma, point, 1}, NUMBERFMTW{0, 2, 3, comma, point, 1},
                                    NUMBERFMTW{0, 0, 3, comma, point, 5}, NUMBERFMTW{0, 0, 3, nullptr, point, 1}})
        if (test::UnlessWine(true, wrong.lpDecimalSep == nullptr)) {
            EXPECT_EQ(Error(_T("1"), &wrong), ERROR_INVALID_PARAMETER);
        }
    EXPECT_EQ(Error(_T("1"), &format, LOCALE_NOUSEROVERRIDE), ERROR_INVALID_FLAGS);
    EXPECT_EQ(Error(_T("1000"), &format, 0, 5), ERROR_INSUFFICIENT_BUFFER);
    EXPECT_EQ(Error(_T("1000"), &format, 0, -1), ERROR_INVALID_PARAMETER);
}

}  // namespace
