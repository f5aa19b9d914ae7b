#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <string>
#include <tuple>

#include "support/last_error.h"
#include "support/temp_folder.h"
#include "support/wine.h"

namespace {

using test::ErrorOf, test::Text;

constexpr LCID kAmerican = 0x0409, kBritish = 0x0809, kGerman = 0x0407;

Text Info(LCID locale, LCTYPE type) {
    TCHAR text[80] = _T("failed");
    EXPECT_EQ(GetLocaleInfoW(locale, type, text, 80), GetLocaleInfoW(locale, type, nullptr, 0));
    return text;
}

Text Date(LCID locale, DWORD flags, const SYSTEMTIME& date, const TCHAR* pattern) {
    TCHAR text[120] = _T("failed");
    const int count = GetDateFormatW(locale, flags, &date, pattern, text, 120);
    EXPECT_EQ(count, lstrlenW(text) + 1);
    return text;
}

DWORD DateError(const SYSTEMTIME& date, DWORD flags, const TCHAR* pattern, int capacity = 80) {
    TCHAR text[80];
    SetLastError(ERROR_SUCCESS);
    return GetDateFormatW(kAmerican, flags, &date, pattern, text, capacity) != 0 ? ERROR_SUCCESS : GetLastError();
}

constexpr SYSTEMTIME Day(WORD year, WORD month, WORD day) {
    return {year, month, 9, day, 0, 0, 0, 0};  // the impossible weekday is not looked at
}

constexpr SYSTEMTIME At(WORD hour, WORD minute, WORD second) {
    return {0, 0, 0, 0, hour, minute, second, 0};
}

TEST(LocaleInfo, KnowsPatternsNumbersAndNames) {
    const std::tuple<LCID, LCTYPE, const TCHAR*> rows[] = {{kBritish, LOCALE_SSHORTDATE, _T("dd/MM/yyyy")},
                                                           {LOCALE_INVARIANT, LOCALE_SSHORTDATE, _T("MM/dd/yyyy")},
                                                           {kAmerican, LOCALE_SLONGDATE, _T("dddd, MMMM d, yyyy")},
                                                           {kGerman, LOCALE_STHOUSAND, _T(".")},
                                                           {kAmerican, LOCALE_SGROUPING, _T("3;0")},
                                                           {kBritish, LOCALE_SABBREVLANGNAME, _T("ENG")},
                                                           {kBritish, LOCALE_SISO3166CTRYNAME, _T("GB")},
                                                           {kGerman, LOCALE_SDAYNAME7, _T("Sonntag")},
                                                           {kGerman, LOCALE_SMONTHNAME1 + 2, _T("M\u00E4rz")},
                                                           {kAmerican, LOCALE_SABBREVMONTHNAME12, _T("Dec")},
                                                           {kAmerican, LOCALE_S2359 | LOCALE_NOUSEROVERRIDE, _T("PM")}};
    for (const auto& [locale, type, expected] : rows)
        EXPECT_EQ(Info(locale, type), expected) << test::Narrow(expected);
    TCHAR text[80];
    EXPECT_EQ(ErrorOf(GetLocaleInfoW(kBritish, LOCALE_SSHORTDATE, text, 10)), ERROR_INSUFFICIENT_BUFFER);
    EXPECT_EQ(ErrorOf(GetLocaleInfoW(kGerman, 0x0FFF, text, 80)), ERROR_INVALID_FLAGS);
    EXPECT_EQ(ErrorOf(GetLocaleInfoW(kGerman, LOCALE_SSHORTDATE, nullptr, 80)), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(ErrorOf(GetLocaleInfoW(kGerman, LOCALE_SSHORTDATE, text, -1)), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(ErrorOf(GetLocaleInfoW(0x9999, LOCALE_SSHORTDATE, text, 80)), ERROR_INVALID_PARAMETER);
}

TEST(DateFormats, FollowTheirPattern) {
    const SYSTEMTIME date = Day(2008, 3, 5);  // a Wednesday
    const std::tuple<LCID, const TCHAR*, const TCHAR*> rows[] = {
        {kAmerican, _T("yy-MM yyy|yyyyy"), _T("08-03 2008|2008")},
        {kAmerican, _T("ddd, MMM d"), _T("Wed, Mar 5")},
        {kGerman, _T("dddd, d. MMMM"), _T("Mittwoch, 5. M\u00E4rz")},
        {kAmerican, _T("'day' d 'o''clock' HH"), _T("day 5 o'clock HH")},
        {kAmerican, _T("d 'open"), _T("5 open")},
        {0x0419, _T("d MMMM"), _T("5 \u043C\u0430\u0440\u0442\u0430")},  // of March
        {0x0419, _T("MMMM yyyy"), _T("\u043C\u0430\u0440\u0442 2008")},  // March
    };
    for (const auto& [locale, pattern, expected] : rows)
        EXPECT_EQ(Date(locale, 0, date, pattern), expected) << test::Narrow(expected);
    EXPECT_EQ(Date(kBritish, DATE_SHORTDATE, date, nullptr), _T("05/03/2008"));
    EXPECT_EQ(Date(kAmerican, DATE_LONGDATE, date, nullptr), _T("Wednesday, March 5, 2008"));
    EXPECT_EQ(Date(kAmerican, 0, Day(1601, 1, 1), _T("dddd")), _T("Monday"));
}

TEST(DateFormats, TellWhatIsWrong) {
    EXPECT_EQ(DateError(Day(1999, 2, 29), 0, _T("d")), test::UnlessWine<DWORD>(ERROR_INVALID_PARAMETER, ERROR_SUCCESS));
    for (const SYSTEMTIME& date : {Day(1999, 13, 1), Day(1999, 1, 0), Day(1600, 1, 1)})
        EXPECT_EQ(DateError(date, 0, _T("d")), ERROR_INVALID_PARAMETER);
    const SYSTEMTIME good = Day(1999, 1, 1);
    EXPECT_EQ(DateError(good, DATE_LONGDATE, _T("d")), ERROR_INVALID_FLAGS);
    EXPECT_EQ(DateError(good, DATE_LONGDATE | DATE_SHORTDATE, nullptr), ERROR_INVALID_FLAGS);
    EXPECT_EQ(DateError(good, 0, _T("yyyy"), 4), ERROR_INSUFFICIENT_BUFFER);
    EXPECT_EQ(GetDateFormatW(kAmerican, 0, &good, _T("yyyy"), nullptr, 0), 5);
}

TEST(TimeFormats, FollowTheirPatternAndFlags) {
    const SYSTEMTIME afternoon = At(15, 4, 9);
    const std::tuple<DWORD, SYSTEMTIME, const TCHAR*, const TCHAR*> rows[] = {
        {0, afternoon, nullptr, _T("3:04:09 PM")},
        {0, afternoon, _T("hh:mm:ss t"), _T("03:04:09 P")},
        {0, At(0, 0, 0), _T("h H HH tt"), _T("12 0 00 AM")},
        {TIME_NOSECONDS, afternoon, nullptr, _T("3:04 PM")},
        {TIME_FORCE24HOURFORMAT | TIME_NOTIMEMARKER, afternoon, nullptr, _T("15:04:09")},
        {TIME_NOTIMEMARKER, afternoon, _T("h.tt.mm"), _T("304")},
        {TIME_NOTIMEMARKER, afternoon, _T("tt h:mm"), test::UnlessWine(_T("3:04"), _T(" 3:04"))}};
    TCHAR text[80];
    for (const auto& [flags, time, pattern, expected] : rows) {
        EXPECT_GT(GetTimeFormatW(kAmerican, flags, &time, pattern, text, 80), 0);
        EXPECT_EQ(Text(text), expected) << test::Narrow(expected);
    }
    const SYSTEMTIME none = At(24, 0, 0);
    EXPECT_EQ(ErrorOf(GetTimeFormatW(kAmerican, 0, &none, nullptr, text, 80)), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(ErrorOf(GetTimeFormatW(kAmerican, LOCALE_NOUSEROVERRIDE, &afternoon, _T("h"), text, 80)), ERROR_INVALID_FLAGS);
}

}  // namespace
