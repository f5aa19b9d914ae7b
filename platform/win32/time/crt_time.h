#pragma once

// The C run-time's 64-bit calendar functions. Times are seconds since 1970-01-01 00:00 UTC, from 0 to 3000-12-31 23:59:59 UTC.

#include <ctime>

#include "../base/types.h"

using __time64_t = long long;
using errno_t = int;

// Now; also stored in `*time` unless that is null.
KADATA_API __time64_t _time64(__time64_t* time) noexcept;

// Broken-down local or universal time. 0, or EINVAL (in errno too) for a null pointer or a time out of range; then every field of
// a given `tm` is -1.
KADATA_API errno_t _localtime64_s(std::tm* tm, const __time64_t* time) noexcept;
KADATA_API errno_t _gmtime64_s(std::tm* tm, const __time64_t* time) noexcept;

// The time of a local date; fields may be out of range and are put right, tm_wday and tm_yday are filled in. tm_isdst: positive
// and 0 say that the date is in daylight or standard time, negative leaves it to the zone (an hour that comes twice is then
// standard time, one that is left out is taken as standard time less the shift). -1 and errno EINVAL for a date out of range.
KADATA_API __time64_t _mktime64(std::tm* tm) noexcept;
