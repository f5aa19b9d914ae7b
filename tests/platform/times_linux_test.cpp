#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <tuple>

#include "support/environment.h"

namespace {

TEST(LinuxEnvironment, ChoosesTheZoneWhichIsDescribedAndFollowedAtOnce) {
    const test::InEnvironment before(_T("TZ"), nullptr);
    const auto use = [](const TCHAR* zone) { SetEnvironmentVariableW(_T("TZ"), zone); };
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
        use(row.zone);
        TIME_ZONE_INFORMATION zone{};
        EXPECT_EQ(GetTimeZoneInformation(&zone) == TIME_ZONE_ID_UNKNOWN, row.daylight == Rule());
        EXPECT_EQ(zone.Bias, row.bias);
        EXPECT_EQ(std::tuple(zone.StandardBias, zone.DaylightBias), std::tuple(0, row.daylight == Rule() ? 0 : -60));
        const auto rule = [](const SYSTEMTIME& t) { return Rule(t.wMonth, t.wDay, t.wDayOfWeek, t.wHour); };
        EXPECT_EQ(rule(zone.StandardDate), row.standard);
        EXPECT_EQ(rule(zone.DaylightDate), row.daylight);
    }
    SYSTEMTIME west{}, east{};
    use(_T("AAA+12"));
    GetLocalTime(&west);
    use(_T("BBB-12"));
    GetLocalTime(&east);
    EXPECT_NE(west.wDay, east.wDay);
}

}  // namespace
