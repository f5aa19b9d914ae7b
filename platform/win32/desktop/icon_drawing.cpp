#include <algorithm>

#include "../base/error_map.h"
#include "../gdi/brushes.h"
#include "../gdi/contexts.h"
#include "../gdi/copies.h"
#include "../gdi/drawing_context.h"
#include "../gdi/shapes.h"
#include "../text/no_throw.h"
#include "icon_image.h"
#include "metrics.h"

namespace kawin {
namespace {

// `source` over `target`, by its alpha.
Pixel Blend(Pixel target, Pixel source) noexcept {
    const unsigned alpha = source >> 24;
    Pixel result = 0;
    for (int shift = 0; shift < 24; shift += 8) {
        const unsigned from = (target >> shift) & 0xFF;
        const unsigned to = (source >> shift) & 0xFF;
        result |= ((from * (255 - alpha) + to * alpha + 127) / 255) << shift;
    }
    return result;
}

constexpr Pixel kColors = 0x00FFFFFF;

// Of a monochrome surface: what is nearer to white is white.
Pixel ToMono(Pixel color) noexcept {
    return ((color & 0xFF) + ((color >> 8) & 0xFF) + ((color >> 16) & 0xFF)) / 3 >= 128 ? 1 : 0;
}

class IconPixels {
public:
    IconPixels(const IconImage& image, UINT parts) noexcept : image_(image), parts_(parts) {}

    Pixel Over(Pixel behind, std::size_t at) const noexcept {
        const Pixel mask = image_.mask[at] != 0 ? kColors : 0;
        if ((parts_ & DI_NORMAL) == DI_MASK) {
            return mask;
        }
        const Pixel color = image_.color[at] & kColors;
        if ((parts_ & DI_NORMAL) == DI_IMAGE) {
            return color;
        }
        return image_.has_alpha ? Blend(behind, image_.color[at]) : (behind & mask) ^ color;
    }

private:
    const IconImage& image_;
    UINT parts_;
};

void DrawPixels(DrawingContext& context, POINT corner, const IconImage& image, UINT parts) noexcept {
    Surface& surface = *context.surface;
    const POINT at = context.ToSurface(corner);
    const RECT area = {at.x, at.y, at.x + image.width, at.y + image.height};
    const IconPixels pixels(image, parts);
    context.Drawable().ForEachIn(area, [&](const RECT& part) {
        for (int y = part.top; y < part.bottom; ++y) {
            Pixel* const row = surface.Row(y);
            const std::size_t start = static_cast<std::size_t>(y - at.y) * static_cast<std::size_t>(image.width);
            for (int x = part.left; x < part.right; ++x) {
                const Pixel behind = surface.IsMono() ? (row[x] != 0 ? kColors : 0) : row[x];
                const Pixel drawn = pixels.Over(behind, start + static_cast<std::size_t>(x - at.x));
                row[x] = surface.IsMono() ? ToMono(drawn) : drawn;
            }
        }
    });
    surface.Touch(area);
}

BOOL DrawOverBrush(HDC target, POINT corner, const IconImage& image, HBRUSH brush, UINT parts) {
    const HDC memory = CreateCompatibleDC(target);
    const HBITMAP bitmap = CreateCompatibleBitmap(target, image.width, image.height);
    const HGDIOBJ before = SelectObject(memory, bitmap);
    const RECT all = {0, 0, image.width, image.height};
    FillRect(memory, &all, brush);
    const std::shared_ptr<DrawingContext> context = FindGdi<DrawingContext>(memory);
    if (context != nullptr && context->surface != nullptr) {
        DrawPixels(*context, {}, image, parts);
    }
    const BOOL drawn = BitBlt(target, corner.x, corner.y, image.width, image.height, memory, 0, 0, SRCCOPY);
    SelectObject(memory, before);
    DeleteObject(bitmap);
    DeleteDC(memory);
    return drawn;
}

BOOL Draw(HDC target, POINT corner, HICON icon, SIZE wanted, HBRUSH brush, UINT flags) {
    const std::shared_ptr<DrawingContext> context = FindGdi<DrawingContext>(target);
    if (context == nullptr) {
        return Fail(ERROR_INVALID_HANDLE);
    }
    const IconRef found = FindIcon(icon);
    if (found == nullptr) {
        return Fail(ERROR_INVALID_CURSOR_HANDLE);
    }
    if ((flags & DI_DEFAULTSIZE) != 0) {
        wanted.cx = wanted.cx != 0 ? wanted.cx : GetSystemMetrics(SM_CXICON);
        wanted.cy = wanted.cy != 0 ? wanted.cy : GetSystemMetrics(SM_CYICON);
    }
    const SIZE size = {wanted.cx != 0 ? wanted.cx : found->width, wanted.cy != 0 ? wanted.cy : found->height};
    if (size.cx < 0 || size.cy < 0 || (flags & DI_NORMAL) == 0) {
        return Fail(ERROR_INVALID_PARAMETER);
    }
    const IconRef image = Scaled(found, size.cx, size.cy);
    if (image == nullptr) {
        return Fail(ERROR_NOT_ENOUGH_MEMORY);
    }
    if (brush != nullptr) {
        return DrawOverBrush(target, corner, *image, brush, flags);
    }
    if (context->surface != nullptr) {
        DrawPixels(*context, corner, *image, flags);
    }
    return TRUE;
}

}  // namespace
}  // namespace kawin

BOOL DrawIconEx(HDC context, int x, int y, HICON icon, int width, int height, UINT /*step*/, HBRUSH background,
                UINT flags) noexcept {
    return kawin::NoThrow([&] { return kawin::Draw(context, {x, y}, icon, {width, height}, background, flags); });
}

BOOL DrawIcon(HDC context, int x, int y, HICON icon) noexcept {
    return DrawIconEx(context, x, y, icon, 0, 0, 0, nullptr, DI_NORMAL | DI_DEFAULTSIZE);
}
