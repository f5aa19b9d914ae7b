#pragma once

// What every copy does with the source once it is read.

#include <span>

#include "raster_rows.h"
#include "source_pixels.h"

namespace kawin {

// Calls each(x, y, row, from) for all pixels of the source that may be drawn: pieces of rows of the target's surface, and as many
// source pixels for them.
template <class Each>
void ForEachRow(DrawingContext& target, const SourcePixels& source, Each&& each) {
    Surface& surface = *target.surface;
    RegionShape drawn = target.Drawable();
    drawn.Intersect(source.area);
    const RECT bounds = drawn.Bounds();
    drawn.ForEachIn(bounds, [&](const RECT& rect) {
        for (LONG y = rect.top; y < rect.bottom; ++y) {
            const std::span<Pixel> row(surface.Row(y) + rect.left, static_cast<std::size_t>(rect.right - rect.left));
            each(rect.left, y, row, source.At(rect.left, y));
            if (surface.IsMono()) {
                CutToMono(row);
            }
        }
    });
    surface.Touch(bounds);
}

}  // namespace kawin
