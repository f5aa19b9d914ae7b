#pragma once

#include <span>

#include "region_shape.h"

namespace kawin {

// What a pen of this width covers along joined lines, with round ends and corners; only what lies in `area`. A pixel is covered
// when its middle is. Throws std::bad_alloc.
RegionShape WideLines(std::span<const POINT> points, LONG width, const RECT& area);

}  // namespace kawin
