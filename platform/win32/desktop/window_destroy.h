#pragma once

// Ending windows, for this room. Without the lock held.

#include "../gdi/gdi_types.h"

namespace kawin {

// A window that refused its creation: WM_NCDESTROY without WM_DESTROY, children first.
void DropWindow(HWND window);

// Takes the window out of the world without a message.
void EraseWindow(HWND window);

}  // namespace kawin
