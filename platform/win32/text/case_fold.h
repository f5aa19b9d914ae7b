#pragma once

// Caseless comparison the way names of files, keys and modules are compared: unit by unit, the same in every locale.

#include <string_view>

#include "../base/types.h"

namespace kawin {

// Unicode simple case folding of one UTF-16 unit; surrogates are their own folding.
char16_t FoldSimple(char16_t unit) noexcept;

// Negative, 0 or positive, by the first folded unit that differs, then by length.
int CompareFolded(std::u16string_view a, std::u16string_view b) noexcept;

}  // namespace kawin
