#pragma once

// Folders, the current directory, and names made from paths.

#include "../base/error.h"

// Creates one folder. ERROR_ALREADY_EXISTS for a name in use (a file's too), ERROR_PATH_NOT_FOUND when the parent is missing,
// ERROR_ACCESS_DENIED, ERROR_INVALID_NAME. The rights come from the process's mask; `security` is not looked at.
KADATA_API BOOL CreateDirectoryW(LPCWSTR path, LPSECURITY_ATTRIBUTES security) noexcept;

// Removes an empty folder, or a link to a folder (never what it points to). ERROR_DIR_NOT_EMPTY, ERROR_DIRECTORY for a file,
// ERROR_FILE_NOT_FOUND, ERROR_PATH_NOT_FOUND when the parent is missing, ERROR_ACCESS_DENIED, ERROR_SHARING_VIOLATION for the
// current directory of this process and for a mount point.
KADATA_API BOOL RemoveDirectoryW(LPCWSTR path) noexcept;

// The functions below that fill a buffer return the length without terminator when it fits (`size` counts characters), else the
// size that is needed, terminator included, and leave the buffer alone; 0 is failure.

// Without trailing backslash, except for a drive's root.
KADATA_API DWORD GetCurrentDirectoryW(DWORD size, LPWSTR buffer) noexcept;

// ERROR_FILE_NOT_FOUND, ERROR_PATH_NOT_FOUND, ERROR_DIRECTORY for a file.
KADATA_API BOOL SetCurrentDirectoryW(LPCWSTR path) noexcept;

// Made from the text and the current directory alone; the disk is not asked and wildcards may stand in it. `file_part`, when
// given, receives the place of the last component in the buffer, null when the path ends in a backslash. ERROR_INVALID_NAME for
// an empty path.
KADATA_API DWORD GetFullPathNameW(LPCWSTR path, DWORD size, LPWSTR buffer, LPWSTR* file_part) noexcept;

// The first that is set of TMP, TEMP, USERPROFILE and TMPDIR, else /tmp, with one backslash at the end. A value that
// begins with a slash is a native path. Whether the folder exists is not asked.
KADATA_API DWORD GetTempPathW(DWORD size, LPWSTR buffer) noexcept;

// Writes folder + up to three characters of the prefix + the number in hexadecimal + ".tmp" into `file`, which has room for
// MAX_PATH characters, and returns the number. With `unique` 0 a number is found whose file was not there, and that file is
// created, empty, for this user alone. 0 with ERROR_DIRECTORY when the folder is none, ERROR_BUFFER_OVERFLOW when it is too long.
KADATA_API UINT GetTempFileNameW(LPCWSTR folder, LPCWSTR prefix, UINT unique, LPWSTR file) noexcept;
