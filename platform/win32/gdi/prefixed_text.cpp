#include "prefixed_text.h"

#include <algorithm>

namespace kawin {

PrefixedText PrefixedText::Plain(std::u16string_view text) {
    PrefixedText result;
    result.original_ = text;
    return result;
}

PrefixedText PrefixedText::Parse(std::u16string_view text) {
    PrefixedText result = Plain(text);
    if (text.find(u'&') == text.npos) {
        return result;
    }
    result.changed_ = true;
    result.stripped_.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == u'&' && at + 1 < text.size()) {
            result.removed_.push_back(result.stripped_.size());
            ++at;
            if (text[at] != u'&') {
                result.marked_.push_back(result.stripped_.size());
            }
        }
        result.stripped_.push_back(text[at]);
    }
    return result;
}

std::size_t PrefixedText::Original(std::size_t unit) const noexcept {
    const bool at_end = unit == Text().size();
    const auto before = at_end ? removed_.end() : std::upper_bound(removed_.begin(), removed_.end(), unit);
    return unit + static_cast<std::size_t>(before - removed_.begin());
}

}  // namespace kawin
