#pragma once

// The headers of device-independent pixels in memory. They come from callers: nothing of them is trusted.

#include <optional>
#include <span>

#include "bitmaps.h"
#include "pixel_rows.h"

namespace kawin {

struct DibFormat {
    int width;
    int height;
    bool top_down;
    int depth;
    std::span<const RGBQUAD> palette;  // of 8 bits or less; the caller's

    std::size_t RowBytes() const noexcept { return kawin::RowBytes(width, depth, 4); }
    // Where in memory the row `y`, counted from the top, lies among all.
    int RowInMemory(int y) const noexcept { return top_down ? y : height - 1 - y; }
};

// 1, 4, 8, 24 or 32 bits, BI_RGB, or 32 bits with BI_BITFIELDS in their usual places. None for any other and for sizes that no
// bitmap may have.
std::optional<DibFormat> ReadDibFormat(const BITMAPINFO* info) noexcept;

// One row.
void UnpackDibRow(const DibFormat& format, const BYTE* from, std::span<Pixel> to) noexcept;

// Black or white, whichever is nearer: 0 or 1.
constexpr Pixel MonoOf(Pixel color) noexcept {
    return ((color & 0xFF) + ((color >> 8) & 0xFF) + ((color >> 16) & 0xFF)) * 2 > 3 * 0xFF ? 1 : 0;
}

}  // namespace kawin
