#pragma once

// Messages of the keyboard.

#include "desktop_state.h"

namespace kawin {

// The message for a key or a character, for the window with the focus; a null window when there is none. With the lock held.
MSG KeyMessage(const ThreadQueue& queue, const InputEvent& event);

}  // namespace kawin
