#pragma once

// How wide a text of any length is: arranged piece by piece, no further than asked for.

#include <memory>
#include <string_view>
#include <vector>

#include "text_engine.h"

namespace kawin {

// Where the piece that begins at `begin` (below the text's size) ends: after a blank where possible, never inside of a character.
std::size_t PieceEnd(std::u16string_view text, std::size_t begin) noexcept;

class TextExtents {
public:
    // `text` has to outlive it.
    TextExtents(std::shared_ptr<const RealizedFont> font, std::u16string_view text, bool right_to_left);

    std::u16string_view Text() const noexcept { return text_; }
    const RealizedFont& Font() const noexcept { return *font_; }
    bool RightToLeft() const noexcept { return right_to_left_; }

    // Pixels of the first `units`. May throw std::bad_alloc, as all that follow.
    int Until(std::size_t units);
    int Advance(std::size_t unit) { return Until(unit + 1) - Until(unit); }
    int Whole() { return Until(text_.size()); }

private:
    std::shared_ptr<const RealizedFont> font_;
    std::u16string_view text_;
    bool right_to_left_;
    std::vector<int> ends_ = {0};  // by unit, as far as arranged
};

}  // namespace kawin
