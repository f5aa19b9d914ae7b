#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <string>

#include "support/temp_folder.h"

namespace {

using test::Narrow;
using test::Text;

constexpr LCID kAmerican = 0x0409;
constexpr LCID kBritish = 0x0809;
constexpr LCID kGerman = 0x0407;

Text Info(LCID locale, LCTYPE type) {
    TCHAR text[80];
    const int count = GetLocaleInfoW(locale, type, text, 80);
    EXPECT_EQ(count, GetLocaleInfoW(locale, type, nullptr, 0));
    return count > 0 ? Text(text, static_cast<std::size_t>(count) - 1) : Text(_T("failed"));
}

Text Date(LCID locale, DWORD flags, const SYSTEMTIME& date, const TCHAR* pattern) {
    TCHAR text[120];
    const int count = GetDateFormatW(locale, flags, &date, pattern, text, 120);
    return count > 0 ? Text(text, static_cast<std::size_t>(count) - 1) : Text(_T("failed"));
}

Text Time(DWORD flags, const SYSTEMTIME& time, const TCHAR* pattern) {
    TCHAR text[120];
    const int count = GetTimeFormatW(kAmerican, flags, &time, pattern, text, 120);
    return count > 0 ? Text(text, static_cast<std::size_t>(count) - 1) : Text(_T("failed"));
}

constexpr SYSTEMTIME Day(WORD year, WORD month, WORD day) {
    return {year, month, 9, day, 0, 0, 0, 0};  // the impossible weekday is not looked at
}

constexpr SYSTEMTIME At(WORD hour, WORD minute, WORD second) {
    return {0, 0, 0, 0, hour, minute, second, 0};
}

TEST(LocaleInfo, KnowsPatternsNumbersAndNames) {
    const struct {
        LCID locale;
        LCTYPE type;
        const TCHAR* text;
    } rows[] = {
        {kGerman, LOCALE_SSHORTDATE, _T("dd.MM.yyyy")},
        {kAmerican, LOCALE_SSHORTDATE, _T("M/d/yyyy")},
        {kBritish, LOCALE_SSHORTDATE, _T("dd/MM/yyyy")},
        {0x0411, LOCALE_SSHORTDATE, _T("yyyy/MM/dd")},
        {0x041D, LOCALE_SSHORTDATE, _T("yyyy-MM-dd")},
        {LOCALE_INVARIANT, LOCALE_SSHORTDATE, _T("MM/dd/yyyy")},
        {kAmerican, LOCALE_SLONGDATE, _T("dddd, MMMM d, yyyy")},
        {kGerman, LOCALE_SLONGDATE, _T("dddd, d. MMMM yyyy")},
        {kAmerican, LOCALE_STIMEFORMAT, _T("h:mm:ss tt")},
        {kGerman, LOCALE_STIMEFORMAT, _T("HH:mm:ss")},
        {kGerman, LOCALE_SDECIMAL, _T(",")},
        {kGerman, LOCALE_STHOUSAND, _T(".")},
        {kAmerican, LOCALE_SDECIMAL, _T(".")},
        {kAmerican, LOCALE_SGROUPING, _T("3;0")},
        {kGerman, LOCALE_IDIGITS, _T("2")},
        {kGerman, LOCALE_SABBREVLANGNAME, _T("DEU")},
        {kBritish, LOCALE_SABBREVLANGNAME, _T("ENG")},
        {0x0410, LOCALE_SABBREVLANGNAME, _T("ITA")},
        {kGerman, LOCALE_SENGLANGUAGE, _T("German")},
        {kGerman, LOCALE_SISO639LANGNAME, _T("de")},
        {kBritish, LOCALE_SISO3166CTRYNAME, _T("GB")},
        {kGerman, LOCALE_SDAYNAME1, _T("Montag")},
        {kGerman, LOCALE_SDAYNAME7, _T("Sonntag")},
        {kAmerican, LOCALE_SABBREVDAYNAME7, _T("Sun")},
        {kGerman, LOCALE_SMONTHNAME1 + 2, _T("M\u00E4rz")},
        {kAmerican, LOCALE_SABBREVMONTHNAME12, _T("Dec")},
        {kAmerican, LOCALE_S2359 | LOCALE_NOUSEROVERRIDE, _T("PM")},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        EXPECT_EQ(Info(row.locale, row.type), row.text);
    }
}

TEST(LocaleInfo, TellsWhatIsWrong) {
    TCHAR text[80];
    const struct {
        LCID locale;
        LCTYPE type;
        TCHAR* target;
        int capacity;
        DWORD error;
    } rows[] = {
        {kGerman, LOCALE_SSHORTDATE, text, 10, ERROR_INSUFFICIENT_BUFFER},
        {kGerman, 0x0FFF, text, 80, ERROR_INVALID_FLAGS},
        {kGerman, LOCALE_SSHORTDATE, nullptr, 80, ERROR_INVALID_PARAMETER},
        {kGerman, LOCALE_SSHORTDATE, text, -1, ERROR_INVALID_PARAMETER},
        {0x9999, LOCALE_SSHORTDATE, text, 80, ERROR_INVALID_PARAMETER},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        SetLastError(ERROR_SUCCESS);
        EXPECT_EQ(GetLocaleInfoW(row.locale, row.type, row.target, row.capacity), 0);
        EXPECT_EQ(GetLastError(), row.error);
    }
}

TEST(DateFormats, FollowTheirPattern) {
    const SYSTEMTIME date = Day(2008, 3, 5);  // a Wednesday
    const struct {
        LCID locale;
        const TCHAR* pattern;
        const TCHAR* text;
    } rows[] = {
        {kGerman, _T("dd.MM.yyyy"), _T("05.03.2008")},
        {kAmerican, _T("d/M/y"), _T("5/3/8")},
        {kAmerican, _T("yy-MM"), _T("08-03")},
        {kAmerican, _T("yyy|yyyyy"), _T("2008|2008")},
        {kAmerican, _T("ddd, MMM d"), _T("Wed, Mar 5")},
        {kGerman, _T("dddd, d. MMMM"), _T("Mittwoch, 5. M\u00E4rz")},
        {kAmerican, _T("'day' d 'o''clock' HH"), _T("day 5 o'clock HH")},
        {kAmerican, _T("d 'open"), _T("5 open")},
        {0x0419, _T("d MMMM"), _T("5 \u043C\u0430\u0440\u0442\u0430")},  // of March
        {0x0419, _T("MMMM yyyy"), _T("\u043C\u0430\u0440\u0442 2008")},  // March
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(Narrow(row.pattern));
        EXPECT_EQ(Date(row.locale, 0, date, row.pattern), row.text);
    }
    EXPECT_EQ(Date(kGerman, DATE_SHORTDATE, date, nullptr), _T("05.03.2008"));
    EXPECT_EQ(Date(kAmerican, DATE_LONGDATE, date, nullptr), _T("Wednesday, March 5, 2008"));
    EXPECT_EQ(Date(kAmerican, 0, Day(1601, 1, 1), _T("dddd")), _T("Monday"));
    EXPECT_EQ(Date(kAmerican, 0, Day(2000, 2, 29), _T("ddd")), _T("Tue"));
}

TEST(DateFormats, TellWhatIsWrong) {
    TCHAR text[80];
    const struct {
        SYSTEMTIME date;
        DWORD flags;
        const TCHAR* pattern;
        int capacity;
        DWORD error;
    } rows[] = {
        {Day(1999, 2, 29), 0, _T("d"), 80, ERROR_INVALID_PARAMETER},
        {Day(1999, 13, 1), 0, _T("d"), 80, ERROR_INVALID_PARAMETER},
        {Day(1999, 1, 0), 0, _T("d"), 80, ERROR_INVALID_PARAMETER},
        {Day(1600, 1, 1), 0, _T("d"), 80, ERROR_INVALID_PARAMETER},
        {Day(1999, 1, 1), DATE_LONGDATE, _T("d"), 80, ERROR_INVALID_FLAGS},
        {Day(1999, 1, 1), DATE_LONGDATE | DATE_SHORTDATE, nullptr, 80, ERROR_INVALID_FLAGS},
        {Day(1999, 1, 1), 0, _T("yyyy"), 4, ERROR_INSUFFICIENT_BUFFER},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        SetLastError(ERROR_SUCCESS);
        EXPECT_EQ(GetDateFormatW(kAmerican, row.flags, &row.date, row.pattern, text, row.capacity), 0);
        EXPECT_EQ(GetLastError(), row.error);
    }
    EXPECT_EQ(GetDateFormatW(kAmerican, 0, &rows[6].date, _T("yyyy"), nullptr, 0), 5);
}

TEST(TimeFormats, FollowTheirPatternAndFlags) {
    const SYSTEMTIME afternoon = At(15, 4, 9);
    const struct {
        DWORD flags;
        SYSTEMTIME time;
        const TCHAR* pattern;
        const TCHAR* text;
    } rows[] = {
        {0, afternoon, nullptr, _T("3:04:09 PM")},
        {0, afternoon, _T("hh:mm:ss t"), _T("03:04:09 P")},
        {0, At(0, 0, 0), _T("h H HH tt"), _T("12 0 00 AM")},
        {TIME_NOSECONDS, afternoon, nullptr, _T("3:04 PM")},
        {TIME_NOMINUTESORSECONDS, afternoon, nullptr, _T("3 PM")},
        {TIME_NOTIMEMARKER, afternoon, nullptr, _T("3:04:09")},
        {TIME_FORCE24HOURFORMAT | TIME_NOTIMEMARKER, afternoon, nullptr, _T("15:04:09")},
        {TIME_NOTIMEMARKER, afternoon, _T("tt h:mm"), _T("3:04")},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        EXPECT_EQ(Time(row.flags, row.time, row.pattern), row.text);
    }
    EXPECT_EQ(Time(0, At(24, 0, 0), nullptr), _T("failed"));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    EXPECT_EQ(Time(0x40, afternoon, nullptr), _T("failed"));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_FLAGS));
}

}  // namespace
