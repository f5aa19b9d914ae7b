#pragma once

// What "dbghelp.dll" has by name. Internal to the layer.

#include <span>

#include "../modules/served_modules.h"

namespace kawin {

std::span<const ServedFunction> ServedDebugFunctions();

}  // namespace kawin
