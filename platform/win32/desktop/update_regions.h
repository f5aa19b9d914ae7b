#pragma once

// What of a window shows, and what of it is to be drawn anew. All with the lock held.
//
// Three systems of coordinates: the window's (0,0 is its corner), the client area's, and the surface's (0,0 is the corner of the
// top-level window, on whose surface everything in it is drawn). Top-level windows do not cover each other: each has all its
// pixels.

#include "desktop_state.h"

namespace kawin {

enum class Area { Window, Client };

struct Clipping {
    bool children = false;  // what visible children cover is out
    bool siblings = false;  // what siblings above cover is out
};

// As the window's styles say.
Clipping ClippingOf(const Window& window) noexcept;

// What of the window is to be seen, in its top-level window's surface coordinates. Empty for one that is not shown.
RegionShape VisibleRegion(const Window& window, Area area, Clipping clipping);

// Where the window's corner lies on the surface.
POINT SurfaceOrigin(const Window& window) noexcept;

// The client area in window coordinates, and the whole window in the same.
RECT ClientInWindow(const Window& window) noexcept;
RECT WholeWindow(const Window& window) noexcept;

// Adds a part (window coordinates) to the update region, and to those of the children as the flags (RDW_ERASE, RDW_FRAME,
// RDW_NOCHILDREN, RDW_ALLCHILDREN) say; only what shows.
void Invalidate(Window& window, const RegionShape& part, UINT flags);

// Takes a part out of the update regions. RDW_NOCHILDREN, RDW_ALLCHILDREN, RDW_NOFRAME.
void Validate(Window& window, const RegionShape& part, UINT flags);

// Everything in and below the window is valid: it does not show any more.
void ForgetUpdates(Window& window);

// The update region's part in the client area, in client coordinates.
RegionShape ClientUpdate(const Window& window);

// The surface of the window's top-level window, made or fitted to its size when needed; null without memory or for an empty
// window.
std::shared_ptr<Surface> SurfaceOf(Window& window);

}  // namespace kawin
