#pragma once

// Environment variables. These are the process's own, so that native libraries and child processes see what is set here.
//
// A name is looked up as it is written, and then without regard to case. All functions may be called from every thread at once;
// native code that reads the environment by itself meanwhile is not protected.

#include "../base/types.h"

// Copies the value with its terminator into `buffer` of `size` characters and returns its length without it. Returns the needed
// size with the terminator when the buffer is too small, and 0 when there is no such variable (ERROR_ENVVAR_NOT_FOUND) or when
// its value is empty (last error as before).
KADATA_API DWORD GetEnvironmentVariableW(LPCWSTR name, LPWSTR buffer, DWORD size) noexcept;

// Sets the variable, or deletes it when `value` is null (ERROR_ENVVAR_NOT_FOUND when there is none). ERROR_INVALID_PARAMETER for
// an empty name or one with '='.
KADATA_API BOOL SetEnvironmentVariableW(LPCWSTR name, LPCWSTR value) noexcept;

// Replaces every %NAME% of a variable that exists and leaves all else. Returns the size of the result with its terminator; when
// that is more than `size`, nothing is copied. 0 with ERROR_INVALID_PARAMETER for a null source.
KADATA_API DWORD ExpandEnvironmentStringsW(LPCWSTR source, LPWSTR target, DWORD size) noexcept;

// A copy of all variables, each "NAME=value" with its terminator and an empty text at the end; freed by FreeEnvironmentStringsW.
// Null with ERROR_NOT_ENOUGH_MEMORY.
KADATA_API LPWSTR GetEnvironmentStringsW() noexcept;
KADATA_API BOOL FreeEnvironmentStringsW(LPWSTR block) noexcept;
