#pragma once

// Memory shared between processes.
//
// Names follow the rules of sync/waits.h. A view keeps its memory, but not the name, after the last handle is closed.

#include "../base/error.h"

constexpr DWORD PAGE_READONLY = 0x02;
constexpr DWORD PAGE_READWRITE = 0x04;
constexpr DWORD SEC_COMMIT = 0x08000000;
constexpr DWORD FILE_MAP_WRITE = 0x0002;
constexpr DWORD FILE_MAP_READ = 0x0004;
constexpr DWORD FILE_MAP_ALL_ACCESS = 0x000F001F;
constexpr DWORD ERROR_MAPPED_ALIGNMENT = 1132;

// New memory of the given size, all zero, or the memory that already has the name (last error ERROR_ALREADY_EXISTS, else 0; its
// own size counts). `file` must be INVALID_HANDLE_VALUE: files are not mapped. `protect` is PAGE_READWRITE or PAGE_READONLY,
// which allows only views for reading; SEC_COMMIT may be added. Null on failure: ERROR_INVALID_PARAMETER for a size of 0 and
// other flags, ERROR_INVALID_HANDLE for a file, ERROR_DISK_FULL or ERROR_NOT_ENOUGH_MEMORY when there is not that much.
KADATA_API HANDLE CreateFileMappingW(HANDLE file, LPSECURITY_ATTRIBUTES security, DWORD protect, DWORD size_high, DWORD size_low,
                                     LPCWSTR name) noexcept;

// `access` is FILE_MAP_READ, FILE_MAP_WRITE or FILE_MAP_ALL_ACCESS, and limits the views. Null on failure.
KADATA_API HANDLE OpenFileMappingW(DWORD access, BOOL inherit, LPCWSTR name) noexcept;

// A view of `length` bytes (0: up to the end) from an offset that is a multiple of 65,536 (else ERROR_MAPPED_ALIGNMENT). Writing
// implies reading. Null with ERROR_ACCESS_DENIED for a view past the end and for more access than the handle has.
KADATA_API LPVOID MapViewOfFile(HANDLE mapping, DWORD access, DWORD offset_high, DWORD offset_low, SIZE_T length) noexcept;

// ERROR_INVALID_ADDRESS for what is not the start of a view.
KADATA_API BOOL UnmapViewOfFile(LPCVOID view) noexcept;
