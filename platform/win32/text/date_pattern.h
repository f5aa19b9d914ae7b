#pragma once

// Patterns of dates and times: runs of a letter, and literal text, which may stand in quotes.

#include <string>
#include <string_view>

#include "../base/types.h"

namespace kawin {

struct PatternPart {
    WCHAR letter = 0;       // 0 for literal text
    std::size_t count = 0;  // length of the run
    std::u16string text;    // the literal, without its quotes
};

// Takes the next part off the front of a pattern; only `letters` make runs. False at the end.
bool TakePart(std::u16string_view& pattern, std::u16string_view letters, PatternPart& part);

// ICU's pattern in the system's letters: years with four digits, numbers, names, markers; no-break spaces are plain ones.
std::u16string ToSystemPattern(std::u16string_view icu_pattern);

// The text with plain spaces for no-break ones.
std::u16string WithPlainSpaces(std::u16string_view text);

}  // namespace kawin
