#pragma once

// Filling and lines, without antialiasing. Coordinates are logical; right and bottom lie just outside what is drawn, and the last
// point of a line is not drawn. Shapes are filled with the selected brush and outlined with the selected pen, combined with what
// is there by SetROP2. A null or foreign handle fails with ERROR_INVALID_HANDLE, other wrong arguments with
// ERROR_INVALID_PARAMETER. A context that has nothing to draw on succeeds.

#include "copies.h"

// These three mix nothing: ROP2 does not count. FillRect and InvertRect draw what PatBlt would for an
// inverted rectangle, FrameRect refuses an empty or inverted one. Instead of a brush FillRect and FrameRect take a
// system colour's number plus 1, as a window class does, too. FrameRect draws one pixel wide inside the edge.
KADATA_API int FillRect(HDC context, const RECT* rect, HBRUSH brush) noexcept;
KADATA_API int FrameRect(HDC context, const RECT* rect, HBRUSH brush) noexcept;
KADATA_API BOOL InvertRect(HDC context, const RECT* rect) noexcept;

// Every operation that needs no source, of the selected brush: PATCOPY, PATINVERT, DSTINVERT, BLACKNESS, WHITENESS and the
// others. A negative width or height goes to the left or upwards, as for BitBlt.
KADATA_API BOOL PatBlt(HDC context, int x, int y, int width, int height, DWORD operation) noexcept;

KADATA_API BOOL MoveToEx(HDC context, int x, int y, LPPOINT before) noexcept;
KADATA_API BOOL GetCurrentPositionEx(HDC context, LPPOINT position) noexcept;
KADATA_API BOOL LineTo(HDC context, int x, int y) noexcept;
// At least two points; the current position stays.
KADATA_API BOOL Polyline(HDC context, const POINT* points, int count) noexcept;
KADATA_API BOOL PolylineTo(HDC context, const POINT* points, DWORD count) noexcept;

// Corners in any order.
KADATA_API BOOL Rectangle(HDC context, int left, int top, int right, int bottom) noexcept;
// `width` and `height` are of the corners' ellipse.
KADATA_API BOOL RoundRect(HDC context, int left, int top, int right, int bottom, int width, int height) noexcept;
KADATA_API BOOL Ellipse(HDC context, int left, int top, int right, int bottom) noexcept;
// At least two points; closed, and filled as SetPolyFillMode says (ALTERNATE at first).
KADATA_API BOOL Polygon(HDC context, const POINT* points, int count) noexcept;
// The mode before; 0 on failure.
KADATA_API int SetPolyFillMode(HDC context, int mode) noexcept;
KADATA_API int GetPolyFillMode(HDC context) noexcept;
