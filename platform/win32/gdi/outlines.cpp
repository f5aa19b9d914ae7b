// Lines, and shapes with an outline: filled with the context's brush inside, drawn around with its pen.

#include <algorithm>
#include <array>
#include <span>
#include <vector>

#include "contexts.h"
#include "drawing_call.h"
#include "paint.h"
#include "region_curves.h"
#include "regions.h"
#include "shapes.h"
#include "strokes.h"

namespace {

using kawin::DrawingContext;
using kawin::DrawOn;
using kawin::OrThrow;
using kawin::PenShape;
using kawin::RegionShape;

PenShape PenOf(const DrawingContext& context) noexcept {
    return context.state.pen ? kawin::ShapeOf(*context.state.pen) : PenShape{true, 1, false};
}

// The outer and the inner edge of an outline around `box`: the pen has its middle on the outermost pixels.
struct Outline {
    RECT outer;
    RECT inner;
};

Outline OutlineOf(const RECT& box, const PenShape& pen) noexcept {
    const LONG width = kawin::CutCoordinate(pen.width);
    const LONG out = pen.inside_frame ? 0 : width / 2;
    const LONG over = pen.inside_frame ? 0 : width - 1 - out;
    const RECT outer = {box.left - out, box.top - out, box.right + over, box.bottom + over};
    return {outer, {outer.left + width, outer.top + width, outer.right - width, outer.bottom - width}};
}

// The rows for which shapes are made: one more at each end, so that an outline does not run along the surface's edge.
RECT RowsOf(const DrawingContext& context) noexcept {
    const RECT bounds = context.surface->Bounds();
    return {bounds.left, bounds.top - 1, bounds.right, bounds.bottom + 1};
}

bool IsEmpty(const RECT& rect) noexcept {
    return rect.left >= rect.right || rect.top >= rect.bottom;
}

// Fills `inside` and strokes the rest of `outside`.
void DrawOutlined(DrawingContext& context, const RegionShape& outside, const RegionShape& inside) {
    RegionShape line = outside;
    line.Subtract(inside);
    kawin::FillByBrush(context, inside);
    kawin::StrokeArea(context, line);
}

// A shape that make(bounds) makes for any bounds, inside of the logical ones.
template <class Make>
void DrawCurved(DrawingContext& context, const RECT& logical, Make&& make) {
    const RECT box = kawin::Ordered(context.ToSurface(logical));
    const PenShape pen = PenOf(context);
    if (IsEmpty(box) || !context.surface) {
        return;
    }
    if (pen.null) {
        kawin::FillByBrush(context, make(box));
        return;
    }
    const Outline outline = OutlineOf(box, pen);
    const RegionShape outside = make(outline.outer);
    if (pen.width == 1) {
        DrawOutlined(context, outside, kawin::Eroded(outside, 1, 1));
    } else {
        DrawOutlined(context, outside, IsEmpty(outline.inner) ? RegionShape() : make(outline.inner));
    }
}

void DrawRectangle(DrawingContext& context, const RECT& logical) {
    const RECT box = kawin::Ordered(context.ToSurface(logical));
    const PenShape pen = PenOf(context);
    if (IsEmpty(box) || !context.surface) {
        return;
    }
    if (pen.null) {  // documented: without an outline it is smaller by its last column and row
        kawin::FillByBrush(context, RegionShape(RECT{box.left, box.top, box.right - 1, box.bottom - 1}));
        return;
    }
    const Outline outline = OutlineOf(box, pen);
    const RegionShape inside(outline.inner);
    if (pen.width > 1) {
        const SIZE corner = {pen.width, pen.width};
        DrawOutlined(context, OrThrow(kawin::RoundRectShape(outline.outer, corner, RowsOf(context))), inside);
        return;
    }
    kawin::FillByBrush(context, inside);
    // Dashes begin in the upper right corner and go round by the upper left one.
    const std::array<POINT, 5> corners = {POINT{box.right - 1, box.top}, POINT{box.left, box.top},
                                          POINT{box.left, box.bottom - 1}, POINT{box.right - 1, box.bottom - 1},
                                          POINT{box.right - 1, box.top}};
    if (box.right - box.left == 1 || box.bottom - box.top == 1) {
        kawin::StrokeArea(context, RegionShape(box));  // there and back would be mixed twice
    } else {
        kawin::StrokeLines(context, corners);
    }
}

bool AreGiven(const POINT* points, std::size_t count, std::size_t least) noexcept {
    const bool given = points != nullptr && count >= least;
    if (!given) {
        SetLastError(ERROR_INVALID_PARAMETER);
    }
    return given;
}

std::vector<POINT> OnSurface(const DrawingContext& context, std::span<const POINT> points) {
    std::vector<POINT> moved(points.size());
    std::transform(points.begin(), points.end(), moved.begin(), [&](POINT point) { return context.ToSurface(point); });
    return moved;
}

}  // namespace

BOOL LineTo(HDC context, int x, int y) noexcept {
    return DrawOn(context, [&](DrawingContext& found) {
        const std::array<POINT, 2> line = {found.ToSurface(found.state.position), found.ToSurface(POINT{x, y})};
        kawin::StrokeLines(found, line);
        found.state.position = {x, y};
    });
}

BOOL Polyline(HDC context, const POINT* points, int count) noexcept {
    return AreGiven(points, count < 0 ? 0 : static_cast<std::size_t>(count), 2) && DrawOn(context, [&](DrawingContext& found) {
               kawin::StrokeLines(found, OnSurface(found, {points, static_cast<std::size_t>(count)}));
           });
}

BOOL PolylineTo(HDC context, const POINT* points, DWORD count) noexcept {
    return AreGiven(points, count, 1) && DrawOn(context, [&](DrawingContext& found) {
               std::vector<POINT> all = OnSurface(found, {points, count});
               all.insert(all.begin(), found.ToSurface(found.state.position));
               kawin::StrokeLines(found, all);
               found.state.position = points[count - 1];
           });
}

BOOL Rectangle(HDC context, int left, int top, int right, int bottom) noexcept {
    return DrawOn(context, [&](DrawingContext& found) { DrawRectangle(found, {left, top, right, bottom}); });
}

BOOL RoundRect(HDC context, int left, int top, int right, int bottom, int width, int height) noexcept {
    return DrawOn(context, [&](DrawingContext& found) {
        DrawCurved(found, {left, top, right, bottom}, [&](const RECT& bounds) {
            return OrThrow(kawin::RoundRectShape(bounds, {width, height}, RowsOf(found)));
        });
    });
}

BOOL Ellipse(HDC context, int left, int top, int right, int bottom) noexcept {
    return DrawOn(context, [&](DrawingContext& found) {
        DrawCurved(found, {left, top, right, bottom},
                   [&](const RECT& bounds) { return OrThrow(kawin::EllipseShape(bounds, RowsOf(found))); });
    });
}

BOOL Polygon(HDC context, const POINT* points, int count) noexcept {
    return AreGiven(points, count < 0 ? 0 : static_cast<std::size_t>(count), 2) && DrawOn(context, [&](DrawingContext& found) {
               if (!found.surface) {
                   return;
               }
               std::vector<POINT> all = OnSurface(found, {points, static_cast<std::size_t>(count)});
               const bool winding = found.state.fill_mode == WINDING;
               kawin::FillByBrush(found, OrThrow(kawin::PolygonShape(all, winding, RowsOf(found))));
               all.push_back(all.front());
               kawin::StrokeLines(found, all);
           });
}
