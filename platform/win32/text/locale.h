#pragma once

// Locales: names, patterns, and dates and times written by them.
//
// The user's locale is what LC_ALL, else LC_TIME, else LANG names at the moment of the call; C, POSIX and unknown names are
// English (United States). All calendars are Gregorian and all digits ASCII. No-break spaces come out as plain ones.

#include "../base/error.h"

constexpr WORD LANG_NEUTRAL = 0x00;
constexpr WORD LANG_GERMAN = 0x07;
constexpr WORD LANG_ENGLISH = 0x09;
constexpr WORD SUBLANG_NEUTRAL = 0x00;
constexpr WORD SUBLANG_DEFAULT = 0x01;
constexpr WORD SUBLANG_ENGLISH_US = 0x01;
constexpr DWORD SORT_DEFAULT = 0;

constexpr LANGID MAKELANGID(WORD primary, WORD sub) {
    return static_cast<LANGID>((sub << 10) | primary);
}
constexpr WORD PRIMARYLANGID(LANGID language) {
    return static_cast<WORD>(language & 0x3FF);
}
constexpr WORD SUBLANGID(LANGID language) {
    return static_cast<WORD>(language >> 10);
}
constexpr LCID MAKELCID(LANGID language, DWORD sort) {
    return (sort << 16) | language;
}
constexpr LANGID LANGIDFROMLCID(LCID locale) {
    return static_cast<LANGID>(locale & 0xFFFF);
}

constexpr LCID LOCALE_NEUTRAL = 0x0000;  // the user's
constexpr LCID LOCALE_INVARIANT = 0x007F;
constexpr LCID LOCALE_USER_DEFAULT = 0x0400;
constexpr LCID LOCALE_SYSTEM_DEFAULT = 0x0800;  // the user's too

constexpr LCTYPE LOCALE_NOUSEROVERRIDE = 0x80000000;  // but not beside a pattern; there are no overrides

constexpr LCTYPE LOCALE_SABBREVLANGNAME = 0x0003;
constexpr LCTYPE LOCALE_SLIST = 0x000C;
constexpr LCTYPE LOCALE_SDECIMAL = 0x000E;
constexpr LCTYPE LOCALE_STHOUSAND = 0x000F;
constexpr LCTYPE LOCALE_SGROUPING = 0x0010;
constexpr LCTYPE LOCALE_IDIGITS = 0x0011;
constexpr LCTYPE LOCALE_SSHORTDATE = 0x001F;
constexpr LCTYPE LOCALE_SLONGDATE = 0x0020;
constexpr LCTYPE LOCALE_S1159 = 0x0028;
constexpr LCTYPE LOCALE_S2359 = 0x0029;
constexpr LCTYPE LOCALE_SDAYNAME1 = 0x002A;  // Monday; the other six follow
constexpr LCTYPE LOCALE_SDAYNAME7 = 0x0030;
constexpr LCTYPE LOCALE_SABBREVDAYNAME1 = 0x0031;
constexpr LCTYPE LOCALE_SABBREVDAYNAME7 = 0x0037;
constexpr LCTYPE LOCALE_SMONTHNAME1 = 0x0038;  // January; the other eleven follow
constexpr LCTYPE LOCALE_SMONTHNAME12 = 0x0043;
constexpr LCTYPE LOCALE_SABBREVMONTHNAME1 = 0x0044;
constexpr LCTYPE LOCALE_SABBREVMONTHNAME12 = 0x004F;
constexpr LCTYPE LOCALE_SISO639LANGNAME = 0x0059;
constexpr LCTYPE LOCALE_SISO3166CTRYNAME = 0x005A;
constexpr LCTYPE LOCALE_SENGLANGUAGE = 0x1001;
constexpr LCTYPE LOCALE_STIMEFORMAT = 0x1003;

constexpr DWORD DATE_SHORTDATE = 0x00000001;
constexpr DWORD DATE_LONGDATE = 0x00000002;

constexpr DWORD TIME_NOMINUTESORSECONDS = 0x00000001;
constexpr DWORD TIME_NOSECONDS = 0x00000002;
constexpr DWORD TIME_NOTIMEMARKER = 0x00000004;
constexpr DWORD TIME_FORCE24HOURFORMAT = 0x00000008;

KADATA_API LCID GetUserDefaultLCID() noexcept;
KADATA_API LCID GetSystemDefaultLCID() noexcept;
KADATA_API LANGID GetUserDefaultLangID() noexcept;
KADATA_API LANGID GetSystemDefaultLangID() noexcept;

// These three return the number of characters written with the terminator, or needed when the capacity is 0. 0 is a failure:
//   ERROR_INVALID_PARAMETER    an unknown locale, a negative capacity, a capacity without a buffer; an impossible date or time
//   ERROR_INVALID_FLAGS        an unknown type or flag, a pattern together with a date flag or with
//                              LOCALE_NOUSEROVERRIDE, two date flags
//   ERROR_INSUFFICIENT_BUFFER  the text does not fit

KADATA_API int GetLocaleInfoW(LCID locale, LCTYPE type, LPWSTR target, int capacity) noexcept;

// By a pattern of d dd ddd dddd, M MM MMM MMMM, y yy yyyy, gg and 'quoted text', or by the locale's own (short unless
// DATE_LONGDATE). Null for `date` is today; the day of the week in it is not looked at. Years 1601 to 30827.
KADATA_API int GetDateFormatW(LCID locale, DWORD flags, const SYSTEMTIME* date, LPCWSTR pattern, LPWSTR target,
                              int capacity) noexcept;

// By a pattern of h hh, H HH, m mm, s ss, t tt and 'quoted text', or by the locale's own. A flag that drops a part drops the text
// before it too, and a time marker's or the first part's also the text after it. Null for `time` is now; the date in it is not
// looked at.
KADATA_API int GetTimeFormatW(LCID locale, DWORD flags, const SYSTEMTIME* time, LPCWSTR pattern, LPWSTR target,
                              int capacity) noexcept;
