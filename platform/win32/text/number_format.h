#pragma once

// Numbers written with a locale's separators, or with the caller's own.

#include "../base/error.h"

struct NUMBERFMTW {
    UINT NumDigits;    // behind the decimal separator, 0 to 9
    UINT LeadingZero;  // 1: a zero before the decimal separator of a number below 1; 0: none
    UINT Grouping;     // digits of a group: 0 no groups, 3 as in 1,234,567; 32 as in 12,34,567; 30 as in 1234,567
    LPWSTR lpDecimalSep;
    LPWSTR lpThousandSep;
    UINT NegativeOrder;  // 0 (1.1), 1 -1.1, 2 - 1.1, 3 1.1-, 4 1.1 -
};
using NUMBERFMT = NUMBERFMTW;

// `value` is digits, of which one point may be in front or in between, after a minus sign where it is negative. It is rounded to
// the digits wanted, halves away from zero; what is then zero has no sign. Without `format` the locale's own way is used: two
// digits, a leading zero, and the sign in front. Returns the number of characters written with the terminator, or needed when the
// capacity is 0. 0 is a failure:
//   ERROR_INVALID_PARAMETER    another value, an unknown locale, a negative capacity, a capacity without a buffer; in `format` a
//                              number out of its range or a separator that is null
//   ERROR_INVALID_FLAGS        a flag other than LOCALE_NOUSEROVERRIDE, or any beside a format
//   ERROR_INSUFFICIENT_BUFFER  the text does not fit
KADATA_API int GetNumberFormatW(LCID locale, DWORD flags, LPCWSTR value, const NUMBERFMTW* format, LPWSTR target,
                                int capacity) noexcept;
