#include <unicode/utf16.h>

#include <algorithm>
#include <string_view>

#include "../base/error.h"
#include "../base/text_length.h"
#include "../text/no_throw.h"
#include "contexts.h"
#include "drawing_context.h"
#include "font_object.h"
#include "text.h"
#include "text_block.h"

namespace kawin {
namespace {

constexpr int kDefaultTab = 8;
constexpr UINT kTabBits = 0xFF00;      // of the format, with DT_TABSTOP
constexpr std::size_t kMoreUnits = 4;  // that DT_MODIFYSTRING may need, the terminator included

int Widths(int count, const TEXTMETRICW& metrics) noexcept {
    return CutCoordinate(std::int64_t{count} * metrics.tmAveCharWidth);
}

int TabOf(UINT format, const DRAWTEXTPARAMS* params, const TEXTMETRICW& metrics) noexcept {
    if ((format & DT_EXPANDTABS) == 0) {
        return 0;
    }
    const bool given = (format & DT_TABSTOP) != 0 && params != nullptr && params->iTabLength > 0;
    return Widths(given ? params->iTabLength : kDefaultTab, metrics);
}

BlockLayout LayoutOf(const RECT& rect, UINT format, const DRAWTEXTPARAMS* params, const RealizedFont& font) {
    const auto system = (format & DT_INTERNAL) != 0 ? RealizeFont(nullptr) : nullptr;
    const TEXTMETRICW& metrics = system ? system->metrics : font.metrics;
    BlockLayout layout = {rect, format, TabOf(format, params, metrics), static_cast<int>(metrics.tmHeight)};
    if ((format & DT_EXTERNALLEADING) != 0) {
        layout.line_height += static_cast<int>(metrics.tmExternalLeading);
    }
    if (params != nullptr) {
        layout.rect.left = CutCoordinate(std::int64_t{rect.left} + Widths(params->iLeftMargin, metrics));
        layout.rect.right = CutCoordinate(std::int64_t{rect.right} - Widths(params->iRightMargin, metrics));
    }
    return layout;
}

// No longer than the caller's room.
void CopyShortened(std::u16string_view shortened, std::size_t count, LPWSTR target) noexcept {
    std::size_t length = std::min(shortened.size(), count + kMoreUnits - 1);
    if (length < shortened.size() && length > 0 && U16_IS_LEAD(shortened[length - 1])) {
        --length;
    }
    target[shortened.copy(target, length)] = 0;
}

// Deliberate: a text of no units leaves the rectangle alone, a text that is only a terminator makes it empty.
int MeasureEmpty(const BlockLayout& layout, bool terminated, RECT& rect) noexcept {
    if (terminated && (layout.format & DT_CALCRECT) != 0) {
        rect.right = rect.left;
        rect.bottom = rect.top + ((layout.format & DT_SINGLELINE) != 0 ? layout.line_height : 0);
    }
    return layout.line_height;
}

int DrawBlock(DrawingContext& context, LPWSTR text, int count, RECT& rect, UINT format, DRAWTEXTPARAMS* params) {
    const auto font = RealizeFont(context.state.font.get());
    const BlockLayout layout = LayoutOf(rect, format, params, *font);
    const std::size_t length = count >= 0 ? static_cast<std::size_t>(count) : TextLength(text);
    if (params != nullptr) {
        params->uiLengthDrawn = 0;
    }
    if (length == 0) {
        return MeasureEmpty(layout, count < 0, rect);
    }
    TextBlock block(context, font, layout, {text, length});
    block.Run();
    if (params != nullptr) {
        params->uiLengthDrawn = static_cast<UINT>(block.UnitsDone());
    }
    if ((format & DT_CALCRECT) != 0) {
        const std::int64_t margins = std::int64_t{layout.rect.left} - rect.left + (std::int64_t{rect.right} - layout.rect.right);
        rect.right = CutCoordinate(rect.left + margins + block.Width());
        rect.bottom = CutCoordinate(std::int64_t{rect.top} + block.Height());
    }
    if ((format & DT_MODIFYSTRING) != 0 && !block.ShortenedText().empty()) {
        CopyShortened(block.ShortenedText(), length, text);
    }
    return block.Height();
}

}  // namespace
}  // namespace kawin

int DrawTextExW(HDC handle, LPWSTR text, int count, RECT* rect, UINT format, DRAWTEXTPARAMS* params) noexcept {
    const auto context = kawin::FindContext(handle);
    if (!context) {
        return 0;
    }
    const bool bad_text = count < -1 || (text == nullptr && count != 0);
    if (bad_text || rect == nullptr || (params != nullptr && params->cbSize != sizeof(DRAWTEXTPARAMS))) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    return kawin::NoThrow([&] { return kawin::DrawBlock(*context, text, count, *rect, format, params); });
}

int DrawTextW(HDC context, LPCWSTR text, int count, RECT* rect, UINT format) noexcept {
    DRAWTEXTPARAMS params = {};
    params.cbSize = sizeof params;
    if ((format & DT_TABSTOP) != 0) {
        params.iTabLength = static_cast<int>((format & kawin::kTabBits) >> 8);
        format &= ~kawin::kTabBits;
    }
    // As documented, DT_MODIFYSTRING changes what the pointer says it does not.
    return DrawTextExW(context, const_cast<LPWSTR>(text), count, rect, format, &params);
}
