#include "ellipsis.h"

#include <algorithm>

namespace kawin {
namespace {

// `head` and `tail` are places in the text.
ShortenedLine Join(LineExtents& extents, const TextLine& line, std::size_t head, std::size_t tail) {
    const std::u16string_view text = extents.Text();
    ShortenedLine result = {std::u16string(text.substr(line.begin, head - line.begin)), head - line.begin, tail - line.begin};
    result.text += kEllipsis;
    result.text += text.substr(tail, line.end - tail);
    return result;
}

}  // namespace

std::size_t ShortenedLine::Find(std::size_t unit) const noexcept {
    if (unit < head) {
        return unit;
    }
    const std::size_t moved = unit - tail + head + kEllipsis.size();
    return unit >= tail && moved < text.size() ? moved : text.npos;
}

ShortenedLine CutAtEnd(LineExtents& extents, const TextLine& line, int width, int ellipsis_width) {
    return Join(extents, line, extents.Fitting(line.begin, line.end, width - ellipsis_width), line.end);
}

ShortenedLine CutPath(LineExtents& extents, const TextLine& line, int width, int ellipsis_width) {
    const std::u16string_view text = extents.Text().substr(line.begin, line.end - line.begin);
    const std::size_t separator = text.find_last_of(u"\\/");
    if (separator != text.npos) {
        const std::size_t tail = line.begin + separator;
        const int left = width - ellipsis_width - extents.Width(tail, line.end);
        return Join(extents, line, extents.Fitting(line.begin, tail, left), tail);
    }
    const int left = std::max(0, width - ellipsis_width);
    const std::size_t head = extents.Fitting(line.begin, line.end, left / 2);
    const std::size_t tail = extents.FittingFromEnd(head, line.end, left - extents.Width(line.begin, head));
    return Join(extents, line, head, tail);
}

}  // namespace kawin
