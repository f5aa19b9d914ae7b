#include <gtest/gtest.h>
#include <windows.h>

#include <ctime>
#include <tuple>

namespace {

// The current zone is Central European, by rule, without any zone file; the test's own zone comes back at the end.
class CurrentZone : public testing::Test {
protected:
    void SetUp() override {
        known_ = GetEnvironmentVariableW(_T("TZ"), before_, 256) != 0;
        Use(_T("CET-1CEST,M3.5.0,M10.5.0/3"));
    }
    void TearDown() override { Use(known_ ? before_ : nullptr); }
    static void Use(const TCHAR* zone) { SetEnvironmentVariableW(_T("TZ"), zone); }

private:
    TCHAR before_[256]{};
    bool known_ = false;
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
        {Date(1, 15, 12, 0), Date(1, 15, 13, 0), Date(1, 15, 12, 0)},
        {Date(7, 15, 12, 0), Date(7, 15, 14, 0), Date(7, 15, 12, 0)},
        {Date(3, 31, 1, 0), Date(3, 31, 3, 0), Date(3, 31, 1, 0)},
        {Date(10, 27, 0, 30), Date(10, 27, 2, 30), Date(10, 27, 0, 30)},
        {Date(10, 27, 1, 30), Date(10, 27, 2, 30), Date(10, 27, 0, 30)},
        {Date(10, 27, 12, 0), Date(10, 27, 13, 0), Date(10, 27, 12, 0)},
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

TEST_F(CurrentZone, IsDescribed) {
    TIME_ZONE_INFORMATION zone{};
    EXPECT_NE(GetTimeZoneInformation(&zone), TIME_ZONE_ID_UNKNOWN);
    EXPECT_EQ(std::tuple(zone.Bias, zone.StandardBias, zone.DaylightBias), std::tuple(-60, 0, -60));
    const auto rule = [](const SYSTEMTIME& t) { return std::tuple(t.wYear, t.wMonth, t.wDay, t.wDayOfWeek, t.wHour); };
    EXPECT_EQ(rule(zone.DaylightDate), std::tuple(0, 3, 5, 0, 2));
    EXPECT_EQ(rule(zone.StandardDate), std::tuple(0, 10, 5, 0, 3));
    EXPECT_EQ(std::u16string(zone.DaylightName), u"CEST");

    Use(_T("EST5EDT,M3.2.0,M11.1.0"));
    GetTimeZoneInformation(&zone);
    EXPECT_EQ(zone.Bias, 300);
    EXPECT_EQ(rule(zone.DaylightDate), std::tuple(0, 3, 2, 0, 2));
    EXPECT_EQ(rule(zone.StandardDate), std::tuple(0, 11, 1, 0, 2));
    Use(_T("XYZ-5:30"));
    EXPECT_EQ(GetTimeZoneInformation(&zone), TIME_ZONE_ID_UNKNOWN);
    EXPECT_EQ(zone.Bias, -330);
}

TEST_F(CurrentZone, IsFollowedAtOnceWhenItChanges) {
    Use(_T("AAA+12"));
    SYSTEMTIME west{}, east{};
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
