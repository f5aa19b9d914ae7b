#pragma once

// Lines of a text: their widths, with tabs, and where they break.

#include <string_view>

#include "text_extents.h"

namespace kawin {

class LineExtents {
public:
    // `tab` is the distance of tab stops in pixels; 0: tabs are blanks. `extents` has to outlive it.
    LineExtents(TextExtents& extents, int tab) noexcept : extents_(extents), tab_(tab) {}

    std::u16string_view Text() const noexcept { return extents_.Text(); }
    bool IsTab(std::size_t unit) const noexcept { return tab_ > 0 && Text()[unit] == u'\t'; }

    // How far the line is after `unit`, when it is at `x` in front of it. May throw std::bad_alloc, as all that follow.
    int After(std::size_t unit, int x);

    int Width(std::size_t begin, std::size_t end);

    // The end of the longest beginning of [begin, end) that is in `width`; no part of a character.
    std::size_t Fitting(std::size_t begin, std::size_t end, int width);

    // The begin of its shortest end that is in `width`, measured without regard to tab stops; no part of a character.
    std::size_t FittingFromEnd(std::size_t begin, std::size_t end, int width);

private:
    TextExtents& extents_;
    int tab_;
};

struct TextLine {
    std::size_t begin;
    std::size_t end;
    std::size_t next;  // where the line after it begins
};

struct LineRules {
    bool single_line = false;          // line ends are blanks
    bool break_words = false;          // at blanks
    bool break_anywhere = false;       // words that are too long
    bool break_at_full_width = false;  // and beside full-width characters
    int width = 0;
};

class LineBreaker {
public:
    LineBreaker(LineExtents& extents, const LineRules& rules) noexcept : extents_(extents), rules_(rules) {}

    // The line that begins at `begin`, which is below the text's size. May throw std::bad_alloc.
    TextLine LineAt(std::size_t begin);

    // The same up to where the text itself ends the line.
    TextLine ParagraphAt(std::size_t begin) const noexcept;

private:
    std::size_t AfterLineEnd(std::size_t at) const noexcept;
    bool BreaksBetween(std::size_t unit) const noexcept;

    LineExtents& extents_;
    LineRules rules_;
};

}  // namespace kawin
