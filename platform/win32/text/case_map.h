#pragma once

// Upper and lower case of single UTF-16 units, as the system maps them.

#include "../base/types.h"

namespace kawin {

// Unicode simple case mapping, but for the mappings from beyond ASCII into it.
WCHAR UpperUnit(WCHAR unit) noexcept;
WCHAR LowerUnit(WCHAR unit) noexcept;

}  // namespace kawin
