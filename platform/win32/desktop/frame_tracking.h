#pragma once

// What the frame does while a button is held, in loops of their own. In the window's thread, without a lock.

#include "window_messages.h"

namespace kawin {

// Follows the pointer until the button comes up; whether that was over the box (HTCLOSE ...) that it went down on.
bool TrackBox(HWND window, int box);

// SC_MOVE and SC_SIZE. `part` is a WMSZ_* or, for moving, 0; `by_pointer`: begun with the button down, else by the keyboard.
// Nothing for a window that is minimised, maximised or, for SC_SIZE, cannot be sized. Escape undoes it.
void MoveOrSize(HWND window, UINT command, WPARAM part, bool by_pointer);

// Notes the box below the pointer (HTNOWHERE: none), and has the frame drawn when that is another one.
void SetHotBox(HWND window, int hit);

}  // namespace kawin
