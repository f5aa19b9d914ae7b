#include <gtest/gtest.h>
#include <kadata/stop_watch.h>

namespace {

DWORD tick = 0;

DWORD Tick() {
    return tick;
}

// One after the other on one watch: the time that passes, what is done then, and what the watch tells.
TEST(StopWatch, TellsWholeSecondsInAllAndOfThePeriod) {
    const struct {
        DWORD passes;
        void (CStopWatch::*action)();
        unsigned total;
        unsigned period;
        bool running;
    } rows[] = {
        {0, &CStopWatch::Stop, 0, 0, false},
        {5000, &CStopWatch::Start, 0, 0, true},
        {1900, &CStopWatch::Stop, 1, 1, false},
        {5000, &CStopWatch::Stop, 1, 1, false},
        {0, &CStopWatch::Start, 1, 1, true},
        {900, &CStopWatch::Stop, 1, 1, false},
        {0, &CStopWatch::Start, 1, 1, true},
        {900, &CStopWatch::Start, 1, 1, true},
        {1100, &CStopWatch::Start, 3, 3, true},
        {1000, &CStopWatch::ResetPeriod, 4, 3, true},  // the run's three seconds still count
        {500, &CStopWatch::Stop, 4, 3, false},
        {0, &CStopWatch::ResetPeriod, 4, 0, false},
        {0, &CStopWatch::Start, 4, 0, true},
        {0xFFFFFFFF, &CStopWatch::Stop, 4 + 4294967, 4294967, false},
        {0, &CStopWatch::Start, 4 + 4294967, 4294967, true},
        {1000, &CStopWatch::Reset, 0, 0, false},
        {1000, &CStopWatch::Stop, 0, 0, false},
        {0, &CStopWatch::Start, 0, 0, true},
        {65'535'999, &CStopWatch::Stop, 65535, 65535, false},
        {0, &CStopWatch::Start, 65535, 65535, true},
        {1000, &CStopWatch::Start, 65536, 65536, true},
    };
    tick = 0xFFFFFFFF - 6000;  // wraps in the first run
    CStopWatch watch(&Tick);
    for (const auto& row : rows) {
        tick += row.passes;
        (watch.*row.action)();
        EXPECT_EQ(watch.GetElapsedTime().GetTotalSeconds(), row.total) << &row - rows;
        EXPECT_EQ(watch.GetLastPeriodTime().GetTotalSeconds(), row.period) << &row - rows;
        EXPECT_EQ(watch.GetElapsedTimeSecs(), row.total % 65536) << &row - rows;
        EXPECT_EQ(watch.GetLastPeriodSecs(), row.period % 65536) << &row - rows;
        EXPECT_EQ(watch.IsRunning() != FALSE, row.running) << &row - rows;
    }
}

}  // namespace
