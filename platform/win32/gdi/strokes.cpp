#include "strokes.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "contexts.h"
#include "paint.h"
#include "wide_lines.h"

namespace kawin {
namespace {

// Lengths of dashes and gaps in turn, for pens one pixel wide.
struct DashPattern {
    std::span<const int> lengths;
    int whole;
};

DashPattern DashesOf(UINT style) noexcept {
    static constexpr int kDash[] = {18, 6};
    static constexpr int kDot[] = {3, 3};
    static constexpr int kDashDot[] = {9, 6, 3, 6};
    static constexpr int kDashDotDot[] = {9, 3, 3, 3, 3, 3};
    switch (style) {
        case PS_DASH:
            return {kDash, 24};
        case PS_DOT:
            return {kDot, 6};
        case PS_DASHDOT:
            return {kDashDot, 24};
        case PS_DASHDOTDOT:
            return {kDashDotDot, 24};
        default:
            return {{}, 1};
    }
}

bool IsGap(const DashPattern& dashes, std::int64_t position) noexcept {
    std::int64_t left = position % dashes.whole;
    bool gap = false;
    for (const int length : dashes.lengths) {
        if (left < length) {
            return gap;
        }
        left -= length;
        gap = !gap;
    }
    return false;
}

struct ThinPen {
    Pixel line;
    Pixel gap;
    bool gaps_shown;
    DashPattern dashes;
    BYTE table;
};

COLORREF ColorOfPen(const DrawingContext& context) noexcept {
    const PenObject& pen = *context.state.pen;
    return pen.of_context ? context.state.pen_color : pen.description.lopnColor;
}

ThinPen ThinPenOf(const DrawingContext& context) noexcept {
    return {PixelOn(*context.surface, ColorOfPen(context)), PixelOn(*context.surface, context.state.back_color),
            context.state.back_mode == OPAQUE, DashesOf(context.state.pen->description.lopnStyle),
            TableOfMix(context.state.raster_op)};
}

// How a line goes along its longer axis: step i of it is at start + i * step, and the other coordinate is the nearest, the
// smaller of two that are equally near.
struct Walk {
    bool by_x;
    LONG major;
    LONG minor;
    int step;
    std::int64_t steps;
    std::int64_t rise;  // of the other coordinate over all steps

    POINT At(std::int64_t index) const noexcept {
        const std::int64_t twice = 2 * rise * index - steps;
        const std::int64_t whole = twice / (2 * steps) + (twice % (2 * steps) > 0);
        const LONG along = static_cast<LONG>(major + step * index);
        const LONG across = static_cast<LONG>(minor + whole);
        return by_x ? POINT{along, across} : POINT{across, along};
    }
};

Walk WalkOf(POINT from, POINT to) noexcept {
    const std::int64_t dx = std::int64_t{to.x} - from.x;
    const std::int64_t dy = std::int64_t{to.y} - from.y;
    const bool by_x = std::abs(dx) >= std::abs(dy);
    const std::int64_t run = by_x ? dx : dy;
    return {by_x, by_x ? from.x : from.y, by_x ? from.y : from.x, run < 0 ? -1 : 1, std::abs(run), by_x ? dy : dx};
}

// The steps of a walk whose pixels can lie in `rect`: first, and behind the last.
std::pair<std::int64_t, std::int64_t> StepsIn(const Walk& walk, const RECT& rect) noexcept {
    const std::int64_t low = walk.by_x ? rect.left : rect.top;
    const std::int64_t high = (walk.by_x ? rect.right : rect.bottom) - 1;
    const std::int64_t first = walk.step > 0 ? low - walk.major : walk.major - high;
    const std::int64_t last = walk.step > 0 ? high - walk.major : walk.major - low;
    return {std::max<std::int64_t>(first, 0), std::min(last + 1, walk.steps)};
}

bool IsIn(const RECT& rect, POINT point) noexcept {
    return point.x >= rect.left && point.x < rect.right && point.y >= rect.top && point.y < rect.bottom;
}

void DrawThinPixel(Surface& surface, const ThinPen& pen, POINT at, std::int64_t position) noexcept {
    const bool gap = IsGap(pen.dashes, position);
    if (gap && !pen.gaps_shown) {
        return;
    }
    Pixel* const pixel = surface.Row(at.y) + at.x;
    const Pixel color = gap ? pen.gap : pen.line;
    CombineRow(pen.table, {pixel, 1}, nullptr, &color);
    if (surface.IsMono()) {
        CutToMono({pixel, 1});
    }
}

// `position` is that of the first pixel in the dashes.
void DrawThinLine(Surface& surface, const RegionShape& drawable, const ThinPen& pen, const Walk& walk, std::int64_t position) {
    drawable.ForEachIn(surface.Bounds(), [&](const RECT& rect) {
        const auto [first, end] = StepsIn(walk, rect);
        for (std::int64_t index = first; index < end; ++index) {
            const POINT at = walk.At(index);
            if (IsIn(rect, at)) {
                DrawThinPixel(surface, pen, at, position + index);
            }
        }
    });
}

// The pixels of a walk along one axis.
RECT StraightLine(const Walk& walk) noexcept {
    const LONG steps = static_cast<LONG>(walk.steps);
    const LONG first = walk.step > 0 ? walk.major : walk.major - steps + 1;
    return walk.by_x ? RECT{first, walk.minor, first + steps, walk.minor + 1}
                     : RECT{walk.minor, first, walk.minor + 1, first + steps};
}

RECT Around(POINT a, POINT b) noexcept {
    return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x) + 1, std::max(a.y, b.y) + 1};
}

void StrokeThin(DrawingContext& context, std::span<const POINT> points) {
    const ThinPen pen = ThinPenOf(context);
    const RegionShape drawable = context.Drawable();
    std::int64_t position = 0;
    for (std::size_t index = 1; index < points.size(); ++index) {
        const Walk walk = WalkOf(points[index - 1], points[index]);
        if (walk.rise == 0 && pen.dashes.lengths.empty()) {
            FillArea(context, RegionShape(StraightLine(walk)), Paint(pen.line), pen.table);
        } else if (walk.steps > 0) {
            DrawThinLine(*context.surface, drawable, pen, walk, position);
            context.surface->Touch(Around(points[index - 1], points[index]));
        }
        position += walk.steps;
    }
}

}  // namespace

PenShape ShapeOf(const PenObject& pen) noexcept {
    const UINT style = pen.description.lopnStyle;
    return {style == PS_NULL, std::max<LONG>(pen.description.lopnWidth.x, 1), style == PS_INSIDEFRAME};
}

void StrokeLines(DrawingContext& context, std::span<const POINT> points) {
    if (!context.surface || !context.state.pen) {
        return;
    }
    const PenShape shape = ShapeOf(*context.state.pen);
    if (shape.null) {
        return;
    }
    if (shape.width == 1) {
        StrokeThin(context, points);
    } else {
        StrokeArea(context, WideLines(points, shape.width, context.Drawable().Bounds()));
    }
}

void StrokeArea(DrawingContext& context, const RegionShape& area) {
    if (context.surface && context.state.pen && !ShapeOf(*context.state.pen).null) {
        FillArea(context, area, Paint(PixelOn(*context.surface, ColorOfPen(context))), TableOfMix(context.state.raster_op));
    }
}

}  // namespace kawin
