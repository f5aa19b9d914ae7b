#include <afx_time.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

#include "support/temp_folder.h"

// Zones by name, which only this platform knows.

namespace {

class TimeInBerlin : public testing::Test {
protected:
    TimeInBerlin() : old_(std::getenv("TZ") == nullptr ? "" : std::getenv("TZ")) { Live("Europe/Berlin"); }
    ~TimeInBerlin() override { Live(old_.c_str()); }

private:
    static void Live(const char* zone) {
        *zone == 0 ? ::unsetenv("TZ") : ::setenv("TZ", zone, 1);
        ::tzset();
    }
    const std::string old_;
};

// Clocks went forward on 2026-03-29 at 01:00 UTC, and back on 2026-10-25 at 01:00 UTC.
TEST_F(TimeInBerlin, CrossesTheBordersOfDaylightTime) {
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
}

TEST_F(TimeInBerlin, SpansCountSecondsNotWallClock) {
    const CTime night(2026, 3, 28, 12, 0, 0);
    EXPECT_EQ((night + CTimeSpan(1, 0, 0, 0)).GetHour(), 13);
    EXPECT_EQ(CTime(2026, 3, 29, 12, 0, 0) - night, CTimeSpan(0, 23, 0, 0));
}

}  // namespace
