#pragma once

// Clocks, dates and time zones.
//
// A FILETIME counts 100-nanosecond steps since 1601-01-01 00:00 UTC; a SYSTEMTIME is a date of the years 1601 to 30827
// (the last ticks are told as a date of 30828, which is not taken back). Functions that return BOOL fail with
// ERROR_INVALID_PARAMETER on a date that does not exist or a time outside that range.

#include "../base/types.h"

// Local time = UTC - (Bias + StandardBias or DaylightBias), in minutes. A change date has wYear 0, then wDay is the week of
// the month (5: the last) and wDayOfWeek its day, or a year, then it is a date of that year only; wMonth 0 means no daylight
// time.
struct TIME_ZONE_INFORMATION {
    LONG Bias;
    WCHAR StandardName[32];
    SYSTEMTIME StandardDate;
    LONG StandardBias;
    WCHAR DaylightName[32];
    SYSTEMTIME DaylightDate;
    LONG DaylightBias;
};
using LPTIME_ZONE_INFORMATION = TIME_ZONE_INFORMATION*;

constexpr DWORD TIME_ZONE_ID_UNKNOWN = 0;
constexpr DWORD TIME_ZONE_ID_STANDARD = 1;
constexpr DWORD TIME_ZONE_ID_DAYLIGHT = 2;
constexpr DWORD TIME_ZONE_ID_INVALID = 0xFFFFFFFF;

// Now, in UTC or in the current zone: TZ, else the system's zone, a change of which is seen within a second.
KADATA_API void GetSystemTime(LPSYSTEMTIME time) noexcept;
KADATA_API void GetLocalTime(LPSYSTEMTIME time) noexcept;
KADATA_API void GetSystemTimeAsFileTime(LPFILETIME time) noexcept;
KADATA_API void GetSystemTimePreciseAsFileTime(LPFILETIME time) noexcept;

// wDayOfWeek is filled in, and not looked at.
KADATA_API BOOL FileTimeToSystemTime(const FILETIME* file_time, LPSYSTEMTIME time) noexcept;
KADATA_API BOOL SystemTimeToFileTime(const SYSTEMTIME* time, LPFILETIME file_time) noexcept;

// -1, 0 or 1.
KADATA_API LONG CompareFileTime(const FILETIME* first, const FILETIME* second) noexcept;

// Between UTC and a zone's time, with the rule of that date; null is the current zone. Of an hour that comes twice the first is
// meant; an hour that is left out counts as daylight time.
KADATA_API BOOL SystemTimeToTzSpecificLocalTime(const TIME_ZONE_INFORMATION* zone, const SYSTEMTIME* universal,
                                                LPSYSTEMTIME local) noexcept;
KADATA_API BOOL TzSpecificLocalTimeToSystemTime(const TIME_ZONE_INFORMATION* zone, const SYSTEMTIME* local,
                                                LPSYSTEMTIME universal) noexcept;

// Between UTC and local time with the offset of *now*, whatever the date: the documented behaviour, so a summer date converted in
// winter is an hour off. Use the functions above for dates.
KADATA_API BOOL FileTimeToLocalFileTime(const FILETIME* universal, LPFILETIME local) noexcept;
KADATA_API BOOL LocalFileTimeToFileTime(const FILETIME* local, LPFILETIME universal) noexcept;

// The current zone with this year's change dates. TIME_ZONE_ID_UNKNOWN when the zone has no daylight time, else what holds now.
KADATA_API DWORD GetTimeZoneInformation(LPTIME_ZONE_INFORMATION zone) noexcept;

// Milliseconds since the machine started, sleep included; GetTickCount starts again at 0 after 49.7 days.
KADATA_API DWORD GetTickCount() noexcept;
KADATA_API ULONGLONG GetTickCount64() noexcept;

// A steady counter of 10,000,000 steps per second.
KADATA_API BOOL QueryPerformanceCounter(LARGE_INTEGER* counter) noexcept;
KADATA_API BOOL QueryPerformanceFrequency(LARGE_INTEGER* frequency) noexcept;

// Suspends the calling thread; 0 lets others run, INFINITE never returns.
KADATA_API void Sleep(DWORD milliseconds) noexcept;
