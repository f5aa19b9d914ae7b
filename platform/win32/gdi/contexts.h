#pragma once

// Device contexts: what is drawn on, and with what.
//
// A context is of a window (GetDC and the like), or of memory and draws on the bitmap that is selected into it; with no bitmap
// of its own it has one black and white pixel, as on Windows. Coordinates are logical: the mapping mode is MM_TEXT, so that only
// the window and viewport origins move them. Every context draws 32 bits a pixel unless a monochrome bitmap is selected.
//
// A context keeps alive what is selected into it. One thread at a time uses a context; different threads may use different
// contexts at once, as long as these draw on different bitmaps or windows. A null or foreign handle fails with
// ERROR_INVALID_HANDLE where nothing else is said.

#include "gdi_types.h"

// Indices of GetDeviceCaps.
constexpr int DRIVERVERSION = 0;
constexpr int TECHNOLOGY = 2;
constexpr int HORZSIZE = 4;  // millimetres
constexpr int VERTSIZE = 6;
constexpr int HORZRES = 8;
constexpr int VERTRES = 10;
constexpr int BITSPIXEL = 12;
constexpr int PLANES = 14;
constexpr int NUMBRUSHES = 16;
constexpr int NUMPENS = 18;
constexpr int NUMFONTS = 22;
constexpr int NUMCOLORS = 24;
constexpr int CURVECAPS = 28;
constexpr int LINECAPS = 30;
constexpr int POLYGONALCAPS = 32;
constexpr int TEXTCAPS = 34;
constexpr int CLIPCAPS = 36;
constexpr int RASTERCAPS = 38;
constexpr int ASPECTX = 40;
constexpr int ASPECTY = 42;
constexpr int ASPECTXY = 44;
constexpr int SHADEBLENDCAPS = 45;
constexpr int LOGPIXELSX = 88;  // 96, whatever the screen is
constexpr int LOGPIXELSY = 90;
constexpr int SIZEPALETTE = 104;
constexpr int NUMRESERVED = 106;
constexpr int COLORRES = 108;
constexpr int DESKTOPVERTRES = 117;
constexpr int DESKTOPHORZRES = 118;

constexpr int DT_RASDISPLAY = 1;  // TECHNOLOGY

constexpr int RC_BITBLT = 0x0001;  // RASTERCAPS
constexpr int RC_BITMAP64 = 0x0008;
constexpr int RC_DI_BITMAP = 0x0080;
constexpr int RC_DIBTODEV = 0x0200;
constexpr int RC_STRETCHBLT = 0x0800;
constexpr int RC_STRETCHDIB = 0x2000;

constexpr int SB_CONST_ALPHA = 0x01;  // SHADEBLENDCAPS
constexpr int SB_PIXEL_ALPHA = 0x02;
constexpr int SB_PREMULT_ALPHA = 0x04;
constexpr int SB_GRAD_RECT = 0x10;

// Stock objects.
constexpr int WHITE_BRUSH = 0;
constexpr int LTGRAY_BRUSH = 1;
constexpr int GRAY_BRUSH = 2;
constexpr int DKGRAY_BRUSH = 3;
constexpr int BLACK_BRUSH = 4;
constexpr int NULL_BRUSH = 5;
constexpr int HOLLOW_BRUSH = NULL_BRUSH;
constexpr int WHITE_PEN = 6;
constexpr int BLACK_PEN = 7;
constexpr int NULL_PEN = 8;
constexpr int OEM_FIXED_FONT = 10;
constexpr int ANSI_FIXED_FONT = 11;
constexpr int ANSI_VAR_FONT = 12;
constexpr int SYSTEM_FONT = 13;
constexpr int DEVICE_DEFAULT_FONT = 14;
constexpr int SYSTEM_FIXED_FONT = 16;
constexpr int DEFAULT_GUI_FONT = 17;
constexpr int DC_BRUSH = 18;
constexpr int DC_PEN = 19;

// Background mode.
constexpr int TRANSPARENT = 1;
constexpr int OPAQUE = 2;

// Mix of pen or brush (P) and what is there (D), per bit.
constexpr int R2_BLACK = 1;
constexpr int R2_NOTMERGEPEN = 2;   // ~(P | D)
constexpr int R2_MASKNOTPEN = 3;    // ~P & D
constexpr int R2_NOTCOPYPEN = 4;    // ~P
constexpr int R2_MASKPENNOT = 5;    // P & ~D
constexpr int R2_NOT = 6;           // ~D
constexpr int R2_XORPEN = 7;        // P ^ D
constexpr int R2_NOTMASKPEN = 8;    // ~(P & D)
constexpr int R2_MASKPEN = 9;       // P & D
constexpr int R2_NOTXORPEN = 10;    // ~(P ^ D)
constexpr int R2_NOP = 11;          // D
constexpr int R2_MERGENOTPEN = 12;  // ~P | D
constexpr int R2_COPYPEN = 13;      // P
constexpr int R2_MERGEPENNOT = 14;  // P | ~D
constexpr int R2_MERGEPEN = 15;     // P | D
constexpr int R2_WHITE = 16;

// What StretchBlt does with source pixels that share a target pixel.
constexpr int BLACKONWHITE = 1;  // combined by AND
constexpr int WHITEONBLACK = 2;  // combined by OR
constexpr int COLORONCOLOR = 3;  // one is taken
constexpr int HALFTONE = 4;      // averaged

constexpr UINT TA_NOUPDATECP = 0;
constexpr UINT TA_UPDATECP = 1;
constexpr UINT TA_LEFT = 0;
constexpr UINT TA_RIGHT = 2;
constexpr UINT TA_CENTER = 6;
constexpr UINT TA_TOP = 0;
constexpr UINT TA_BOTTOM = 8;
constexpr UINT TA_BASELINE = 24;
constexpr UINT TA_RTLREADING = 256;

constexpr int MM_TEXT = 1;

// A memory context with the stock objects selected: black pen, white brush, SYSTEM_FONT. `like` may be null (the screen); of a
// context that is given nothing but its existence counts. DeleteDC ends it. Null with ERROR_NOT_ENOUGH_MEMORY.
KADATA_API HDC CreateCompatibleDC(HDC like) noexcept;

// Driver "DISPLAY" (without regard to case): the screen's measures and capabilities; drawing on it changes nothing. The device,
// output and mode are ignored. Any other driver is refused: null with ERROR_INVALID_PARAMETER. CreateICW is the same. DeleteDC
// ends it.
KADATA_API HDC CreateDCW(LPCWSTR driver, LPCWSTR device, LPCWSTR output, const void* mode) noexcept;
KADATA_API HDC CreateICW(LPCWSTR driver, LPCWSTR device, LPCWSTR output, const void* mode) noexcept;

// Frees what is selected. FALSE with ERROR_INVALID_HANDLE also for a window's context: ReleaseDC and EndPaint are for those.
KADATA_API BOOL DeleteDC(HDC context) noexcept;

// SaveDC returns the depth, from 1; 0 on failure. RestoreDC returns to a positive depth, or by -1, -2 ... relative to now, and
// forgets what was saved since; FALSE, nothing changed, for a depth that there is not.
KADATA_API int SaveDC(HDC context) noexcept;
KADATA_API BOOL RestoreDC(HDC context, int depth) noexcept;

// Selects a bitmap, brush, pen or font and returns the handle of the one before; null with ERROR_INVALID_HANDLE when either
// handle is none, ERROR_INVALID_PARAMETER for a bitmap and no memory context, or a bitmap that is selected into another one. For
// a region it is SelectClipRgn and returns SIMPLEREGION, COMPLEXREGION, NULLREGION or HGDI_ERROR; the region is copied.
KADATA_API HGDIOBJ SelectObject(HDC context, HGDIOBJ object) noexcept;

// What is selected, by OBJ_BITMAP, OBJ_BRUSH, OBJ_FONT or OBJ_PEN; null with ERROR_INVALID_PARAMETER for any other kind. A
// context without a bitmap answers with the one of a single pixel.
KADATA_API HGDIOBJ GetCurrentObject(HDC context, UINT kind) noexcept;

// OBJ_*; 0 with ERROR_INVALID_HANDLE for what is no drawing object.
KADATA_API DWORD GetObjectType(HGDIOBJ object) noexcept;

// Describes a bitmap (BITMAP, or DIBSECTION for one of CreateDIBSection), brush (LOGBRUSH), pen (LOGPEN) or font (LOGFONTW): the
// bytes written, with a null target the bytes needed. 0 when the capacity is less (ERROR_INVALID_PARAMETER; of a LOGFONTW what
// has room is written) and for any other object (ERROR_INVALID_HANDLE).
KADATA_API int GetObjectW(HGDIOBJ object, int capacity, LPVOID target) noexcept;

// The handle ends at once; the object where it is selected lives on until it is not. TRUE for stock objects, which stay. FALSE
// with ERROR_INVALID_HANDLE for what is no drawing object and for a window's context; a memory context is deleted as by
// DeleteDC. Deliberate, as documented: FALSE for a bitmap that is selected into a context; it stays.
KADATA_API BOOL DeleteObject(HGDIOBJ object) noexcept;

// Always the same handle for the same number; null for a number that is not listed above.
KADATA_API HGDIOBJ GetStockObject(int index) noexcept;

// 0 for indices that are not listed above. A null context is ERROR_INVALID_HANDLE and 0.
KADATA_API int GetDeviceCaps(HDC context, int index) noexcept;

// Colours of text, of what lies behind text and between dashes and hatches, and of the two colours of monochrome copies and
// patterns. The setters return the value before, CLR_INVALID or 0 on failure; only what lies in 0x00FFFFFF of a colour counts.
KADATA_API COLORREF SetTextColor(HDC context, COLORREF color) noexcept;
KADATA_API COLORREF GetTextColor(HDC context) noexcept;
KADATA_API COLORREF SetBkColor(HDC context, COLORREF color) noexcept;
KADATA_API COLORREF GetBkColor(HDC context) noexcept;
KADATA_API int SetBkMode(HDC context, int mode) noexcept;
KADATA_API int GetBkMode(HDC context) noexcept;
// Of DC_BRUSH and DC_PEN while they are selected.
KADATA_API COLORREF SetDCBrushColor(HDC context, COLORREF color) noexcept;
KADATA_API COLORREF GetDCBrushColor(HDC context) noexcept;
KADATA_API COLORREF SetDCPenColor(HDC context, COLORREF color) noexcept;
KADATA_API COLORREF GetDCPenColor(HDC context) noexcept;

// The value before; 0, nothing changed, on failure (ERROR_INVALID_PARAMETER for values that are not listed above).
KADATA_API int SetROP2(HDC context, int mix) noexcept;
KADATA_API int GetROP2(HDC context) noexcept;
KADATA_API int SetStretchBltMode(HDC context, int mode) noexcept;
KADATA_API int GetStretchBltMode(HDC context) noexcept;
// TA_*; GDI_ERROR on failure.
KADATA_API UINT SetTextAlign(HDC context, UINT align) noexcept;
KADATA_API UINT GetTextAlign(HDC context) noexcept;
// MM_TEXT is the only mode: setting it returns MM_TEXT, any other 0 with ERROR_INVALID_PARAMETER.
KADATA_API int SetMapMode(HDC context, int mode) noexcept;
KADATA_API int GetMapMode(HDC context) noexcept;

// Where a pattern begins, in device coordinates. UnrealizeObject does nothing for a brush, and says TRUE.
KADATA_API BOOL SetBrushOrgEx(HDC context, int x, int y, LPPOINT before) noexcept;
KADATA_API BOOL GetBrushOrgEx(HDC context, LPPOINT origin) noexcept;
KADATA_API BOOL UnrealizeObject(HGDIOBJ object) noexcept;

// Device = logical - window origin + viewport origin. `before` may be null.
KADATA_API BOOL SetWindowOrgEx(HDC context, int x, int y, LPPOINT before) noexcept;
KADATA_API BOOL GetWindowOrgEx(HDC context, LPPOINT origin) noexcept;
KADATA_API BOOL OffsetWindowOrgEx(HDC context, int dx, int dy, LPPOINT before) noexcept;
KADATA_API BOOL SetViewportOrgEx(HDC context, int x, int y, LPPOINT before) noexcept;
KADATA_API BOOL GetViewportOrgEx(HDC context, LPPOINT origin) noexcept;
KADATA_API BOOL OffsetViewportOrgEx(HDC context, int dx, int dy, LPPOINT before) noexcept;
KADATA_API BOOL DPtoLP(HDC context, LPPOINT points, int count) noexcept;
KADATA_API BOOL LPtoDP(HDC context, LPPOINT points, int count) noexcept;

// Null for a context that is not of a window.
KADATA_API HWND WindowFromDC(HDC context) noexcept;
