#pragma once

// Lines with the pen of a context. Points are on the surface.

#include <span>

#include "drawing_context.h"

namespace kawin {

// The part of a pen that decides about shapes.
struct PenShape {
    bool null;          // draws nothing
    LONG width;         // at least 1
    bool inside_frame;  // shapes lie wholly inside their bounds
};
PenShape ShapeOf(const PenObject& pen) noexcept;

// Joined lines without the last point, as one: dashes go on around the corners. Throws std::bad_alloc.
void StrokeLines(DrawingContext& context, std::span<const POINT> points);

// An outline that is already an area, in the pen's colour. Throws std::bad_alloc.
void StrokeArea(DrawingContext& context, const RegionShape& area);

}  // namespace kawin
