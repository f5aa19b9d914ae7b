#pragma once

// Which Windows this is: none.

#include "../base/error.h"

constexpr DWORD VER_PLATFORM_WIN32_NT = 2;

struct OSVERSIONINFOW {
    DWORD dwOSVersionInfoSize;  // sizeof(OSVERSIONINFOW)
    DWORD dwMajorVersion;
    DWORD dwMinorVersion;
    DWORD dwBuildNumber;
    DWORD dwPlatformId;
    WCHAR szCSDVersion[128];
};
using LPOSVERSIONINFOW = OSVERSIONINFOW*;
using OSVERSIONINFO = OSVERSIONINFOW;

// Deliberate: always FALSE, and nothing is written, so that whoever asks for a certain Windows or a later one gets a no. The last
// error is ERROR_CALL_NOT_IMPLEMENTED; ERROR_INSUFFICIENT_BUFFER for a null pointer or a wrong size.
KADATA_API BOOL GetVersionExW(LPOSVERSIONINFOW version) noexcept;
