#pragma once

// Attributes and times of files by name.
//
// FILE_ATTRIBUTE_READONLY is a mode without any write bit, of files and folders alike. FILE_ATTRIBUTE_DIRECTORY and
// FILE_ATTRIBUTE_REPARSE_POINT (a symbolic link; with DIRECTORY when it leads to a folder) are what they say;
// FILE_ATTRIBUTE_NORMAL stands alone. No other attribute is kept or shown: setting one does nothing.
//
// A name that is a link means the link itself, never what it leads to. Failures set the last error: ERROR_FILE_NOT_FOUND,
// ERROR_PATH_NOT_FOUND, ERROR_ACCESS_DENIED, ERROR_INVALID_NAME.

#include "../base/error.h"

constexpr DWORD FILE_ATTRIBUTE_READONLY = 0x00000001;
constexpr DWORD FILE_ATTRIBUTE_HIDDEN = 0x00000002;
constexpr DWORD FILE_ATTRIBUTE_SYSTEM = 0x00000004;
constexpr DWORD FILE_ATTRIBUTE_DIRECTORY = 0x00000010;
constexpr DWORD FILE_ATTRIBUTE_ARCHIVE = 0x00000020;
constexpr DWORD FILE_ATTRIBUTE_NORMAL = 0x00000080;
constexpr DWORD FILE_ATTRIBUTE_TEMPORARY = 0x00000100;
constexpr DWORD FILE_ATTRIBUTE_REPARSE_POINT = 0x00000400;
constexpr DWORD FILE_ATTRIBUTE_NOT_CONTENT_INDEXED = 0x00002000;

constexpr DWORD INVALID_FILE_ATTRIBUTES = 0xFFFFFFFF;
constexpr DWORD IO_REPARSE_TAG_SYMLINK = 0xA000000C;

struct WIN32_FILE_ATTRIBUTE_DATA {
    DWORD dwFileAttributes;
    FILETIME ftCreationTime;  // the file system's time of birth, else the earliest time that it knows of the file
    FILETIME ftLastAccessTime;
    FILETIME ftLastWriteTime;
    DWORD nFileSizeHigh;
    DWORD nFileSizeLow;
};
using LPWIN32_FILE_ATTRIBUTE_DATA = WIN32_FILE_ATTRIBUTE_DATA*;

enum GET_FILEEX_INFO_LEVELS { GetFileExInfoStandard };

// INVALID_FILE_ATTRIBUTES on failure.
KADATA_API DWORD GetFileAttributesW(LPCWSTR path) noexcept;

// `data` is a WIN32_FILE_ATTRIBUTE_DATA; ERROR_INVALID_PARAMETER for null and for a level that is not declared.
KADATA_API BOOL GetFileAttributesExW(LPCWSTR path, GET_FILEEX_INFO_LEVELS level, LPVOID data) noexcept;

// Setting READONLY takes all write bits; clearing it gives the owner's back, and those of group and others where they may
// read and the process's mask allows it. ERROR_NOT_SUPPORTED for READONLY on a link, which has no mode.
KADATA_API BOOL SetFileAttributesW(LPCWSTR path, DWORD attributes) noexcept;
