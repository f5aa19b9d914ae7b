#pragma once

// Showing windows, for this room. Without the lock held.

#include "window_tree.h"

namespace kawin {

// WM_SIZE and WM_MOVE as they are now.
void SendSizeAndMove(HWND window);

// A window with WS_MINIMIZE or WS_MAXIMIZE (SW_MINIMIZE, SW_MAXIMIZE) gets its place before it is shown for the first time.
void PlaceAtBirth(HWND window, int command);

// What a window's WM_GETMINMAXINFO begins with.
MINMAXINFO DefaultMinMax(HWND window);

}  // namespace kawin
