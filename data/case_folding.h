#pragma once

// Texts compared without regard to case. Internal to the library.

#include <tchar.h>
#include <string_view>

namespace kadata {

// Whether two texts are the same but for case: by Unicode's simple case folding (CaseFolding.txt of the Unicode Character
// Database, statuses C and S), which no locale changes and which is the same on every platform. Umlauts and the final sigma fold;
// the sharp s equals its capital and never "ss"; the Turkish dotted and dotless i equal only themselves. Half a surrogate pair
// equals only itself.
bool IsSameIgnoringCase(std::basic_string_view<TCHAR> a, std::basic_string_view<TCHAR> b);

}  // namespace kadata
