#pragma once

// Profiles: text files of [sections] with "key=value" lines.
//
// Sections and keys are looked up without regard to case; the first section of a name counts, and in it the first key. Blanks
// around sections, keys and values do not count, one pair of quotation marks ("" or '') around a value is taken off, and a line
// that begins with a semicolon is a comment. A file is in the ANSI code page, or in UTF-16LE where a byte-order mark begins it.
//
// A file name without a folder lies in ${XDG_CONFIG_HOME:-~/.config}/kadata; null is "win.ini" there. Calls of several processes
// exclude each other. All text is what the file holds at the moment of the call: nothing is cached.

#include "../base/error.h"

// Copies a value, or `defaultText` without its blanks at the end when there is none. With a null key, the names of the section's
// keys (the default where there is no such section), with a null section the names of all sections: each with its terminator,
// and one more at the end. Returns the number of
// characters without the last terminator; what does not fit is cut and ended, and `size` - 1, for lists `size` - 2, is returned.
// The last error is ERROR_FILE_NOT_FOUND when the file, the section or the key is missing, ERROR_SUCCESS otherwise.
KADATA_API DWORD GetPrivateProfileStringW(LPCWSTR section, LPCWSTR key, LPCWSTR defaultText, LPWSTR buffer, DWORD size,
                                          LPCWSTR file) noexcept;

// The number that a value begins with: decimal, with a sign, or with 0x, 0o, 0b before it; 0 for another text, the default
// for none and an empty one.
KADATA_API UINT GetPrivateProfileIntW(LPCWSTR section, LPCWSTR key, INT defaultValue, LPCWSTR file) noexcept;

// The lines of a section, "key=value", comments and blanks around them left out; sizes and results as for lists above.
KADATA_API DWORD GetPrivateProfileSectionW(LPCWSTR section, LPWSTR buffer, DWORD size, LPCWSTR file) noexcept;
KADATA_API DWORD GetPrivateProfileSectionNamesW(LPWSTR buffer, DWORD size, LPCWSTR file) noexcept;

// Writes a value and makes file, section and key where they are missing; a new file is in the ANSI code page, whose lack of a
// character costs that character. A null text removes the key, a null key the section. All other lines stay as they are. FALSE
// with the error of the file (ERROR_PATH_NOT_FOUND when its folder is missing, ERROR_ACCESS_DENIED), with ERROR_FILE_NOT_FOUND
// for a null section, and, although nothing is wrong, when all three are null.
KADATA_API BOOL WritePrivateProfileStringW(LPCWSTR section, LPCWSTR key, LPCWSTR text, LPCWSTR file) noexcept;
