#pragma once

// The order of the windows: topmost ones above the others, owned ones above their owners. With the lock held.

#include "desktop_state.h"

namespace kawin {

// Places a window behind `after` (a sibling or HWND_TOP, HWND_BOTTOM, HWND_TOPMOST, HWND_NOTOPMOST), and its owned windows above
// it; for HWND_TOP also its owner below it unless `owners` is false. Whether anything changed.
bool PlaceInOrder(const DesktopLock& desktop, Window& window, HWND after, bool owners);

// Where a new window goes: a top-level one to the top of its kind, a child to the bottom.
void LinkNew(Window& window, Window& parent);

// The window that takes over when `window` goes: its owner, else the topmost visible and enabled one of the same thread.
HWND SuccessorOf(const DesktopLock& desktop, const Window& window);

}  // namespace kawin
