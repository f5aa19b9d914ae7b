#pragma once

// Which processes there are, and what they run.

#include "../base/error.h"

// The numbers of all processes, as many as fit; `needed` receives the bytes written, so a full array may be too small a one.
// Processes that have ended and wait for their parent to notice are left out. ERROR_NOACCESS for a null argument.
KADATA_API BOOL EnumProcesses(DWORD* ids, DWORD size, LPDWORD needed) noexcept;

// Of the modules of another process only the first is told, its program. The handle is good for GetModuleBaseNameW of that
// process. `needed` receives the bytes of the whole list. Wants PROCESS_QUERY_INFORMATION and PROCESS_VM_READ, else
// ERROR_ACCESS_DENIED, and so it is with a process that has ended; ERROR_INVALID_HANDLE.
KADATA_API BOOL EnumProcessModules(HANDLE process, HMODULE* modules, DWORD size, LPDWORD needed) noexcept;

// The file name of the program that a process runs, cut where it does not fit: the characters written without terminator. Null
// for `module` is the first. A program that stands in for one of the system's (process.h: "osk.exe") has that one's name. 0 with
// the errors of EnumProcessModules, ERROR_INVALID_HANDLE for another module, ERROR_INVALID_PARAMETER without a buffer.
KADATA_API DWORD GetModuleBaseNameW(HANDLE process, HMODULE module, LPWSTR name, DWORD capacity) noexcept;
