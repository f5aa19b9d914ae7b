#pragma once

// The current time zone: TZ, else the system's zone, which is looked up again once a second.

#include <ctime>

#include "../base/types.h"

namespace kawin {

// Local time with tm_gmtoff, tm_isdst and tm_zone. All zero when the year cannot be expressed.
std::tm LocalTm(LONGLONG seconds) noexcept;

// The two offsets from UTC, in seconds, that hold before and after the change that is next to a local time; equal when none is
// near.
struct Offsets {
    LONGLONG before;
    LONGLONG after;
};
Offsets OffsetsAround(LONGLONG local) noexcept;

// Of an hour that comes twice the first is meant; an hour that is left out is counted as if the change had been made.
LONGLONG ToUniversal(LONGLONG local) noexcept;

}  // namespace kawin
