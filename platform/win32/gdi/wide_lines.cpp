#include "wide_lines.h"

#include <cairo/cairo.h>

#include <algorithm>
#include <memory>
#include <new>
#include <vector>

namespace kawin {
namespace {

struct DestroySurface {
    void operator()(cairo_surface_t* surface) const noexcept { cairo_surface_destroy(surface); }
};
struct DestroyContext {
    void operator()(cairo_t* context) const noexcept { cairo_destroy(context); }
};

// Cairo's coordinates end at 2^23; what lies so far outside has the same line inside as its neighbour there.
constexpr double kFarthestOfCairo = 1 << 22;

double Near(double coordinate) noexcept {
    return std::clamp(coordinate, -kFarthestOfCairo, kFarthestOfCairo);
}

void DrawPath(cairo_t* context, std::span<const POINT> points, LONG width, const RECT& area) noexcept {
    // A pen of an odd width has its middle in the middle of pixels.
    const double middle = width % 2 != 0 ? 0.5 : 0;
    cairo_set_antialias(context, CAIRO_ANTIALIAS_NONE);
    cairo_set_line_width(context, static_cast<double>(width));
    cairo_set_line_cap(context, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(context, CAIRO_LINE_JOIN_ROUND);
    for (const POINT& point : points) {
        cairo_line_to(context, Near(point.x - area.left + middle), Near(point.y - area.top + middle));
    }
    cairo_stroke(context);
}

std::vector<RECT> SpansOf(cairo_surface_t* mask, const RECT& area) {
    std::vector<RECT> spans;
    const unsigned char* const bytes = cairo_image_surface_get_data(mask);
    const int stride = cairo_image_surface_get_stride(mask);
    const LONG width = area.right - area.left;
    for (LONG y = area.top; y < area.bottom; ++y) {
        const unsigned char* const row = bytes + static_cast<std::ptrdiff_t>(stride) * (y - area.top);
        const unsigned char* const end = row + width;
        for (const unsigned char* at = std::find_if(row, end, [](unsigned char hit) { return hit != 0; }); at != end;) {
            const unsigned char* const behind = std::find(at, end, 0);
            spans.push_back({area.left + static_cast<LONG>(at - row), y, area.left + static_cast<LONG>(behind - row), y + 1});
            at = std::find_if(behind, end, [](unsigned char hit) { return hit != 0; });
        }
    }
    return spans;
}

}  // namespace

RegionShape WideLines(std::span<const POINT> points, LONG width, const RECT& area) {
    if (area.left >= area.right || area.top >= area.bottom || points.empty()) {
        return RegionShape();
    }
    const std::unique_ptr<cairo_surface_t, DestroySurface> mask(
        cairo_image_surface_create(CAIRO_FORMAT_A8, area.right - area.left, area.bottom - area.top));
    const std::unique_ptr<cairo_t, DestroyContext> context(cairo_create(mask.get()));
    DrawPath(context.get(), points, width, area);
    cairo_surface_flush(mask.get());
    if (cairo_status(context.get()) != CAIRO_STATUS_SUCCESS) {
        throw std::bad_alloc();
    }
    return RegionShape(SpansOf(mask.get(), area));
}

}  // namespace kawin
