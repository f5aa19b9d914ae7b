#pragma once

// Opening contexts on a window, for this room.

#include "update_regions.h"

namespace kawin {

// A context that draws on `visible` (surface coordinates) of the window or its client area. Null with ERROR_NOT_ENOUGH_MEMORY.
// With the lock held.
HDC OpenContext(Window& window, Area area, RegionShape visible);

}  // namespace kawin
