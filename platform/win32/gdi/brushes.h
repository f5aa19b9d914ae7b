#pragma once

// Brushes, which fill, and pens, which draw lines. Who makes one deletes it with DeleteObject; a context keeps alive what is
// selected into it. Null with ERROR_NOT_ENOUGH_MEMORY without memory, ERROR_INVALID_PARAMETER for styles that are not listed
// here.

#include "gdi_types.h"

constexpr UINT BS_SOLID = 0;
constexpr UINT BS_NULL = 1;
constexpr UINT BS_HOLLOW = BS_NULL;
constexpr UINT BS_HATCHED = 2;
constexpr UINT BS_PATTERN = 3;

constexpr int HS_HORIZONTAL = 0;
constexpr int HS_VERTICAL = 1;
constexpr int HS_FDIAGONAL = 2;  // downwards to the right
constexpr int HS_BDIAGONAL = 3;  // upwards to the right
constexpr int HS_CROSS = 4;
constexpr int HS_DIAGCROSS = 5;

constexpr int PS_SOLID = 0;
constexpr int PS_DASH = 1;
constexpr int PS_DOT = 2;
constexpr int PS_DASHDOT = 3;
constexpr int PS_DASHDOTDOT = 4;
constexpr int PS_NULL = 5;
constexpr int PS_INSIDEFRAME = 6;  // as PS_SOLID, but shapes draw it wholly inside their bounds

struct LOGBRUSH {
    UINT lbStyle;
    COLORREF lbColor;
    ULONG_PTR lbHatch;  // HS_* or an HBITMAP
};

struct LOGPEN {
    UINT lopnStyle;
    POINT lopnWidth;  // y is not used
    COLORREF lopnColor;
};

KADATA_API HBRUSH CreateSolidBrush(COLORREF color) noexcept;
// Lines of `color`, one in eight pixels; between them the background colour when the background mode is OPAQUE.
KADATA_API HBRUSH CreateHatchBrush(int hatch, COLORREF color) noexcept;
// Repeats the bitmap, of any size, from the context's brush origin. The pixels are copied: the bitmap may be changed and deleted.
// Of a monochrome bitmap 0 is the text colour, 1 the background colour. ERROR_INVALID_HANDLE for what is no bitmap.
KADATA_API HBRUSH CreatePatternBrush(HBITMAP bitmap) noexcept;
KADATA_API HBRUSH CreateBrushIndirect(const LOGBRUSH* brush) noexcept;

// A width of 0 is 1 pixel, one below 0 counts without its sign; a pen wider than that has no dashes. Dashes show the background
// colour between them when the background mode is OPAQUE.
KADATA_API HPEN CreatePen(int style, int width, COLORREF color) noexcept;
KADATA_API HPEN CreatePenIndirect(const LOGPEN* pen) noexcept;
