#pragma once

// English texts of the error numbers that this layer sets, and a few more that hosts ask for.

#include <string_view>

#include "../base/types.h"

namespace kawin {

// Without line break; empty for a number without text.
std::u16string_view ErrorText(DWORD error) noexcept;

}  // namespace kawin
