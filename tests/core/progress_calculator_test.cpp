#include <gtest/gtest.h>
#include <kadata/progress_calculator.h>

#include <atomic>
#include <cmath>
#include <string>
#include <thread>
#include <vector>

#include "support/archive_bytes.h"

namespace {

class Clock : public IProgressClock {
public:
    ULONGLONG Time64() const override { return time_; }
    DWORD TickCount() const override { return static_cast<DWORD>(time_ / 10'000 + tick_offset_); }
    void Advance(double seconds) { time_ += static_cast<ULONGLONG>(seconds * 1e7 + 0.5); }
    void SetBack(double seconds) { time_ -= static_cast<ULONGLONG>(seconds * 1e7 + 0.5); }
    void SetTick(DWORD tick) { tick_offset_ = tick - time_ / 10'000; }

private:
    ULONGLONG time_ = 133'000'000'000'000'000;
    ULONGLONG tick_offset_ = 0;
};

// What happens, and what is asked. Times are seconds since the row before.
enum class Do { Hint, Step, Progress, Remaining, Adjust };

struct Row {
    double after;
    Do what;
    int part;
    double value;  // the fraction of a hint, else the expected answer
};

struct Script {
    const char* title;
    std::vector<std::pair<DWORD, UINT>> parts;  // expected seconds, steps
    std::vector<Row> rows;
};

void Play(const Script& script) {
    SCOPED_TRACE(script.title);
    Clock clock;
    CProgressCalculator progress(clock);
    for (const auto& [seconds, steps] : script.parts) {
        progress.AddPart(seconds, steps);
    }
    progress.Start();
    int line = 0;
    for (const Row& row : script.rows) {
        SCOPED_TRACE("row " + std::to_string(line++));
        clock.Advance(row.after);
        switch (row.what) {
            case Do::Hint:
                progress.Hint(row.part, row.value);
                break;
            case Do::Step:
                progress.HintStep(row.part);
                break;
            case Do::Progress:
                EXPECT_NEAR(progress.GetProgress(), row.value, 1e-9);
                break;
            case Do::Remaining:
                EXPECT_EQ(progress.GetRemainingTime(), static_cast<DWORD>(row.value));
                break;
            case Do::Adjust:
                progress.AdjustExpectedTimes(row.part, 0, -1);
                break;
        }
    }
}

TEST(ProgressCalculator, FollowsScriptsOfHintsAndTimes) {
    const Script scripts[] = {
        {"by the expected durations alone, in thousandths that are cut",
         {{10, 0}, {30, 0}},
         {{0, Do::Progress, 0, 0.0}, {5.001, Do::Progress, 0, 0.125}, {7, Do::Progress, 0, 0.25}}},
        {"computed at most every five seconds, whatever was hinted meanwhile",
         {{10, 0}, {30, 0}},
         {{0, Do::Progress, 0, 0.0}, {5, Do::Hint, 1, 0.5}, {0, Do::Progress, 0, 0.0}, {0.001, Do::Progress, 0, 0.25}}},
        {"a hint at once moves to its part, and is not trusted to extrapolate",
         {{10, 0}, {30, 0}},
         {{0, Do::Hint, 1, 0.02}, {0, Do::Progress, 0, 0.25}, {6, Do::Progress, 0, 0.25 + 0.2 * 0.75}}},
        {"a hint after five seconds is extrapolated",
         {{100, 0}},
         {{10, Do::Hint, 0, 0.5}, {0, Do::Progress, 0, 0.5}, {5.5, Do::Progress, 0, 0.775}, {20, Do::Progress, 0, 1.0}}},
        {"hints below 0.02 and of no number are ignored",
         {{10, 0}, {30, 0}},
         {{0, Do::Hint, 1, 0.01}, {0, Do::Hint, 1, -1}, {0, Do::Hint, 1, std::nan("")}, {5, Do::Progress, 0, 0.125}}},
        {"1.0 begins the next part; of the last one it only is a hint",
         {{10, 0}, {30, 0}},
         {{0, Do::Hint, 0, 1.0}, {0, Do::Progress, 0, 0.25}, {6, Do::Hint, 1, 1.0}, {0, Do::Progress, 0, 1.0}}},
        {"a part that was left goes back to the one after it",
         {{10, 0}, {10, 0}, {20, 0}},
         {{0, Do::Hint, 2, 0.5}, {0, Do::Progress, 0, 0.5}, {6, Do::Hint, 0, 1.0}, {0, Do::Progress, 0, 0.25}}},
        {"a part that is none: before the first nothing is current any more, behind the last its clock begins again",
         {{10, 0}, {10, 0}},
         {{5, Do::Hint, 7, 0.5},
          {6, Do::Progress, 0, 0.8},
          {1, Do::Hint, 9, 0.5},
          {5, Do::Progress, 0, 0.75},
          {0, Do::Hint, -3, 1.0},
          {6, Do::Progress, 0, 0.0},
          {0, Do::Remaining, 0, 0}}},
        {"steps are fractions of their part; a part without steps and a part that is none have no step",
         {{40, 4}, {40, 0}},
         {{6, Do::Step, 0, 0},
          {0, Do::Step, 1, 0},
          {0, Do::Step, 5, 0},
          {0, Do::Step, -1, 0},
          {0, Do::Progress, 0, 0.125},
          {6, Do::Step, 0, 0},
          {0, Do::Progress, 0, 0.25}}},
        {"the remaining time: unknown for five seconds, then rounded up to fives, later parts in whole seconds",
         {{20, 0}, {31, 0}},
         {{5, Do::Remaining, 0, 0}, {1, Do::Remaining, 0, 45}, {5, Do::Remaining, 0, 45}, {0.001, Do::Remaining, 0, 40}}},
        {"the remaining time falls by 20 at most while it is above 20, and rises by 20 at most",
         {{100, 0}},
         {{10, Do::Remaining, 0, 90},
          {6, Do::Hint, 0, 0.25},
          {0, Do::Remaining, 0, 70},
          {6, Do::Remaining, 0, 50},
          {6, Do::Remaining, 0, 40},
          {6, Do::Hint, 0, 0.1},
          {0, Do::Remaining, 0, 60},
          {6, Do::Hint, 0, 0.9},
          {0, Do::Remaining, 0, 5}}},
        {"a remaining time below 20 and then one above wraps",
         {{20, 0}, {60, 0}},
         {{15, Do::Hint, 1, 0.5},
          {6, Do::Hint, 1, 0.6},
          {0, Do::Remaining, 0, 5},
          {0.1, Do::Hint, 1, 0.05},
          {6, Do::Remaining, 0, 4294967281}}},
        {"a part that took twice as long makes all twice as long",
         {{10, 0}, {10, 0}, {20, 0}},
         {{20, Do::Hint, 1, 0.5}, {0, Do::Adjust, 0, 0}, {10, Do::Progress, 0, 0.25 + 0.5 * 0.25}}},
        {"the current part is extrapolated, after five seconds only",
         {{10, 0}, {30, 0}},
         {{4, Do::Adjust, 0, 0}, {2, Do::Hint, 0, 0.2}, {0, Do::Adjust, 0, 0}, {9, Do::Remaining, 0, 105}}},
        {"a part without an expected duration has no progress and divides nothing",
         {{0, 0}, {0, 0}},
         {{6, Do::Progress, 0, 0.0},
          {0, Do::Remaining, 0, 0},
          {0, Do::Adjust, 0, 0},
          {6, Do::Hint, 1, 0.5},
          {0, Do::Progress, 0, 0.0}}},
    };
    for (const Script& script : scripts) {
        Play(script);
    }
}

TEST(ProgressCalculator, SaysTheTimeInTheHostsWords) {
    Clock clock;
    // Expected seconds of a part after the current one, and what is shown when the current one has 5 s to go of 11.
    const struct {
        DWORD later;
        LPCTSTR text;
    } rows[] = {{0, _T("10 s")}, {2, _T("10 s")}, {86, _T("90 s")}, {87, _T("2 min")}, {115, _T("2 min")}, {145, _T("3 min")}};
    for (const auto& row : rows) {
        CProgressCalculator progress(clock);
        progress.AddPart(11, 0);
        progress.AddPart(row.later, 0);
        progress.Start();
        EXPECT_EQ(progress.GetRemainingTimeFormatted(0), CString());
        clock.Advance(6.05);
        EXPECT_EQ(progress.GetRemainingTimeFormatted(0), CString(row.text)) << row.later;
        EXPECT_EQ(progress.GetRemainingTimeFormatted(906), _T("left: ") + CString(row.text));
        progress.EnableRemainingTimeInfo(FALSE);
        EXPECT_EQ(progress.GetRemainingTime(), 0u);
    }
}

TEST(ProgressCalculator, AnswersNothingBeforeItRunsAndKeepsItsLines) {
    Clock clock;
    CProgressCalculator progress(clock);
    const auto ask = [&] {
        progress.Hint(0, 0.5);
        progress.HintStep(0);
        progress.AdjustExpectedTimes(0, 0, 0);
        progress.Stop();
        return progress.GetProgress() == 0.0 && progress.GetRemainingTime() == 0 && !progress.IsRunning();
    };
    progress.Start();
    progress.RemoveLastPart();
    EXPECT_TRUE(ask());
    EXPECT_EQ(progress.AddPart(10, 1), 0);
    EXPECT_EQ(progress.AddPart(10, 1), 1);
    EXPECT_TRUE(ask());
    EXPECT_EQ(progress.GetSize(), 0);
    progress.Start();
    progress.AdjustExpectedTimes(1, -2, 0);
    progress.Hint(0, 0.5);
    progress.AdjustExpectedTimes(0, 0, 9);
    ASSERT_EQ(progress.GetSize(), 2);
    EXPECT_EQ(progress[0], CString(_T("Adjusting parts from 0 to 0 by 1.000000    ProgressOfCurrent 0.000000")));
    EXPECT_EQ(progress[1], CString(_T("Adjusting parts from 0 to 1 by 1.000000    ProgressOfCurrent 0.000000")));
    progress.Stop();
    EXPECT_TRUE(progress.IsRunning());
    progress.Reset();
    EXPECT_TRUE(ask());
    EXPECT_EQ(progress.GetSize(), 2);
}

TEST(ProgressCalculator, LivesWithClocksThatWrapAndGoBack) {
    Clock clock;
    CProgressCalculator progress(clock);
    progress.AddPart(100, 0);
    clock.SetTick(0xFFFFFFFF - 2000);
    progress.Start();
    clock.Advance(1);
    EXPECT_NEAR(progress.GetProgress(), 0.01, 1e-9);
    clock.Advance(5);
    EXPECT_NEAR(progress.GetProgress(), 0.01, 1e-9);
    clock.Advance(1);
    EXPECT_NEAR(progress.GetProgress(), 0.07, 1e-9);
    clock.Advance(10);
    clock.SetBack(100);
    EXPECT_EQ(progress.GetProgress(), 0.0);
    EXPECT_EQ(progress.GetRemainingTime(), 0u);
}

TEST(ProgressCalculator, KeepsItsPartsInAnArchive) {
    CProgressCalculator written;
    written.AddPart(1, 2);
    written.AddPart(0x10000, 3);
    const auto bytes = test::StoredBytes([&](CArchive& archive) { written.SerializeParts(archive); });
    const std::string expected(
        "\x02\x00"
        "\x80\x96\x98\x00\x00\x00\x00\x00\x80\x96\x98\x00\x00\x00\x00\x00\x02\x00\x00\x00\x00\x00\x00\x00"
        "\x00\x00\x80\x96\x98\x00\x00\x00\x00\x00\x80\x96\x98\x00\x00\x00\x03\x00\x00\x00\x00\x00\x00\x00",
        50);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(bytes.data()), bytes.size()), expected);
}

TEST(ProgressCalculator, IsAskedWhileItIsTold) {
    CProgressCalculator progress;
    progress.AddPart(1, 1000);
    progress.AddPart(1, 0);
    progress.Start();
    std::atomic<bool> over = false;
    std::thread asking([&] {
        while (!over) {
            const double now = progress.GetProgress();
            EXPECT_TRUE(now >= 0.0 && now <= 1.0);
            progress.GetRemainingTime();
        }
    });
    for (int i = 0; i < 1000; ++i) {
        progress.HintStep(0);
        progress.AdjustExpectedTimes(0, 0, 1);
    }
    over = true;
    asking.join();
    EXPECT_EQ(progress.GetSize(), 1000);
}

}  // namespace
