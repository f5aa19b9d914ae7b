#include <afx_time.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

#include "support/temp_folder.h"

// Zones by name, which only this platform knows.

namespace {

// The process lives in a zone.
class ZoneScope {
public:
    explicit ZoneScope(const char* zone) {
        const char* const old = std::getenv("TZ");
        old_ = old == nullptr ? "" : old;
        wasSet_ = old != nullptr;
        ::setenv("TZ", zone, 1);
        ::tzset();
    }
    ZoneScope(const ZoneScope&) = delete;
    ZoneScope& operator=(const ZoneScope&) = delete;
    ~ZoneScope() {
        if (wasSet_)
            ::setenv("TZ", old_.c_str(), 1);
        else
            ::unsetenv("TZ");
        ::tzset();
    }

private:
    std::string old_;
    bool wasSet_;
};

struct Border {
    __time64_t time;
    LPCTSTR local;
};

}  // namespace

// Clocks went forward on 2026-03-29 at 01:00 UTC, and back on 2026-10-25 at 01:00 UTC.
TEST(TimeInBerlin, CrossesTheBordersOfDaylightTime) {
    const ZoneScope berlin("Europe/Berlin");
    const Border borders[] = {
        {1774745999, _T("2026-03-29 01:59:59 +0100")}, {1774746000, _T("2026-03-29 03:00:00 +0200")},
        {1792887300, _T("2026-10-25 02:15:00 +0200")}, {1792890900, _T("2026-10-25 02:15:00 +0100")},
        {1792893600, _T("2026-10-25 03:00:00 +0100")},
    };
    for (const Border& border : borders) {
        const CTime time(border.time);
        EXPECT_EQ(test::Narrow(time.Format(_T("%F %T %z")).View()), test::Narrow(border.local));
        std::tm parts = {};
        ASSERT_NE(time.GetLocalTm(&parts), nullptr);
        const CTime same(time.GetYear(), time.GetMonth(), time.GetDay(), time.GetHour(), time.GetMinute(), time.GetSecond(),
                         parts.tm_isdst);
        EXPECT_EQ(same.GetTime(), border.time);
    }
}

TEST(TimeInBerlin, ReadsTimesThatComeTwiceOrNever) {
    const ZoneScope berlin("Europe/Berlin");
    EXPECT_EQ(CTime(2026, 10, 25, 2, 15, 0, 1).GetTime(), 1792887300);
    EXPECT_EQ(CTime(2026, 10, 25, 2, 15, 0, 0).GetTime(), 1792890900);
    EXPECT_EQ(CTime(2026, 10, 25, 2, 15, 0).GetTime(), 1792890900);
    EXPECT_EQ(CTime(2026, 3, 29, 2, 30, 0).GetHour(), 1);
    EXPECT_EQ(CTime(1970, 1, 1, 1, 0, 0).GetTime(), 0);
}

TEST(TimeInBerlin, SpansCountSecondsNotWallClock) {
    const ZoneScope berlin("Europe/Berlin");
    const CTime night(2026, 3, 28, 12, 0, 0);
    EXPECT_EQ((night + CTimeSpan(1, 0, 0, 0)).GetHour(), 13);
    EXPECT_EQ(CTime(2026, 3, 29, 12, 0, 0) - night, CTimeSpan(0, 23, 0, 0));
}
