#pragma once

// The window that the pointer is on.

#include "desktop_state.h"

namespace kawin {

// The topmost visible window of the desktop at a point of the screen; null for none. With the lock held.
Window* TopLevelAt(const DesktopLock& desktop, POINT screen);

struct PointerTarget {
    HWND window = nullptr;
    int hit = HTNOWHERE;  // what WM_NCHITTEST says; HTERROR over a disabled top-level window
};

// Asks the windows of this thread at a point, from inside out and top to bottom, until one is not HTTRANSPARENT. Disabled
// children are not asked. Without the lock held.
PointerTarget TargetAt(POINT screen);

}  // namespace kawin
