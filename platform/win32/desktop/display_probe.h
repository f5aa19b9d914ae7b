#pragma once

// What the display says of itself; of interest before anything is shown on it, too.

#include <vector>

#include "screen.h"

namespace kawin {

// The display's monitors, the primary one first; empty when no display can be opened. From every thread. May throw
// std::bad_alloc.
std::vector<Monitor> DisplayMonitors();

}  // namespace kawin
