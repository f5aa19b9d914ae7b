#pragma once

// Shapes as sets of pixels, without antialiasing. Points and edges are pixel corners: a shape from 0 to 10 covers the pixels 0
// to 9.

#include <optional>
#include <span>

#include "region_shape.h"

namespace kawin {

// Throws std::bad_alloc instead of giving none: for drawing, where a missing shape is an error like any other.
RegionShape OrThrow(std::optional<RegionShape> shape);

// What is left of a shape when this much is taken away along all its edges: `width` to the sides, `height` up and down.
RegionShape Eroded(const RegionShape& shape, LONG width, LONG height) noexcept;

// A pixel belongs to a polygon when its upper left corner lies inside, or on an edge that has the inside to its right or below.
// `winding` as WINDING has it, else ALTERNATE. Only what lies in `rows` (top and bottom of it) is made. None without memory or
// with more scan lines than kMostScanLines.
std::optional<RegionShape> PolygonShape(std::span<const POINT> points, bool winding, const RECT& rows) noexcept;

// The ellipse, or the rectangle with corners that are quarters of an ellipse of `corner`. The corners of `bounds` may be in any
// order. None as above.
std::optional<RegionShape> EllipseShape(const RECT& bounds, const RECT& rows) noexcept;
std::optional<RegionShape> RoundRectShape(const RECT& bounds, SIZE corner, const RECT& rows) noexcept;

constexpr LONG kMostScanLines = LONG{1} << 20;
constexpr RECT kEverywhere = {-kFarthest, -kFarthest, kFarthest, kFarthest};

// With its corners in order.
constexpr RECT Ordered(const RECT& rect) noexcept {
    return {rect.left < rect.right ? rect.left : rect.right, rect.top < rect.bottom ? rect.top : rect.bottom,
            rect.left < rect.right ? rect.right : rect.left, rect.top < rect.bottom ? rect.bottom : rect.top};
}

}  // namespace kawin
