#pragma once

// What is known of, and done to, the file behind a handle. ERROR_INVALID_HANDLE for a handle that is no file;
// ERROR_INVALID_PARAMETER for a class that a function does not offer; ERROR_BAD_LENGTH for a buffer smaller than its structure.

#include "../base/error.h"

struct BY_HANDLE_FILE_INFORMATION {
    DWORD dwFileAttributes;
    FILETIME ftCreationTime;
    FILETIME ftLastAccessTime;
    FILETIME ftLastWriteTime;
    DWORD dwVolumeSerialNumber;  // of the mounted file system, to compare two files by; not that of GetVolumeInformationW
    DWORD nFileSizeHigh;
    DWORD nFileSizeLow;
    DWORD nNumberOfLinks;
    DWORD nFileIndexHigh;
    DWORD nFileIndexLow;
};
using LPBY_HANDLE_FILE_INFORMATION = BY_HANDLE_FILE_INFORMATION*;

// The classes offered, with their documented numbers.
enum FILE_INFO_BY_HANDLE_CLASS {
    FileBasicInfo = 0,
    FileStandardInfo = 1,
    FileDispositionInfo = 4,
    FileEndOfFileInfo = 6,
    FileAttributeTagInfo = 9,
    FileFullDirectoryInfo = 14,
    FileFullDirectoryRestartInfo = 15
};

// Times count as in FILETIME. Set: 0 (and -1) keeps a time, attributes 0 keep the attributes.
struct FILE_BASIC_INFO {
    LARGE_INTEGER CreationTime;
    LARGE_INTEGER LastAccessTime;
    LARGE_INTEGER LastWriteTime;
    LARGE_INTEGER ChangeTime;
    DWORD FileAttributes;
};

struct FILE_STANDARD_INFO {
    LARGE_INTEGER AllocationSize;
    LARGE_INTEGER EndOfFile;
    DWORD NumberOfLinks;
    BOOLEAN DeletePending;
    BOOLEAN Directory;
};

struct FILE_ATTRIBUTE_TAG_INFO {
    DWORD FileAttributes;
    DWORD ReparseTag;
};

struct FILE_DISPOSITION_INFO {
    BOOLEAN DeleteFile;
};

struct FILE_END_OF_FILE_INFO {
    LARGE_INTEGER EndOfFile;
};

// One entry of a folder. NextEntryOffset counts bytes to the next one, a multiple of 8; 0 is the last in the buffer.
// FileName is FileNameLength bytes long, without terminator. EaSize holds the tag of a link.
struct FILE_FULL_DIR_INFO {
    ULONG NextEntryOffset;
    ULONG FileIndex;
    LARGE_INTEGER CreationTime;
    LARGE_INTEGER LastAccessTime;
    LARGE_INTEGER LastWriteTime;
    LARGE_INTEGER ChangeTime;
    LARGE_INTEGER EndOfFile;
    LARGE_INTEGER AllocationSize;
    ULONG FileAttributes;
    ULONG FileNameLength;
    ULONG EaSize;
    WCHAR FileName[1];
};
using PFILE_FULL_DIR_INFO = FILE_FULL_DIR_INFO*;

constexpr DWORD ERROR_BAD_LENGTH = 24;

KADATA_API BOOL GetFileInformationByHandle(HANDLE file, LPBY_HANDLE_FILE_INFORMATION information) noexcept;

// FileBasicInfo, FileStandardInfo, FileAttributeTagInfo; of a folder opened with FILE_LIST_DIRECTORY also the two directory
// classes: each call fills the buffer with the next entries ("." and ".." are among them, the order is the file system's),
// Restart begins anew. ERROR_NO_MORE_FILES at the end, ERROR_MORE_DATA when not even one entry fits; it stays the next.
KADATA_API BOOL GetFileInformationByHandleEx(HANDLE file, FILE_INFO_BY_HANDLE_CLASS information_class, LPVOID buffer,
                                             DWORD size) noexcept;

// FileDispositionInfo (needs DELETE): the file, empty folder or link goes when the handle is closed, if its name still means it
// then. ERROR_DIR_NOT_EMPTY and, for a read-only one, ERROR_ACCESS_DENIED come at the call. FileBasicInfo (needs
// FILE_WRITE_ATTRIBUTES), FileEndOfFileInfo (needs FILE_WRITE_DATA).
KADATA_API BOOL SetFileInformationByHandle(HANDLE file, FILE_INFO_BY_HANDLE_CLASS information_class, LPVOID buffer,
                                           DWORD size) noexcept;

constexpr DWORD FILE_NAME_NORMALIZED = 0x0;
constexpr DWORD FILE_NAME_OPENED = 0x8;
constexpr DWORD VOLUME_NAME_DOS = 0x0;

// "\\?\C:\..." with no link left in it, wherever the file has been moved since. Returns the length without terminator when it
// fits in `size` characters, else the size needed with it; 0 on failure, ERROR_FILE_NOT_FOUND for a file without a name any more.
KADATA_API DWORD GetFinalPathNameByHandleW(HANDLE file, LPWSTR buffer, DWORD size, DWORD flags) noexcept;
