#pragma once

// How a window's frame looks.

#include "window_messages.h"

namespace kawin {

// Draws the frame of a window, 0,0 being its corner; the client area stays.
void PaintFrame(HWND window, HDC context);

// The same on the window itself.
void PaintFrame(HWND window);

}  // namespace kawin
