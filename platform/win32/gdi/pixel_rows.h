#pragma once

// Rows of pixels as they lie in memory outside of surfaces.

#include <span>

#include "bitmaps.h"
#include "surface.h"

namespace kawin {

// Bytes of a row that is a multiple of `unit` bytes (2 of a bitmap's own rows, 4 of a DIB's).
constexpr std::size_t RowBytes(int width, int depth, std::size_t unit) noexcept {
    return (static_cast<std::size_t>(width) * static_cast<std::size_t>(depth) + unit * 8 - 1) / (unit * 8) * unit;
}

// 0 or 1 each: the leftmost pixel in the highest bit of the first byte.
void UnpackBits(const BYTE* from, std::span<Pixel> to) noexcept;
void PackBits(std::span<const Pixel> from, BYTE* to) noexcept;

// Blue, green and red each.
void UnpackTriples(const BYTE* from, std::span<Pixel> to) noexcept;
void PackTriples(std::span<const Pixel> from, BYTE* to) noexcept;

// Numbers below 2^depth (1, 4 or 8 bits each) as the palette's colours; those behind it are black.
void UnpackIndices(const BYTE* from, int depth, std::span<const RGBQUAD> palette, std::span<Pixel> to) noexcept;

}  // namespace kawin
