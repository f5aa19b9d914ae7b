#pragma once

// What "Advapi32.dll" and "KtmW32.dll" have by name. Internal to the layer.

#include <span>

#include "../modules/served_modules.h"

namespace kawin {

std::span<const ServedFunction> ServedRegistryFunctions();
std::span<const ServedFunction> ServedTransactionFunctions();

}  // namespace kawin
