#pragma once

// Single- and double-byte code pages and UTF-8, to and from UTF-16.
//
// The ANSI code page is 1252 unless the environment variable KADATA_ACP names another when it is first asked for. Valid code
// pages are UTF-8 (65001), the double-byte ones 932, 936, 949 and 950, and every single-byte one that ICU knows. Bytes 00 to 7F
// are ASCII in all of them but the few that are not built on it. In 20127, which has seven bits, the eighth
// is dropped. Bytes that stand for nothing become what the system makes of them: U+FFFD in UTF-8, U+30FB in 932, '?' in the other
// double-byte pages, a control character or a private unit in the single-byte ones. Characters that a code page lacks become the
// nearest one it has (unless WC_NO_BEST_FIT_CHARS), else the default character.

#include "../base/error.h"

constexpr UINT CP_ACP = 0;
constexpr UINT CP_OEMCP = 1;
constexpr UINT CP_THREAD_ACP = 3;  // the ANSI code page: threads have none of their own here
constexpr UINT CP_UTF8 = 65001;

constexpr DWORD MB_PRECOMPOSED = 0x00000001;  // always so; accepted and without effect
constexpr DWORD MB_ERR_INVALID_CHARS = 0x00000008;
constexpr DWORD WC_ERR_INVALID_CHARS = 0x00000080;  // UTF-8 only
constexpr DWORD WC_NO_BEST_FIT_CHARS = 0x00000400;  // not for UTF-8

constexpr std::size_t MAX_DEFAULTCHAR = 2;
constexpr std::size_t MAX_LEADBYTES = 12;

struct CPINFO {
    UINT MaxCharSize;  // bytes
    BYTE DefaultChar[MAX_DEFAULTCHAR];
    BYTE LeadByte[MAX_LEADBYTES];  // first and last of each range, ended by two zeros
};
using LPCPINFO = CPINFO*;

// Both return the number of units written, or needed when the capacity is 0; a length of -1 means up to and including the
// terminator, any other length adds none. 0 is a failure:
//   ERROR_INVALID_PARAMETER       no input, a negative capacity, a capacity without a buffer, an unknown code page; for UTF-8
//                                 also a default character or the flag that tells of it
//   ERROR_INVALID_FLAGS           a flag that the code page does not take
//   ERROR_INSUFFICIENT_BUFFER     the capacity is too small; the characters that fit whole are written
//   ERROR_NO_UNICODE_TRANSLATION  ill-formed input under MB_ERR_INVALID_CHARS or WC_ERR_INVALID_CHARS
KADATA_API int MultiByteToWideChar(UINT codePage, DWORD flags, LPCSTR text, int length, LPWSTR target, int capacity) noexcept;

// `defaultChar` (null: '?') may be a double-byte character; `usedDefault` becomes TRUE when it was written, FALSE when not.
KADATA_API int WideCharToMultiByte(UINT codePage, DWORD flags, LPCWSTR text, int length, LPSTR target, int capacity,
                                   LPCSTR defaultChar, LPBOOL usedDefault) noexcept;

KADATA_API UINT GetACP() noexcept;
KADATA_API UINT GetOEMCP() noexcept;  // the one that goes with the ANSI code page: 850 for 1252

KADATA_API BOOL IsValidCodePage(UINT codePage) noexcept;

// FALSE with ERROR_INVALID_PARAMETER for an unknown code page.
KADATA_API BOOL GetCPInfo(UINT codePage, LPCPINFO info) noexcept;
KADATA_API BOOL IsDBCSLeadByteEx(UINT codePage, BYTE byte) noexcept;
