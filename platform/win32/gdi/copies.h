#pragma once

// Copies of pixels between contexts, and blends. Coordinates are logical, each in its own context. A width or height below 0 goes
// from the corner, which is the first pixel, to the left or upwards. Source and target may be the same and may overlap. Only
// target pixels in the clip change; source pixels that lie outside the source's bitmap or window leave the target as it is. A
// null or foreign handle fails with ERROR_INVALID_HANDLE, other wrong arguments with ERROR_INVALID_PARAMETER. Without a target
// bitmap the functions succeed and change nothing.
//
// Between depths: a monochrome source's 0 becomes the target's text colour and 1 its background colour; on a monochrome target
// source pixels in the source context's background colour become 1, all others 0.

#include "gdi_types.h"

// Raster operations: how pattern (P), source (S) and target (D) make the new pixel, per bit. The byte in bits 16 to 23 is the
// truth table: its bit 4 P + 2 S + D. Any of the 256 is understood; these have names.
constexpr DWORD BLACKNESS = 0x00000042;
constexpr DWORD NOTSRCERASE = 0x001100A6;  // ~(S | D)
constexpr DWORD NOTSRCCOPY = 0x00330008;   // ~S
constexpr DWORD SRCERASE = 0x00440328;     // S & ~D
constexpr DWORD DSTINVERT = 0x00550009;    // ~D
constexpr DWORD PATINVERT = 0x005A0049;    // P ^ D
constexpr DWORD SRCINVERT = 0x00660046;    // S ^ D
constexpr DWORD SRCAND = 0x008800C6;       // S & D
constexpr DWORD MERGEPAINT = 0x00BB0226;   // ~S | D
constexpr DWORD MERGECOPY = 0x00C000CA;    // S & P
constexpr DWORD SRCCOPY = 0x00CC0020;      // S
constexpr DWORD SRCPAINT = 0x00EE0086;     // S | D
constexpr DWORD PATCOPY = 0x00F00021;      // P
constexpr DWORD PATPAINT = 0x00FB0A09;     // P | ~S | D
constexpr DWORD WHITENESS = 0x00FF0062;
constexpr DWORD NOMIRRORBITMAP = 0x80000000;  // accepted; nothing is mirrored here
constexpr DWORD CAPTUREBLT = 0x40000000;      // accepted; there are no layered windows

// The operation of MaskBlt: the first where the mask is 1, the second where it is 0.
constexpr DWORD MAKEROP4(DWORD foreground, DWORD background) {
    return ((background << 8) & 0xFF000000) | foreground;
}

// The source is not looked at, and may be null, for operations that need none.
KADATA_API BOOL BitBlt(HDC target, int x, int y, int width, int height, HDC source, int source_x, int source_y,
                       DWORD operation) noexcept;

// Scaled as SetStretchBltMode of the target says. Where one of source and target has a width or height below 0, the picture is
// mirrored.
KADATA_API BOOL StretchBlt(HDC target, int x, int y, int width, int height, HDC source, int source_x, int source_y,
                           int source_width, int source_height, DWORD operation) noexcept;

// The mask is monochrome, its pixel mask_x, mask_y belongs to the first target pixel, and it has to cover the whole target; null
// is BitBlt by the first operation.
KADATA_API BOOL MaskBlt(HDC target, int x, int y, int width, int height, HDC source, int source_x, int source_y, HBITMAP mask,
                        int mask_x, int mask_y, DWORD operation) noexcept;

// As StretchBlt by SRCCOPY without the pixels in the colour `transparent`. FALSE for negative sizes.
KADATA_API BOOL TransparentBlt(HDC target, int x, int y, int width, int height, HDC source, int source_x, int source_y,
                               int source_width, int source_height, UINT transparent) noexcept;

constexpr BYTE AC_SRC_OVER = 0;
constexpr BYTE AC_SRC_ALPHA = 1;  // the source has alpha in its top bytes; its colours are multiplied by it already

struct BLENDFUNCTION {
    BYTE BlendOp;     // AC_SRC_OVER
    BYTE BlendFlags;  // 0
    BYTE SourceConstantAlpha;
    BYTE AlphaFormat;  // 0 or AC_SRC_ALPHA
};

// FALSE for negative sizes, a monochrome target, a monochrome source with AC_SRC_ALPHA and for a source rectangle that is not
// wholly inside the source.
KADATA_API BOOL AlphaBlend(HDC target, int x, int y, int width, int height, HDC source, int source_x, int source_y,
                           int source_width, int source_height, BLENDFUNCTION blend) noexcept;

using COLOR16 = USHORT;

struct TRIVERTEX {
    LONG x;
    LONG y;
    COLOR16 Red;  // 0x0000 to 0xFF00
    COLOR16 Green;
    COLOR16 Blue;
    COLOR16 Alpha;
};
using PTRIVERTEX = TRIVERTEX*;

struct GRADIENT_RECT {
    ULONG UpperLeft;  // indices into the vertices
    ULONG LowerRight;
};

constexpr ULONG GRADIENT_FILL_RECT_H = 0;  // the colour changes from left to right
constexpr ULONG GRADIENT_FILL_RECT_V = 1;  // from top to bottom

// `mesh` is an array of `meshes` GRADIENT_RECTs; triangles are refused.
KADATA_API BOOL GradientFill(HDC context, PTRIVERTEX vertices, ULONG count, PVOID mesh, ULONG meshes, ULONG mode) noexcept;
