#include "text_lines.h"

#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include <optional>

#include "region_shape.h"

namespace kawin {
namespace {

constexpr std::u16string_view kLineEnds = u"\r\n";

bool IsBlank(WCHAR unit) noexcept {
    return unit == u' ' || unit == u'\t';
}

bool IsFullWidth(UChar32 character) noexcept {
    const int width = u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH;
}

}  // namespace

int LineExtents::After(std::size_t unit, int x) {
    if (!IsTab(unit)) {
        return CutCoordinate(std::int64_t{x} + extents_.Advance(unit));
    }
    return CutCoordinate((x / tab_ + std::int64_t{1}) * tab_);
}

int LineExtents::Width(std::size_t begin, std::size_t end) {
    int x = 0;
    for (std::size_t unit = begin; unit < end; ++unit) {
        x = After(unit, x);
    }
    return x;
}

std::size_t LineExtents::Fitting(std::size_t begin, std::size_t end, int width) {
    int x = 0;
    for (std::size_t unit = begin; unit < end; ++unit) {
        x = After(unit, x);
        if (x > width) {
            return unit;
        }
    }
    return end;
}

std::size_t LineExtents::FittingFromEnd(std::size_t begin, std::size_t end, int width) {
    std::size_t fitting = end;
    int x = 0;
    for (std::size_t unit = end; unit > begin; --unit) {
        const int advance = extents_.Advance(unit - 1);
        x += advance;
        if (x > width) {
            break;
        }
        if (advance > 0) {  // a character's first unit
            fitting = unit - 1;
        }
    }
    return fitting;
}

std::size_t LineBreaker::AfterLineEnd(std::size_t at) const noexcept {
    const std::u16string_view text = extents_.Text();
    const std::size_t next = at + 1;
    const bool both = next < text.size() && text[next] != text[at] && kLineEnds.find(text[next]) != kLineEnds.npos;
    return both ? next + 1 : next;
}

TextLine LineBreaker::ParagraphAt(std::size_t begin) const noexcept {
    const std::u16string_view text = extents_.Text();
    const std::size_t end = rules_.single_line ? text.npos : text.find_first_of(kLineEnds, begin);
    return end == text.npos ? TextLine{begin, text.size(), text.size()} : TextLine{begin, end, AfterLineEnd(end)};
}

bool LineBreaker::BreaksBetween(std::size_t unit) const noexcept {
    const std::u16string_view text = extents_.Text();
    UChar32 before = 0;
    UChar32 after = 0;
    std::size_t at = unit;
    U16_PREV(text.data(), 0, at, before);
    at = unit;
    U16_NEXT(text.data(), at, text.size(), after);
    return IsFullWidth(before) || IsFullWidth(after);
}

TextLine LineBreaker::LineAt(std::size_t begin) {
    if (rules_.single_line || !rules_.break_words) {
        return ParagraphAt(begin);
    }
    const std::u16string_view text = extents_.Text();
    std::optional<TextLine> broken;  // the longest so far
    int x = 0;
    for (std::size_t unit = begin; unit < text.size(); ++unit) {
        if (kLineEnds.find(text[unit]) != kLineEnds.npos) {
            return {begin, unit, AfterLineEnd(unit)};
        }
        const int before = x;
        x = extents_.After(unit, x);
        if (IsBlank(text[unit])) {
            const bool follows_blank = unit > begin && IsBlank(text[unit - 1]) && broken;
            broken = TextLine{begin, follows_blank ? broken->end : unit, unit + 1};
            continue;
        }
        const bool begins_character = x > before;
        if (begins_character && unit > begin && rules_.break_at_full_width && !IsBlank(text[unit - 1]) && BreaksBetween(unit)) {
            broken = TextLine{begin, unit, unit};
        }
        if (begins_character && x > rules_.width) {
            if (broken) {
                return *broken;
            }
            if (rules_.break_anywhere && unit > begin) {
                return {begin, unit, unit};
            }
        }
    }
    return {begin, text.size(), text.size()};
}

}  // namespace kawin
