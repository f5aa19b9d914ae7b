#pragma once

// What of a window is to be drawn anew, and contexts to draw with.
//
// Each window has an update region. While it is not empty, WM_PAINT comes when the queue has nothing else; BeginPaint validates
// the region, asks for erasing, and gives a context that draws only there. Coordinates are the client area's. Contexts exclude
// what lies above the window; with WS_CLIPCHILDREN also its children. Functions here are to be called in the window's thread,
// except those that only invalidate. They return FALSE (null) with ERROR_INVALID_WINDOW_HANDLE for a window that does not exist.

#include "window_styles.h"

struct PAINTSTRUCT {
    HDC hdc;
    BOOL fErase;  // the background was not erased: WM_ERASEBKGND returned 0
    RECT rcPaint;
    BOOL fRestore;
    BOOL fIncUpdate;
    BYTE rgbReserved[32];
};
using LPPAINTSTRUCT = PAINTSTRUCT*;
using PPAINTSTRUCT = PAINTSTRUCT*;

// Adds to the update region (a null rectangle or region: the whole client area), with `erase` also to what is erased. A null
// window: all windows are drawn anew.
KADATA_API BOOL InvalidateRect(HWND window, const RECT* rect, BOOL erase) noexcept;
KADATA_API BOOL InvalidateRgn(HWND window, HRGN region, BOOL erase) noexcept;
KADATA_API BOOL ValidateRect(HWND window, const RECT* rect) noexcept;
KADATA_API BOOL ValidateRgn(HWND window, HRGN region) noexcept;

// The update region's bounds, all 0 and FALSE when it is empty. `rect` may be null. With `erase` WM_ERASEBKGND is sent as
// BeginPaint does.
KADATA_API BOOL GetUpdateRect(HWND window, LPRECT rect, BOOL erase) noexcept;

// Copies the update region: NULLREGION, SIMPLEREGION or COMPLEXREGION, 0 (ERROR) on failure.
KADATA_API int GetUpdateRgn(HWND window, HRGN region, BOOL erase) noexcept;

// Takes the update region out of what the context draws.
KADATA_API int ExcludeUpdateRgn(HDC context, HWND window) noexcept;

// Sends WM_NCPAINT and WM_ERASEBKGND as needed, then gives the context for the update region. EndPaint ends it.
KADATA_API HDC BeginPaint(HWND window, LPPAINTSTRUCT paint) noexcept;
KADATA_API BOOL EndPaint(HWND window, const PAINTSTRUCT* paint) noexcept;

// Sends WM_PAINT at once where the update region is not empty, children included.
KADATA_API BOOL UpdateWindow(HWND window) noexcept;

// Invalidates or validates, then draws, as the flags say. `rect` counts when `region` is null; both null: the whole client area.
constexpr UINT RDW_INVALIDATE = 0x0001;
constexpr UINT RDW_INTERNALPAINT = 0x0002;  // WM_PAINT comes even when nothing is invalid
constexpr UINT RDW_ERASE = 0x0004;
constexpr UINT RDW_VALIDATE = 0x0008;
constexpr UINT RDW_NOINTERNALPAINT = 0x0010;
constexpr UINT RDW_NOERASE = 0x0020;
constexpr UINT RDW_NOCHILDREN = 0x0040;
constexpr UINT RDW_ALLCHILDREN = 0x0080;
constexpr UINT RDW_UPDATENOW = 0x0100;
constexpr UINT RDW_ERASENOW = 0x0200;
constexpr UINT RDW_FRAME = 0x0400;  // the frame too, where the region meets it
constexpr UINT RDW_NOFRAME = 0x0800;
KADATA_API BOOL RedrawWindow(HWND window, const RECT* rect, HRGN region, UINT flags) noexcept;

// A context for the client area or the whole window; for a null window the screen, on which nothing can be drawn. ReleaseDC ends
// it; it fails for any other context. A context's clipping is what was visible when it was made.
KADATA_API HDC GetDC(HWND window) noexcept;
KADATA_API HDC GetWindowDC(HWND window) noexcept;
KADATA_API int ReleaseDC(HWND window, HDC context) noexcept;

// `clip` is added to or, with DCX_EXCLUDERGN, taken from what may be drawn (DCX_INTERSECTRGN); it is in screen coordinates and
// belongs to the system afterwards. With DCX_INTERSECTUPDATE or DCX_VALIDATE the update region does the same.
constexpr DWORD DCX_WINDOW = 0x00000001;
constexpr DWORD DCX_CACHE = 0x00000002;
constexpr DWORD DCX_NORESETATTRS = 0x00000004;
constexpr DWORD DCX_CLIPCHILDREN = 0x00000008;
constexpr DWORD DCX_CLIPSIBLINGS = 0x00000010;
constexpr DWORD DCX_PARENTCLIP = 0x00000020;
constexpr DWORD DCX_EXCLUDERGN = 0x00000040;
constexpr DWORD DCX_INTERSECTRGN = 0x00000080;
constexpr DWORD DCX_EXCLUDEUPDATE = 0x00000100;
constexpr DWORD DCX_INTERSECTUPDATE = 0x00000200;
constexpr DWORD DCX_LOCKWINDOWUPDATE = 0x00000400;
constexpr DWORD DCX_VALIDATE = 0x00200000;
KADATA_API HDC GetDCEx(HWND window, HRGN clip, DWORD flags) noexcept;

// The window's picture with its children, drawn into `context` at 0,0; with PW_CLIENTONLY only the client area. The window need
// not be on a display.
constexpr UINT PW_CLIENTONLY = 0x00000001;
constexpr UINT PW_RENDERFULLCONTENT = 0x00000002;
KADATA_API BOOL PrintWindow(HWND window, HDC context, UINT flags) noexcept;

// Limits the window to a region (window coordinates), which belongs to the system afterwards; null: no limit.
KADATA_API int SetWindowRgn(HWND window, HRGN region, BOOL redraw) noexcept;
KADATA_API int GetWindowRgn(HWND window, HRGN region) noexcept;  // a copy; ERROR when there is no limit
