#pragma once

// Pango, which only one thread at a time may use, and what is kept of its work: the fonts used last and the short texts arranged
// last.

#include <memory>
#include <string_view>

#include "font_match.h"
#include "shaped_text.h"

namespace kawin {

class FontObject;

// The font of a description; SYSTEM_FONT's for null. May throw std::bad_alloc. Any thread.
std::shared_ptr<const RealizedFont> RealizeFont(const FontObject* font);

// `text` arranged as one line; at most kLongestPiece units. May throw std::bad_alloc. Any thread.
std::shared_ptr<const ShapedText> ShapeText(const std::shared_ptr<const RealizedFont>& font, std::u16string_view text,
                                            bool right_to_left);

}  // namespace kawin
