#pragma once

// The C run-time's wide text functions for 16-bit characters. They report through errno, not through the last error.

#include "../base/types.h"

using errno_t = int;

constexpr std::size_t _MAX_PATH = 260;
constexpr std::size_t _MAX_DRIVE = 3;
constexpr std::size_t _MAX_DIR = 256;
constexpr std::size_t _MAX_FNAME = 256;
constexpr std::size_t _MAX_EXT = 256;

// The decimal number at the start of a text, after white space and one sign; 0 without digits. A number out of range gives the
// nearest that is in it, and errno ERANGE; null gives 0 and EINVAL.
KADATA_API int _wtoi(LPCWSTR text) noexcept;
KADATA_API LONGLONG _wtoi64(LPCWSTR text) noexcept;

// Negative, 0 or positive, by unit in lower case and in no locale. Null gives INT_MAX and errno EINVAL.
KADATA_API int _wcsicmp(LPCWSTR a, LPCWSTR b) noexcept;
KADATA_API int _wcsnicmp(LPCWSTR a, LPCWSTR b, std::size_t count) noexcept;

// Splits a path into drive ("C:"), folder (with its last separator), name, and extension (with its dot). A null part of size 0 is
// not wanted. Returns 0, EINVAL (null path, or a buffer and its size do not go together), or ERANGE (a part does not fit); on
// failure every part is the empty text.
KADATA_API errno_t _wsplitpath_s(LPCWSTR path, LPWSTR drive, std::size_t driveSize, LPWSTR folder, std::size_t folderSize,
                                 LPWSTR name, std::size_t nameSize, LPWSTR extension, std::size_t extensionSize) noexcept;
