#include "crt_time.h"

#include <algorithm>
#include <cerrno>
#include <mutex>

#include "../process/native_environment.h"
#include "zone.h"

namespace kawin {
namespace {

constexpr __time64_t kLastTime = 32'535'215'999;  // 3000-12-31 23:59:59

bool IsInRange(__time64_t time) {
    return time >= 0 && time <= kLastTime;
}

errno_t Invalid() {
    errno = EINVAL;
    return EINVAL;
}

template <class BreakDown>
errno_t Store(std::tm* tm, const __time64_t* time, BreakDown break_down) {
    if (tm == nullptr) {
        return Invalid();
    }
    if (time == nullptr || !IsInRange(*time)) {
        *tm = {-1, -1, -1, -1, -1, -1, -1, -1, -1, 0, nullptr};
        return Invalid();
    }
    *tm = break_down(*time);
    return 0;
}

std::tm UniversalTm(__time64_t time) {
    const std::time_t seconds = time;
    std::tm tm{};
    gmtime_r(&seconds, &tm);
    return tm;
}

// Near a change of the clock the date is taken as standard time, and put right when that turns out to be daylight time.
__time64_t FromLocal(__time64_t local) {
    const Offsets offsets = OffsetsAround(local);
    const auto [standard, daylight] = std::minmax(offsets.before, offsets.after);
    const __time64_t time = local - standard;
    return LocalTm(time).tm_gmtoff == standard ? time : local - daylight;
}

// The C library knows what a date in the wrong kind of time means.
__time64_t FromStated(std::tm tm) {
    const std::shared_lock lock(EnvironmentMutex());
    return mktime(&tm);
}

}  // namespace
}  // namespace kawin

__time64_t _time64(__time64_t* time) noexcept {
    const __time64_t now = std::time(nullptr);
    if (time != nullptr) {
        *time = now;
    }
    return now;
}

errno_t _localtime64_s(std::tm* tm, const __time64_t* time) noexcept {
    return kawin::Store(tm, time, kawin::LocalTm);
}

errno_t _gmtime64_s(std::tm* tm, const __time64_t* time) noexcept {
    return kawin::Store(tm, time, kawin::UniversalTm);
}

__time64_t _mktime64(std::tm* tm) noexcept {
    if (tm == nullptr) {
        kawin::Invalid();
        return -1;
    }
    std::tm local = *tm;
    const __time64_t time = tm->tm_isdst < 0 ? kawin::FromLocal(timegm(&local)) : kawin::FromStated(local);
    if (!kawin::IsInRange(time)) {
        kawin::Invalid();
        return -1;
    }
    *tm = kawin::LocalTm(time);
    return time;
}
