#pragma once

// Which window is active and has the focus. Without the lock held.

#include "window_tree.h"

namespace kawin {

// Makes a top-level window of the calling thread its active one, and the thread the foreground one. WA_ACTIVE or WA_CLICKACTIVE.
// False when a hook refused or the window is gone.
bool ActivateWindow(HWND window, WORD how);

// Gives the focus to a window of the calling thread (null: to none), in an active top-level window already. The one before.
HWND MoveFocus(HWND window);

// A window was hidden, disabled or goes: focus, activation and capture leave it and what is in it.
void LeaveHidden(HWND window);

// No window of the thread is active any more. Another window, or none, takes over elsewhere.
void Deactivate(HWND window, HWND next);

}  // namespace kawin
