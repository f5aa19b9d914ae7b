#include "locale.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>

#include "../base/error_map.h"
#include "locale_data.h"
#include "no_throw.h"

#include "text_out.h"

namespace {

using kawin::Fail;
using kawin::LocaleData;

struct TextRow {
    LCTYPE type;
    std::u16string LocaleData::*text;
};

constexpr TextRow kTexts[] = {
    {LOCALE_SABBREVLANGNAME, &LocaleData::short_language},
    {LOCALE_SLIST, &LocaleData::list},
    {LOCALE_SDECIMAL, &LocaleData::decimal},
    {LOCALE_STHOUSAND, &LocaleData::thousand},
    {LOCALE_SGROUPING, &LocaleData::grouping},
    {LOCALE_IDIGITS, &LocaleData::digits},
    {LOCALE_SSHORTDATE, &LocaleData::short_date},
    {LOCALE_SLONGDATE, &LocaleData::long_date},
    {LOCALE_S1159, &LocaleData::am},
    {LOCALE_S2359, &LocaleData::pm},
    {LOCALE_SISO639LANGNAME, &LocaleData::iso_language},
    {LOCALE_SISO3166CTRYNAME, &LocaleData::iso_country},
    {LOCALE_SENGLANGUAGE, &LocaleData::english_language},
    {LOCALE_STIMEFORMAT, &LocaleData::time},
};

// The system counts days from Monday, the table from Sunday.
const std::u16string& FromMonday(const std::array<std::u16string, 7>& days, LCTYPE index) {
    return days[(index + 1) % days.size()];
}

const std::u16string* FindText(const LocaleData& locale, LCTYPE type) {
    const auto row = std::find_if(std::begin(kTexts), std::end(kTexts), [type](const TextRow& r) { return r.type == type; });
    if (row != std::end(kTexts)) {
        return &(locale.*row->text);
    }
    if (type >= LOCALE_SDAYNAME1 && type <= LOCALE_SDAYNAME7) {
        return &FromMonday(locale.days, type - LOCALE_SDAYNAME1);
    }
    if (type >= LOCALE_SABBREVDAYNAME1 && type <= LOCALE_SABBREVDAYNAME7) {
        return &FromMonday(locale.short_days, type - LOCALE_SABBREVDAYNAME1);
    }
    if (type >= LOCALE_SMONTHNAME1 && type <= LOCALE_SMONTHNAME12) {
        return &locale.months[type - LOCALE_SMONTHNAME1];
    }
    if (type >= LOCALE_SABBREVMONTHNAME1 && type <= LOCALE_SABBREVMONTHNAME12) {
        return &locale.short_months[type - LOCALE_SABBREVMONTHNAME1];
    }
    return nullptr;
}

LCID UserLocaleNumber() {
    return kawin::FindLocale(LOCALE_USER_DEFAULT)->lcid;
}

}  // namespace

LCID GetUserDefaultLCID() noexcept {
    return kawin::NoThrow(UserLocaleNumber);
}

LCID GetSystemDefaultLCID() noexcept {
    return GetUserDefaultLCID();
}

LANGID GetUserDefaultLangID() noexcept {
    return LANGIDFROMLCID(GetUserDefaultLCID());
}

LANGID GetSystemDefaultLangID() noexcept {
    return GetUserDefaultLangID();
}

int GetLocaleInfoW(LCID locale, LCTYPE type, LPWSTR target, int capacity) noexcept {
    return kawin::NoThrow([&]() -> int {
        const LocaleData* const data = kawin::FindLocale(locale);
        if (data == nullptr || !kawin::IsTarget(target, capacity)) {
            return Fail(ERROR_INVALID_PARAMETER);
        }
        const std::u16string* const text = FindText(*data, type & ~LOCALE_NOUSEROVERRIDE);
        return text == nullptr ? Fail(ERROR_INVALID_FLAGS) : kawin::PutText(*text, target, capacity);
    });
}
