#pragma once

// Formats of pixels: number, flags, and bits a pixel.

#include "gdiplus_types.h"

namespace Gdiplus {

using PixelFormat = INT;

constexpr PixelFormat PixelFormatIndexed = 0x00010000;
constexpr PixelFormat PixelFormatGDI = 0x00020000;
constexpr PixelFormat PixelFormatAlpha = 0x00040000;
constexpr PixelFormat PixelFormatPAlpha = 0x00080000;
constexpr PixelFormat PixelFormatExtended = 0x00100000;
constexpr PixelFormat PixelFormatCanonical = 0x00200000;

constexpr PixelFormat PixelFormatUndefined = 0;
constexpr PixelFormat PixelFormatDontCare = 0;

// In memory, the lowest byte first: blue, green, red, and in 32 bits alpha or a byte without meaning.
constexpr PixelFormat PixelFormat24bppRGB = 8 | 24 << 8 | PixelFormatGDI;
constexpr PixelFormat PixelFormat32bppRGB = 9 | 32 << 8 | PixelFormatGDI;
constexpr PixelFormat PixelFormat32bppARGB = 10 | 32 << 8 | PixelFormatAlpha | PixelFormatGDI | PixelFormatCanonical;
constexpr PixelFormat PixelFormat32bppPARGB = 11 | 32 << 8 | PixelFormatAlpha | PixelFormatPAlpha | PixelFormatGDI;

constexpr UINT GetPixelFormatSize(PixelFormat format) {
    return static_cast<UINT>(format >> 8) & 0xFF;
}
constexpr BOOL IsIndexedPixelFormat(PixelFormat format) {
    return (format & PixelFormatIndexed) != 0;
}
constexpr BOOL IsAlphaPixelFormat(PixelFormat format) {
    return (format & PixelFormatAlpha) != 0;
}

}  // namespace Gdiplus

// Macros elsewhere, so hosts name them without the namespace.
using Gdiplus::PixelFormat24bppRGB;
using Gdiplus::PixelFormat32bppARGB;
using Gdiplus::PixelFormat32bppPARGB;
using Gdiplus::PixelFormat32bppRGB;
