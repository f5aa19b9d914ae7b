#pragma once

// Processes: this one, children, and others.
//
// A process handle is signalled when the process has ended, and keeps the process number from being used again. A process that
// ends by a signal has the exit code 128 + signal, unless TerminateProcess ended it. The kernel keeps 8 bits of an exit code.

#include "../base/error.h"
#include "thread_id.h"

constexpr DWORD STILL_ACTIVE = 259;

constexpr DWORD PROCESS_TERMINATE = 0x0001;
constexpr DWORD PROCESS_VM_READ = 0x0010;
constexpr DWORD PROCESS_QUERY_INFORMATION = 0x0400;
constexpr DWORD PROCESS_QUERY_LIMITED_INFORMATION = 0x1000;
constexpr DWORD PROCESS_ALL_ACCESS = 0x001FFFFF;

constexpr DWORD DETACHED_PROCESS = 0x00000008;
constexpr DWORD CREATE_NEW_CONSOLE = 0x00000010;
constexpr DWORD NORMAL_PRIORITY_CLASS = 0x00000020;
constexpr DWORD CREATE_NEW_PROCESS_GROUP = 0x00000200;
constexpr DWORD CREATE_UNICODE_ENVIRONMENT = 0x00000400;
constexpr DWORD CREATE_NO_WINDOW = 0x08000000;

constexpr DWORD STARTF_USESHOWWINDOW = 0x00000001;

struct STARTUPINFOW {
    DWORD cb;
    LPWSTR lpReserved;
    LPWSTR lpDesktop;
    LPWSTR lpTitle;
    DWORD dwX;
    DWORD dwY;
    DWORD dwXSize;
    DWORD dwYSize;
    DWORD dwXCountChars;
    DWORD dwYCountChars;
    DWORD dwFillAttribute;
    DWORD dwFlags;
    WORD wShowWindow;
    WORD cbReserved2;
    LPBYTE lpReserved2;
    HANDLE hStdInput;
    HANDLE hStdOutput;
    HANDLE hStdError;
};
using STARTUPINFO = STARTUPINFOW;
using LPSTARTUPINFOW = STARTUPINFOW*;

struct PROCESS_INFORMATION {
    HANDLE hProcess;
    HANDLE hThread;  // signalled together with the process
    DWORD dwProcessId;
    DWORD dwThreadId;
};
using LPPROCESS_INFORMATION = PROCESS_INFORMATION*;

KADATA_API DWORD GetCurrentProcessId() noexcept;
inline DWORD GetCurrentThreadId() noexcept {
    return kawin::CurrentThreadId();
}

// This process's command line; valid until the process ends. Its arguments, split by the rules below, are those of main().
KADATA_API LPWSTR GetCommandLineW() noexcept;

// Ends this process as a return from main() does.
[[noreturn]] KADATA_API void ExitProcess(UINT exit_code) noexcept;

// Starts a program. The caller closes both handles of `info`.
//
// `application` is the program's path, or null: then it is the first word of `command_line`; a bare name is looked for in the
// folder of this program and then along PATH (never in the current directory). A name that is not found and ends with ".exe" is
// tried without it. "osk.exe" is the desktop's on-screen keyboard, whichever is there (stand_ins.h). The command line is split
// into arguments as a Windows C program splits it: blanks separate, quotation marks group, 2n backslashes before a quotation mark
// are n of them, one more makes the mark a character. `environment` is null for a copy of this process's, or a block as
// GetEnvironmentStringsW makes it, with CREATE_UNICODE_ENVIRONMENT (else ERROR_NOT_SUPPORTED). `directory` is null for the
// current one; ERROR_DIRECTORY when it is none.
//
// The child has this process's standard streams and no other file of it; handles are never inherited. Of `flags`
// DETACHED_PROCESS (a session of its own) and CREATE_NEW_PROCESS_GROUP have an effect; the other ones above are accepted, all
// else is ERROR_INVALID_PARAMETER, and so is any start-up flag but STARTF_USESHOWWINDOW. ERROR_FILE_NOT_FOUND,
// ERROR_PATH_NOT_FOUND, ERROR_ACCESS_DENIED (no right to run it, or a folder), ERROR_BAD_EXE_FORMAT.
KADATA_API BOOL CreateProcessW(LPCWSTR application, LPWSTR command_line, LPSECURITY_ATTRIBUTES process_security,
                               LPSECURITY_ATTRIBUTES thread_security, BOOL inherit, DWORD flags, LPVOID environment,
                               LPCWSTR directory, LPSTARTUPINFOW startup, LPPROCESS_INFORMATION info) noexcept;

// A handle of a process for SYNCHRONIZE (waits), PROCESS_TERMINATE and the query rights; also of one that has ended, as long as
// its parent has a handle or has not collected it. Null with ERROR_INVALID_PARAMETER when there is none with that number,
// ERROR_ACCESS_DENIED when the rights are not to be had.
KADATA_API HANDLE OpenProcess(DWORD access, BOOL inherit, DWORD process_id) noexcept;

// STILL_ACTIVE while it runs. ERROR_ACCESS_DENIED when the handle lacks the query rights, ERROR_NOT_SUPPORTED for an ended
// process that this one did not start: its code went to its parent.
KADATA_API BOOL GetExitCodeProcess(HANDLE process, LPDWORD exit_code) noexcept;

// Ends a process at once; it has not ended yet on return, wait for it. ERROR_ACCESS_DENIED when it has ended before or the
// handle lacks PROCESS_TERMINATE.
KADATA_API BOOL TerminateProcess(HANDLE process, UINT exit_code) noexcept;

// 0 on failure.
KADATA_API DWORD GetProcessId(HANDLE process) noexcept;
