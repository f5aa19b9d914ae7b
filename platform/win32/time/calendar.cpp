#include "calendar.h"

namespace kawin {
namespace {

constexpr WORD kFirstYear = 1601;
constexpr WORD kLastYear = 30827;
constexpr WORD kLastYearOfTicks = 30828;
constexpr int kTmYear = 1900;

bool HasTimeOfDay(const SYSTEMTIME& date) {
    return date.wHour < 24 && date.wMinute < 60 && date.wSecond < 60 && date.wMilliseconds < 1000;
}

std::tm ToTm(const SYSTEMTIME& date) {
    std::tm tm{};
    tm.tm_year = date.wYear - kTmYear;
    tm.tm_mon = date.wMonth - 1;
    tm.tm_mday = date.wDay;
    tm.tm_hour = date.wHour;
    tm.tm_min = date.wMinute;
    tm.tm_sec = date.wSecond;
    return tm;
}

}  // namespace

std::optional<LONGLONG> SecondsOf(const SYSTEMTIME& date) noexcept {
    if (date.wYear < kFirstYear || date.wYear > kLastYear || !HasTimeOfDay(date)) {
        return {};
    }
    std::tm tm = ToTm(date);
    const LONGLONG seconds = timegm(&tm);  // moves a day that its month does not have into another one
    return tm.tm_mon == date.wMonth - 1 && tm.tm_mday == date.wDay ? std::optional(seconds) : std::nullopt;
}

std::optional<SYSTEMTIME> DateOf(LONGLONG seconds, WORD milliseconds) noexcept {
    const std::time_t time = seconds;
    std::tm tm{};
    if (gmtime_r(&time, &tm) == nullptr || tm.tm_year < kFirstYear - kTmYear || tm.tm_year > kLastYearOfTicks - kTmYear) {
        return {};
    }
    return ToSystemTime(tm, milliseconds);
}

SYSTEMTIME ToSystemTime(const std::tm& tm, WORD milliseconds) noexcept {
    const auto word = [](int value) { return static_cast<WORD>(value); };
    return {word(tm.tm_year + kTmYear), word(tm.tm_mon + 1), word(tm.tm_wday), word(tm.tm_mday),
            word(tm.tm_hour),           word(tm.tm_min),     word(tm.tm_sec),  milliseconds};
}

LONGLONG ToTicks(const FILETIME& time) noexcept {
    return static_cast<LONGLONG>(static_cast<ULONGLONG>(time.dwHighDateTime) << 32 | time.dwLowDateTime);
}

FILETIME ToFileTime(LONGLONG ticks) noexcept {
    return {static_cast<DWORD>(ticks & MAXDWORD), static_cast<DWORD>(static_cast<ULONGLONG>(ticks) >> 32)};
}

}  // namespace kawin
