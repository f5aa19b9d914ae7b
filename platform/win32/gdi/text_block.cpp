#include "text_block.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "contexts.h"

namespace kawin {
namespace {

constexpr UINT kEllipses = DT_END_ELLIPSIS | DT_WORD_ELLIPSIS | DT_PATH_ELLIPSIS;

std::optional<RECT> ClipOf(const DrawingContext& context, const BlockLayout& layout) noexcept {
    if ((layout.format & DT_NOCLIP) != 0) {
        return std::nullopt;
    }
    return context.ToSurface(layout.rect);
}

TextPainter PainterFor(DrawingContext& context, const std::shared_ptr<const RealizedFont>& font, const BlockLayout& layout) {
    const std::optional<RECT> clip = ClipOf(context, layout);
    return TextPainter(context, font, clip ? &*clip : nullptr);
}

LineRules RulesOf(UINT format, int width) noexcept {
    LineRules rules;
    rules.single_line = (format & DT_SINGLELINE) != 0;
    rules.break_words = (format & DT_WORDBREAK) != 0;
    rules.break_anywhere = (format & DT_EDITCONTROL) != 0;
    rules.break_at_full_width = (format & DT_NOFULLWIDTHCHARBREAK) == 0;
    rules.width = width;
    return rules;
}

}  // namespace

TextBlock::TextBlock(DrawingContext& context, std::shared_ptr<const RealizedFont> font, const BlockLayout& layout,
                     std::u16string_view text)
    : context_(context),
      font_(std::move(font)),
      layout_(layout),
      source_((layout.format & DT_NOPREFIX) != 0 ? PrefixedText::Plain(text) : PrefixedText::Parse(text)),
      extents_(font_, source_.Text(), (layout.format & DT_RTLREADING) != 0),
      lines_(extents_, layout.tab),
      painter_(PainterFor(context, font_, layout)),
      ellipsis_width_((layout.format & kEllipses) != 0 ? TextExtents(font_, kEllipsis, false).Whole() : 0) {}

void TextBlock::Run() {
    LineBreaker breaker(lines_, RulesOf(layout_.format, Room()));
    const std::size_t size = source_.Text().size();
    std::int64_t y = FirstTop();
    bool room_left = true;
    while (done_ < size && room_left) {
        TextLine line = breaker.LineAt(done_);
        const std::int64_t next_y = y + layout_.line_height;
        room_left = IsVisible(next_y);
        if (!room_left && Has(DT_END_ELLIPSIS)) {
            line = breaker.ParagraphAt(done_);  // what would stand below fills the line as far as it goes
        }
        const bool more_below = line.next < size && !room_left;
        const ShownLine shown = Show(line, line.next >= size || !room_left, more_below && Has(DT_END_ELLIPSIS));
        width_ = std::max(width_, shown.width);
        if (!Has(DT_CALCRECT)) {
            Draw(shown, y);
        }
        done_ = line.next;
        y = next_y;
    }
    height_ = CutCoordinate(y - layout_.rect.top);
    if (!shortened_.empty() && room_left) {
        shortened_ += source_.Text().substr(shortened_from_);
    }
}

// Whether a line that is not the first one would be shown there.
bool TextBlock::IsVisible(std::int64_t y) const noexcept {
    if (Has(DT_NOCLIP) || Has(DT_CALCRECT)) {
        return true;
    }
    return Has(DT_EDITCONTROL) ? y + layout_.line_height <= layout_.rect.bottom : y < layout_.rect.bottom;
}

std::int64_t TextBlock::FirstTop() const noexcept {
    const std::int64_t top = layout_.rect.top;
    const std::int64_t bottom = layout_.rect.bottom;
    if (Has(DT_SINGLELINE) && Has(DT_VCENTER)) {
        return top + (bottom - top) / 2 - layout_.line_height / 2;
    }
    return Has(DT_SINGLELINE) && Has(DT_BOTTOM) ? bottom - layout_.line_height : top;
}

// `force`: something is missing even when the line is short enough.
TextBlock::ShownLine TextBlock::Show(const TextLine& line, bool is_last, bool force) {
    ShownLine shown = {source_.Text().substr(line.begin, line.end - line.begin), {}, lines_.Width(line.begin, line.end), {}};
    const auto& marked = source_.Marked();
    for (auto unit = std::lower_bound(marked.begin(), marked.end(), line.begin); unit != marked.end() && *unit < line.end;
         ++unit) {
        shown.marked.push_back(*unit - line.begin);
    }
    if (shown.width > Room() && Has(DT_PATH_ELLIPSIS)) {
        Cut(shown, CutPath(lines_, line, Room(), ellipsis_width_));
    }
    const bool cut_end = Has(DT_WORD_ELLIPSIS) || (Has(DT_END_ELLIPSIS) && is_last);
    if (force || (shown.width > Room() && cut_end)) {
        TextExtents extents(font_, shown.Text(), extents_.RightToLeft());
        LineExtents again(extents, layout_.tab);
        Cut(shown, CutAtEnd(again, {0, shown.Text().size(), shown.Text().size()}, Room(), ellipsis_width_));
    }
    if (!shown.shortened.empty()) {
        KeepShortened(line, shown);
    }
    return shown;
}

void TextBlock::Cut(ShownLine& shown, const ShortenedLine& cut) {
    std::vector<std::size_t> marked;
    for (const std::size_t unit : shown.marked) {
        if (const std::size_t moved = cut.Find(unit); moved != cut.text.npos) {
            marked.push_back(moved);
        }
    }
    shown.marked = std::move(marked);
    shown.shortened = cut.text;
    TextExtents extents(font_, shown.Text(), extents_.RightToLeft());
    shown.width = LineExtents(extents, layout_.tab).Width(0, shown.Text().size());
}

void TextBlock::KeepShortened(const TextLine& line, const ShownLine& shown) {
    shortened_ += source_.Text().substr(shortened_from_, line.begin - shortened_from_);
    shortened_ += shown.Text();
    shortened_from_ = line.end;
}

int TextBlock::LeftOf(int width) const noexcept {
    const int spare = Room() - width;
    return Has(DT_RIGHT) ? spare : Has(DT_CENTER) ? spare / 2 : 0;
}

void TextBlock::Draw(const ShownLine& line, std::int64_t y) {
    const int baseline = static_cast<int>(font_->metrics.tmAscent);
    const int left = LeftOf(line.width);
    painter_.MoveTo({layout_.rect.left, CutCoordinate(y)});
    if (!painter_.Sees(left, left + line.width, baseline)) {
        return;
    }
    if (context_.state.back_mode == OPAQUE && !Has(DT_PREFIXONLY)) {
        painter_.Fill({left, 0, left + line.width, font_->metrics.tmHeight}, context_.state.back_color);
    }
    int x = left;
    for (std::size_t begin = 0; begin < line.Text().size();) {
        if (layout_.tab > 0 && line.Text()[begin] == u'\t') {
            x = left + CutCoordinate(((x - left) / layout_.tab + std::int64_t{1}) * layout_.tab);
            ++begin;
            continue;
        }
        const std::size_t tab = layout_.tab > 0 ? line.Text().find(u'\t', begin) : line.Text().npos;
        const std::size_t end = std::min(tab, line.Text().size());
        x = DrawRun(line, begin, end, x, baseline);
        begin = end;
    }
    if (!Has(DT_PREFIXONLY)) {
        painter_.Rules(left, baseline, line.width);
    }
}

// What is between tabs; returns where it ends, or where it can be seen no longer.
int TextBlock::DrawRun(const ShownLine& line, std::size_t begin, std::size_t end, int x, int baseline) {
    const std::u16string_view run = line.Text().substr(0, end);
    while (begin < end && painter_.Sees(x, kFarthest, baseline)) {
        const std::size_t piece_end = PieceEnd(run, begin);
        const auto shaped = ShapeText(font_, run.substr(begin, piece_end - begin), extents_.RightToLeft());
        DrawMarks(line, begin, *shaped, x, baseline);
        x = Has(DT_PREFIXONLY) ? CutCoordinate(std::int64_t{x} + shaped->width) : painter_.Glyphs(*shaped, x, baseline);
        begin = piece_end;
    }
    return x;
}

void TextBlock::DrawMarks(const ShownLine& line, std::size_t begin, const ShapedText& shaped, int x, int baseline) {
    if (Has(DT_HIDEPREFIX)) {
        return;
    }
    for (const std::size_t unit : line.marked) {
        for (const TextCluster& cluster : shaped.clusters) {
            const std::size_t first = begin + static_cast<std::size_t>(cluster.first_unit);
            if (unit >= first && unit < first + static_cast<std::size_t>(cluster.units)) {
                painter_.Underline(x + cluster.left, baseline, cluster.width);
            }
        }
    }
}

}  // namespace kawin
