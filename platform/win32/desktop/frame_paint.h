#pragma once

// How a window's frame looks.

#include "window_messages.h"

namespace kawin {

// Draws the frame of a window, 0,0 being its corner; the client area stays.
void PaintFrame(HWND window, HDC context);

// The same on the window itself; what lies in `part` (coordinates of the screen), or all of it for null and 1, as WM_NCPAINT has
// it.
void PaintFrame(HWND window, HRGN part = nullptr);

}  // namespace kawin
