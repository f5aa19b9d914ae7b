#pragma once

// Modules: shared objects, files opened for their resources, and modules that the platform itself serves.
//
// LoadLibraryW knows a module by name or path:
//   - a name that the platform serves (served_modules.h);
//   - a shared object: NAME.dll is libNAME.so unless a rule says otherwise (lua5.1.dll is liblua5.1.so.0), a name with ".so" is
//   itself;
//   - a PE file or a compiled .res, opened for its resources only: it exports nothing.
// A name without extension gets ".dll", a final dot stops that. Names and relative paths are looked for in the folder of the
// executable, then by the dynamic linker where the system keeps libraries; the current folder is never looked at. One file has
// one handle, counted: each load wants one FreeLibrary. Handles are safe to use from every thread.

#include "../base/error.h"

using FARPROC = LONG_PTR (*)();

constexpr DWORD LOAD_LIBRARY_AS_DATAFILE = 0x00000002;
constexpr DWORD LOAD_LIBRARY_AS_IMAGE_RESOURCE = 0x00000020;

// Null with ERROR_MOD_NOT_FOUND when there is no such module or one that it needs is missing, ERROR_BAD_EXE_FORMAT when the file
// is no module, ERROR_INVALID_PARAMETER for a null name.
KADATA_API HMODULE LoadLibraryW(LPCWSTR name) noexcept;

// `file` must be null. With one of the flags above the file is opened for its resources only, shared objects and served names are
// not tried, and a missing file is ERROR_FILE_NOT_FOUND. Flags but those and the one of module_search.h are
// ERROR_INVALID_PARAMETER.
KADATA_API HMODULE LoadLibraryExW(LPCWSTR name, HANDLE file, DWORD flags) noexcept;

// FALSE with ERROR_INVALID_HANDLE for null, with ERROR_MOD_NOT_FOUND for a module that is not loaded. The executable stays.
KADATA_API BOOL FreeLibrary(HMODULE module) noexcept;

// Null with ERROR_PROC_NOT_FOUND; ERROR_MOD_NOT_FOUND for a module that is not loaded. A null module is the executable.
KADATA_API FARPROC GetProcAddress(HMODULE module, LPCSTR name) noexcept;

// The handle of a loaded module, not counted; null for `name` is the executable. A bare name is compared without regard to case.
// Null with ERROR_MOD_NOT_FOUND; files opened with a flag are not found.
KADATA_API HMODULE GetModuleHandleW(LPCWSTR name) noexcept;

// The full system path of a module; a null module is the executable. Returns the length without terminator. A path that does not
// fit is cut and ended, the result is `capacity`, and the last error ERROR_INSUFFICIENT_BUFFER. 0 with ERROR_MOD_NOT_FOUND for
// a module that is not loaded or was opened with a flag.
KADATA_API DWORD GetModuleFileNameW(HMODULE module, LPWSTR target, DWORD capacity) noexcept;
