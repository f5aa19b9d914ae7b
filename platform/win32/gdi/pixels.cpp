// Single pixels.

#include "bitmaps.h"
#include "contexts.h"
#include "drawing_call.h"
#include "paint.h"

namespace {

using kawin::DrawingContext;
using kawin::FindContext;

// Where a pixel is on the surface; none outside of what can be drawn on.
bool Locate(const DrawingContext& context, int x, int y, POINT& at) noexcept {
    at = context.ToSurface(POINT{x, y});
    return context.surface && context.Drawable().Contains(at);
}

COLORREF ColorAt(const kawin::Surface& surface, POINT at) noexcept {
    const kawin::Pixel pixel = surface.Row(at.y)[at.x];
    if (surface.IsMono()) {
        return pixel != 0 ? RGB(255, 255, 255) : RGB(0, 0, 0);
    }
    return kawin::ColorOf(pixel);
}

}  // namespace

COLORREF GetPixel(HDC context, int x, int y) noexcept {
    const auto found = FindContext(context);
    POINT at;
    return found && Locate(*found, x, y, at) ? ColorAt(*found->surface, at) : CLR_INVALID;
}

COLORREF SetPixel(HDC context, int x, int y, COLORREF color) noexcept {
    const auto found = FindContext(context);
    POINT at;
    if (!found || !Locate(*found, x, y, at)) {
        return CLR_INVALID;
    }
    found->surface->Row(at.y)[at.x] = kawin::PixelOn(*found->surface, color);
    found->surface->Touch({at.x, at.y, at.x + 1, at.y + 1});
    return ColorAt(*found->surface, at);
}

BOOL SetPixelV(HDC context, int x, int y, COLORREF color) noexcept {
    return SetPixel(context, x, y, color) != CLR_INVALID;
}
