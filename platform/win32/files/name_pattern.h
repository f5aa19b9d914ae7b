#pragma once

// Matching of file names against a pattern with the system's wildcard rules. Internal to the layer.

#include <string>
#include <string_view>

#include "../base/types.h"

namespace kawin {

// Case does not matter (simple folding). Beside * and ? the three marks of the system's own rules are understood where a caller
// writes them: < any text up to the last dot, > one character or none before a dot or the end, " a dot or the end.
class NamePattern {
public:
    explicit NamePattern(std::u16string_view pattern);

    // `name` is a file name as the kernel gives it.
    bool Matches(std::string_view name) const;

    static bool HasWildcards(std::u16string_view text) { return text.find_first_of(u"*?<>\"") != text.npos; }

private:
    std::u16string pattern_;  // translated and folded
    bool only_stars_;         // no other wildcard
};

}  // namespace kawin
