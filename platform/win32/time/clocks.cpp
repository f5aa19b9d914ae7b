// What time it is, how long it has been, and sleeping.

#include <sched.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>

#include "../process/native_environment.h"
#include "calendar.h"
#include "times.h"
#include "zone.h"

namespace kawin {
namespace {

constexpr LONGLONG kPerformanceFrequency = 10'000'000;
constexpr long kNanosecondsPerTick = 100;
constexpr long kNanosecondsPerMillisecond = 1'000'000;

timespec Now(clockid_t clock) noexcept {
    timespec now{};
    clock_gettime(clock, &now);
    return now;
}

// The last second that this thread has asked for: breaking a second down costs more than reading the clock.
struct CachedSecond {
    LONGLONG second = -1;
    unsigned environment = 0;  // changes so far: one of them may be to TZ
    SYSTEMTIME date{};
};

constinit thread_local CachedSecond universal_second;
constinit thread_local CachedSecond local_second;

template <class BreakDown>
SYSTEMTIME DateNow(CachedSecond& cache, BreakDown break_down) noexcept {
    const timespec now = Now(CLOCK_REALTIME);
    const unsigned environment = EnvironmentChanges();
    if (now.tv_sec != cache.second || environment != cache.environment) {
        cache = {now.tv_sec, environment, break_down(now.tv_sec)};
    }
    SYSTEMTIME date = cache.date;
    date.wMilliseconds = static_cast<WORD>(now.tv_nsec / kNanosecondsPerMillisecond);
    return date;
}

FILETIME FileTimeNow() noexcept {
    const timespec now = Now(CLOCK_REALTIME);
    return ToFileTime((now.tv_sec + kSecondsFrom1601) * kTicksPerSecond + now.tv_nsec / kNanosecondsPerTick);
}

}  // namespace
}  // namespace kawin

void GetSystemTime(LPSYSTEMTIME time) noexcept {
    *time =
        kawin::DateNow(kawin::universal_second, [](LONGLONG second) { return kawin::DateOf(second, 0).value_or(SYSTEMTIME{}); });
}

void GetLocalTime(LPSYSTEMTIME time) noexcept {
    *time = kawin::DateNow(kawin::local_second, [](LONGLONG second) { return kawin::ToSystemTime(kawin::LocalTm(second), 0); });
}

void GetSystemTimeAsFileTime(LPFILETIME time) noexcept {
    *time = kawin::FileTimeNow();
}

void GetSystemTimePreciseAsFileTime(LPFILETIME time) noexcept {
    *time = kawin::FileTimeNow();
}

DWORD GetTickCount() noexcept {
    return static_cast<DWORD>(GetTickCount64());
}

ULONGLONG GetTickCount64() noexcept {
    const timespec now = kawin::Now(CLOCK_BOOTTIME);
    return static_cast<ULONGLONG>(now.tv_sec * 1000 + now.tv_nsec / kawin::kNanosecondsPerMillisecond);
}

BOOL QueryPerformanceCounter(LARGE_INTEGER* counter) noexcept {
    const timespec now = kawin::Now(CLOCK_MONOTONIC);
    counter->QuadPart = now.tv_sec * kawin::kPerformanceFrequency + now.tv_nsec / kawin::kNanosecondsPerTick;
    return TRUE;
}

BOOL QueryPerformanceFrequency(LARGE_INTEGER* frequency) noexcept {
    frequency->QuadPart = kawin::kPerformanceFrequency;
    return TRUE;
}

void Sleep(DWORD milliseconds) noexcept {
    if (milliseconds == 0) {
        sched_yield();
        return;
    }
    timespec left{milliseconds / 1000, static_cast<long>(milliseconds % 1000) * kawin::kNanosecondsPerMillisecond};
    do {
        while (clock_nanosleep(CLOCK_MONOTONIC, 0, &left, &left) == EINTR) {
        }
    } while (milliseconds == INFINITE);
}
