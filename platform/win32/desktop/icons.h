#pragma once

// Icons and cursors: made, loaded and drawn. A cursor is an icon with a hot spot, and handles of either are taken for both.
//
// What LoadIconW, LoadCursorW, or LoadImageW with LR_SHARED gives is shared: the same handle at each call, and nobody's to
// destroy. Everything else is the caller's, for DestroyIcon or DestroyCursor. Any thread may use an icon. A handle that is none
// fails with ERROR_INVALID_CURSOR_HANDLE.

#include "../gdi/bitmaps.h"

// The system's own icons, drawn at any size. With a null module.
inline const LPWSTR IDI_APPLICATION = reinterpret_cast<LPWSTR>(ULONG_PTR{32512});
inline const LPWSTR IDI_HAND = reinterpret_cast<LPWSTR>(ULONG_PTR{32513});
inline const LPWSTR IDI_QUESTION = reinterpret_cast<LPWSTR>(ULONG_PTR{32514});
inline const LPWSTR IDI_EXCLAMATION = reinterpret_cast<LPWSTR>(ULONG_PTR{32515});
inline const LPWSTR IDI_ASTERISK = reinterpret_cast<LPWSTR>(ULONG_PTR{32516});
inline const LPWSTR IDI_ERROR = IDI_HAND;
inline const LPWSTR IDI_WARNING = IDI_EXCLAMATION;
inline const LPWSTR IDI_INFORMATION = IDI_ASTERISK;
constexpr WORD OIC_SAMPLE = 32512;
constexpr WORD OIC_HAND = 32513;
constexpr WORD OIC_QUES = 32514;
constexpr WORD OIC_BANG = 32515;
constexpr WORD OIC_NOTE = 32516;

// The system's own cursors. With a null module.
inline const LPWSTR IDC_ARROW = reinterpret_cast<LPWSTR>(ULONG_PTR{32512});
inline const LPWSTR IDC_IBEAM = reinterpret_cast<LPWSTR>(ULONG_PTR{32513});
inline const LPWSTR IDC_WAIT = reinterpret_cast<LPWSTR>(ULONG_PTR{32514});
inline const LPWSTR IDC_CROSS = reinterpret_cast<LPWSTR>(ULONG_PTR{32515});
inline const LPWSTR IDC_UPARROW = reinterpret_cast<LPWSTR>(ULONG_PTR{32516});
inline const LPWSTR IDC_SIZENWSE = reinterpret_cast<LPWSTR>(ULONG_PTR{32642});
inline const LPWSTR IDC_SIZENESW = reinterpret_cast<LPWSTR>(ULONG_PTR{32643});
inline const LPWSTR IDC_SIZEWE = reinterpret_cast<LPWSTR>(ULONG_PTR{32644});
inline const LPWSTR IDC_SIZENS = reinterpret_cast<LPWSTR>(ULONG_PTR{32645});
inline const LPWSTR IDC_SIZEALL = reinterpret_cast<LPWSTR>(ULONG_PTR{32646});
inline const LPWSTR IDC_NO = reinterpret_cast<LPWSTR>(ULONG_PTR{32648});
inline const LPWSTR IDC_HAND = reinterpret_cast<LPWSTR>(ULONG_PTR{32649});
inline const LPWSTR IDC_APPSTARTING = reinterpret_cast<LPWSTR>(ULONG_PTR{32650});

struct ICONINFO {
    BOOL fIcon;  // FALSE: a cursor
    DWORD xHotspot;
    DWORD yHotspot;
    HBITMAP hbmMask;   // one bit: 1 shows what is behind. Without a colour bitmap of double height: the mask, and below it the
                       // picture, which inverts what is behind where both are 1
    HBITMAP hbmColor;  // or null
};
using PICONINFO = ICONINFO*;

// An icon or cursor of the module's resources, of the system's size (SM_CXICON, SM_CXCURSOR) out of the best fitting picture.
// Null with the last error as FindResourceW sets it, ERROR_RESOURCE_NAME_NOT_FOUND for an unknown one of the system, or
// ERROR_INVALID_DATA for one that is damaged.
KADATA_API HICON LoadIconW(HINSTANCE module, LPCWSTR name) noexcept;
KADATA_API HCURSOR LoadCursorW(HINSTANCE module, LPCWSTR name) noexcept;

// A bitmap, an icon or a cursor of the given size; 0 is the picture's own size, or with LR_DEFAULTSIZE the system's. A bitmap is
// as LoadBitmapW has it; LR_CREATEDIBSECTION: 32 bits a pixel, and the pixels in memory. LR_SHARED is for icons and cursors. The
// flags about colours are taken and change nothing; LR_LOADFROMFILE is refused with ERROR_INVALID_PARAMETER.
KADATA_API HANDLE LoadImageW(HINSTANCE module, LPCWSTR name, UINT kind, int width, int height, UINT flags) noexcept;

// The number of the picture that fits best, in a directory as RT_GROUP_ICON and RT_GROUP_CURSOR have it: nearest in size, then of
// most colours. A size of 0 is the system's. 0 for a directory that has none, or of the other kind.
KADATA_API int LookupIconIdFromDirectoryEx(BYTE* directory, BOOL icon, int width, int height, UINT flags) noexcept;
KADATA_API int LookupIconIdFromDirectory(BYTE* directory, BOOL icon) noexcept;

// From the bytes of an RT_ICON or RT_CURSOR: a DIB with its mask, or a PNG file of at most 1024 pixels a side. `version` is
// 0x00030000 or 0x00020000. A size of 0 is the picture's own, or with LR_DEFAULTSIZE the system's. Null with
// ERROR_INVALID_PARAMETER for a wrong version, ERROR_INVALID_DATA for a picture that is damaged.
KADATA_API HICON CreateIconFromResourceEx(BYTE* bits, DWORD size, BOOL icon, DWORD version, int width, int height,
                                          UINT flags) noexcept;

// From bitmaps, whose pixels are copied. A colour bitmap of 32 bits in which any alpha is not 0 is drawn by its alpha. Null with
// ERROR_INVALID_PARAMETER for a missing mask, or bitmaps that differ in size.
KADATA_API HICON CreateIconIndirect(PICONINFO info) noexcept;

// The parts of an icon; its bitmaps are new and the caller's to delete.
KADATA_API BOOL GetIconInfo(HICON icon, PICONINFO info) noexcept;

// A copy that is the caller's.
KADATA_API HICON CopyIcon(HICON icon) noexcept;

// TRUE for a shared icon, which stays.
KADATA_API BOOL DestroyIcon(HICON icon) noexcept;
KADATA_API BOOL DestroyCursor(HCURSOR cursor) noexcept;

constexpr UINT DI_MASK = 0x0001;
constexpr UINT DI_IMAGE = 0x0002;
constexpr UINT DI_NORMAL = 0x0003;
constexpr UINT DI_COMPAT = 0x0004;
constexpr UINT DI_DEFAULTSIZE = 0x0008;
constexpr UINT DI_NOMIRROR = 0x0010;

// Draws the icon with its upper left corner at a point, scaled when width or height differ from its own; 0 is its own size, or
// with DI_DEFAULTSIZE the system's. DI_MASK alone copies the mask, DI_IMAGE alone the picture. With a brush it is put together
// over that, without flicker. The step of an animated cursor does not count. FALSE with ERROR_INVALID_HANDLE for what is no
// device context.
KADATA_API BOOL DrawIconEx(HDC context, int x, int y, HICON icon, int width, int height, UINT step, HBRUSH background,
                           UINT flags) noexcept;

// DrawIconEx at the system's size.
KADATA_API BOOL DrawIcon(HDC context, int x, int y, HICON icon) noexcept;

// The pointer's picture; there is one for all threads. Null hides it. The one before.
KADATA_API HCURSOR SetCursor(HCURSOR cursor) noexcept;
KADATA_API HCURSOR GetCursor() noexcept;

// Counts up or down, from 0; the pointer shows while that is not negative. The new count.
KADATA_API int ShowCursor(BOOL show) noexcept;
