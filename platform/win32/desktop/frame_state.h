#pragma once

// What a window's frame remembers.

#include "window_messages.h"

namespace kawin {

struct FrameState {
    bool active = false;      // drawn as the active window's
    int hot = HTNOWHERE;      // the box below the pointer
    int pressed = HTNOWHERE;  // the box that is held down
    HMENU menu = nullptr;     // GetSystemMenu's copy; owned
};

}  // namespace kawin
