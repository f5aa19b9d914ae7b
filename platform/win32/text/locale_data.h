#pragma once

// What the system tells about a locale, gathered once per locale from ICU and never freed.

#include <array>
#include <string>

#include "../base/types.h"

namespace kawin {

struct LocaleData {
    std::string icu_name;  // language and country at least
    LCID lcid;
    std::u16string short_date, long_date, time;  // patterns in the system's letters
    std::u16string decimal, thousand, grouping, digits, list;
    std::u16string am, pm;
    std::array<std::u16string, 7> days, short_days;       // Sunday first
    std::array<std::u16string, 12> months, short_months;  // as they stand alone
    std::array<std::u16string, 12> months_of_days;        // as they stand beside a day
    std::array<std::u16string, 2> eras;                   // before and after year 1
    std::u16string short_language, english_language, iso_language, iso_country;
};

// Null for an unknown locale. Throws std::bad_alloc.
const LocaleData* FindLocale(LCID locale);

}  // namespace kawin
