#pragma once

// Files by handle and by name.
//
// Handles may be used from several threads; each has one position, kept by the kernel. Child processes never inherit them.
// Share modes hold between all processes that use this layer and between the handles of one, for regular files; an open that
// asks only for attributes takes no part. File systems that know no locks have no share modes.
//
// FALSE (or the value named) on failure, with the last error set. What every function may give: ERROR_FILE_NOT_FOUND when only
// the last component is missing, ERROR_PATH_NOT_FOUND when a folder on the way is missing or no folder, ERROR_ACCESS_DENIED for
// missing rights and for an access that the handle was not opened with, ERROR_INVALID_HANDLE, ERROR_INVALID_NAME.

#include "../base/handle.h"

constexpr DWORD GENERIC_READ = 0x80000000;
constexpr DWORD GENERIC_WRITE = 0x40000000;
constexpr DWORD GENERIC_EXECUTE = 0x20000000;
constexpr DWORD GENERIC_ALL = 0x10000000;
constexpr DWORD DELETE = 0x00010000;
constexpr DWORD FILE_READ_DATA = 0x0001;
constexpr DWORD FILE_LIST_DIRECTORY = 0x0001;
constexpr DWORD FILE_WRITE_DATA = 0x0002;
constexpr DWORD FILE_APPEND_DATA = 0x0004;  // without FILE_WRITE_DATA every write goes to the end
constexpr DWORD FILE_EXECUTE = 0x0020;
constexpr DWORD FILE_TRAVERSE = 0x0020;
constexpr DWORD FILE_READ_ATTRIBUTES = 0x0080;
constexpr DWORD FILE_WRITE_ATTRIBUTES = 0x0100;
constexpr DWORD FILE_ALL_ACCESS = 0x001F01FF;

constexpr DWORD FILE_SHARE_READ = 0x1;
constexpr DWORD FILE_SHARE_WRITE = 0x2;
constexpr DWORD FILE_SHARE_DELETE = 0x4;

constexpr DWORD CREATE_NEW = 1;
constexpr DWORD CREATE_ALWAYS = 2;
constexpr DWORD OPEN_EXISTING = 3;
constexpr DWORD OPEN_ALWAYS = 4;
constexpr DWORD TRUNCATE_EXISTING = 5;

constexpr DWORD FILE_FLAG_WRITE_THROUGH = 0x80000000;
constexpr DWORD FILE_FLAG_RANDOM_ACCESS = 0x10000000;
constexpr DWORD FILE_FLAG_SEQUENTIAL_SCAN = 0x08000000;
constexpr DWORD FILE_FLAG_DELETE_ON_CLOSE = 0x04000000;
constexpr DWORD FILE_FLAG_BACKUP_SEMANTICS = 0x02000000;
constexpr DWORD FILE_FLAG_OPEN_REPARSE_POINT = 0x00200000;

constexpr DWORD FILE_BEGIN = 0;
constexpr DWORD FILE_CURRENT = 1;
constexpr DWORD FILE_END = 2;
constexpr DWORD INVALID_SET_FILE_POINTER = 0xFFFFFFFF;
constexpr DWORD INVALID_FILE_SIZE = 0xFFFFFFFF;

constexpr DWORD FILE_TYPE_UNKNOWN = 0;
constexpr DWORD FILE_TYPE_DISK = 1;
constexpr DWORD FILE_TYPE_CHAR = 2;
constexpr DWORD FILE_TYPE_PIPE = 3;

constexpr DWORD MOVEFILE_REPLACE_EXISTING = 0x1;
constexpr DWORD MOVEFILE_COPY_ALLOWED = 0x2;
constexpr DWORD MOVEFILE_WRITE_THROUGH = 0x8;

// Where a read or write begins; every transfer is done when the call returns, so only the offset is looked at. Offset and
// OffsetHigh both 0xFFFFFFFF in a write: at the end, in one step with the write itself.
struct OVERLAPPED {
    ULONG_PTR Internal;
    ULONG_PTR InternalHigh;
    DWORD Offset;
    DWORD OffsetHigh;
    HANDLE hEvent;
};
using LPOVERLAPPED = OVERLAPPED*;

// INVALID_HANDLE_VALUE on failure. On success the last error is ERROR_ALREADY_EXISTS when CREATE_ALWAYS or OPEN_ALWAYS met a
// file, else 0. ERROR_FILE_EXISTS from CREATE_NEW; ERROR_SHARING_VIOLATION; ERROR_ACCESS_DENIED also for a folder without
// FILE_FLAG_BACKUP_SEMANTICS and for writing to a read-only file; ERROR_INVALID_PARAMETER for a disposition or share mode that
// is none and for TRUNCATE_EXISTING without GENERIC_WRITE. Links are followed unless FILE_FLAG_OPEN_REPARSE_POINT is given: then
// the handle is on the link. A pipe or device never makes the call wait; reads from an empty pipe then give ERROR_LOCK_VIOLATION.
// Of the attributes only FILE_ATTRIBUTE_READONLY has an effect, on a file that is created or cut to nothing.
// "\\.\X:" and "\\?\X:" open the volume in drive X for DeviceIoControl; ERROR_FILE_NOT_FOUND when there is none.
// `security` and `model` are not looked at.
KADATA_API HANDLE CreateFileW(LPCWSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security, DWORD disposition,
                              DWORD flags_and_attributes, HANDLE model) noexcept;

// TRUE with fewer bytes than asked for at the end of the file; with `place` given and nothing left, FALSE with ERROR_HANDLE_EOF.
// The position ends behind what was read. `read` may be null.
KADATA_API BOOL ReadFile(HANDLE file, LPVOID buffer, DWORD size, LPDWORD read, LPOVERLAPPED place) noexcept;

// All bytes or FALSE (ERROR_DISK_FULL and others); then `written` tells how many bytes went out before. The position ends behind
// what was written. `written` may be null.
KADATA_API BOOL WriteFile(HANDLE file, LPCVOID buffer, DWORD size, LPDWORD written, LPOVERLAPPED place) noexcept;

// The low half of the new position. `high`, when given, holds the upper half of the distance and receives that of the position;
// without it the distance is signed. INVALID_SET_FILE_POINTER on failure, or as a valid half: then the last error is NO_ERROR.
// ERROR_NEGATIVE_SEEK; ERROR_INVALID_PARAMETER for a position that needs `high`.
KADATA_API DWORD SetFilePointer(HANDLE file, LONG distance, PLONG high, DWORD method) noexcept;
KADATA_API BOOL SetFilePointerEx(HANDLE file, LARGE_INTEGER distance, PLARGE_INTEGER position, DWORD method) noexcept;

// Cuts or extends (with zeros) the file at the position.
KADATA_API BOOL SetEndOfFile(HANDLE file) noexcept;

// Bytes. INVALID_FILE_SIZE on failure, or as a valid low half: then the last error is NO_ERROR.
KADATA_API DWORD GetFileSize(HANDLE file, LPDWORD high) noexcept;
KADATA_API BOOL GetFileSizeEx(HANDLE file, PLARGE_INTEGER size) noexcept;

// Returns when the contents are on the medium. Needs write access.
KADATA_API BOOL FlushFileBuffers(HANDLE file) noexcept;

// FILE_TYPE_UNKNOWN with ERROR_INVALID_HANDLE for what is no file.
KADATA_API DWORD GetFileType(HANDLE file) noexcept;

// Null times are left out. The time of creation cannot be set here: it is accepted and stays.
KADATA_API BOOL GetFileTime(HANDLE file, LPFILETIME created, LPFILETIME accessed, LPFILETIME written) noexcept;
KADATA_API BOOL SetFileTime(HANDLE file, const FILETIME* created, const FILETIME* accessed, const FILETIME* written) noexcept;

// Removes a file, or a link to a file (never what it leads to). ERROR_ACCESS_DENIED for a folder and a read-only file;
// ERROR_SHARING_VIOLATION while it is open without FILE_SHARE_DELETE.
KADATA_API BOOL DeleteFileW(LPCWSTR path) noexcept;

// Renames files, links and folders. ERROR_ALREADY_EXISTS when the new name is in use, unless MOVEFILE_REPLACE_EXISTING is given:
// then ERROR_ACCESS_DENIED for a folder, a read-only file and a file that is open without FILE_SHARE_DELETE.
// ERROR_SHARING_VIOLATION while the file to move is open so. Between file systems files are copied with MOVEFILE_COPY_ALLOWED,
// which MoveFileW implies (folders: ERROR_ACCESS_DENIED), else ERROR_NOT_SAME_DEVICE. MOVEFILE_WRITE_THROUGH returns when the
// move is on the medium.
KADATA_API BOOL MoveFileW(LPCWSTR from, LPCWSTR to) noexcept;
KADATA_API BOOL MoveFileExW(LPCWSTR from, LPCWSTR to, DWORD flags) noexcept;

// Copies contents, READONLY and the time of the last write. ERROR_FILE_EXISTS with `keep_existing` when the target is there;
// ERROR_ACCESS_DENIED when either is no regular file; a copy that fails half-way is removed.
KADATA_API BOOL CopyFileW(LPCWSTR from, LPCWSTR to, BOOL keep_existing) noexcept;
