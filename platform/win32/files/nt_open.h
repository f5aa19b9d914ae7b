#pragma once

// Opening relative to a folder's handle: the subset of the native calls that lets a tree be walked and removed while others
// rename things in it, because a name is looked up in the very folder that was opened before, and links are not followed.

#include "../base/error.h"

using NTSTATUS = LONG;
using ACCESS_MASK = DWORD;

constexpr bool NT_SUCCESS(NTSTATUS status) {
    return status >= 0;
}

// Lengths count bytes.
struct UNICODE_STRING {
    USHORT Length;
    USHORT MaximumLength;
    PWSTR Buffer;
};
using PUNICODE_STRING = UNICODE_STRING*;

struct OBJECT_ATTRIBUTES {
    ULONG Length;
    HANDLE RootDirectory;
    PUNICODE_STRING ObjectName;
    ULONG Attributes;
    PVOID SecurityDescriptor;
    PVOID SecurityQualityOfService;
};
using POBJECT_ATTRIBUTES = OBJECT_ATTRIBUTES*;

struct IO_STATUS_BLOCK {
    union {
        NTSTATUS Status;
        PVOID Pointer;
    };
    ULONG_PTR Information;
};
using PIO_STATUS_BLOCK = IO_STATUS_BLOCK*;

constexpr ULONG OBJ_CASE_INSENSITIVE = 0x40;  // accepted; names are looked up as stored

constexpr ULONG FILE_OPEN = 1;    // disposition: the file must be there
constexpr ULONG FILE_OPENED = 1;  // IO_STATUS_BLOCK::Information after success

constexpr ULONG FILE_DIRECTORY_FILE = 0x00000001;
constexpr ULONG FILE_SYNCHRONOUS_IO_NONALERT = 0x00000020;
constexpr ULONG FILE_NON_DIRECTORY_FILE = 0x00000040;
constexpr ULONG FILE_OPEN_FOR_BACKUP_INTENT = 0x00004000;  // accepted
constexpr ULONG FILE_OPEN_REPARSE_POINT = 0x00200000;

constexpr void InitializeObjectAttributes(POBJECT_ATTRIBUTES attributes, PUNICODE_STRING name, ULONG flags, HANDLE root,
                                          PVOID security) {
    *attributes = {sizeof(OBJECT_ATTRIBUTES), root, name, flags, security, nullptr};
}

// Points `target` to `source` (null: to nothing); no copy is made.
KADATA_API void RtlInitUnicodeString(PUNICODE_STRING target, PCWSTR source) noexcept;

// Opens what `attributes->ObjectName`, the name of one entry (not a path, not "." or ".."), means in the folder
// `attributes->RootDirectory`, which must be given. The name may hold every character but '/': whatever a listing shows can be
// opened. With FILE_OPEN_REPARSE_POINT a link is opened itself; without, it is followed.
//
// `options` must hold FILE_SYNCHRONOUS_IO_NONALERT, and `access` then SYNCHRONIZE, else STATUS_INVALID_PARAMETER.
// FILE_DIRECTORY_FILE on a file is STATUS_NOT_A_DIRECTORY (RtlNtStatusToDosError: ERROR_DIRECTORY), FILE_NON_DIRECTORY_FILE on a
// folder STATUS_FILE_IS_A_DIRECTORY (ERROR_ACCESS_DENIED); a link counts as what it leads to. Share modes hold as in CreateFileW.
// The last error is left alone. The handle is closed by CloseHandle.
KADATA_API NTSTATUS NtOpenFile(PHANDLE file, ACCESS_MASK access, POBJECT_ATTRIBUTES attributes, PIO_STATUS_BLOCK status,
                               ULONG share, ULONG options) noexcept;

// The same; `disposition` must be FILE_OPEN and the pointers null, else STATUS_INVALID_PARAMETER. Attributes are not looked at.
KADATA_API NTSTATUS NtCreateFile(PHANDLE file, ACCESS_MASK access, POBJECT_ATTRIBUTES attributes, PIO_STATUS_BLOCK status,
                                 PLARGE_INTEGER allocation, ULONG file_attributes, ULONG share, ULONG disposition, ULONG options,
                                 PVOID extended_attributes, ULONG extended_length) noexcept;

// The error number for a status that these calls give; 0 for success, ERROR_MR_MID_NOT_FOUND (317) for one that they never give.
KADATA_API ULONG RtlNtStatusToDosError(NTSTATUS status) noexcept;
