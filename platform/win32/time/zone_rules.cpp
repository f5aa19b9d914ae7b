// Time zones given by their rules, and the current zone's rules.

#include <new>
#include <vector>

#include "../base/error_map.h"
#include "../base/utf.h"
#include "calendar.h"
#include "times.h"
#include "zone.h"

namespace kawin {
namespace {

constexpr LONG kSecondsPerMinute = 60;
constexpr WORD kLastWeek = 5;
constexpr int kDaysPerWeek = 7;

// A day of the year in which a rule changes the clock, in the clock that holds before it.
std::optional<LONGLONG> ChangeIn(WORD year, const SYSTEMTIME& rule) {
    if (rule.wYear != 0) {
        return rule.wYear == year ? SecondsOf(rule) : std::nullopt;
    }
    SYSTEMTIME first = rule;
    first.wYear = year;
    first.wDay = 1;
    const std::optional<LONGLONG> start = SecondsOf(first);
    if (!start || rule.wDay < 1 || rule.wDay > kLastWeek || rule.wDayOfWeek >= kDaysPerWeek) {
        return {};
    }
    const int first_day = DateOf(*start, 0)->wDayOfWeek;
    const int ahead = (rule.wDayOfWeek - first_day + kDaysPerWeek) % kDaysPerWeek;
    LONGLONG change = *start + (ahead + (rule.wDay - 1) * kDaysPerWeek) * kSecondsPerDay;
    if (DateOf(change, 0)->wMonth != rule.wMonth) {
        change -= kDaysPerWeek * kSecondsPerDay;  // the fifth is the last
    }
    return change;
}

bool HasChanges(const TIME_ZONE_INFORMATION& zone) {
    return zone.StandardDate.wMonth != 0 && zone.DaylightDate.wMonth != 0;
}

bool IsBetween(LONGLONG time, LONGLONG start, LONGLONG end) {
    return start <= end ? start <= time && time < end : start <= time || time < end;  // over the turn of the year in the south
}

// The offset from local time to UTC in seconds; nothing when a rule is none. `universal` says which clock `time` is in.
std::optional<LONGLONG> BiasAt(const TIME_ZONE_INFORMATION& zone, LONGLONG time, bool universal) {
    const LONGLONG bias = zone.Bias * kSecondsPerMinute;
    if (!HasChanges(zone)) {
        return bias;
    }
    const LONGLONG standard = bias + zone.StandardBias * kSecondsPerMinute;
    const LONGLONG daylight = bias + zone.DaylightBias * kSecondsPerMinute;
    const std::optional<SYSTEMTIME> local = DateOf(universal ? time - standard : time, 0);
    const WORD year = local ? local->wYear : WORD{0};
    const std::optional<LONGLONG> start = ChangeIn(year, zone.DaylightDate);
    const std::optional<LONGLONG> end = ChangeIn(year, zone.StandardDate);
    if (!start || !end) {
        const bool other_year = zone.DaylightDate.wYear != 0 || zone.StandardDate.wYear != 0;
        return other_year ? std::optional(standard) : std::nullopt;
    }
    const bool is_daylight = universal ? IsBetween(time, *start + standard, *end + daylight) : IsBetween(time, *start, *end);
    return is_daylight ? daylight : standard;
}

BOOL Store(std::optional<SYSTEMTIME> date, SYSTEMTIME& target) {
    if (!date) {
        return Fail(ERROR_INVALID_PARAMETER);
    }
    target = *date;
    return TRUE;
}

// Seconds in the one clock to those in the other.
std::optional<LONGLONG> ToLocal(const TIME_ZONE_INFORMATION* zone, LONGLONG universal) {
    if (zone == nullptr) {
        return universal + LocalTm(universal).tm_gmtoff;
    }
    const std::optional<LONGLONG> bias = BiasAt(*zone, universal, true);
    return bias ? std::optional(universal - *bias) : std::nullopt;
}

std::optional<LONGLONG> FromLocal(const TIME_ZONE_INFORMATION* zone, LONGLONG local) {
    if (zone == nullptr) {
        return ToUniversal(local);
    }
    const std::optional<LONGLONG> bias = BiasAt(*zone, local, false);
    return bias ? std::optional(local + *bias) : std::nullopt;
}

template <class Convert>
BOOL ConvertDate(const SYSTEMTIME& from, SYSTEMTIME& to, Convert convert) {
    const std::optional<LONGLONG> seconds = SecondsOf(from);
    const std::optional<LONGLONG> converted = seconds ? convert(*seconds) : std::nullopt;
    return Store(converted ? DateOf(*converted, from.wMilliseconds) : std::nullopt, to);
}

// A change of the current zone: the first second of the new clock, and local time on both sides.
struct Change {
    LONGLONG second;
    std::tm before;
    std::tm after;
};

// In a day that begins at `second` and at whose end another clock holds.
Change FindChange(LONGLONG second) {
    LONGLONG low = second;
    LONGLONG high = second + kSecondsPerDay;
    const int is_daylight = LocalTm(low).tm_isdst;
    while (high - low > 1) {
        const LONGLONG middle = low + (high - low) / 2;
        (LocalTm(middle).tm_isdst == is_daylight ? low : high) = middle;
    }
    return {high, LocalTm(low), LocalTm(high)};
}

std::vector<Change> ChangesOfYear(WORD year) {
    std::vector<Change> changes;
    const SYSTEMTIME new_year{year, 1, 0, 1, 0, 0, 0, 0};
    const LONGLONG start = SecondsOf(new_year).value_or(0);
    for (LONGLONG day = start; day < start + 365 * kSecondsPerDay; day += kSecondsPerDay) {
        if (LocalTm(day).tm_isdst != LocalTm(day + kSecondsPerDay).tm_isdst) {
            changes.push_back(FindChange(day));
        }
    }
    return changes;
}

// The change as a rule: the week and day of the month, in the clock that holds before.
SYSTEMTIME RuleOf(const Change& change) {
    const LONGLONG local = change.second + change.before.tm_gmtoff;
    SYSTEMTIME rule = DateOf(local, 0).value_or(SYSTEMTIME{});
    const bool is_last = DateOf(local + kDaysPerWeek * kSecondsPerDay, 0).value_or(SYSTEMTIME{}).wMonth != rule.wMonth;
    rule.wDay = is_last ? kLastWeek : static_cast<WORD>((rule.wDay - 1) / kDaysPerWeek + 1);
    rule.wYear = 0;
    return rule;
}

template <std::size_t Size>
void CopyName(const char* name, WCHAR (&target)[Size]) {
    const std::u16string wide = FromUtf8(name != nullptr ? name : "");
    target[wide.copy(target, Size - 1)] = 0;
}

void DescribeChange(const Change& change, TIME_ZONE_INFORMATION& zone) {
    const LONG bias = static_cast<LONG>(-change.after.tm_gmtoff) / kSecondsPerMinute;
    if (change.after.tm_isdst > 0) {
        zone.DaylightDate = RuleOf(change);
        zone.DaylightBias = bias;
        CopyName(change.after.tm_zone, zone.DaylightName);
    } else {
        zone.StandardDate = RuleOf(change);
        zone.Bias = bias;
        CopyName(change.after.tm_zone, zone.StandardName);
    }
}

DWORD DescribeZone(TIME_ZONE_INFORMATION& zone) {
    const std::tm now = LocalTm(std::time(nullptr));
    zone = {};
    for (const Change& change : ChangesOfYear(ToSystemTime(now, 0).wYear)) {
        DescribeChange(change, zone);
    }
    if (!HasChanges(zone)) {
        zone = {};
        zone.Bias = static_cast<LONG>(-now.tm_gmtoff) / kSecondsPerMinute;
        CopyName(now.tm_zone, zone.StandardName);
        CopyName(now.tm_zone, zone.DaylightName);
        return TIME_ZONE_ID_UNKNOWN;
    }
    zone.DaylightBias -= zone.Bias;
    return now.tm_isdst > 0 ? TIME_ZONE_ID_DAYLIGHT : TIME_ZONE_ID_STANDARD;
}

}  // namespace
}  // namespace kawin

BOOL SystemTimeToTzSpecificLocalTime(const TIME_ZONE_INFORMATION* zone, const SYSTEMTIME* universal,
                                     LPSYSTEMTIME local) noexcept {
    return kawin::ConvertDate(*universal, *local, [zone](LONGLONG seconds) { return kawin::ToLocal(zone, seconds); });
}

BOOL TzSpecificLocalTimeToSystemTime(const TIME_ZONE_INFORMATION* zone, const SYSTEMTIME* local,
                                     LPSYSTEMTIME universal) noexcept {
    return kawin::ConvertDate(*local, *universal, [zone](LONGLONG seconds) { return kawin::FromLocal(zone, seconds); });
}

DWORD GetTimeZoneInformation(LPTIME_ZONE_INFORMATION zone) noexcept {
    try {
        return kawin::DescribeZone(*zone);
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return TIME_ZONE_ID_INVALID;
    }
}
