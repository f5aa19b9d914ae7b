#include "surface.h"

#include <cairo/cairo.h>

#include <algorithm>
#include <new>
#include <utility>

namespace kawin {
namespace {

constexpr int kLongestSide = 65535;
constexpr std::int64_t kMostPixels = std::int64_t{1} << 28;

}  // namespace

bool Surface::IsPossible(int width, int height) noexcept {
    return width >= 1 && height >= 1 && width <= kLongestSide && height <= kLongestSide &&
           std::int64_t{width} * height <= kMostPixels;
}

std::shared_ptr<Surface> Surface::Make(int width, int height, bool mono) noexcept try {
    if (!IsPossible(width, height)) {
        return nullptr;
    }
    const std::shared_ptr<Pixel[]> pixels = std::make_shared<Pixel[]>(static_cast<std::size_t>(width) * height);
    auto surface = std::make_shared<Surface>(pixels.get(), width, height, width, pixels);
    surface->mono_ = mono;
    return surface;
} catch (const std::bad_alloc&) {
    return nullptr;
}

Surface::Surface(Pixel* top_row, int width, int height, std::ptrdiff_t stride, std::shared_ptr<void> owner) noexcept
    : owner_(std::move(owner)), top_row_(top_row), width_(width), height_(height), stride_(stride) {}

_cairo_surface* Surface::NewCairo() noexcept {
    cairo_surface_t* const made =
        cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(top_row_), CAIRO_FORMAT_RGB24, width_, height_,
                                            static_cast<int>(stride_ * static_cast<std::ptrdiff_t>(sizeof(Pixel))));
    if (cairo_surface_status(made) != CAIRO_STATUS_SUCCESS) {
        cairo_surface_destroy(made);
        return nullptr;
    }
    return made;
}

void Surface::Touch(const RECT& area) noexcept {
    const RECT inside = {std::max<LONG>(area.left, 0), std::max<LONG>(area.top, 0), std::min<LONG>(area.right, width_),
                         std::min<LONG>(area.bottom, height_)};
    if (inside.left >= inside.right || inside.top >= inside.bottom) {
        return;
    }
    ++version_;
    if (touched_.left >= touched_.right) {
        touched_ = inside;
        return;
    }
    touched_ = {std::min(touched_.left, inside.left), std::min(touched_.top, inside.top), std::max(touched_.right, inside.right),
                std::max(touched_.bottom, inside.bottom)};
}

RECT Surface::TakeTouched() noexcept {
    return std::exchange(touched_, RECT{});
}

}  // namespace kawin
