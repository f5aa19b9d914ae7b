#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <ctime>
#include <tuple>

#include "support/environment.h"

namespace {

// The current zone is Central European, by rule, without any zone file; the test's own zone comes back at the end.
class CurrentZone : public testing::Test {
protected:
    static void Use(const TCHAR* zone) { SetEnvironmentVariableW(_T("TZ"), zone); }

private:
    const test::InEnvironment zone_{_T("TZ"), _T("CET-1CEST,M3.5.0,M10.5.0/3")};
};

SYSTEMTIME Date(WORD month, WORD day, WORD hour, WORD minute) {
    return {2024, month, 0, day, hour, minute, 0, 0};
}

auto Fields(const SYSTEMTIME& t) {
    return std::tuple(t.wMonth, t.wDay, t.wHour, t.wMinute);
}

TEST_F(CurrentZone, CountsWithTheRuleOfTheDate) {
    const struct {
        SYSTEMTIME universal, local, back;
    } rows[] = {
        {Date(7, 15, 12, 0), Date(7, 15, 14, 0), Date(7, 15, 12, 0)},
        {Date(3, 31, 1, 0), Date(3, 31, 3, 0), Date(3, 31, 1, 0)},
        {Date(10, 27, 0, 30), Date(10, 27, 2, 30), Date(10, 27, 0, 30)},
        {Date(10, 27, 1, 30), Date(10, 27, 2, 30), Date(10, 27, 0, 30)},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(Fields(row.universal)));
        SYSTEMTIME result{};
        ASSERT_TRUE(SystemTimeToTzSpecificLocalTime(nullptr, &row.universal, &result));
        EXPECT_EQ(Fields(result), Fields(row.local));
        ASSERT_TRUE(TzSpecificLocalTimeToSystemTime(nullptr, &row.local, &result));
        EXPECT_EQ(Fields(result), Fields(row.back));
    }
    SYSTEMTIME result{};
    const SYSTEMTIME left_out = Date(3, 31, 2, 30);
    ASSERT_TRUE(TzSpecificLocalTimeToSystemTime(nullptr, &left_out, &result));
    EXPECT_EQ(Fields(result), Fields(Date(3, 31, 0, 30)));
}

TEST_F(CurrentZone, IsDescribedAndFollowedAtOnceWhenItChanges) {
    using Rule = std::tuple<int, int, int, int>;  // month, week, day of the week, hour
    const struct {
        const TCHAR* zone;
        LONG bias;
        Rule standard, daylight;
    } rows[] = {
        {_T("CET-1CEST,M3.5.0,M10.5.0/3"), -60, {10, 5, 0, 3}, {3, 5, 0, 2}},
        {_T("EST5EDT,M3.2.0,M11.1.0"), 300, {11, 1, 0, 2}, {3, 2, 0, 2}},
        {_T("XYZ-5:30"), -330, {}, {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.bias);
        Use(row.zone);
        TIME_ZONE_INFORMATION zone{};
        EXPECT_EQ(GetTimeZoneInformation(&zone) == TIME_ZONE_ID_UNKNOWN, row.daylight == Rule());
        EXPECT_EQ(zone.Bias, row.bias);
        EXPECT_EQ(std::tuple(zone.StandardBias, zone.DaylightBias), std::tuple(0, row.daylight == Rule() ? 0 : -60));
        const auto rule = [](const SYSTEMTIME& t) { return Rule(t.wMonth, t.wDay, t.wDayOfWeek, t.wHour); };
        EXPECT_EQ(rule(zone.StandardDate), row.standard);
        EXPECT_EQ(rule(zone.DaylightDate), row.daylight);
    }
    SYSTEMTIME west{}, east{};
    Use(_T("AAA+12"));
    GetLocalTime(&west);
    Use(_T("BBB-12"));
    GetLocalTime(&east);
    EXPECT_NE(west.wDay, east.wDay);
}

TEST_F(CurrentZone, DecidesWhatALocalDateMeans) {
    constexpr __time64_t kDay = 1711843200;        // 2024-03-31 00:00 UTC
    constexpr __time64_t kAutumnDay = 1729987200;  // 2024-10-27 00:00 UTC
    constexpr int kHour = 3600;
    const struct {
        int month, day, hour, is_daylight;
        __time64_t time;
    } rows[] = {
        {2, 31, 1, -1, kDay},
        {2, 31, 3, -1, kDay + kHour},
        {2, 31, 2, -1, kDay},                // left out
        {2, 31, 3, 0, kDay + 2 * kHour},     // said to be standard time
        {9, 27, 2, -1, kAutumnDay + kHour},  // the second of two
        {9, 27, 2, 1, kAutumnDay},           // the first
        {8, 57, 2, -1, kAutumnDay + kHour},  // a day that its month does not have
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(std::tuple(row.month, row.day, row.hour, row.is_daylight)));
        std::tm tm{};
        tm.tm_year = 124;
        tm.tm_mon = row.month;
        tm.tm_mday = row.day;
        tm.tm_hour = row.hour;
        tm.tm_isdst = row.is_daylight;
        EXPECT_EQ(_mktime64(&tm), row.time);
    }
}

}  // namespace
