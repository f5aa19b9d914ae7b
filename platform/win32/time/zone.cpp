#include "zone.h"

#include <atomic>
#include <mutex>

#include "../process/native_environment.h"
#include "calendar.h"

namespace kawin {
namespace {

constinit std::atomic<LONGLONG> looked_up_at{-1};  // the second, and
constinit std::atomic<unsigned> looked_up_for{0};  // EnvironmentChanges of the last look

// The caller holds the environment's mutex.
void LookUpZone() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    const unsigned changes = EnvironmentChanges();
    if (looked_up_at.load(std::memory_order_relaxed) != now.tv_sec || looked_up_for.load(std::memory_order_relaxed) != changes) {
        tzset();
        looked_up_at.store(now.tv_sec, std::memory_order_relaxed);
        looked_up_for.store(changes, std::memory_order_relaxed);
    }
}

LONGLONG OffsetAt(LONGLONG seconds) {
    return LocalTm(seconds).tm_gmtoff;
}

}  // namespace

std::tm LocalTm(LONGLONG seconds) noexcept {
    const std::time_t time = seconds;
    std::tm tm{};
    const std::shared_lock lock(EnvironmentMutex());
    LookUpZone();
    localtime_r(&time, &tm);
    return tm;
}

Offsets OffsetsAround(LONGLONG local) noexcept {
    return {OffsetAt(local - kSecondsPerDay), OffsetAt(local + kSecondsPerDay)};
}

LONGLONG ToUniversal(LONGLONG local) noexcept {
    const auto [before, after] = OffsetsAround(local);
    return OffsetAt(local - before) == before ? local - before : local - after;
}

}  // namespace kawin
