#pragma once

// Window classes: what the windows of a kind have in common.
//
// A class is registered by name for this process and `hInstance`; names are compared without regard to case. It stays until
// UnregisterClassW or the process's end. Classes with CS_GLOBALCLASS, and the system's own ("Button", "Static", "#32770"), are
// found whatever instance is asked for; a class of the asked instance comes first. Any thread may call these functions.

#include "window_messages.h"
#include "window_styles.h"

// Called with every message of a window, in the thread that made it. It must not throw: the exception ends the program.
using WNDPROC = LRESULT(CALLBACK*)(HWND window, UINT message, WPARAM wparam, LPARAM lparam);

struct WNDCLASSEXW {
    UINT cbSize;  // sizeof(WNDCLASSEXW)
    UINT style;   // CS_*
    WNDPROC lpfnWndProc;
    int cbClsExtra;  // bytes that the class has for its owner, all 0 at first
    int cbWndExtra;  // bytes that each of its windows has
    HINSTANCE hInstance;
    HICON hIcon;
    HCURSOR hCursor;
    HBRUSH hbrBackground;  // or a COLOR_* number + 1; null: the window erases its background itself. The class owns the brush
    LPCWSTR lpszMenuName;
    LPCWSTR lpszClassName;  // at most 255 characters
    HICON hIconSm;
};
using WNDCLASSEX = WNDCLASSEXW;
using LPWNDCLASSEXW = WNDCLASSEXW*;

struct WNDCLASSW {
    UINT style;
    WNDPROC lpfnWndProc;
    int cbClsExtra;
    int cbWndExtra;
    HINSTANCE hInstance;
    HICON hIcon;
    HCURSOR hCursor;
    HBRUSH hbrBackground;
    LPCWSTR lpszMenuName;
    LPCWSTR lpszClassName;
};
using WNDCLASS = WNDCLASSW;
using LPWNDCLASSW = WNDCLASSW*;

// The class's atom, which may be given in place of its name (MAKEINTATOM). 0 with ERROR_CLASS_ALREADY_EXISTS,
// ERROR_INVALID_PARAMETER (a wrong cbSize, negative extra bytes, no procedure, an unknown style, an empty or too long name),
// ERROR_NOT_ENOUGH_MEMORY.
KADATA_API ATOM RegisterClassExW(const WNDCLASSEXW* description) noexcept;
KADATA_API ATOM RegisterClassW(const WNDCLASSW* description) noexcept;

inline LPWSTR MAKEINTATOM(ATOM atom) {
    return reinterpret_cast<LPWSTR>(static_cast<ULONG_PTR>(atom));
}

// FALSE with ERROR_CLASS_DOES_NOT_EXIST, or ERROR_CLASS_HAS_WINDOWS while there is a window of it. Its background brush is
// deleted.
KADATA_API BOOL UnregisterClassW(LPCWSTR name, HINSTANCE instance) noexcept;

// What the class was registered with: the atom, or 0 with ERROR_CLASS_DOES_NOT_EXIST. lpszMenuName is null here, lpszClassName
// `name`.
KADATA_API BOOL GetClassInfoExW(HINSTANCE instance, LPCWSTR name, LPWNDCLASSEXW info) noexcept;
KADATA_API BOOL GetClassInfoW(HINSTANCE instance, LPCWSTR name, LPWNDCLASSW info) noexcept;

// Copies the name, cut to `capacity` characters with the terminator; the characters without it. 0 with
// ERROR_INVALID_WINDOW_HANDLE or, for a capacity below 1, ERROR_INSUFFICIENT_BUFFER.
KADATA_API int GetClassNameW(HWND window, LPWSTR name, int capacity) noexcept;

// One of GCL_*, GCLP_*, or 8 (4) bytes at an offset into the class's extra bytes. Set returns the value before. 0 with
// ERROR_INVALID_WINDOW_HANDLE or ERROR_INVALID_INDEX; clear the last error to tell that from a value of 0. A new procedure is
// that of the windows made later.
KADATA_API ULONG_PTR GetClassLongPtrW(HWND window, int index) noexcept;
KADATA_API ULONG_PTR SetClassLongPtrW(HWND window, int index, LONG_PTR value) noexcept;
KADATA_API DWORD GetClassLongW(HWND window, int index) noexcept;
KADATA_API DWORD SetClassLongW(HWND window, int index, LONG value) noexcept;
KADATA_API WORD GetClassWord(HWND window, int index) noexcept;
