// Colours and modes of contexts.

#include <utility>

#include "../base/error.h"
#include "brush_object.h"
#include "contexts.h"
#include "drawing_context.h"
#include "regions.h"
#include "shapes.h"

namespace {

using kawin::ContextState;
using kawin::FindContext;

constexpr COLORREF kColorBits = 0x00FFFFFF;

// What a member of a context's state is; `failed` without a context.
template <class T>
T Read(HDC context, T ContextState::*member, T failed) noexcept {
    const auto found = FindContext(context);
    return found ? found->state.*member : failed;
}

// Sets a member; what it was before.
template <class T>
T Exchange(HDC context, T ContextState::*member, T value, T failed) noexcept {
    const auto found = FindContext(context);
    return found ? std::exchange(found->state.*member, value) : failed;
}

// The same for a mode of which only `least` to `most` exist.
int ExchangeMode(HDC context, int ContextState::*member, int value, int least, int most) noexcept {
    if (value < least || value > most) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    return Exchange(context, member, value, 0);
}

COLORREF ExchangeColor(HDC context, COLORREF ContextState::*member, COLORREF color) noexcept {
    return Exchange(context, member, color & kColorBits, CLR_INVALID);
}

}  // namespace

COLORREF SetTextColor(HDC context, COLORREF color) noexcept {
    return ExchangeColor(context, &ContextState::text_color, color);
}

COLORREF GetTextColor(HDC context) noexcept {
    return Read(context, &ContextState::text_color, CLR_INVALID);
}

COLORREF SetBkColor(HDC context, COLORREF color) noexcept {
    return ExchangeColor(context, &ContextState::back_color, color);
}

COLORREF GetBkColor(HDC context) noexcept {
    return Read(context, &ContextState::back_color, CLR_INVALID);
}

COLORREF SetDCBrushColor(HDC context, COLORREF color) noexcept {
    return ExchangeColor(context, &ContextState::brush_color, color);
}

COLORREF GetDCBrushColor(HDC context) noexcept {
    return Read(context, &ContextState::brush_color, CLR_INVALID);
}

COLORREF SetDCPenColor(HDC context, COLORREF color) noexcept {
    return ExchangeColor(context, &ContextState::pen_color, color);
}

COLORREF GetDCPenColor(HDC context) noexcept {
    return Read(context, &ContextState::pen_color, CLR_INVALID);
}

int SetBkMode(HDC context, int mode) noexcept {
    return ExchangeMode(context, &ContextState::back_mode, mode, TRANSPARENT, OPAQUE);
}

int GetBkMode(HDC context) noexcept {
    return Read(context, &ContextState::back_mode, 0);
}

int SetROP2(HDC context, int mix) noexcept {
    return ExchangeMode(context, &ContextState::raster_op, mix, R2_BLACK, R2_WHITE);
}

int GetROP2(HDC context) noexcept {
    return Read(context, &ContextState::raster_op, 0);
}

int SetStretchBltMode(HDC context, int mode) noexcept {
    return ExchangeMode(context, &ContextState::stretch_mode, mode, BLACKONWHITE, HALFTONE);
}

int GetStretchBltMode(HDC context) noexcept {
    return Read(context, &ContextState::stretch_mode, 0);
}

int SetPolyFillMode(HDC context, int mode) noexcept {
    return ExchangeMode(context, &ContextState::fill_mode, mode, ALTERNATE, WINDING);
}

int GetPolyFillMode(HDC context) noexcept {
    return Read(context, &ContextState::fill_mode, 0);
}

UINT SetTextAlign(HDC context, UINT align) noexcept {
    return Exchange(context, &ContextState::text_align, align, UINT{GDI_ERROR});
}

UINT GetTextAlign(HDC context) noexcept {
    return Read(context, &ContextState::text_align, UINT{GDI_ERROR});
}

int SetMapMode(HDC context, int mode) noexcept {
    if (!FindContext(context)) {
        return 0;
    }
    if (mode != MM_TEXT) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    return MM_TEXT;
}

int GetMapMode(HDC context) noexcept {
    return FindContext(context) ? MM_TEXT : 0;
}

BOOL UnrealizeObject(HGDIOBJ object) noexcept {
    return GetObjectType(object) != 0;
}
