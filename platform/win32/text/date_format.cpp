#include <chrono>
#include <string>
#include <string_view>

#include "../base/error_map.h"
#include "../time/times.h"
#include "date_pattern.h"
#include "locale.h"
#include "locale_data.h"
#include "no_throw.h"
#include "text_out.h"

namespace {

using kawin::Fail;
using kawin::LocaleData;
using kawin::PatternPart;
using Text = std::u16string;
using View = std::u16string_view;

constexpr WORD kFirstYear = 1601;
constexpr WORD kLastYear = 30827;
constexpr View kDateLetters = u"dMyg";
constexpr View kTimeLetters = u"hHmst";

SYSTEMTIME Now() {
    SYSTEMTIME now;
    GetLocalTime(&now);
    return now;
}

std::chrono::year_month_day Day(const SYSTEMTIME& date) {
    return {std::chrono::year(date.wYear), std::chrono::month(date.wMonth), std::chrono::day(date.wDay)};
}

bool IsDate(const SYSTEMTIME& date) {
    return date.wYear >= kFirstYear && date.wYear <= kLastYear && date.wMonth <= 12 && date.wDay <= 31 && Day(date).ok();
}

bool IsTime(const SYSTEMTIME& time) {
    return time.wHour < 24 && time.wMinute < 60 && time.wSecond < 60 && time.wMilliseconds < 1000;
}

Text Number(unsigned value, std::size_t least_digits) {
    Text digits;
    do {
        digits.insert(digits.begin(), static_cast<char16_t>(u'0' + value % 10));
        value /= 10;
    } while (value != 0);
    return Text(digits.size() < least_digits ? least_digits - digits.size() : 0, u'0') + digits;
}

class DateWriter {
public:
    DateWriter(const LocaleData& locale, const SYSTEMTIME& date, View pattern)
        : locale_(locale), date_(date), beside_day_(HasDay(pattern)) {}

    Text Write(const PatternPart& part) const {
        switch (part.letter) {
            case u'd':
                return part.count < 3 ? Number(date_.wDay, part.count)
                                      : (part.count == 3 ? locale_.short_days : locale_.days)[Weekday()];
            case u'M':
                return part.count < 3 ? Number(date_.wMonth, part.count) : MonthName(part.count);
            case u'y':
                return part.count < 3 ? Number(date_.wYear % 100U, part.count) : Number(date_.wYear, 4);
            case u'g':
                return locale_.eras[1];
            default:
                return part.text;
        }
    }

private:
    static bool HasDay(View pattern) {
        PatternPart part;
        while (kawin::TakePart(pattern, kDateLetters, part)) {
            if (part.letter == u'd' && part.count < 3) {
                return true;
            }
        }
        return false;
    }
    unsigned Weekday() const { return std::chrono::weekday(std::chrono::sys_days(Day(date_))).c_encoding(); }
    const Text& MonthName(std::size_t count) const {
        return (count == 3 ? locale_.short_months : beside_day_ ? locale_.months_of_days : locale_.months)[date_.wMonth - 1U];
    }

    const LocaleData& locale_;
    const SYSTEMTIME& date_;
    bool beside_day_;
};

class TimeWriter {
public:
    TimeWriter(const LocaleData& locale, const SYSTEMTIME& time, DWORD flags) : locale_(locale), time_(time), flags_(flags) {}

    bool Drops(const PatternPart& part) const {
        switch (part.letter) {
            case u'm':
                return (flags_ & TIME_NOMINUTESORSECONDS) != 0;
            case u's':
                return (flags_ & (TIME_NOMINUTESORSECONDS | TIME_NOSECONDS)) != 0;
            case u't':
                return (flags_ & TIME_NOTIMEMARKER) != 0;
            default:
                return false;
        }
    }

    Text Write(const PatternPart& part) const {
        switch (part.letter) {
            case u'h':
                return Number((flags_ & TIME_FORCE24HOURFORMAT) != 0 ? time_.wHour : HourOfHalf(), Digits(part));
            case u'H':
                return Number(time_.wHour, Digits(part));
            case u'm':
                return Number(time_.wMinute, Digits(part));
            case u's':
                return Number(time_.wSecond, Digits(part));
            case u't':
                return Half().substr(0, part.count == 1 ? 1 : Text::npos);
            default:
                return part.text;
        }
    }

private:
    static std::size_t Digits(const PatternPart& part) { return part.count == 1 ? 1 : 2; }
    unsigned HourOfHalf() const { return time_.wHour % 12 == 0 ? 12 : time_.wHour % 12U; }
    const Text& Half() const { return time_.wHour < 12 ? locale_.am : locale_.pm; }

    const LocaleData& locale_;
    const SYSTEMTIME& time_;
    DWORD flags_;
};

Text WriteDate(const LocaleData& locale, const SYSTEMTIME& date, View pattern) {
    const DateWriter writer(locale, date, pattern);
    Text result;
    PatternPart part;
    while (kawin::TakePart(pattern, kDateLetters, part)) {
        result += writer.Write(part);
    }
    return result;
}

// A dropped part takes the literal before it along; a time marker and what stands first also the one after.
Text WriteTime(const LocaleData& locale, const SYSTEMTIME& time, DWORD flags, View pattern) {
    const TimeWriter writer(locale, time, flags);
    Text result;
    Text literal;
    bool drops_next = false;
    PatternPart part;
    while (kawin::TakePart(pattern, kTimeLetters, part)) {
        if (writer.Drops(part)) {
            literal.clear();
            drops_next = part.letter == u't' || result.empty();
        } else if (part.letter == 0) {
            literal = drops_next ? Text() : part.text;
        } else {
            result += literal + writer.Write(part);
            literal.clear();
            drops_next = false;
        }
    }
    return result + literal;
}

View DatePattern(const LocaleData& locale, DWORD flags, LPCWSTR pattern) {
    return pattern != nullptr ? View(pattern) : View((flags & DATE_LONGDATE) != 0 ? locale.long_date : locale.short_date);
}

bool AreDateFlags(DWORD flags, LPCWSTR pattern) {
    const DWORD kind = flags & ~LOCALE_NOUSEROVERRIDE;
    return flags == 0 || (pattern == nullptr && (kind == 0 || kind == DATE_SHORTDATE || kind == DATE_LONGDATE));
}

bool AreTimeFlags(DWORD flags, LPCWSTR pattern) {
    constexpr DWORD kKnown = TIME_NOMINUTESORSECONDS | TIME_NOSECONDS | TIME_NOTIMEMARKER | TIME_FORCE24HOURFORMAT;
    return (flags & ~(kKnown | (pattern == nullptr ? LOCALE_NOUSEROVERRIDE : 0))) == 0;
}

}  // namespace

int GetDateFormatW(LCID locale, DWORD flags, const SYSTEMTIME* date, LPCWSTR pattern, LPWSTR target, int capacity) noexcept {
    return kawin::NoThrow([&]() -> int {
        const LocaleData* const data = kawin::FindLocale(locale);
        const SYSTEMTIME when = date == nullptr ? Now() : *date;
        if (data == nullptr || !kawin::IsTarget(target, capacity)) {
            return Fail(ERROR_INVALID_PARAMETER);
        }
        if (!AreDateFlags(flags, pattern)) {
            return Fail(ERROR_INVALID_FLAGS);
        }
        return IsDate(when) ? kawin::PutText(WriteDate(*data, when, DatePattern(*data, flags, pattern)), target, capacity)
                            : Fail(ERROR_INVALID_PARAMETER);
    });
}

int GetTimeFormatW(LCID locale, DWORD flags, const SYSTEMTIME* time, LPCWSTR pattern, LPWSTR target, int capacity) noexcept {
    return kawin::NoThrow([&]() -> int {
        const LocaleData* const data = kawin::FindLocale(locale);
        const SYSTEMTIME when = time == nullptr ? Now() : *time;
        if (data == nullptr || !kawin::IsTarget(target, capacity)) {
            return Fail(ERROR_INVALID_PARAMETER);
        }
        if (!AreTimeFlags(flags, pattern)) {
            return Fail(ERROR_INVALID_FLAGS);
        }
        const View text = pattern != nullptr ? View(pattern) : View(data->time);
        return IsTime(when) ? kawin::PutText(WriteTime(*data, when, flags, text), target, capacity)
                            : Fail(ERROR_INVALID_PARAMETER);
    });
}
