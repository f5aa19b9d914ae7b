#pragma once

// CTime: a point in time, and CTimeSpan: a stretch of time, both in whole seconds.

#include <kadata_export.h>
#include <windows.h>

#include <compare>
#include <ctime>

#include "afx_string.h"

// The system's header has a macro of this name, which the member below needs out of the way.
#undef GetCurrentTime

// Signed seconds. The parts (GetHours, GetMinutes, GetSeconds) are what is left over from the next larger unit and carry the
// span's sign; the totals are the whole span, rounded towards zero.
class KADATA_API CTimeSpan final {
public:
    constexpr CTimeSpan() noexcept = default;
    constexpr CTimeSpan(__time64_t seconds) noexcept : seconds_(seconds) {}
    constexpr CTimeSpan(LONG days, int hours, int minutes, int seconds) noexcept
        : seconds_(seconds + 60 * (minutes + 60 * (hours + 24 * static_cast<LONGLONG>(days)))) {}

    LONGLONG GetDays() const noexcept { return seconds_ / 86400; }
    LONGLONG GetTotalHours() const noexcept { return seconds_ / 3600; }
    LONG GetHours() const noexcept { return static_cast<LONG>(GetTotalHours() % 24); }
    LONGLONG GetTotalMinutes() const noexcept { return seconds_ / 60; }
    LONG GetMinutes() const noexcept { return static_cast<LONG>(GetTotalMinutes() % 60); }
    LONGLONG GetTotalSeconds() const noexcept { return seconds_; }
    LONG GetSeconds() const noexcept { return static_cast<LONG>(seconds_ % 60); }
    __time64_t GetTimeSpan() const noexcept { return seconds_; }

    CTimeSpan& operator+=(CTimeSpan other) noexcept { return *this = *this + other; }
    CTimeSpan& operator-=(CTimeSpan other) noexcept { return *this = *this - other; }
    friend CTimeSpan operator+(CTimeSpan a, CTimeSpan b) noexcept { return CTimeSpan(a.seconds_ + b.seconds_); }
    friend CTimeSpan operator-(CTimeSpan a, CTimeSpan b) noexcept { return CTimeSpan(a.seconds_ - b.seconds_); }
    friend std::strong_ordering operator<=>(const CTimeSpan&, const CTimeSpan&) noexcept = default;

    // %D days; %H %M %S the parts, with two digits; %%. Anything else behind a % is kept as it stands.
    CString Format(LPCTSTR format) const;
    CString Format(UINT formatId) const;  // CString::FromResource's

private:
    LONGLONG seconds_ = 0;
};

// Seconds since 1970-01-01 00:00 UTC. What is shown and taken apart is the local time of the process; the local form exists
// from 1970 to the end of the year 3000. Invalid arguments throw CInvalidArgException (AfxThrowInvalidArgException).
class KADATA_API CTime final {
public:
    static CTime GetCurrentTime();

    constexpr CTime() noexcept = default;  // 1970-01-01 00:00 UTC, used as "no time"
    constexpr CTime(__time64_t seconds) noexcept : seconds_(seconds) {}
    // Local time. Year 1970 to 3000, month 1 to 12, day 1 to 31, hour 0 to 23, minute and second 0 to 59; anything else, and
    // a time before 1970 UTC, is invalid. A day that its month does not have runs over into the next month. dst is that
    // of struct tm: -1 unknown, 0 standard, 1 daylight time. Unknown is standard time in the hour that comes twice; a time in
    // the hour that is left out is then an hour earlier.
    CTime(int year, int month, int day, int hour, int minute, int second, int dst = -1);
    // Local time, with the same limits. Deliberate: a year before 1900 is no time at all, as empty structures are, and gives 0.
    CTime(const SYSTEMTIME& local, int dst = -1);
    // UTC. Deliberate: a year before 1900 gives 0, as above, and dst changes nothing, since the instant is known without it.
    CTime(const FILETIME& utc, int dst = -1);

    __time64_t GetTime() const noexcept { return seconds_; }

    // Local; 0 when there is no local form.
    int GetYear() const noexcept;
    int GetMonth() const noexcept;  // 1 to 12
    int GetDay() const noexcept;
    int GetHour() const noexcept;
    int GetMinute() const noexcept;
    int GetSecond() const noexcept;
    int GetDayOfWeek() const noexcept;  // 1 is Sunday, 7 Saturday

    // Fill and return `parts`; null when there is no such form or parts is null.
    std::tm* GetLocalTm(std::tm* parts) const noexcept;
    std::tm* GetGmtTm(std::tm* parts) const noexcept;
    // Local. False, and `local` unchanged, when there is no local form.
    bool GetAsSystemTime(SYSTEMTIME& local) const noexcept;

    CTime& operator+=(CTimeSpan span) noexcept { return *this = *this + span; }
    CTime& operator-=(CTimeSpan span) noexcept { return *this = *this - span; }
    friend CTime operator+(CTime time, CTimeSpan span) noexcept { return CTime(time.seconds_ + span.GetTotalSeconds()); }
    friend CTime operator-(CTime time, CTimeSpan span) noexcept { return CTime(time.seconds_ - span.GetTotalSeconds()); }
    friend CTimeSpan operator-(CTime a, CTime b) noexcept { return CTimeSpan(a.seconds_ - b.seconds_); }
    friend std::strong_ordering operator<=>(const CTime&, const CTime&) noexcept = default;

    // Placeholders as strftime has them. The same everywhere: %d %H %I %j %m %M %S %U %w %W %y %Y %e %D %F %T %R %z %n %t %%.
    // As the user's locale has it: %a %A %b %B %h %p, the date %x, the time %X, both %c. %Z is the zone's name. With # behind the
    // % a number loses its leading zeros, and %x and %c have the long date. Anything else behind a % is kept as it stands. A time
    // without a local (UTC) form is invalid.
    CString Format(LPCTSTR format) const;
    CString Format(UINT formatId) const;  // CString::FromResource's
    CString FormatGmt(LPCTSTR format) const;
    CString FormatGmt(UINT formatId) const;

private:
    LONGLONG seconds_ = 0;
};
