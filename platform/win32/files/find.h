#pragma once

// Listing a folder by pattern.
//
// Only the last component may hold wildcards: * for any text, ? for one character or, before a dot or the end, none. "*.*" is
// everything, "*." every name without a dot. Case does not matter in a pattern; a name without wildcards is looked up
// as stored. "." and ".." come first where the pattern matches them, but not in a drive's root. The other entries come in the
// file system's order, as they were at the time of FindFirstFileW; one that has vanished since is left out.
//
// Failures, INVALID_HANDLE_VALUE or FALSE with the last error: ERROR_FILE_NOT_FOUND when nothing matches, for a path with a
// separator at its end and for a drive's root; ERROR_PATH_NOT_FOUND when the folder is missing; ERROR_DIRECTORY when it is a
// file; ERROR_INVALID_NAME for wildcards before the last component.
//
// A search is closed by FindClose only. One handle may be used from several threads.

#include "../base/error.h"

struct WIN32_FIND_DATAW {
    DWORD dwFileAttributes;
    FILETIME ftCreationTime;
    FILETIME ftLastAccessTime;
    FILETIME ftLastWriteTime;
    DWORD nFileSizeHigh;
    DWORD nFileSizeLow;
    DWORD dwReserved0;  // the reparse tag of a link
    DWORD dwReserved1;
    WCHAR cFileName[MAX_PATH];
    WCHAR cAlternateFileName[14];  // always empty: there are no short names
};
using WIN32_FIND_DATA = WIN32_FIND_DATAW;
using LPWIN32_FIND_DATAW = WIN32_FIND_DATAW*;
using LPWIN32_FIND_DATA = WIN32_FIND_DATAW*;
using PWIN32_FIND_DATAW = WIN32_FIND_DATAW*;

// Both levels give the same here.
enum FINDEX_INFO_LEVELS { FindExInfoStandard, FindExInfoBasic };
enum FINDEX_SEARCH_OPS { FindExSearchNameMatch };

constexpr DWORD FIND_FIRST_EX_LARGE_FETCH = 2;  // accepted; every search fetches as much

KADATA_API HANDLE FindFirstFileW(LPCWSTR pattern, LPWIN32_FIND_DATAW data) noexcept;

// `data` is a WIN32_FIND_DATAW, `filter` must be null; ERROR_INVALID_PARAMETER for everything that is not declared above.
KADATA_API HANDLE FindFirstFileExW(LPCWSTR pattern, FINDEX_INFO_LEVELS level, LPVOID data, FINDEX_SEARCH_OPS operation,
                                   LPVOID filter, DWORD flags) noexcept;

// ERROR_NO_MORE_FILES at the end, ERROR_INVALID_HANDLE for what is no open search.
KADATA_API BOOL FindNextFileW(HANDLE search, LPWIN32_FIND_DATAW data) noexcept;
KADATA_API BOOL FindClose(HANDLE search) noexcept;
