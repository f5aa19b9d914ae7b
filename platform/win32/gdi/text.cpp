#include "text.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <string_view>

#include "../base/error.h"
#include "../text/no_throw.h"
#include "contexts.h"
#include "drawing_context.h"
#include "text_extents.h"
#include "text_painter.h"

namespace kawin {
namespace {

constexpr UINT kKnownOptions = ETO_OPAQUE | ETO_CLIPPED | ETO_RTLREADING;
constexpr UINT kAcross = TA_LEFT | TA_RIGHT | TA_CENTER;
constexpr UINT kUpright = TA_TOP | TA_BOTTOM | TA_BASELINE;

BOOL Refuse(DWORD error) noexcept {
    SetLastError(error);
    return FALSE;
}

int Sum(std::span<const INT> widths) noexcept {
    std::int64_t sum = 0;
    for (const INT width : widths) {
        sum += width;
    }
    return CutCoordinate(sum);
}

// Where a line of `width` begins, from its reference point.
int LeftOf(UINT align, int width) noexcept {
    switch (align & kAcross) {
        case TA_CENTER:
            return -width / 2;
        case TA_RIGHT:
            return -width;
        default:
            return 0;
    }
}

int BaselineOf(UINT align, const TEXTMETRICW& metrics) noexcept {
    switch (align & kUpright) {
        case TA_BASELINE:
            return 0;
        case TA_BOTTOM:
            return static_cast<int>(-metrics.tmDescent);
        default:
            return static_cast<int>(metrics.tmAscent);
    }
}

void DrawPieces(TextPainter& painter, const TextExtents& line, int x, int baseline, std::span<const INT> widths,
                std::shared_ptr<const RealizedFont> font) {
    for (std::size_t begin = 0; begin < line.Text().size();) {
        if (widths.empty() && !painter.Sees(x, kFarthest, baseline)) {
            return;
        }
        const std::size_t end = PieceEnd(line.Text(), begin);
        const auto shaped = ShapeText(font, line.Text().substr(begin, end - begin), line.RightToLeft());
        x = painter.Glyphs(*shaped, x, baseline, widths.empty() ? widths : widths.subspan(begin, end - begin));
        begin = end;
    }
}

void MovePen(ContextState& state, int width, double angle) noexcept {
    const UINT across = state.text_align & kAcross;
    if (across == TA_CENTER) {
        return;
    }
    const int along = across == TA_RIGHT ? -width : width;
    state.position.x = CutCoordinate(state.position.x + std::llround(along * std::cos(angle)));
    state.position.y = CutCoordinate(state.position.y - std::llround(along * std::sin(angle)));
}

void DrawLine(DrawingContext& context, POINT at, UINT options, const RECT* rect, std::u16string_view text,
              std::span<const INT> widths) {
    const auto font = RealizeFont(context.state.font.get());
    const UINT align = context.state.text_align;
    const RECT area = rect != nullptr ? context.ToSurface(*rect) : RECT{};
    TextPainter painter(context, font, rect != nullptr && (options & ETO_CLIPPED) != 0 ? &area : nullptr);
    if (rect != nullptr && (options & ETO_OPAQUE) != 0) {
        painter.FillSurface(area, context.state.back_color);
    }
    if (text.empty()) {
        return;
    }
    const bool right_to_left = (options & ETO_RTLREADING) != 0 || (align & TA_RTLREADING) != 0;
    TextExtents line(font, text, right_to_left);
    const int width = widths.empty() ? line.Whole() : Sum(widths);
    const int left = LeftOf(align, width);
    const int baseline = BaselineOf(align, font->metrics);
    painter.MoveTo((align & TA_UPDATECP) != 0 ? context.state.position : at);
    if (context.state.back_mode == OPAQUE) {
        painter.Fill({left, baseline - font->metrics.tmAscent, left + width, baseline + font->metrics.tmDescent},
                     context.state.back_color);
    }
    DrawPieces(painter, line, left, baseline, widths, font);
    painter.Rules(left, baseline, width);
    if ((align & TA_UPDATECP) != 0) {
        MovePen(context.state, width, font->angle);
    }
}

// What fits in `limit`, never a part of a character.
std::size_t CountFitting(TextExtents& line, int limit) {
    std::size_t fitting = 0;
    while (fitting < line.Text().size() && line.Until(fitting + 1) <= limit) {
        ++fitting;
    }
    return fitting;
}

}  // namespace
}  // namespace kawin

BOOL ExtTextOutW(HDC handle, int x, int y, UINT options, const RECT* rect, LPCWSTR text, UINT count, const INT* widths) noexcept {
    const auto context = kawin::FindContext(handle);
    if (!context) {
        return FALSE;
    }
    if ((options & ~kawin::kKnownOptions) != 0 || (text == nullptr && count != 0)) {
        return kawin::Refuse(ERROR_INVALID_PARAMETER);
    }
    return kawin::NoThrow([&]() -> BOOL {
        kawin::DrawLine(*context, {x, y}, options, rect, {text, count}, {widths, widths != nullptr ? count : 0});
        return TRUE;
    });
}

BOOL TextOutW(HDC context, int x, int y, LPCWSTR text, int count) noexcept {
    if (count < 0) {
        return kawin::Refuse(ERROR_INVALID_PARAMETER);
    }
    return ExtTextOutW(context, x, y, 0, nullptr, text, static_cast<UINT>(count), nullptr);
}

BOOL GetTextExtentPoint32W(HDC context, LPCWSTR text, int count, SIZE* size) noexcept {
    return GetTextExtentExPointW(context, text, count, -1, nullptr, nullptr, size);
}

BOOL GetTextExtentExPointW(HDC handle, LPCWSTR text, int count, int limit, int* fit, int* extents, SIZE* size) noexcept {
    const auto context = kawin::FindContext(handle);
    if (!context) {
        return FALSE;
    }
    if (count < 0 || limit < -1 || size == nullptr || (text == nullptr && count != 0)) {
        return kawin::Refuse(ERROR_INVALID_PARAMETER);
    }
    return kawin::NoThrow([&]() -> BOOL {
        const auto font = kawin::RealizeFont(context->state.font.get());
        kawin::TextExtents line(font, {text, static_cast<std::size_t>(count)}, (context->state.text_align & TA_RTLREADING) != 0);
        const bool limited = fit != nullptr && limit >= 0;
        const std::size_t fitting = limited ? kawin::CountFitting(line, limit) : line.Text().size();
        if (fit != nullptr) {
            *fit = static_cast<int>(fitting);
        }
        for (std::size_t unit = 0; extents != nullptr && unit < fitting; ++unit) {
            extents[unit] = line.Until(unit + 1);
        }
        *size = {line.Whole(), count == 0 ? 0 : font->metrics.tmHeight};
        return TRUE;
    });
}
