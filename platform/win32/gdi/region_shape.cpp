#include "region_shape.h"

#include <cairo/cairo.h>

#include <new>
#include <utility>
#include <vector>

namespace kawin {
namespace {

cairo_rectangle_int_t CairoRect(const RECT& rect) noexcept {
    const int left = CutCoordinate(rect.left);
    const int top = CutCoordinate(rect.top);
    const int width = CutCoordinate(rect.right) - left;
    const int height = CutCoordinate(rect.bottom) - top;
    const bool empty = width <= 0 || height <= 0;
    return {left, top, empty ? 0 : width, empty ? 0 : height};
}

RECT RectOf(const cairo_rectangle_int_t& rect) noexcept {
    return {rect.x, rect.y, rect.x + rect.width, rect.y + rect.height};
}

}  // namespace

RegionShape::RegionShape() noexcept : region_(cairo_region_create()) {}

RegionShape::RegionShape(const RECT& rect) noexcept {
    const cairo_rectangle_int_t cairo = CairoRect(rect);
    region_ = cairo_region_create_rectangle(&cairo);
}

RegionShape::RegionShape(std::span<const RECT> rects) noexcept try {
    std::vector<cairo_rectangle_int_t> cairo;
    cairo.reserve(rects.size());
    for (const RECT& rect : rects) {
        cairo.push_back(CairoRect(rect));
    }
    region_ = cairo_region_create_rectangles(cairo.data(), static_cast<int>(cairo.size()));
} catch (const std::bad_alloc&) {
    region_ = cairo_region_create();
}

RegionShape::RegionShape(const RegionShape& other) noexcept : region_(cairo_region_copy(other.region_)) {}

RegionShape::RegionShape(RegionShape&& other) noexcept : region_(std::exchange(other.region_, nullptr)) {}

RegionShape& RegionShape::operator=(RegionShape other) noexcept {
    std::swap(region_, other.region_);
    return *this;
}

RegionShape::~RegionShape() {
    cairo_region_destroy(region_);
}

bool RegionShape::IsEmpty() const noexcept {
    return cairo_region_is_empty(region_) != 0;
}

RECT RegionShape::Bounds() const noexcept {
    cairo_rectangle_int_t bounds;
    cairo_region_get_extents(region_, &bounds);
    return IsEmpty() ? RECT{} : RectOf(bounds);
}

int RegionShape::CountRects() const noexcept {
    return cairo_region_num_rectangles(region_);
}

RECT RegionShape::Rect(int index) const noexcept {
    cairo_rectangle_int_t rect;
    cairo_region_get_rectangle(region_, index, &rect);
    return RectOf(rect);
}

bool RegionShape::Contains(POINT point) const noexcept {
    return cairo_region_contains_point(region_, point.x, point.y) != 0;
}

bool RegionShape::Touches(const RECT& rect) const noexcept {
    const cairo_rectangle_int_t cairo = CairoRect(rect);
    return cairo.width > 0 && cairo.height > 0 && cairo_region_contains_rectangle(region_, &cairo) != CAIRO_REGION_OVERLAP_OUT;
}

void RegionShape::Unite(const RegionShape& other) noexcept {
    cairo_region_union(region_, other.region_);
}

void RegionShape::Unite(const RECT& rect) noexcept {
    const cairo_rectangle_int_t cairo = CairoRect(rect);
    cairo_region_union_rectangle(region_, &cairo);
}

void RegionShape::Intersect(const RegionShape& other) noexcept {
    cairo_region_intersect(region_, other.region_);
}

void RegionShape::Intersect(const RECT& rect) noexcept {
    const cairo_rectangle_int_t cairo = CairoRect(rect);
    cairo_region_intersect_rectangle(region_, &cairo);
}

void RegionShape::Subtract(const RegionShape& other) noexcept {
    cairo_region_subtract(region_, other.region_);
}

void RegionShape::Subtract(const RECT& rect) noexcept {
    const cairo_rectangle_int_t cairo = CairoRect(rect);
    cairo_region_subtract_rectangle(region_, &cairo);
}

void RegionShape::ExclusiveOr(const RegionShape& other) noexcept {
    cairo_region_xor(region_, other.region_);
}

void RegionShape::Offset(int dx, int dy) noexcept {
    cairo_region_translate(region_, CutCoordinate(dx), CutCoordinate(dy));
}

bool operator==(const RegionShape& a, const RegionShape& b) noexcept {
    return cairo_region_equal(a.region_, b.region_) != 0;
}

}  // namespace kawin
