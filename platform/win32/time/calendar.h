#pragma once

// The layer's dates in terms of the C library's: seconds since 1970-01-01 00:00 UTC and std::tm.

#include <ctime>
#include <optional>

#include "../base/types.h"

namespace kawin {

constexpr LONGLONG kTicksPerSecond = 10'000'000;       // of a FILETIME
constexpr LONGLONG kSecondsFrom1601 = 11'644'473'600;  // to 1970
constexpr LONGLONG kSecondsPerDay = 86'400;

// The seconds of a date in the clock that it is written in; nothing when there is no such date or it is not of 1601 to 30827.
std::optional<LONGLONG> SecondsOf(const SYSTEMTIME& date) noexcept;

// The date of those seconds; nothing outside 1601 to 30827.
std::optional<SYSTEMTIME> DateOf(LONGLONG seconds, WORD milliseconds) noexcept;

SYSTEMTIME ToSystemTime(const std::tm& tm, WORD milliseconds) noexcept;

LONGLONG ToTicks(const FILETIME& time) noexcept;
FILETIME ToFileTime(LONGLONG ticks) noexcept;

}  // namespace kawin
