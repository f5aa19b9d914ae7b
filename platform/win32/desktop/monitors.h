#pragma once

// The monitors of the desktop; off screen there is one. Coordinates are those of the screen: the primary monitor's corner is 0,0.

#include "../base/error.h"

constexpr DWORD MONITOR_DEFAULTTONULL = 0;
constexpr DWORD MONITOR_DEFAULTTOPRIMARY = 1;
constexpr DWORD MONITOR_DEFAULTTONEAREST = 2;

constexpr DWORD MONITORINFOF_PRIMARY = 1;

struct MONITORINFO {
    DWORD cbSize;    // of the structure, set by the caller
    RECT rcMonitor;  // all of it
    RECT rcWork;     // without the bars of the desktop
    DWORD dwFlags;   // MONITORINFOF_PRIMARY or 0
};
using LPMONITORINFO = MONITORINFO*;

// The monitor with the largest part of the area; where none has any, what `otherwise` says: none, the primary one or the nearest.
KADATA_API HMONITOR MonitorFromRect(LPCRECT area, DWORD otherwise) noexcept;
KADATA_API HMONITOR MonitorFromPoint(POINT point, DWORD otherwise) noexcept;

// The same for a window's rectangle, of a minimised one for that to which it will be restored. For a handle that is no window,
// the primary monitor unless `otherwise` is MONITOR_DEFAULTTONULL.
KADATA_API HMONITOR MonitorFromWindow(HWND window, DWORD otherwise) noexcept;

// FALSE with ERROR_INVALID_PARAMETER when cbSize is another, ERROR_INVALID_MONITOR_HANDLE for a handle that is no monitor's now.
KADATA_API BOOL GetMonitorInfoW(HMONITOR monitor, LPMONITORINFO info) noexcept;
