#include "text_extents.h"

#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <utility>

namespace kawin {
namespace {

constexpr int kWidest = 1 << 27;  // extents beyond it stay there

// Whether a unit belongs to the character before it.
bool IsContinuation(WCHAR unit) noexcept {
    constexpr WCHAR kZeroWidthJoiner = 0x200D;
    return U16_IS_TRAIL(unit) || unit == kZeroWidthJoiner || (U_GET_GC_MASK(unit) & U_GC_M_MASK) != 0;
}

}  // namespace

std::size_t PieceEnd(std::u16string_view text, std::size_t begin) noexcept {
    if (text.size() - begin <= kLongestPiece) {
        return text.size();
    }
    const std::size_t most = begin + kLongestPiece;
    const std::size_t least = begin + kLongestPiece / 2;
    for (std::size_t end = most; end > least; --end) {
        if (text[end - 1] == u' ' && !IsContinuation(text[end])) {
            return end;
        }
    }
    for (std::size_t end = most; end > least; --end) {
        if (!IsContinuation(text[end])) {
            return end;
        }
    }
    return most;
}

TextExtents::TextExtents(std::shared_ptr<const RealizedFont> font, std::u16string_view text, bool right_to_left)
    : font_(std::move(font)), text_(text), right_to_left_(right_to_left) {}

int TextExtents::Until(std::size_t units) {
    while (ends_.size() <= units) {
        const std::size_t begin = ends_.size() - 1;
        const std::size_t end = PieceEnd(text_, begin);
        const auto shaped = ShapeText(font_, text_.substr(begin, end - begin), right_to_left_);
        for (const int advance : shaped->advances) {
            ends_.push_back(std::min(ends_.back() + advance, kWidest));
        }
    }
    return ends_[units];
}

}  // namespace kawin
