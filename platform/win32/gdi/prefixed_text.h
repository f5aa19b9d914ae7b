#pragma once

// Text in which "&" marks the character after it.

#include <string>
#include <string_view>
#include <vector>

namespace kawin {

class PrefixedText {
public:
    // `text` as it is; it has to outlive the object.
    static PrefixedText Plain(std::u16string_view text);

    // "&" in front of a character marks it and goes; of "&&" one stays; one at the end stays.
    static PrefixedText Parse(std::u16string_view text);

    std::u16string_view Text() const noexcept { return changed_ ? std::u16string_view(stripped_) : original_; }

    // The marked units of Text, ascending.
    const std::vector<std::size_t>& Marked() const noexcept { return marked_; }

    // Where a unit of Text, or its end, was in the original.
    std::size_t Original(std::size_t unit) const noexcept;

private:
    std::u16string_view original_;
    bool changed_ = false;
    std::u16string stripped_;
    std::vector<std::size_t> marked_;
    std::vector<std::size_t> removed_;  // in front of which units of Text an "&" went, ascending
};

}  // namespace kawin
