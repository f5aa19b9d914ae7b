#include "locale_data.h"

#include <unicode/udat.h>
#include <unicode/uloc.h>
#include <unicode/unum.h>

#include <algorithm>
#include <atomic>
#include <cctype>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <mutex>
#include <new>
#include <shared_mutex>
#include <string_view>
#include <vector>

#include "../base/utf.h"
#include "../process/native_environment.h"
#include "date_pattern.h"
#include "locale.h"

namespace kawin {
namespace {

constexpr LCID kCustomLocale = 0x1000;  // a locale of the user's that has no number
constexpr char kFallback[] = "en_US";
constexpr char16_t kNoTimeZone[] = u"UTC";  // spares ICU the search for the machine's

struct CloseDate {
    void operator()(UDateFormat* format) const noexcept { udat_close(format); }
};
struct CloseNumber {
    void operator()(UNumberFormat* format) const noexcept { unum_close(format); }
};
using DateFormat = std::unique_ptr<UDateFormat, CloseDate>;
using NumberFormat = std::unique_ptr<UNumberFormat, CloseNumber>;

constexpr int kRoom = 256;  // units; the longest pattern or name in ICU's data is far shorter

// Calls an ICU function of the form f(buffer, capacity, &status) for a short text.
template <class Unit = char16_t, class Call>
std::basic_string<Unit> Fetch(Call&& call) {
    Unit buffer[kRoom];
    UErrorCode status = U_ZERO_ERROR;
    const int length = call(buffer, kRoom, &status);
    return U_SUCCESS(status) && length > 0 && length < kRoom ? std::basic_string<Unit>(buffer, static_cast<std::size_t>(length))
                                                             : std::basic_string<Unit>();
}

// Gregorian years and ASCII digits, whatever the locale has by itself.
std::string WithKeywords(const std::string& name) {
    return name + (name.find('@') == std::string::npos ? "@" : ";") + "calendar=gregorian;numbers=latn";
}

DateFormat OpenDate(UDateFormatStyle time, UDateFormatStyle date, const std::string& name) {
    UErrorCode status = U_ZERO_ERROR;
    DateFormat format(udat_open(time, date, WithKeywords(name).c_str(), kNoTimeZone, -1, nullptr, 0, &status));
    if (U_FAILURE(status)) {
        throw std::bad_alloc();  // without memory only: ICU has data for every locale, be it the root's
    }
    return format;
}

std::u16string Pattern(const DateFormat& format) {
    return ToSystemPattern(Fetch(
        [&](char16_t* out, int room, UErrorCode* status) { return udat_toPattern(format.get(), false, out, room, status); }));
}

template <std::size_t count>
void FillNames(std::array<std::u16string, count>& names, const DateFormat& format, UDateFormatSymbolType type, int first) {
    for (std::size_t i = 0; i < count; ++i) {
        names[i] = WithPlainSpaces(Fetch([&](char16_t* out, int room, UErrorCode* status) {
            return udat_getSymbols(format.get(), type, first + static_cast<int>(i), out, room, status);
        }));
    }
}

void FillDates(LocaleData& data) {
    const DateFormat format = OpenDate(UDAT_NONE, UDAT_SHORT, data.icu_name);
    data.short_date = Pattern(format);
    data.long_date = Pattern(OpenDate(UDAT_NONE, UDAT_FULL, data.icu_name));
    data.time = Pattern(OpenDate(UDAT_MEDIUM, UDAT_NONE, data.icu_name));
    constexpr int kFirstWeekday = 1;
    FillNames(data.days, format, UDAT_WEEKDAYS, kFirstWeekday);
    FillNames(data.short_days, format, UDAT_STANDALONE_SHORT_WEEKDAYS, kFirstWeekday);
    FillNames(data.months, format, UDAT_STANDALONE_MONTHS, 0);
    FillNames(data.short_months, format, UDAT_STANDALONE_SHORT_MONTHS, 0);
    FillNames(data.months_of_days, format, UDAT_MONTHS, 0);
    FillNames(data.eras, format, UDAT_ERAS, 0);
    std::array<std::u16string, 2> halves;
    FillNames(halves, format, UDAT_AM_PMS, 0);
    data.am = halves[0];
    data.pm = halves[1];
}

std::u16string Grouping(const UNumberFormat* format) {
    const int first = unum_getAttribute(format, UNUM_GROUPING_SIZE);
    const int second = unum_getAttribute(format, UNUM_SECONDARY_GROUPING_SIZE);
    const std::string middle = second > 0 && second != first ? ";" + std::to_string(second) : "";
    return FromUtf8(std::to_string(first) + middle + ";0");
}

void FillNumbers(LocaleData& data) {
    UErrorCode status = U_ZERO_ERROR;
    const NumberFormat format(unum_open(UNUM_DECIMAL, nullptr, 0, WithKeywords(data.icu_name).c_str(), nullptr, &status));
    if (U_FAILURE(status)) {
        throw std::bad_alloc();
    }
    const auto symbol = [&format](UNumberFormatSymbol which) {
        return WithPlainSpaces(Fetch(
            [&](char16_t* out, int room, UErrorCode* result) { return unum_getSymbol(format.get(), which, out, room, result); }));
    };
    data.decimal = symbol(UNUM_DECIMAL_SEPARATOR_SYMBOL);
    data.thousand = symbol(UNUM_GROUPING_SEPARATOR_SYMBOL);
    data.grouping = Grouping(format.get());
    data.digits = u"2";
    data.list = data.decimal == u"," ? u";" : u",";
}

struct ShortLanguage {
    std::string_view name;
    std::u16string_view abbreviation;
};
// Where the system's three letters are not those of ISO 639.
constexpr ShortLanguage kShortLanguages[] = {
    {"cs_CZ", u"CSY"}, {"da_DK", u"DAN"}, {"de_AT", u"DEA"}, {"de_CH", u"DES"}, {"de_LI", u"DEC"}, {"de_LU", u"DEL"},
    {"el_GR", u"ELL"}, {"en_AU", u"ENA"}, {"en_CA", u"ENC"}, {"en_GB", u"ENG"}, {"en_IE", u"ENI"}, {"en_NZ", u"ENZ"},
    {"en_US", u"ENU"}, {"en_ZA", u"ENS"}, {"es_ES", u"ESN"}, {"es_MX", u"ESM"}, {"fr_BE", u"FRB"}, {"fr_CA", u"FRC"},
    {"fr_CH", u"FRS"}, {"fr_LU", u"FRL"}, {"is_IS", u"ISL"}, {"it_CH", u"ITS"}, {"ko_KR", u"KOR"}, {"nb_NO", u"NOR"},
    {"nl_BE", u"NLB"}, {"nn_NO", u"NON"}, {"pl_PL", u"PLK"}, {"pt_BR", u"PTB"}, {"pt_PT", u"PTG"}, {"sk_SK", u"SKY"},
    {"sv_FI", u"SVF"}, {"sv_SE", u"SVE"}, {"tr_TR", u"TRK"}, {"zh_CN", u"CHS"}, {"zh_HK", u"ZHH"}, {"zh_SG", u"ZHI"},
    {"zh_TW", u"CHT"},
};

std::u16string ShortLanguageOf(const std::string& name) {
    const auto row = std::find_if(std::begin(kShortLanguages), std::end(kShortLanguages),
                                  [&name](const ShortLanguage& language) { return language.name == name; });
    if (row != std::end(kShortLanguages)) {
        return std::u16string(row->abbreviation);
    }
    std::u16string iso = FromUtf8(uloc_getISO3Language(name.c_str()));
    std::transform(iso.begin(), iso.end(), iso.begin(),
                   [](char16_t unit) { return static_cast<char16_t>(std::toupper(static_cast<unsigned char>(unit))); });
    return iso;
}

std::string LanguageOf(const std::string& name) {
    return Fetch<char>(
        [&](char* out, int room, UErrorCode* status) { return uloc_getLanguage(name.c_str(), out, room, status); });
}

std::string CountryOf(const std::string& name) {
    return Fetch<char>([&](char* out, int room, UErrorCode* status) { return uloc_getCountry(name.c_str(), out, room, status); });
}

void FillLanguage(LocaleData& data) {
    data.iso_language = FromUtf8(LanguageOf(data.icu_name));
    data.iso_country = FromUtf8(CountryOf(data.icu_name));
    data.short_language = ShortLanguageOf(data.icu_name);
    data.english_language = Fetch([&](char16_t* out, int room, UErrorCode* status) {
        return uloc_getDisplayLanguage(data.icu_name.c_str(), "en", out, room, status);
    });
}

// "de" becomes "de_DE".
std::string WithCountry(const std::string& name) {
    if (!CountryOf(name).empty()) {
        return name;
    }
    const std::string likely = Fetch<char>(
        [&](char* out, int room, UErrorCode* status) { return uloc_addLikelySubtags(name.c_str(), out, room, status); });
    return name + "_" + CountryOf(likely);
}

LCID NumberOf(const std::string& name) {
    const LCID number = uloc_getLCID(name.c_str());
    if (number == 0) {
        return kCustomLocale;
    }
    const LANGID language = LANGIDFROMLCID(number);
    return SUBLANGID(language) == SUBLANG_NEUTRAL ? MAKELCID(MAKELANGID(language, SUBLANG_DEFAULT), SORT_DEFAULT) : number;
}

void MakeInvariant(LocaleData& data) {
    data.lcid = LOCALE_INVARIANT;
    data.short_date = u"MM/dd/yyyy";
    data.long_date = u"dddd, dd MMMM yyyy";
    data.time = u"HH:mm:ss";
    data.iso_language = u"iv";
    data.iso_country = u"IV";
    data.short_language = u"IVL";
    data.english_language = u"Invariant Language";
}

constinit std::mutex locales_lock;

// Never destroyed: a host may write dates while the process ends.
std::vector<std::unique_ptr<const LocaleData>>& Locales() {  // guarded by locales_lock
    static auto& locales = *new std::vector<std::unique_ptr<const LocaleData>>;
    return locales;
}

const LocaleData* FindByName(const std::string& name, bool invariant) {
    const std::lock_guard lock(locales_lock);
    for (const auto& known : Locales()) {
        if (known->icu_name == name && (known->lcid == LOCALE_INVARIANT) == invariant) {
            return known.get();
        }
    }
    auto data = std::make_unique<LocaleData>();
    data->icu_name = name;
    data->lcid = NumberOf(name);
    FillDates(*data);
    FillNumbers(*data);
    FillLanguage(*data);
    if (invariant) {
        MakeInvariant(*data);
    }
    return Locales().emplace_back(std::move(data)).get();
}

// The caller holds the environment's mutex as long as it reads the text.
const char* EnvironmentLocale() {
    for (const char* const variable : {"LC_ALL", "LC_TIME", "LANG"}) {
        const char* const value = std::getenv(variable);
        if (value != nullptr && *value != 0) {
            return value;
        }
    }
    return "";
}

// "de_DE.UTF-8@euro" is "de_DE"; what names no language that ICU knows is the fallback.
std::string NameFromEnvironment(std::string_view value) {
    const std::string name(value.substr(0, value.find_first_of(".@")));
    const bool known =
        name != "C" && name != "POSIX" && name.size() < ULOC_FULLNAME_CAPACITY && *uloc_getISO3Language(name.c_str()) != 0;
    return known ? WithCountry(name) : kFallback;
}

struct UserLocale {
    std::string variable;
    const LocaleData* data;
};
constinit std::atomic<const UserLocale*> last_user{nullptr};
constinit std::mutex users_lock;

std::vector<std::unique_ptr<const UserLocale>>& Users() {  // guarded by users_lock; never destroyed either
    static auto& users = *new std::vector<std::unique_ptr<const UserLocale>>;
    return users;
}

const UserLocale* RememberUser(const std::string& variable) {
    const LocaleData* const data = FindByName(NameFromEnvironment(variable), false);
    const std::lock_guard lock(users_lock);
    const auto known = std::find_if(Users().begin(), Users().end(), [&](const auto& user) { return user->variable == variable; });
    return known != Users().end() ? known->get()
                                  : Users().emplace_back(std::make_unique<const UserLocale>(UserLocale{variable, data})).get();
}

const LocaleData* FindUserLocale() {
    std::shared_lock environment(EnvironmentMutex());
    const char* const variable = EnvironmentLocale();
    const UserLocale* user = last_user.load(std::memory_order_acquire);
    if (user == nullptr || user->variable != variable) {
        const std::string name = variable;
        environment.unlock();
        user = RememberUser(name);
        last_user.store(user, std::memory_order_release);
    }
    return user->data;
}

}  // namespace

const LocaleData* FindLocale(LCID locale) {
    switch (locale) {
        case LOCALE_NEUTRAL:
        case LOCALE_USER_DEFAULT:
        case LOCALE_SYSTEM_DEFAULT:
        case kCustomLocale:
            return FindUserLocale();
        case LOCALE_INVARIANT:
            return FindByName(kFallback, true);
        default: {
            const std::string name = Fetch<char>(
                [locale](char* out, int room, UErrorCode* status) { return uloc_getLocaleForLCID(locale, out, room, status); });
            return name.empty() ? nullptr : FindByName(WithCountry(name), false);
        }
    }
}

}  // namespace kawin
