#pragma once

// The system interface's basic types, with the widths that they have on 64-bit Windows: LONG and DWORD are 32 bits
// wide here too, although a native long is 64. Text is UTF-16: WCHAR is char16_t, and literals are written _T("...").

#include <cstddef>
#include <cstdint>

#include "../../kadata_export.h"

using BYTE = std::uint8_t;
using CHAR = char;
using UCHAR = unsigned char;
using WCHAR = char16_t;
using TCHAR = WCHAR;
using SHORT = std::int16_t;
using USHORT = std::uint16_t;
using WORD = std::uint16_t;
using INT = int;
using UINT = unsigned int;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using DWORD = std::uint32_t;
using BOOL = int;
using BOOLEAN = BYTE;
using LONGLONG = long long;
using ULONGLONG = unsigned long long;
using DWORDLONG = ULONGLONG;
using DWORD64 = ULONGLONG;
using INT_PTR = LONGLONG;
using UINT_PTR = ULONGLONG;
using LONG_PTR = LONGLONG;
using ULONG_PTR = ULONGLONG;
using DWORD_PTR = ULONG_PTR;
using WPARAM = UINT_PTR;
using LPARAM = LONG_PTR;
using LRESULT = LONG_PTR;
using FLOAT = float;
using SIZE_T = ULONG_PTR;
using ATOM = WORD;
using COLORREF = DWORD;
using HRESULT = LONG;
using LCID = DWORD;
using LANGID = WORD;
using LCTYPE = DWORD;

using PVOID = void*;
using LPVOID = void*;
using LPCVOID = const void*;
using LPBYTE = BYTE*;
using LPWORD = WORD*;
using LPDWORD = DWORD*;
using PDWORD = DWORD*;
using LPLONG = LONG*;
using PLONG = LONG*;
using LPBOOL = BOOL*;
using LPSTR = CHAR*;
using LPCSTR = const CHAR*;
using LPCCH = const CHAR*;
using LPWSTR = WCHAR*;
using LPCWSTR = const WCHAR*;
using LPCWCH = const WCHAR*;
using PWSTR = WCHAR*;
using PCWSTR = const WCHAR*;
using LPTSTR = TCHAR*;
using LPCTSTR = const TCHAR*;

using HANDLE = void*;
using PHANDLE = HANDLE*;
using HLOCAL = HANDLE;
using HGLOBAL = HANDLE;

struct HINSTANCE__;
struct HRSRC__;
using HINSTANCE = HINSTANCE__*;
using HMODULE = HINSTANCE;
using HRSRC = HRSRC__*;

// Windows, what they show, and what is drawn with. HGDIOBJ stands for any of the drawing objects.
struct HWND__;
struct HMENU__;
struct HICON__;
struct HACCEL__;
struct HMONITOR__;
struct HDC__;
struct HBITMAP__;
struct HBRUSH__;
struct HPEN__;
struct HFONT__;
struct HRGN__;
struct HPALETTE__;
using HWND = HWND__*;
using HMENU = HMENU__*;
using HICON = HICON__*;
using HCURSOR = HICON;
using HACCEL = HACCEL__*;
using HMONITOR = HMONITOR__*;
using HDC = HDC__*;
using HBITMAP = HBITMAP__*;
using HBRUSH = HBRUSH__*;
using HPEN = HPEN__*;
using HFONT = HFONT__*;
using HRGN = HRGN__*;
using HPALETTE = HPALETTE__*;
using HGDIOBJ = void*;

union LARGE_INTEGER {
    struct {
        DWORD LowPart;
        LONG HighPart;
    } u;
    LONGLONG QuadPart;
};
using PLARGE_INTEGER = LARGE_INTEGER*;

union ULARGE_INTEGER {
    struct {
        DWORD LowPart;
        DWORD HighPart;
    } u;
    ULONGLONG QuadPart;
};
using PULARGE_INTEGER = ULARGE_INTEGER*;

// A count of 100-nanosecond steps since 1601-01-01 00:00 UTC.
struct FILETIME {
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
};
using LPFILETIME = FILETIME*;
using PFILETIME = FILETIME*;

struct SYSTEMTIME {
    WORD wYear;
    WORD wMonth;      // 1 to 12
    WORD wDayOfWeek;  // 0 is Sunday
    WORD wDay;        // 1 to 31
    WORD wHour;
    WORD wMinute;
    WORD wSecond;
    WORD wMilliseconds;
};
using LPSYSTEMTIME = SYSTEMTIME*;

// Edges; right and bottom lie just outside.
struct RECT {
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};
using LPRECT = RECT*;
using LPCRECT = const RECT*;

struct POINT {
    LONG x;
    LONG y;
};
using LPPOINT = POINT*;

struct SIZE {
    LONG cx;
    LONG cy;
};
using LPSIZE = SIZE*;

struct SECURITY_ATTRIBUTES {
    DWORD nLength;
    LPVOID lpSecurityDescriptor;
    BOOL bInheritHandle;
};
using LPSECURITY_ATTRIBUTES = SECURITY_ATTRIBUTES*;

constexpr BOOL TRUE = 1;
constexpr BOOL FALSE = 0;
constexpr DWORD MAX_PATH = 260;
constexpr DWORD INFINITE = 0xFFFFFFFF;
constexpr DWORD MAXDWORD = 0xFFFFFFFF;

inline const HANDLE INVALID_HANDLE_VALUE = reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(-1));

#define WINAPI
#define CALLBACK
#define APIENTRY
#define CONST const

constexpr WORD LOWORD(ULONG_PTR value) {
    return static_cast<WORD>(value & 0xFFFF);
}
constexpr WORD HIWORD(ULONG_PTR value) {
    return static_cast<WORD>((value >> 16) & 0xFFFF);
}
constexpr BYTE LOBYTE(ULONG_PTR value) {
    return static_cast<BYTE>(value & 0xFF);
}
constexpr BYTE HIBYTE(ULONG_PTR value) {
    return static_cast<BYTE>((value >> 8) & 0xFF);
}
constexpr WORD MAKEWORD(ULONG_PTR low, ULONG_PTR high) {
    return static_cast<WORD>(LOBYTE(low) | (LOBYTE(high) << 8));
}
constexpr LONG MAKELONG(ULONG_PTR low, ULONG_PTR high) {
    return static_cast<LONG>(static_cast<DWORD>(LOWORD(low)) | (static_cast<DWORD>(LOWORD(high)) << 16));
}

// A resource is named by text or, as a pointer below 65,536, by number.
inline LPWSTR MAKEINTRESOURCEW(ULONG_PTR id) {
    return reinterpret_cast<LPWSTR>(id & 0xFFFF);
}
inline bool IS_INTRESOURCE(LPCWSTR name) {
    return (reinterpret_cast<ULONG_PTR>(name) >> 16) == 0;
}
