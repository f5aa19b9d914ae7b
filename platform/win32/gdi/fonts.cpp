#include "fonts.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <new>
#include <string_view>

#include "../base/error.h"
#include "../text/no_throw.h"
#include "contexts.h"
#include "drawing_context.h"
#include "font_object.h"
#include "text_engine.h"

namespace kawin {
namespace {

struct StockFont {
    int index;
    LONG height;
    LONG weight;
    BYTE charset;
    BYTE pitch_and_family;
    std::u16string_view face;
};
constexpr StockFont kStockFonts[] = {
    {OEM_FIXED_FONT, 12, FW_NORMAL, OEM_CHARSET, FIXED_PITCH | FF_MODERN, u"Terminal"},
    {ANSI_FIXED_FONT, 12, FW_NORMAL, ANSI_CHARSET, FIXED_PITCH | FF_MODERN, u"Courier"},
    {ANSI_VAR_FONT, 12, FW_NORMAL, ANSI_CHARSET, VARIABLE_PITCH | FF_SWISS, u"MS Sans Serif"},
    {SYSTEM_FONT, 16, FW_BOLD, ANSI_CHARSET, VARIABLE_PITCH | FF_SWISS, u"System"},
    {DEVICE_DEFAULT_FONT, 16, FW_BOLD, ANSI_CHARSET, VARIABLE_PITCH | FF_SWISS, u"System"},
    {SYSTEM_FIXED_FONT, 16, FW_NORMAL, ANSI_CHARSET, FIXED_PITCH | FF_MODERN, u"Fixedsys"},
    {DEFAULT_GUI_FONT, -11, FW_NORMAL, ANSI_CHARSET, VARIABLE_PITCH | FF_SWISS, u"MS Shell Dlg"},
};

void SetFace(LOGFONTW& font, std::u16string_view face) noexcept {
    std::copy_n(face.begin(), std::min<std::size_t>(face.size(), LF_FACESIZE - 1), font.lfFaceName);
}

BOOL Refuse(DWORD error) noexcept {
    SetLastError(error);
    return FALSE;
}

// Hands the font of a context to `work`, which returns what the function returns.
template <class Work>
auto WithFont(HDC handle, Work&& work) noexcept -> decltype(work(std::declval<const RealizedFont&>())) {
    const auto context = FindContext(handle);
    if (!context) {
        return {};
    }
    return NoThrow([&] { return work(*RealizeFont(context->state.font.get())); });
}

bool IsRange(UINT first, UINT last, const void* target) noexcept {
    constexpr UINT kLastOfBasicPlane = 0xFFFF;
    return target != nullptr && first <= last && last <= kLastOfBasicPlane;
}

// Of one character as it is drawn alone.
ABC WidthsOf(const ShapedText& text, const RealizedFont& font) noexcept {
    if (text.glyphs.empty()) {
        return {0, 0, text.width};
    }
    const TextGlyph& glyph = text.glyphs.front();
    cairo_glyph_t at = {glyph.index, 0, 0};
    cairo_text_extents_t ink;
    cairo_scaled_font_glyph_extents(glyph.font, &at, 1, &ink);
    const int before = static_cast<int>(std::floor((glyph.x + ink.x_bearing) * font.stretch));
    const int width = static_cast<int>(std::ceil(ink.width * font.stretch));
    return {before, static_cast<UINT>(width), text.width - before - width};
}

// Each character's ShapedText to `take`.
template <class Take>
BOOL ForEachCharacter(HDC context, UINT first, UINT last, const void* target, Take&& take) noexcept {
    const auto handle = FindContext(context);
    if (!handle) {
        return FALSE;
    }
    if (!IsRange(first, last, target)) {
        return Refuse(ERROR_INVALID_PARAMETER);
    }
    return NoThrow([&]() -> BOOL {
        const auto font = RealizeFont(handle->state.font.get());
        for (UINT unit = first; unit <= last; ++unit) {
            const WCHAR character = static_cast<WCHAR>(unit);
            take(unit - first, *ShapeText(font, {&character, 1}, false), *font);
        }
        return TRUE;
    });
}

}  // namespace

std::shared_ptr<FontObject> MakeStockFont(int index) noexcept try {
    const auto* const stock = std::find_if(std::begin(kStockFonts), std::end(kStockFonts),
                                           [index](const StockFont& candidate) { return candidate.index == index; });
    if (stock == std::end(kStockFonts)) {
        return nullptr;
    }
    LOGFONTW font = {};
    font.lfHeight = stock->height;
    font.lfWeight = stock->weight;
    font.lfCharSet = stock->charset;
    font.lfPitchAndFamily = stock->pitch_and_family;
    SetFace(font, stock->face);
    return std::make_shared<FontObject>(font);
} catch (const std::bad_alloc&) {
    return nullptr;
}

}  // namespace kawin

HFONT CreateFontIndirectW(const LOGFONTW* description) noexcept {
    if (description == nullptr) {
        return nullptr;
    }
    return kawin::NoThrow(
        [&] { return static_cast<HFONT>(kawin::AddGdiObject(std::make_shared<kawin::FontObject>(*description))); });
}

HFONT CreateFontW(int height, int width, int escapement, int orientation, int weight, DWORD italic, DWORD underline,
                  DWORD strikeout, DWORD charset, DWORD out_precision, DWORD clip_precision, DWORD quality,
                  DWORD pitch_and_family, LPCWSTR face) noexcept {
    LOGFONTW font = {};
    font.lfHeight = height;
    font.lfWidth = width;
    font.lfEscapement = escapement;
    font.lfOrientation = orientation;
    font.lfWeight = weight;
    font.lfItalic = static_cast<BYTE>(italic);
    font.lfUnderline = static_cast<BYTE>(underline);
    font.lfStrikeOut = static_cast<BYTE>(strikeout);
    font.lfCharSet = static_cast<BYTE>(charset);
    font.lfOutPrecision = static_cast<BYTE>(out_precision);
    font.lfClipPrecision = static_cast<BYTE>(clip_precision);
    font.lfQuality = static_cast<BYTE>(quality);
    font.lfPitchAndFamily = static_cast<BYTE>(pitch_and_family);
    kawin::SetFace(font, face != nullptr ? face : u"");
    return CreateFontIndirectW(&font);
}

BOOL GetTextMetricsW(HDC context, TEXTMETRICW* metrics) noexcept {
    return kawin::WithFont(context, [metrics](const kawin::RealizedFont& font) -> BOOL {
        if (metrics == nullptr) {
            return kawin::Refuse(ERROR_INVALID_PARAMETER);
        }
        *metrics = font.metrics;
        return TRUE;
    });
}

int GetTextFaceW(HDC context, int capacity, LPWSTR face) noexcept {
    return kawin::WithFont(context, [=](const kawin::RealizedFont& font) -> int {
        const int needed = static_cast<int>(font.face.size()) + 1;
        if (face == nullptr) {
            return needed;
        }
        if (capacity <= 0) {
            return kawin::Refuse(ERROR_INVALID_PARAMETER);
        }
        const int copied = std::min(capacity, needed) - 1;
        face[font.face.copy(face, static_cast<std::size_t>(copied))] = 0;
        return copied + 1;
    });
}

BOOL GetCharWidth32W(HDC context, UINT first, UINT last, int* target) noexcept {
    return kawin::ForEachCharacter(
        context, first, last, target,
        [target](UINT index, const kawin::ShapedText& text, const kawin::RealizedFont&) { target[index] = text.width; });
}

BOOL GetCharABCWidthsW(HDC context, UINT first, UINT last, ABC* target) noexcept {
    return kawin::ForEachCharacter(context, first, last, target,
                                   [target](UINT index, const kawin::ShapedText& text, const kawin::RealizedFont& font) {
                                       target[index] = kawin::WidthsOf(text, font);
                                   });
}
