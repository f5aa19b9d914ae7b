// Dates and counts of ticks, and both in the offset of now.

#include "../base/error_map.h"
#include "calendar.h"
#include "times.h"
#include "zone.h"

namespace kawin {
namespace {

LONGLONG TicksFromUniversal() noexcept {
    return LocalTm(std::time(nullptr)).tm_gmtoff * kTicksPerSecond;
}

BOOL Shift(const FILETIME& from, LONGLONG ticks, FILETIME& to) noexcept {
    const LONGLONG start = ToTicks(from);
    LONGLONG shifted = 0;
    if (start < 0 || __builtin_add_overflow(start, ticks, &shifted) || shifted < 0) {
        return Fail(ERROR_INVALID_PARAMETER);
    }
    to = ToFileTime(shifted);
    return TRUE;
}

}  // namespace
}  // namespace kawin

BOOL FileTimeToSystemTime(const FILETIME* file_time, LPSYSTEMTIME time) noexcept {
    const LONGLONG ticks = kawin::ToTicks(*file_time);
    const auto milliseconds = static_cast<WORD>(ticks / 10'000 % 1000);
    const auto date = kawin::DateOf(ticks / kawin::kTicksPerSecond - kawin::kSecondsFrom1601, milliseconds);
    if (ticks < 0 || !date) {
        return kawin::Fail(ERROR_INVALID_PARAMETER);
    }
    *time = *date;
    return TRUE;
}

BOOL SystemTimeToFileTime(const SYSTEMTIME* time, LPFILETIME file_time) noexcept {
    const auto seconds = kawin::SecondsOf(*time);
    if (!seconds) {
        return kawin::Fail(ERROR_INVALID_PARAMETER);
    }
    *file_time =
        kawin::ToFileTime((*seconds + kawin::kSecondsFrom1601) * kawin::kTicksPerSecond + time->wMilliseconds * 10'000LL);
    return TRUE;
}

LONG CompareFileTime(const FILETIME* first, const FILETIME* second) noexcept {
    const auto a = static_cast<ULONGLONG>(kawin::ToTicks(*first));
    const auto b = static_cast<ULONGLONG>(kawin::ToTicks(*second));
    return a < b ? -1 : a > b ? 1 : 0;
}

BOOL FileTimeToLocalFileTime(const FILETIME* universal, LPFILETIME local) noexcept {
    return kawin::Shift(*universal, kawin::TicksFromUniversal(), *local);
}

BOOL LocalFileTimeToFileTime(const FILETIME* local, LPFILETIME universal) noexcept {
    return kawin::Shift(*local, -kawin::TicksFromUniversal(), *universal);
}
