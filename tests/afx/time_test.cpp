#include <afx_time.h>
#include <gtest/gtest.h>

#include "afx/expect.h"
#include "support/time_zone.h"

namespace {

using test::IsInvalid;
using test::Joined;

constexpr __time64_t kLeapDay = 1709210096;  // Thursday 2024-02-29 12:34:56 UTC

FILETIME FileTime(ULONGLONG ticks) {
    return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
}

CString UserLocale(LCTYPE type) {
    TCHAR text[100] = {};
    EXPECT_NE(GetLocaleInfoW(LOCALE_USER_DEFAULT, type, text, 100), 0);
    return text;
}

TEST(Time, FormatsWhatNoLocaleChanges) {
    const CTime leapDay(kLeapDay), sunday(1672531200), monday(1704114309), lastDay(1735689599);
    EXPECT_EQ(Joined({leapDay.FormatGmt(_T("%d.%m.%y|%F|%D|%T|%R")), leapDay.FormatGmt(nullptr)}),
              "29.02.24|2024-02-29|02/29/24|12:34:56|12:34|");
    EXPECT_EQ(Joined({monday.FormatGmt(_T("%Y %H %I %M %S %e %j")), monday.FormatGmt(_T("%#I %#M %#S %#d %#m %#e %#j %#y"))}),
              "2024 13 01 05 09  1 001|1 5 9 1 1 1 1 24");
    EXPECT_EQ(
        Joined({sunday.FormatGmt(_T("%I %U %W %w")), monday.FormatGmt(_T("%U %W %w")), lastDay.FormatGmt(_T("%j %U %W %w"))}),
        "12 01 00 0|00 01 1|366 52 53 2");
    EXPECT_EQ(Joined({CTime().FormatGmt(_T("%F %T%n%t%z %Z")), CTime(32535215999).FormatGmt(_T("%F %T 100%% %q %#q %"))}),
              "1970-01-01 00:00:00\n\t+0000 UTC|3000-12-31 23:59:59 100% %q %#q %");
}

TEST(Time, NamesDaysAndMonthsAsTheUsersLocale) {
    for (int i = 0; i < 12; ++i) {
        const CTime time(2024, 1 + i, 1, 1, 2, 3);
        const LCTYPE month = static_cast<LCTYPE>(i), day = static_cast<LCTYPE>((time.GetDayOfWeek() + 5) % 7);
        EXPECT_EQ(time.Format(_T("%A/%a/%B/%b")),
                  UserLocale(LOCALE_SDAYNAME1 + day) + _T('/') + UserLocale(LOCALE_SABBREVDAYNAME1 + day) + _T('/') +
                      UserLocale(LOCALE_SMONTHNAME1 + month) + _T('/') + UserLocale(LOCALE_SABBREVMONTHNAME1 + month));
        EXPECT_EQ(time.Format(_T("%h")), time.Format(_T("%b")));
    }
    const CTime morning(2024, 2, 29, 1, 2, 3), evening(2024, 2, 29, 23, 2, 3);
    EXPECT_EQ(morning.Format(_T("%p")) + evening.Format(_T("%p")), UserLocale(LOCALE_S1159) + UserLocale(LOCALE_S2359));
    EXPECT_EQ(morning.Format(_T("%c")), morning.Format(_T("%x %X")));
    EXPECT_EQ(morning.Format(_T("%#c")), morning.Format(_T("%#x %X")));
    EXPECT_GT(morning.Format(_T("%#x")).GetLength(), morning.Format(_T("%x")).GetLength());
    EXPECT_TRUE(morning.GetDayOfWeek() == 5 && morning.Format(_T("%x")).Find(_T("29")) >= 0);
}

TEST(Time, TakesLocalTimeApartAndTogether) {
    const CTime time(2024, 2, 29, 12, 34, 56);
    EXPECT_EQ(time.GetYear() * 10000 + time.GetMonth() * 100 + time.GetDay(), 20240229);
    EXPECT_EQ(time.GetHour() * 10000 + time.GetMinute() * 100 + time.GetSecond(), 123456);
    SYSTEMTIME local = {};
    ASSERT_TRUE(time.GetAsSystemTime(local));
    EXPECT_EQ(local.wDayOfWeek, 4);
    EXPECT_EQ(CTime(local), time);
    std::tm gmt = {};
    ASSERT_EQ(CTime(kLeapDay).GetGmtTm(&gmt), &gmt);
    EXPECT_EQ(gmt.tm_hour, 12);
    EXPECT_EQ(time.GetLocalTm(nullptr), nullptr);
    EXPECT_EQ(CTime(2023, 2, 30, 0, 0, 0), CTime(2023, 3, 2, 0, 0, 0));
}

TEST(Time, TakesFileTimesForWhatTheyAre) {
    constexpr ULONGLONG kTicksOfLeapDay = 133536836969999999;  // the last tick of the second
    EXPECT_EQ(CTime(FileTime(kTicksOfLeapDay)).GetTime(), kLeapDay);
    FILETIME before = {}, after = {};
    GetSystemTimeAsFileTime(&before);
    const CTime now = CTime::GetCurrentTime();
    GetSystemTimeAsFileTime(&after);  // the two clocks may tick apart
    EXPECT_TRUE(CTime(before) - CTimeSpan(0, 0, 0, 1) <= now && now <= CTime(after));
}

// Deliberate: dates that stand for "none" become 0, while impossible ones are refused.
TEST(Time, MakesNoTimeOfEmptyStructuresAndRefusesImpossibleOnes) {
    const SYSTEMTIME empty = {}, year1899 = {1899, 12, 0, 31, 0, 0, 0, 0}, year1950 = {1950, 1, 0, 1, 0, 0, 0, 0};
    const SYSTEMTIME month13 = {2024, 13, 0, 1, 0, 0, 0, 0};
    for (const CTime& time : {CTime(empty), CTime(year1899), CTime(FileTime(0)), CTime(FileTime(9435484799'9999999))})
        EXPECT_EQ(time.GetTime(), 0);
    EXPECT_TRUE(IsInvalid([] { CTime{FileTime(9435484800'0000000)}; }));  // 1900-01-01
    EXPECT_TRUE(IsInvalid([] { CTime{FileTime(0xFFFFFFFFFFFFFFFF)}; }));
    EXPECT_TRUE(IsInvalid([&] { CTime{year1950}; }));
    EXPECT_TRUE(IsInvalid([&] { CTime{month13}; }));
    const int bad[][6] = {{1969, 12, 31, 0, 0, 0}, {3001, 1, 1, 0, 0, 0},  {2024, 0, 1, 0, 0, 0},  {2024, 1, 0, 0, 0, 0},
                          {2024, 1, 32, 0, 0, 0},  {2024, 1, 1, 24, 0, 0}, {2024, 1, 1, 0, 60, 0}, {2024, 1, 1, 0, 0, -1}};
    for (const auto& row : bad)
        EXPECT_TRUE(IsInvalid([&] { CTime(row[0], row[1], row[2], row[3], row[4], row[5]); })) << "row " << &row - bad + 1;
}

TEST(Time, HasNoPartsOutsideItsRange) {
    for (const CTime time : {CTime(-100'000'000'000), CTime(100'000'000'000)}) {
        SYSTEMTIME local = {};
        EXPECT_EQ(time.GetYear() + time.GetMonth() + time.GetDayOfWeek(), 0);
        EXPECT_FALSE(time.GetAsSystemTime(local));
        EXPECT_TRUE(IsInvalid([time] { time.Format(_T("%Y")); }));
        EXPECT_TRUE(IsInvalid([time] { time.FormatGmt(_T("%Y")); }));
    }
}

// Clocks went forward on 2026-03-29 at 01:00 UTC, and back on 2026-10-25 at 01:00 UTC.
TEST(Time, CrossesTheBordersOfDaylightTime) {
    SKIP_OUTSIDE_CENTRAL_EUROPE();
    const struct {
        __time64_t time;
        const char* local;
    } borders[] = {
        {1774745999, "2026-03-29 01:59:59 +0100"}, {1774746000, "2026-03-29 03:00:00 +0200"},
        {1792887300, "2026-10-25 02:15:00 +0200"}, {1792890900, "2026-10-25 02:15:00 +0100"},
        {1792893600, "2026-10-25 03:00:00 +0100"},
    };
    for (const auto& border : borders) {
        const CTime time(border.time);
        EXPECT_EQ(test::Narrow(time.Format(_T("%F %T %z")).View()), border.local);
        std::tm parts = {};
        ASSERT_NE(time.GetLocalTm(&parts), nullptr);
        const CTime same(time.GetYear(), time.GetMonth(), time.GetDay(), time.GetHour(), time.GetMinute(), time.GetSecond(),
                         parts.tm_isdst);
        EXPECT_EQ(same.GetTime(), border.time);
    }
    EXPECT_EQ(CTime(2026, 10, 25, 2, 15, 0).GetTime(), 1792890900);  // a time that comes twice
    EXPECT_EQ(CTime(2026, 3, 29, 2, 30, 0).GetHour(), 1);            // one that never comes
    EXPECT_EQ(CTime(1970, 1, 1, 1, 0, 0).GetTime(), 0);
    const CTime night(2026, 3, 28, 12, 0, 0);
    EXPECT_EQ((night + CTimeSpan(1, 0, 0, 0)).GetHour(), 13);
    EXPECT_EQ(CTime(2026, 3, 29, 12, 0, 0) - night, CTimeSpan(0, 23, 0, 0));
}

TEST(TimeSpan, CountsAndPrintsItsParts) {
    const CTimeSpan span(3, 4, 5, 6), back = CTimeSpan() - span;
    EXPECT_EQ(span.GetTotalSeconds(), 273906);
    EXPECT_EQ(span.GetTotalMinutes(), 4565);
    EXPECT_EQ(span.GetTotalHours(), 76);
    EXPECT_EQ(back.GetSeconds(), -6);
    EXPECT_LT(back, span);
    EXPECT_EQ(CTimeSpan(100'000, 0, 0, 0).GetTotalSeconds(), 8'640'000'000);
    EXPECT_EQ(Joined({span.Format(_T("%D days %H:%M:%S, %% %Y %")), back.Format(_T("%D %H"))}), "3 days 04:05:06, % %Y %|-3 -4");
    CTime time(kLeapDay);
    time += span;
    EXPECT_EQ(time - CTime(kLeapDay), span);
    time -= span + CTimeSpan(1);
    EXPECT_LT(time, CTime(kLeapDay));
}

}  // namespace
