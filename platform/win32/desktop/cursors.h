#pragma once

#include "icons.h"

namespace kawin {

// What a display shows for the pointer; null: nothing.
HCURSOR ShownCursor() noexcept;

}  // namespace kawin
