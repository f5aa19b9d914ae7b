#pragma once

// Where the desktop is, and how large.

#include <vector>

#include "../base/types.h"

namespace kawin {

struct Monitor {
    RECT bounds;
    RECT work;  // without the bars of the desktop
};

// Whether windows are to be seen: nothing asks for an off-screen desktop, and the environment names a display.
bool WantsDisplay() noexcept;

// All of them, the primary one first; never empty. May throw std::bad_alloc.
std::vector<Monitor> CurrentMonitors();

}  // namespace kawin
