#pragma once

// Windows: made, found, placed, shown, and destroyed.
//
// Any thread may ask; only the thread that made a window destroys it. Functions given a window that does not exist fail with
// ERROR_INVALID_WINDOW_HANDLE. A handle is not given again for a long time. A top-level window's rectangle is in screen
// coordinates, a child's in its parent's client coordinates.

#include "window_classes.h"

// Makes a window. Its procedure gets WM_GETMINMAXINFO (with a caption or sizing frame), WM_NCCREATE, WM_NCCALCSIZE, WM_CREATE,
// WM_SIZE and WM_MOVE, and what ShowWindow sends for WS_VISIBLE. CW_USEDEFAULT as x (y is SW_* then or 0) or width places or
// sizes an overlapped window; elsewhere it is 0. `menu` is a child's number; menu bars do not exist (ERROR_INVALID_MENU_HANDLE
// for another window). Parent of a WS_CHILD, owner of another window: its top-level window is the owner. Null with
// ERROR_CANNOT_FIND_WND_CLASS, ERROR_TLW_WITH_WSCHILD, ERROR_INVALID_WINDOW_HANDLE, ERROR_NOT_ENOUGH_MEMORY, or as the procedure
// left the last error.
KADATA_API HWND CreateWindowExW(DWORD extended_style, LPCWSTR class_name, LPCWSTR title, DWORD style, int x, int y, int width,
                                int height, HWND parent, HMENU menu, HINSTANCE instance, LPVOID parameter) noexcept;
inline HWND CreateWindowW(LPCWSTR class_name, LPCWSTR title, DWORD style, int x, int y, int width, int height, HWND parent,
                          HMENU menu, HINSTANCE instance, LPVOID parameter) noexcept {
    return CreateWindowExW(0, class_name, title, style, x, y, width, height, parent, menu, instance, parameter);
}

// Hides it, sends WM_DESTROY to it and its children, destroys the children and owned windows, and sends WM_NCDESTROY. FALSE with
// ERROR_ACCESS_DENIED for another thread's window.
KADATA_API BOOL DestroyWindow(HWND window) noexcept;

KADATA_API BOOL IsWindow(HWND window) noexcept;

// One of GWL_*, GWLP_*, or 8 (4) bytes at an offset into the window's extra bytes. Set returns the value before. 0 with
// ERROR_INVALID_WINDOW_HANDLE, ERROR_INVALID_INDEX or, for another process's, ERROR_ACCESS_DENIED; clear the last error to tell
// that from a value of 0. The functions of 32 bits do not serve pointers. Styles send WM_STYLECHANGING and WM_STYLECHANGED;
// SetWindowPos with SWP_FRAMECHANGED makes the frame follow.
KADATA_API LONG_PTR GetWindowLongPtrW(HWND window, int index) noexcept;
KADATA_API LONG_PTR SetWindowLongPtrW(HWND window, int index, LONG_PTR value) noexcept;
KADATA_API LONG GetWindowLongW(HWND window, int index) noexcept;
KADATA_API LONG SetWindowLongW(HWND window, int index, LONG value) noexcept;

// Relations. GetParent: a child's parent, a popup's owner, else null. The desktop window is the root of all.
KADATA_API HWND GetParent(HWND window) noexcept;
KADATA_API HWND SetParent(HWND window, HWND parent) noexcept;  // null: the desktop. The parent before
KADATA_API HWND GetAncestor(HWND window, UINT which) noexcept;
KADATA_API HWND GetWindow(HWND window, UINT which) noexcept;
KADATA_API HWND GetTopWindow(HWND window) noexcept;
KADATA_API HWND GetDesktopWindow() noexcept;
KADATA_API HWND GetLastActivePopup(HWND window) noexcept;
KADATA_API BOOL IsChild(HWND parent, HWND window) noexcept;
KADATA_API int GetDlgCtrlID(HWND window) noexcept;
KADATA_API DWORD GetWindowThreadProcessId(HWND window, LPDWORD process) noexcept;  // the thread

// Calls `each` until it returns FALSE, from top to bottom in z-order as it is at the start: children of all depths, top-level
// windows, or those of a thread. Windows that go away meanwhile are left out.
using WNDENUMPROC = BOOL(CALLBACK*)(HWND window, LPARAM parameter);
KADATA_API BOOL EnumChildWindows(HWND parent, WNDENUMPROC each, LPARAM parameter) noexcept;
KADATA_API BOOL EnumWindows(WNDENUMPROC each, LPARAM parameter) noexcept;
KADATA_API BOOL EnumThreadWindows(DWORD thread, WNDENUMPROC each, LPARAM parameter) noexcept;

// The first top-level window (child of `parent` behind `after`) of that class and title; null stands for any.
KADATA_API HWND FindWindowW(LPCWSTR class_name, LPCWSTR title) noexcept;
KADATA_API HWND FindWindowExW(HWND parent, HWND after, LPCWSTR class_name, LPCWSTR title) noexcept;

// Values by name (without regard to case, or an atom) that anyone may hang on a window. The owner removes them before
// WM_NCDESTROY.
KADATA_API BOOL SetPropW(HWND window, LPCWSTR name, HANDLE value) noexcept;
KADATA_API HANDLE GetPropW(HWND window, LPCWSTR name) noexcept;
KADATA_API HANDLE RemovePropW(HWND window, LPCWSTR name) noexcept;

// The title, or a control's text, through WM_SETTEXT, WM_GETTEXT and WM_GETTEXTLENGTH. Get copies at most `capacity` - 1
// characters and a terminator and returns how many.
KADATA_API BOOL SetWindowTextW(HWND window, LPCWSTR text) noexcept;
KADATA_API int GetWindowTextW(HWND window, LPWSTR text, int capacity) noexcept;
KADATA_API int GetWindowTextLengthW(HWND window) noexcept;

// SW_*. Whether it was visible before; IsWindowVisible asks the parents too.
KADATA_API BOOL ShowWindow(HWND window, int command) noexcept;
KADATA_API BOOL ShowWindowAsync(HWND window, int command) noexcept;
KADATA_API BOOL ShowOwnedPopups(HWND window, BOOL show) noexcept;
KADATA_API BOOL IsWindowVisible(HWND window) noexcept;
KADATA_API BOOL EnableWindow(HWND window, BOOL enable) noexcept;  // whether it was disabled before
KADATA_API BOOL IsWindowEnabled(HWND window) noexcept;
KADATA_API BOOL IsIconic(HWND window) noexcept;
KADATA_API BOOL IsZoomed(HWND window) noexcept;
KADATA_API BOOL CloseWindow(HWND window) noexcept;  // minimises it
KADATA_API BOOL OpenIcon(HWND window) noexcept;

// Place, size and order. SetWindowPos sends WM_WINDOWPOSCHANGING, WM_NCCALCSIZE and WM_WINDOWPOSCHANGED. Owned windows lie above
// their owner, topmost ones above all others.
KADATA_API BOOL SetWindowPos(HWND window, HWND after, int x, int y, int width, int height, UINT flags) noexcept;
KADATA_API BOOL MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint) noexcept;
KADATA_API BOOL BringWindowToTop(HWND window) noexcept;

// Several SetWindowPos of windows with one parent. Defer returns the handle to go on with, or null: then all is lost and End is
// not called.
using HDWP = HANDLE;
KADATA_API HDWP BeginDeferWindowPos(int count) noexcept;
KADATA_API HDWP DeferWindowPos(HDWP positions, HWND window, HWND after, int x, int y, int width, int height, UINT flags) noexcept;
KADATA_API BOOL EndDeferWindowPos(HDWP positions) noexcept;

// GetWindowRect in screen coordinates; GetClientRect from 0,0.
KADATA_API BOOL GetWindowRect(HWND window, LPRECT rect) noexcept;
KADATA_API BOOL GetClientRect(HWND window, LPRECT rect) noexcept;
KADATA_API BOOL ClientToScreen(HWND window, LPPOINT point) noexcept;
KADATA_API BOOL ScreenToClient(HWND window, LPPOINT point) noexcept;

// From one client area to another; null is the screen. MAKELONG(dx, dy) of the way; 0 may be that or a failure.
KADATA_API int MapWindowPoints(HWND from, HWND to, LPPOINT points, UINT count) noexcept;

// The visible and enabled window at a point of the screen (a disabled child's parent, not HTTRANSPARENT ones of this thread).
KADATA_API HWND WindowFromPoint(POINT point) noexcept;

// The child (only the direct ones) at a point of the client area; `parent` where there is none, null outside of it.
KADATA_API HWND ChildWindowFromPoint(HWND parent, POINT point) noexcept;
KADATA_API HWND ChildWindowFromPointEx(HWND parent, POINT point, UINT flags) noexcept;
KADATA_API HWND RealChildWindowFromPoint(HWND parent, POINT point) noexcept;

// From a client area to the window rectangle around it.
KADATA_API BOOL AdjustWindowRect(LPRECT rect, DWORD style, BOOL menu) noexcept;
KADATA_API BOOL AdjustWindowRectEx(LPRECT rect, DWORD style, BOOL menu, DWORD extended_style) noexcept;

// Place when restored, minimised and maximised. A top-level window's rcNormalPosition is in workspace coordinates.
struct WINDOWPLACEMENT {
    UINT length;  // sizeof(WINDOWPLACEMENT)
    UINT flags;   // WPF_*
    UINT showCmd;
    POINT ptMinPosition;
    POINT ptMaxPosition;
    RECT rcNormalPosition;
};
using LPWINDOWPLACEMENT = WINDOWPLACEMENT*;
KADATA_API BOOL GetWindowPlacement(HWND window, LPWINDOWPLACEMENT placement) noexcept;
KADATA_API BOOL SetWindowPlacement(HWND window, const WINDOWPLACEMENT* placement) noexcept;

// What a thread's windows hold: focus, capture, ... `thread` 0 is the foreground thread.
struct GUITHREADINFO {
    DWORD cbSize;
    DWORD flags;
    HWND hwndActive;
    HWND hwndFocus;
    HWND hwndCapture;
    HWND hwndMenuOwner;
    HWND hwndMoveSize;
    HWND hwndCaret;
    RECT rcCaret;
};
using LPGUITHREADINFO = GUITHREADINFO*;
using PGUITHREADINFO = GUITHREADINFO*;
KADATA_API BOOL GetGUIThreadInfo(DWORD thread, PGUITHREADINFO info) noexcept;
