#pragma once

// The window station: where a process's windows are, and whether somebody can see them. A process has one, to which it belongs
// from its start; others cannot be made or opened.

#include "../base/error.h"

struct HWINSTA__;
using HWINSTA = HWINSTA__*;

constexpr int UOI_FLAGS = 1;
constexpr int UOI_NAME = 2;
constexpr int UOI_TYPE = 3;

constexpr DWORD WSF_VISIBLE = 1;

struct USEROBJECTFLAGS {
    BOOL fInherit;
    BOOL fReserved;
    DWORD dwFlags;  // WSF_VISIBLE: there is a display; off screen, and where none can be opened, 0
};
using PUSEROBJECTFLAGS = USEROBJECTFLAGS*;

// Never null; nobody closes it.
KADATA_API HWINSTA GetProcessWindowStation() noexcept;

// `index`: UOI_FLAGS, a USEROBJECTFLAGS; UOI_NAME, "WinSta0"; UOI_TYPE, "WindowStation". `length` and `needed` (which may be
// null) are in bytes. FALSE with ERROR_INVALID_HANDLE for another object, ERROR_INSUFFICIENT_BUFFER when `length` is too small
// (`needed` is set), ERROR_INVALID_PARAMETER for any other question, ERROR_NOACCESS when `information` is null and `length` is
// not 0.
KADATA_API BOOL GetUserObjectInformationW(HANDLE object, int index, void* information, DWORD length, DWORD* needed) noexcept;
