#pragma once

// The source of a copy as the target wants it: in place, of its depth, scaled.

#include <memory>

#include "block.h"
#include "scaling.h"
#include "surface.h"

namespace kawin {

// Both contexts have surfaces.
struct Transfer {
    const DrawingContext& target;
    const DrawingContext& source;
    Block to;
    Block from;
};

struct SourcePixels {
    std::shared_ptr<const Surface> surface;
    POINT origin = {};  // where on the target its first pixel belongs
    RECT area = {};     // for which of the target's pixels there are some; empty when for none

    const Pixel* At(int x, int y) const noexcept { return surface->Row(y - origin.y) + (x - origin.x); }
};

// For what of `wanted`, on the target's surface, the source has pixels. They are read in place where that is possible and drawing
// on the target does not change them. Throws std::bad_alloc.
SourcePixels ReadSource(const Transfer& transfer, Shrinking shrinking, const RECT& wanted);

}  // namespace kawin
