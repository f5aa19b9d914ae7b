#pragma once

// Comparing, folding and classing wide text.

#include "../base/error.h"

constexpr int CSTR_LESS_THAN = 1;
constexpr int CSTR_EQUAL = 2;
constexpr int CSTR_GREATER_THAN = 3;

constexpr DWORD NORM_IGNORECASE = 0x00000001;
constexpr DWORD NORM_IGNORENONSPACE = 0x00000002;  // accents

// Characters, without the terminator; 0 for null.
KADATA_API int lstrlenW(LPCWSTR text) noexcept;

// Negative, 0 or positive, in the order of the user's locale; lower case comes before upper case in lstrcmpW when nothing else
// differs. Null equals null and comes before every text.
KADATA_API int lstrcmpW(LPCWSTR a, LPCWSTR b) noexcept;
KADATA_API int lstrcmpiW(LPCWSTR a, LPCWSTR b) noexcept;

// Copies at most capacity - 1 characters and always ends them. Returns the target; null when either pointer is. A capacity of 0
// or less writes nothing.
KADATA_API LPWSTR lstrcpynW(LPWSTR target, LPCWSTR text, int capacity) noexcept;

// CSTR_LESS_THAN, CSTR_EQUAL or CSTR_GREATER_THAN in the order of a locale; a negative length means up to the terminator.
// Punctuation counts like any other character. 0 with ERROR_INVALID_PARAMETER for a null text or an unknown locale, with
// ERROR_INVALID_FLAGS for flags other than the two above.
KADATA_API int CompareStringW(LCID locale, DWORD flags, LPCWSTR a, int lengthA, LPCWSTR b, int lengthB) noexcept;

// The same by code unit, `ignoreCase` after mapping to upper case. 0 with ERROR_INVALID_PARAMETER for a null text.
KADATA_API int CompareStringOrdinal(LPCWSTR a, int lengthA, LPCWSTR b, int lengthB, BOOL ignoreCase) noexcept;

// Case by simple mapping: the length never changes, and no letter beyond ASCII becomes an ASCII one. Given a value below 65,536
// in place of a pointer, the two map that one character. The Buff functions return the number of characters passed over.
KADATA_API LPWSTR CharUpperW(LPWSTR text) noexcept;
KADATA_API LPWSTR CharLowerW(LPWSTR text) noexcept;
KADATA_API DWORD CharUpperBuffW(LPWSTR text, DWORD length) noexcept;
KADATA_API DWORD CharLowerBuffW(LPWSTR text, DWORD length) noexcept;

constexpr DWORD CT_CTYPE1 = 1;
constexpr WORD C1_UPPER = 0x0001;
constexpr WORD C1_LOWER = 0x0002;
constexpr WORD C1_DIGIT = 0x0004;
constexpr WORD C1_SPACE = 0x0008;
constexpr WORD C1_PUNCT = 0x0010;
constexpr WORD C1_CNTRL = 0x0020;
constexpr WORD C1_BLANK = 0x0040;
constexpr WORD C1_XDIGIT = 0x0080;
constexpr WORD C1_ALPHA = 0x0100;
constexpr WORD C1_DEFINED = 0x0200;

// One set of C1_ bits for each unit; a length of -1 takes the terminator in. FALSE with ERROR_INVALID_PARAMETER for a null
// pointer and any kind but CT_CTYPE1.
KADATA_API BOOL GetStringTypeW(DWORD kind, LPCWSTR text, int length, LPWORD types) noexcept;
