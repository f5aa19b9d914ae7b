#include "compare.h"

#include <unicode/uchar.h>
#include <unicode/ucol.h>

#include <algorithm>
#include <climits>
#include <mutex>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "../base/error_map.h"
#include "case_map.h"
#include "locale.h"
#include "locale_data.h"
#include "no_throw.h"

namespace {

using kawin::Fail;
using View = std::basic_string_view<WCHAR>;

constexpr int kUpToTerminator = -1;

View Text(LPCWSTR text, int length) {
    return length < 0 ? View(text) : View(text, static_cast<std::size_t>(length));
}

int ToCstr(int order) {
    return order < 0 ? CSTR_LESS_THAN : order > 0 ? CSTR_GREATER_THAN : CSTR_EQUAL;
}

struct KnownCollator {
    std::string locale;
    DWORD flags;
    const UCollator* collator;
};
constinit std::mutex collators_lock;

// Never destroyed: a host may compare while the process ends.
std::vector<KnownCollator>& Collators() {  // guarded by collators_lock
    static auto& collators = *new std::vector<KnownCollator>;
    return collators;
}

void SetStrength(UCollator* collator, DWORD flags) {
    UErrorCode status = U_ZERO_ERROR;
    const bool ignore_accents = (flags & NORM_IGNORENONSPACE) != 0;
    if ((flags & NORM_IGNORECASE) != 0) {
        ucol_setStrength(collator, ignore_accents ? UCOL_PRIMARY : UCOL_SECONDARY);
    } else if (ignore_accents) {
        ucol_setStrength(collator, UCOL_PRIMARY);
        ucol_setAttribute(collator, UCOL_CASE_LEVEL, UCOL_ON, &status);
    }
}

const UCollator* FindCollator(const std::string& locale, DWORD flags) {
    const std::lock_guard lock(collators_lock);
    for (const KnownCollator& known : Collators()) {
        if (known.flags == flags && known.locale == locale) {
            return known.collator;
        }
    }
    Collators().reserve(Collators().size() + 1);
    UErrorCode status = U_ZERO_ERROR;
    UCollator* const collator = ucol_open(locale.c_str(), &status);
    if (U_FAILURE(status)) {
        throw std::bad_alloc();  // without memory only: unknown locales fall back to the root's order
    }
    SetStrength(collator, flags);
    Collators().push_back({locale, flags, collator});
    return collator;
}

int Collate(const kawin::LocaleData& locale, DWORD flags, View a, View b) {
    const UCollator* const collator = FindCollator(locale.icu_name, flags);
    return ucol_strcoll(collator, a.data(), static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()));
}

// Null sorts first; out of memory the texts are compared by unit, for there is no way to report it.
int CompareForUser(LPCWSTR a, LPCWSTR b, DWORD flags) noexcept {
    if (a == nullptr || b == nullptr) {
        return static_cast<int>(a != nullptr) - static_cast<int>(b != nullptr);
    }
    const int order = CompareStringW(LOCALE_USER_DEFAULT, flags, a, kUpToTerminator, b, kUpToTerminator);
    return order != 0 ? order - CSTR_EQUAL : View(a).compare(b);
}

WORD CharacterType(WCHAR unit) noexcept {
    struct Row {
        WORD bit;
        UBool (*has)(UChar32);
    };
    constexpr Row kRows[] = {
        {C1_UPPER, u_isupper}, {C1_LOWER, u_islower}, {C1_SPACE, u_isUWhiteSpace}, {C1_PUNCT, u_ispunct}, {C1_CNTRL, u_iscntrl},
        {C1_BLANK, u_isblank}, {C1_ALPHA, u_isalpha}, {C1_DEFINED, u_isdefined},   {C1_DIGIT, u_isdigit},
    };
    WORD type = 0;
    for (const Row& row : kRows) {
        type = static_cast<WORD>(type | (row.has(unit) ? row.bit : 0));
    }
    const WCHAR lower = kawin::LowerUnit(unit);
    const bool hexadecimal = (unit >= u'0' && unit <= u'9') || (lower >= u'a' && lower <= u'f');
    return static_cast<WORD>(type | (hexadecimal ? C1_XDIGIT : 0));
}

// The two case functions take one character in place of a pointer.
LPWSTR MapCase(LPWSTR text, WCHAR (*map)(WCHAR) noexcept) noexcept {
    if (IS_INTRESOURCE(text)) {
        return MAKEINTRESOURCEW(map(static_cast<WCHAR>(reinterpret_cast<ULONG_PTR>(text))));
    }
    std::transform(text, text + lstrlenW(text), text, map);
    return text;
}

DWORD MapCase(LPWSTR text, DWORD length, WCHAR (*map)(WCHAR) noexcept) noexcept {
    if (text == nullptr) {
        return 0;
    }
    std::transform(text, text + length, text, map);
    return length;
}

}  // namespace

int lstrlenW(LPCWSTR text) noexcept {
    return text == nullptr ? 0 : static_cast<int>(std::char_traits<WCHAR>::length(text));
}

int lstrcmpW(LPCWSTR a, LPCWSTR b) noexcept {
    return CompareForUser(a, b, 0);
}

int lstrcmpiW(LPCWSTR a, LPCWSTR b) noexcept {
    return CompareForUser(a, b, NORM_IGNORECASE);
}

LPWSTR lstrcpynW(LPWSTR target, LPCWSTR text, int capacity) noexcept {
    if (target == nullptr || text == nullptr) {
        return nullptr;
    }
    LPWSTR out = target;
    for (int left = capacity; left > 1 && *text != 0; --left) {
        *out++ = *text++;
    }
    if (capacity > 0) {
        *out = 0;
    }
    return target;
}

int CompareStringW(LCID locale, DWORD flags, LPCWSTR a, int lengthA, LPCWSTR b, int lengthB) noexcept {
    return kawin::NoThrow([&]() -> int {
        const kawin::LocaleData* const data = kawin::FindLocale(locale);
        if (a == nullptr || b == nullptr || data == nullptr) {
            return Fail(ERROR_INVALID_PARAMETER);
        }
        if ((flags & ~(NORM_IGNORECASE | NORM_IGNORENONSPACE)) != 0) {
            return Fail(ERROR_INVALID_FLAGS);
        }
        return ToCstr(Collate(*data, flags, Text(a, lengthA), Text(b, lengthB)));
    });
}

int CompareStringOrdinal(LPCWSTR a, int lengthA, LPCWSTR b, int lengthB, BOOL ignoreCase) noexcept {
    if (a == nullptr || b == nullptr) {
        return Fail(ERROR_INVALID_PARAMETER);
    }
    const View first = Text(a, lengthA);
    const View second = Text(b, lengthB);
    const auto equal = [ignoreCase](WCHAR x, WCHAR y) {
        return x == y || (ignoreCase != FALSE && kawin::UpperUnit(x) == kawin::UpperUnit(y));
    };
    const auto [x, y] = std::mismatch(first.begin(), first.end(), second.begin(), second.end(), equal);
    if (x == first.end() || y == second.end()) {
        return ToCstr(static_cast<int>(x != first.end()) - static_cast<int>(y != second.end()));
    }
    return ToCstr(ignoreCase != FALSE ? kawin::UpperUnit(*x) - kawin::UpperUnit(*y) : *x - *y);
}

LPWSTR CharUpperW(LPWSTR text) noexcept {
    return MapCase(text, kawin::UpperUnit);
}

LPWSTR CharLowerW(LPWSTR text) noexcept {
    return MapCase(text, kawin::LowerUnit);
}

DWORD CharUpperBuffW(LPWSTR text, DWORD length) noexcept {
    return MapCase(text, length, kawin::UpperUnit);
}

DWORD CharLowerBuffW(LPWSTR text, DWORD length) noexcept {
    return MapCase(text, length, kawin::LowerUnit);
}

BOOL GetStringTypeW(DWORD kind, LPCWSTR text, int length, LPWORD types) noexcept {
    if (kind != CT_CTYPE1 || text == nullptr || types == nullptr) {
        return Fail(ERROR_INVALID_PARAMETER);
    }
    const std::size_t count = length < 0 ? View(text).size() + 1 : static_cast<std::size_t>(length);
    std::transform(text, text + count, types, CharacterType);
    return TRUE;
}
