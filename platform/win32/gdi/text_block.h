#pragma once

// A text in a rectangle, line by line: measured, or drawn.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "drawing_context.h"
#include "ellipsis.h"
#include "prefixed_text.h"
#include "text.h"
#include "text_lines.h"
#include "text_painter.h"

namespace kawin {

// Pixels.
struct BlockLayout {
    RECT rect;    // logical, without margins
    UINT format;  // DT_*
    int tab;      // distance of tab stops; 0: none
    int line_height;
};

class TextBlock {
public:
    // The context and the text have to outlive it. May throw std::bad_alloc, as all that follow.
    TextBlock(DrawingContext& context, std::shared_ptr<const RealizedFont> font, const BlockLayout& layout,
              std::u16string_view text);

    // Goes through the lines, and draws them unless only measures are wanted; to be called once.
    void Run();

    // What Run has found: from the rectangle's top to the end of the last line; the longest line; how many units it went through;
    // and the text as it is shown, empty when nothing of it was cut.
    int Height() const noexcept { return height_; }
    int Width() const noexcept { return width_; }
    std::size_t UnitsDone() const noexcept { return source_.Original(done_); }
    const std::u16string& ShortenedText() const noexcept { return shortened_; }

private:
    struct ShownLine {
        std::u16string_view whole;
        std::vector<std::size_t> marked;  // units of Text
        int width;
        std::u16string shortened;  // empty when the line was not cut

        std::u16string_view Text() const noexcept { return shortened.empty() ? whole : std::u16string_view(shortened); }
    };

    bool Has(UINT flag) const noexcept { return (layout_.format & flag) != 0; }
    int Room() const noexcept { return CutCoordinate(std::int64_t{layout_.rect.right} - layout_.rect.left); }
    bool IsVisible(std::int64_t y) const noexcept;
    std::int64_t FirstTop() const noexcept;
    ShownLine Show(const TextLine& line, bool is_last, bool force);
    void Cut(ShownLine& shown, const ShortenedLine& cut);
    void KeepShortened(const TextLine& line, const ShownLine& shown);
    void Draw(const ShownLine& line, std::int64_t y);
    int DrawRun(const ShownLine& line, std::size_t begin, std::size_t end, int x, int baseline);
    void DrawMarks(const ShownLine& line, std::size_t begin, const ShapedText& shaped, int x, int baseline);
    int LeftOf(int width) const noexcept;

    DrawingContext& context_;
    std::shared_ptr<const RealizedFont> font_;
    BlockLayout layout_;
    PrefixedText source_;
    TextExtents extents_;
    LineExtents lines_;
    TextPainter painter_;
    int ellipsis_width_;
    int height_ = 0;
    int width_ = 0;
    std::size_t done_ = 0;
    std::u16string shortened_;
    std::size_t shortened_from_ = 0;  // how much of the text `shortened_` stands for
};

}  // namespace kawin
