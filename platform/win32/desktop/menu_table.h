#pragma once

// Menus and the windows that they belong to.

#include "menus.h"

namespace kawin {

// GetSystemMenu's copy of a window; null while it has none.
HMENU OwnSystemMenu(HWND window);

// With the window: its copy goes too.
void ForgetSystemMenu(HWND window);

}  // namespace kawin
