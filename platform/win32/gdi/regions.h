#pragma once

// Regions: sets of pixels; and the clipping of contexts by them.
//
// Regions are in device coordinates, whatever context they are used with, except where FillRgn and its like take them in logical
// ones. Who makes a region deletes it with DeleteObject; selecting one into a context copies it. Functions that fail return NULL,
// FALSE or ERROR (0) and set ERROR_INVALID_HANDLE for a handle that is no region or context, ERROR_INVALID_PARAMETER for other
// arguments. Coordinates beyond +-2^27 are cut to that.

#include "gdi_types.h"

// How much is in a region.
constexpr int ERROR = 0;  // the function failed
constexpr int NULLREGION = 1;
constexpr int SIMPLEREGION = 2;  // one rectangle
constexpr int COMPLEXREGION = 3;
constexpr int RGN_ERROR = ERROR;

constexpr int RGN_AND = 1;
constexpr int RGN_OR = 2;
constexpr int RGN_XOR = 3;
constexpr int RGN_DIFF = 4;  // the first without the second
constexpr int RGN_COPY = 5;  // the first

// How a polygon that crosses itself is filled.
constexpr int ALTERNATE = 1;
constexpr int WINDING = 2;

constexpr DWORD RDH_RECTANGLES = 1;

struct RGNDATAHEADER {
    DWORD dwSize;  // 32
    DWORD iType;   // RDH_RECTANGLES
    DWORD nCount;
    DWORD nRgnSize;  // bytes of the rectangles
    RECT rcBound;
};

struct RGNDATA {
    RGNDATAHEADER rdh;
    char Buffer[1];  // RECT by RECT
};
using LPRGNDATA = RGNDATA*;

struct XFORM {
    FLOAT eM11;
    FLOAT eM12;
    FLOAT eM21;
    FLOAT eM22;
    FLOAT eDx;
    FLOAT eDy;
};

// Right and bottom lie just outside; corners in any order.
KADATA_API HRGN CreateRectRgn(int left, int top, int right, int bottom) noexcept;
KADATA_API HRGN CreateRectRgnIndirect(const RECT* rect) noexcept;
KADATA_API BOOL SetRectRgn(HRGN region, int left, int top, int right, int bottom) noexcept;
// These curves end one column and row before right and bottom, as on Windows. `width` and `height` are of the corners' ellipse.
KADATA_API HRGN CreateRoundRectRgn(int left, int top, int right, int bottom, int width, int height) noexcept;
KADATA_API HRGN CreateEllipticRgn(int left, int top, int right, int bottom) noexcept;
KADATA_API HRGN CreateEllipticRgnIndirect(const RECT* rect) noexcept;
// At least two points; the last is joined to the first. `mode` is ALTERNATE or WINDING.
KADATA_API HRGN CreatePolygonRgn(const POINT* points, int count, int mode) noexcept;

// The rectangles of a region. GetRegionData returns the bytes needed when `data` is null or, with nothing written, `capacity` is
// less (0 then); otherwise the bytes written. ExtCreateRegion takes them back (`size` bytes in all); a transform is refused.
KADATA_API DWORD GetRegionData(HRGN region, DWORD capacity, LPRGNDATA data) noexcept;
KADATA_API HRGN ExtCreateRegion(const XFORM* transform, DWORD size, const RGNDATA* data) noexcept;

// `target` exists already; it may be one of the sources. `second` is not looked at for RGN_COPY.
KADATA_API int CombineRgn(HRGN target, HRGN first, HRGN second, int mode) noexcept;
KADATA_API int OffsetRgn(HRGN region, int dx, int dy) noexcept;
KADATA_API BOOL EqualRgn(HRGN first, HRGN second) noexcept;
// All 0 for an empty region.
KADATA_API int GetRgnBox(HRGN region, LPRECT box) noexcept;
KADATA_API BOOL PtInRegion(HRGN region, int x, int y) noexcept;
// Whether any pixel of the rectangle is in the region.
KADATA_API BOOL RectInRegion(HRGN region, const RECT* rect) noexcept;

// Drawing; the region is in logical coordinates. FrameRgn draws inside the region's edge.
KADATA_API BOOL FillRgn(HDC context, HRGN region, HBRUSH brush) noexcept;
KADATA_API BOOL PaintRgn(HDC context, HRGN region) noexcept;
KADATA_API BOOL FrameRgn(HDC context, HRGN region, HBRUSH brush, int width, int height) noexcept;
KADATA_API BOOL InvertRgn(HDC context, HRGN region) noexcept;

// The clip of a context. A null region selects everything (SelectClipRgn, and ExtSelectClipRgn with RGN_COPY; with other modes it
// fails). Rectangles of IntersectClipRect, ExcludeClipRect and the questions are logical, as are OffsetClipRgn's distances.
KADATA_API int SelectClipRgn(HDC context, HRGN region) noexcept;
KADATA_API int ExtSelectClipRgn(HDC context, HRGN region, int mode) noexcept;
KADATA_API int IntersectClipRect(HDC context, int left, int top, int right, int bottom) noexcept;
KADATA_API int ExcludeClipRect(HDC context, int left, int top, int right, int bottom) noexcept;
KADATA_API int OffsetClipRgn(HDC context, int dx, int dy) noexcept;
// The smallest rectangle around what can be drawn on, in logical coordinates.
KADATA_API int GetClipBox(HDC context, LPRECT box) noexcept;
// 1 and a copy of what was selected into `region`, 0 when everything is, -1 on failure.
KADATA_API int GetClipRgn(HDC context, HRGN region) noexcept;
KADATA_API BOOL PtVisible(HDC context, int x, int y) noexcept;
KADATA_API BOOL RectVisible(HDC context, const RECT* rect) noexcept;
