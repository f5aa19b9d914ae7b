#pragma once

// Rectangles as the copying functions take them: a corner, and sizes that may go to the left or upwards.

#include "drawing_context.h"

namespace kawin {

// Along one axis.
struct Extent {
    LONG start;  // the lowest pixel
    LONG size;   // at least 0
    bool mirrored;

    LONG End() const noexcept { return start + size; }
};

struct Block {
    Extent x;
    Extent y;

    RECT Area() const noexcept { return {x.start, y.start, x.End(), y.End()}; }
    bool IsEmpty() const noexcept { return x.size == 0 || y.size == 0; }
};

// The corner is the first pixel in both directions: with a negative size the rightmost or lowest.
inline Extent ExtentOf(LONG corner, int size) noexcept {
    const LONG end = CutCoordinate(std::int64_t{corner} + size);
    return size < 0 ? Extent{end + 1, corner - end, true} : Extent{corner, end - corner, false};
}

// On the context's surface.
inline Block BlockOn(const DrawingContext& context, POINT corner, SIZE size) noexcept {
    const POINT at = context.ToSurface(corner);
    return {ExtentOf(at.x, size.cx), ExtentOf(at.y, size.cy)};
}

}  // namespace kawin
