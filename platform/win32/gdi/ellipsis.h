#pragma once

// Lines that are cut to a width, with "..." where something is missing.

#include <memory>
#include <string>
#include <vector>

#include "text_lines.h"

namespace kawin {

inline constexpr std::u16string_view kEllipsis = u"...";

// What is left of a line: `head` units of its begin, "...", and its end from `tail` on.
struct ShortenedLine {
    std::u16string text;
    std::size_t head;
    std::size_t tail;  // from the line's begin; the line's size when there is none

    // Where a unit of the line is now; npos when it is gone.
    std::size_t Find(std::size_t unit) const noexcept;
};

// As wide as `width` allows; the "..." is there at the least. May throw std::bad_alloc.
ShortenedLine CutAtEnd(LineExtents& extents, const TextLine& line, int width, int ellipsis_width);

// The same; what is from the last "\" or "/" on stays, however wide. Without one, half of the width is the begin's.
ShortenedLine CutPath(LineExtents& extents, const TextLine& line, int width, int ellipsis_width);

}  // namespace kawin
