#pragma once

// Events, mutexes, and waiting for them and for every other object that can be waited for.
//
// Named objects are shared by all processes of the user ("Local\" or no prefix) or of the machine ("Global\", open to its
// creator's user only). A name is case-sensitive, shared by all kinds of objects, and lives as long as any process has a handle
// to it, a process that was killed not counting. Failures of the Create and Open functions, which return null:
// ERROR_INVALID_HANDLE when the name belongs to an object of another kind, ERROR_PATH_NOT_FOUND for a backslash inside the name,
// ERROR_INVALID_NAME for a name that ends with its prefix (and, to open, an empty one), ERROR_FILENAME_EXCED_RANGE for more than
// 32767 characters, ERROR_ACCESS_DENIED when it belongs to another user. To open: ERROR_FILE_NOT_FOUND when there is none, and
// ERROR_INVALID_PARAMETER without a name. Security attributes and access masks are not looked at: a handle is never inherited and
// may do all.

#include "../base/error.h"

constexpr DWORD WAIT_OBJECT_0 = 0;
constexpr DWORD WAIT_ABANDONED = 0x80;
constexpr DWORD WAIT_ABANDONED_0 = 0x80;
constexpr DWORD WAIT_IO_COMPLETION = 0xC0;
constexpr DWORD WAIT_FAILED = 0xFFFFFFFF;
constexpr DWORD MAXIMUM_WAIT_OBJECTS = 64;

constexpr DWORD SYNCHRONIZE = 0x00100000;
constexpr DWORD STANDARD_RIGHTS_REQUIRED = 0x000F0000;
constexpr DWORD EVENT_MODIFY_STATE = 0x0002;
constexpr DWORD EVENT_ALL_ACCESS = 0x001F0003;
constexpr DWORD MUTEX_MODIFY_STATE = 0x0001;
constexpr DWORD MUTEX_ALL_ACCESS = 0x001F0001;

// A manual-reset event stays signalled until ResetEvent; any other lets one waiting thread through per signal. On success the
// last error is 0, or ERROR_ALREADY_EXISTS when the name existed; then `manual` and `signalled` do not count.
KADATA_API HANDLE CreateEventW(LPSECURITY_ATTRIBUTES security, BOOL manual, BOOL signalled, LPCWSTR name) noexcept;
KADATA_API HANDLE OpenEventW(DWORD access, BOOL inherit, LPCWSTR name) noexcept;

// SetEvent releases who waits now, even when a ResetEvent follows at once.
KADATA_API BOOL SetEvent(HANDLE event) noexcept;
KADATA_API BOOL ResetEvent(HANDLE event) noexcept;

// A mutex belongs to the thread that got it, which may take it again and releases it as often. One whose owner ended without
// releasing it, killed or not, is given to the next with WAIT_ABANDONED. On success the last error is 0, or ERROR_ALREADY_EXISTS
// when the name existed; then `owned` does not count.
KADATA_API HANDLE CreateMutexW(LPSECURITY_ATTRIBUTES security, BOOL owned, LPCWSTR name) noexcept;
KADATA_API HANDLE OpenMutexW(DWORD access, BOOL inherit, LPCWSTR name) noexcept;

// ERROR_NOT_OWNER when the calling thread does not own the mutex.
KADATA_API BOOL ReleaseMutex(HANDLE mutex) noexcept;

// Waits at most `milliseconds` (0 only looks, INFINITE has no limit), and takes what the wait gives: an event's signal, a mutex's
// ownership. WAIT_OBJECT_0, WAIT_ABANDONED, WAIT_TIMEOUT, or WAIT_FAILED: ERROR_INVALID_HANDLE for what is no handle or cannot be
// waited for (the pseudo handle of the current process neither), ERROR_ACCESS_DENIED for a process opened without SYNCHRONIZE.
KADATA_API DWORD WaitForSingleObject(HANDLE handle, DWORD milliseconds) noexcept;

// The same; nothing here queues calls to a thread, so an alertable wait is as any other and never WAIT_IO_COMPLETION.
KADATA_API DWORD WaitForSingleObjectEx(HANDLE handle, DWORD milliseconds, BOOL alertable) noexcept;

// Waits for one of `count` objects (the lowest signalled index is added to WAIT_OBJECT_0 or WAIT_ABANDONED_0), or with `all`
// until all are signalled at the same time, and takes them only then. ERROR_INVALID_PARAMETER for 0 or more than
// MAXIMUM_WAIT_OBJECTS handles, and with `all` for an event or a mutex that comes twice, by whatever handles. A process among
// several objects, and a mutex whose owner dies, is noticed within 15 ms; all else at once.
KADATA_API DWORD WaitForMultipleObjects(DWORD count, const HANDLE* handles, BOOL all, DWORD milliseconds) noexcept;
