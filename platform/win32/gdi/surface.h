#pragma once

// Pixels that are drawn on: of a bitmap, or of a top-level window with everything in it.
//
// A pixel is 32 bits, 0xXXRRGGBB in the machine's order (CAIRO_FORMAT_RGB24); GDI neither reads nor keeps the top byte, as on
// Windows. A monochrome surface holds 0 or 1 in each. Not locked: one thread draws on a surface at a time.

#include <cstdint>
#include <memory>
#include <vector>

#include "gdi_types.h"

struct _cairo_surface;

namespace kawin {

using Pixel = std::uint32_t;

constexpr Pixel PixelOf(COLORREF color) noexcept {
    return ((color & 0xFF) << 16) | (color & 0xFF00) | ((color >> 16) & 0xFF);
}
constexpr COLORREF ColorOf(Pixel pixel) noexcept {
    return ((pixel & 0xFF) << 16) | (pixel & 0xFF00) | ((pixel >> 16) & 0xFF);
}

class Surface {
public:
    // Whether a surface may have this size: a side below 1 or above 65,535 it may not, nor more than 2^28 pixels.
    static bool IsPossible(int width, int height) noexcept;

    // Black, or null when the size is not possible or there is no memory.
    static std::shared_ptr<Surface> Make(int width, int height, bool mono = false) noexcept;

    // Over pixels that `owner` keeps; `stride` in pixels, negative when the rows go upwards in memory.
    Surface(Pixel* top_row, int width, int height, std::ptrdiff_t stride, std::shared_ptr<void> owner) noexcept;

    int Width() const noexcept { return width_; }
    int Height() const noexcept { return height_; }
    bool IsMono() const noexcept { return mono_; }
    RECT Bounds() const noexcept { return {0, 0, width_, height_}; }

    Pixel* Row(int y) noexcept { return top_row_ + stride_ * y; }
    const Pixel* Row(int y) const noexcept { return top_row_ + stride_ * y; }

    // A Cairo surface over the same pixels, made anew for each call, also where the rows go upwards in memory; null without
    // memory. The caller destroys it, and says what it has drawn with Touch. Not for a monochrome surface.
    _cairo_surface* NewCairo() noexcept;

    // Everything that draws says where. What was touched since the last call; empty when nothing was.
    void Touch(const RECT& area) noexcept;
    RECT TakeTouched() noexcept;

    // Grows with every Touch: tells whoever keeps something made from the pixels that it is stale.
    std::uint64_t Version() const noexcept { return version_; }

private:
    std::shared_ptr<void> owner_;
    Pixel* top_row_;
    int width_;
    int height_;
    std::ptrdiff_t stride_;
    bool mono_ = false;
    RECT touched_ = {};
    std::uint64_t version_ = 0;
};

}  // namespace kawin
