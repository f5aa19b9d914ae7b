#include <gtest/gtest.h>
#include <windows.h>

#include <cerrno>
#include <ctime>
#include <tuple>

#include "support/last_error.h"
#include "support/time_zone.h"
#include "support/wine.h"

namespace {

using test::ErrorOf;

SYSTEMTIME Date(int year, int month, int day, int hour = 0, int minute = 0, int second = 0, int milliseconds = 0) {
    const auto word = [](int value) { return static_cast<WORD>(value); };
    return {word(year), word(month), 0, word(day), word(hour), word(minute), word(second), word(milliseconds)};
}

auto Fields(const SYSTEMTIME& t) {
    return std::tuple(t.wYear, t.wMonth, t.wDay, t.wHour, t.wMinute, t.wSecond, t.wMilliseconds);
}

FILETIME Ticks(ULONGLONG ticks) {
    return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
}

ULONGLONG Ticks(const FILETIME& time) {
    return ULONGLONG{time.dwHighDateTime} << 32 | time.dwLowDateTime;
}

TEST(FileTime, CountsFrom1601) {
    const struct {
        SYSTEMTIME date;
        ULONGLONG ticks;
        WORD day_of_week;
    } rows[] = {
        {Date(1601, 1, 1), 0, 1},
        {Date(2000, 2, 29, 23, 59, 59, 999), 125963423999990000, 2},
        {Date(30827, 12, 31), 9223149024000000000, 5},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.date.wYear);
        FILETIME ticks{};
        ASSERT_TRUE(SystemTimeToFileTime(&row.date, &ticks));
        SYSTEMTIME back{};
        ASSERT_TRUE(FileTimeToSystemTime(&ticks, &back));
        EXPECT_EQ(Fields(back), Fields(row.date));
        EXPECT_EQ(Ticks(ticks), row.ticks);
        EXPECT_EQ(back.wDayOfWeek, row.day_of_week);
    }
}

TEST(FileTime, RefusesDatesThatDoNotExist) {
    FILETIME ticks{};
    for (const SYSTEMTIME& date :
         {Date(1600, 12, 31), Date(2001, 0, 1), Date(2001, 13, 1), Date(2001, 1, 0), Date(2001, 4, 31), Date(2001, 1, 1, 24),
          Date(2001, 1, 1, 0, 60), Date(2001, 1, 1, 0, 0, 60), Date(2001, 1, 1, 0, 0, 0, 1000)}) {
        SCOPED_TRACE(testing::PrintToString(Fields(date)));
        EXPECT_EQ(ErrorOf(SystemTimeToFileTime(&date, &ticks)), ERROR_INVALID_PARAMETER);
    }
    for (const SYSTEMTIME& date : {Date(30828, 1, 1), Date(2001, 2, 29)}) {
        EXPECT_EQ(SystemTimeToFileTime(&date, &ticks), test::UnlessWine(FALSE, TRUE));
    }
    const FILETIME low = Ticks(0x1FFFFFFFF), high = Ticks(0x200000000), negative = Ticks(0x8000000000000000);
    SYSTEMTIME date{};
    EXPECT_EQ(ErrorOf(FileTimeToSystemTime(&negative, &date)), ERROR_INVALID_PARAMETER);
    const FILETIME last = Ticks(0x7FFFFFFFFFFFFFFF);
    EXPECT_TRUE(FileTimeToSystemTime(&last, &date));
    EXPECT_EQ(Fields(date), Fields(Date(30828, 9, 14, 2, 48, 5, 477))) << "no way back";
    EXPECT_EQ(CompareFileTime(&low, &high), -1);
    EXPECT_EQ(CompareFileTime(&negative, &low), 1) << "as unsigned";
    EXPECT_EQ(CompareFileTime(&low, &low), 0);
}

SYSTEMTIME Sunday(int month, int week, int hour) {
    return Date(0, month, week, hour);
}

TIME_ZONE_INFORMATION Zone(LONG bias, const SYSTEMTIME& standard, const SYSTEMTIME& daylight) {
    return {bias, {}, standard, 0, {}, daylight, -60};
}

const TIME_ZONE_INFORMATION kBerlin = Zone(-60, Sunday(10, 5, 3), Sunday(3, 5, 2));

void ExpectLocal(const TIME_ZONE_INFORMATION* zone, const SYSTEMTIME& universal, const SYSTEMTIME& local) {
    SYSTEMTIME result{};
    ASSERT_TRUE(SystemTimeToTzSpecificLocalTime(zone, &universal, &result));
    EXPECT_EQ(Fields(result), Fields(local));
}

void ExpectUniversal(const TIME_ZONE_INFORMATION* zone, const SYSTEMTIME& local, const SYSTEMTIME& universal) {
    SYSTEMTIME result{};
    ASSERT_TRUE(TzSpecificLocalTimeToSystemTime(zone, &local, &result));
    EXPECT_EQ(Fields(result), Fields(universal));
}

// `zone` is Berlin's, given or as that of the process.
void ExpectBerlin(const TIME_ZONE_INFORMATION* zone) {
    const struct {
        SYSTEMTIME universal, local;
    } rows[] = {
        {Date(2024, 7, 15, 12), Date(2024, 7, 15, 14)},
        {Date(2024, 3, 31, 0, 59, 59, 7), Date(2024, 3, 31, 1, 59, 59, 7)},
        {Date(2024, 3, 31, 1), Date(2024, 3, 31, 3)},
        {Date(2024, 10, 27, 0, 30), Date(2024, 10, 27, 2, 30)},  // the first of two
        {Date(2024, 12, 31, 23, 30), Date(2025, 1, 1, 0, 30)},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(Fields(row.universal)));
        ExpectLocal(zone, row.universal, row.local);
        ExpectUniversal(zone, row.local, row.universal);
    }
    ExpectLocal(zone, Date(2024, 10, 27, 1, 30), Date(2024, 10, 27, 2, 30));
    ExpectUniversal(zone, Date(2024, 3, 31, 2, 30), Date(2024, 3, 31, 0, 30));  // left out
}

TEST(TimeZone, FollowsTheRuleOfTheDate) {
    ExpectBerlin(&kBerlin);
    const auto sydney = Zone(-600, Sunday(4, 1, 3), Sunday(10, 1, 2));
    const auto kolkata = Zone(-330, SYSTEMTIME{}, SYSTEMTIME{});
    ExpectLocal(&sydney, Date(2024, 1, 15, 12), Date(2024, 1, 15, 23));
    ExpectUniversal(&sydney, Date(2024, 1, 15, 23), Date(2024, 1, 15, 12));
    ExpectLocal(&sydney, Date(2024, 7, 15, 12), Date(2024, 7, 15, 22));
    ExpectLocal(&sydney, Date(2024, 4, 6, 16), Date(2024, 4, 7, 2));
    ExpectLocal(&kolkata, Date(2024, 7, 15, 12), Date(2024, 7, 15, 17, 30));
    ExpectUniversal(&kolkata, Date(2024, 7, 15, 17, 30), Date(2024, 7, 15, 12));
    SYSTEMTIME result{};
    const SYSTEMTIME first = Date(1601, 1, 1), wrong = Date(2024, 2, 30);
    EXPECT_EQ(ErrorOf(TzSpecificLocalTimeToSystemTime(&kBerlin, &first, &result)), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(ErrorOf(SystemTimeToTzSpecificLocalTime(&kBerlin, &wrong, &result)), ERROR_INVALID_PARAMETER);
}

TEST(TimeZone, OfTheProcessIsFollowedLikewise) {
    SKIP_OUTSIDE_CENTRAL_EUROPE();
    ExpectBerlin(nullptr);
    const auto seconds = [](int month, int day, int is_daylight, int hour) {
        std::tm tm{};
        tm.tm_year = 124;
        tm.tm_mon = month - 1;
        tm.tm_mday = day;
        tm.tm_hour = hour;
        tm.tm_isdst = is_daylight;
        return _mktime64(&tm);
    };
    constexpr __time64_t kDay = 1711843200, kAutumnDay = 1729987200;  // 2024-03-31 and 2024-10-27 at 00:00 UTC
    constexpr int kHour = 3600;
    EXPECT_EQ(seconds(3, 31, -1, 3), kDay + kHour);
    EXPECT_EQ(seconds(3, 31, -1, 2), kDay) << "left out";
    EXPECT_EQ(seconds(3, 31, 0, 3), kDay + 2 * kHour) << "said to be standard time";
    EXPECT_EQ(seconds(10, 27, 1, 2), kAutumnDay) << "the first of two";
    EXPECT_EQ(seconds(9, 57, -1, 2), kAutumnDay + kHour) << "the second, of a day that its month does not have";
}

TEST(Clock, ItsFacesAgree) {
    FILETIME before{}, converted{}, after{}, local{}, back{};
    SYSTEMTIME universal{};
    GetSystemTimeAsFileTime(&before);
    GetSystemTime(&universal);
    GetSystemTimePreciseAsFileTime(&after);
    constexpr ULONGLONG kMillisecond = 10000;
    ASSERT_TRUE(SystemTimeToFileTime(&universal, &converted));
    EXPECT_GE(Ticks(converted) + 20 * kMillisecond, Ticks(before));  // a coarse clock may lag
    EXPECT_LE(Ticks(converted), Ticks(after) + 20 * kMillisecond);
    ASSERT_TRUE(FileTimeToLocalFileTime(&before, &local));
    ASSERT_TRUE(LocalFileTimeToFileTime(&local, &back));
    EXPECT_EQ(Ticks(back), Ticks(before));

    LARGE_INTEGER frequency{}, first{}, second{};
    ASSERT_TRUE(QueryPerformanceFrequency(&frequency));
    EXPECT_GE(frequency.QuadPart, 1000000);
    const ULONGLONG start = GetTickCount64();
    QueryPerformanceCounter(&first);
    while (GetTickCount64() < start + 20) {
    }
    QueryPerformanceCounter(&second);
    EXPECT_GE((second.QuadPart - first.QuadPart) * 1000 / frequency.QuadPart, 1);
}

TEST(CrtTime, RefusesWhatIsBefore1970) {
    std::tm tm{};
    const __time64_t time = -1000000;
    EXPECT_EQ(_localtime64_s(&tm, &time), EINVAL);
    EXPECT_EQ(std::tuple(tm.tm_year, tm.tm_mon, tm.tm_hour, tm.tm_isdst), std::tuple(-1, -1, -1, -1));
    tm = {};
    tm.tm_year = 60;
    tm.tm_mday = 1;
    errno = 0;
    EXPECT_EQ(_mktime64(&tm), -1);
    EXPECT_EQ(errno, EINVAL);
}

}  // namespace
