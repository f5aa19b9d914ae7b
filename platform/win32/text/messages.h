#pragma once

// Texts for error numbers, texts with inserts, and the memory in which they may be handed out.

#include <cstdarg>

#include "../base/error.h"

constexpr DWORD ERROR_MR_MID_NOT_FOUND = 317;

constexpr UINT LMEM_FIXED = 0x0000;
constexpr UINT LMEM_ZEROINIT = 0x0040;
constexpr UINT LPTR = LMEM_FIXED | LMEM_ZEROINIT;

// A block of `bytes`, to be given back with LocalFree. Null with ERROR_NOT_ENOUGH_MEMORY.
KADATA_API HLOCAL LocalAlloc(UINT flags, SIZE_T bytes) noexcept;

// Always succeeds, which is a null result; null is allowed.
KADATA_API HLOCAL LocalFree(HLOCAL block) noexcept;

constexpr DWORD FORMAT_MESSAGE_ALLOCATE_BUFFER = 0x00000100;
constexpr DWORD FORMAT_MESSAGE_IGNORE_INSERTS = 0x00000200;
constexpr DWORD FORMAT_MESSAGE_FROM_STRING = 0x00000400;
constexpr DWORD FORMAT_MESSAGE_FROM_SYSTEM = 0x00001000;
constexpr DWORD FORMAT_MESSAGE_ARGUMENT_ARRAY = 0x00002000;
constexpr DWORD FORMAT_MESSAGE_MAX_WIDTH_MASK = 0x000000FF;  // line breaks of the text become blanks; other widths are not known

// Writes a message and its terminator. From the system: the English text of an error number (or of an HRESULT made from one),
// which ends in CR LF. From a string: the text at `source`, in which %1 to %99 stand for arguments, %n!format! prints one as
// printf does (s ls S hs c d i u o x X with flags, width, precision and I64, ll, l, h), %n is a line break, %t a tab, %b a
// blank, %r a CR, %0 ends the text, and %% %. %! are the second character. Arguments are 8 bytes each in a variable argument
// list, or an array of DWORD_PTR under FORMAT_MESSAGE_ARGUMENT_ARRAY. Under FORMAT_MESSAGE_IGNORE_INSERTS inserts stay as they
// stand.
//
// FORMAT_MESSAGE_ALLOCATE_BUFFER: `target` is the address of a pointer, which receives a block for LocalFree; `capacity` is its
// least size in characters. Returns the characters written without the terminator; 0 is a failure:
//   ERROR_INVALID_PARAMETER        no source or two sources, no target, an unknown flag, an insert without an argument or ill
//   formed ERROR_MR_MID_NOT_FOUND         there is no text for the number ERROR_RESOURCE_LANG_NOT_FOUND  a language other than 0
//   and English was asked of the system ERROR_INSUFFICIENT_BUFFER      the text does not fit
KADATA_API DWORD FormatMessageW(DWORD flags, LPCVOID source, DWORD id, DWORD language, LPWSTR target, DWORD capacity,
                                va_list* arguments) noexcept;
