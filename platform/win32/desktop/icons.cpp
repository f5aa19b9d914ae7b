#include "icons.h"

#include <algorithm>

#include "../base/error_map.h"
#include "../gdi/bitmap_object.h"
#include "../gdi/contexts.h"
#include "../text/no_throw.h"
#include "icon_image.h"

namespace kawin {
namespace {

constexpr Pixel kColors = 0x00FFFFFF;

// A bitmap's pixels from the top; of a monochrome one 0 and 1.
std::vector<Pixel> PixelsOf(const Surface& surface) {
    std::vector<Pixel> pixels;
    pixels.reserve(static_cast<std::size_t>(surface.Width()) * static_cast<std::size_t>(surface.Height()));
    for (int y = 0; y < surface.Height(); ++y) {
        pixels.insert(pixels.end(), surface.Row(y), surface.Row(y) + surface.Width());
    }
    return pixels;
}

std::vector<std::uint8_t> Bits(const std::vector<Pixel>& pixels, std::size_t first, std::size_t count, bool mono) {
    std::vector<std::uint8_t> bits;
    bits.reserve(count);
    std::transform(pixels.begin() + static_cast<std::ptrdiff_t>(first),
                   pixels.begin() + static_cast<std::ptrdiff_t>(first + count), std::back_inserter(bits),
                   [mono](Pixel pixel) { return static_cast<std::uint8_t>(mono ? pixel != 0 : (pixel & kColors) != 0); });
    return bits;
}

// Without a colour bitmap: the mask has the picture below it.
std::optional<IconImage> FromMask(const Surface& mask) {
    IconImage image;
    image.width = mask.Width();
    image.height = mask.Height() / 2;
    image.has_color = false;
    if (image.height < 1) {
        return std::nullopt;
    }
    const std::vector<Pixel> pixels = PixelsOf(mask);
    image.mask = Bits(pixels, 0, image.Count(), mask.IsMono());
    for (const std::uint8_t bit : Bits(pixels, image.Count(), image.Count(), mask.IsMono())) {
        image.color.push_back(bit != 0 ? kColors : 0);
    }
    return image;
}

std::optional<IconImage> FromBoth(const Surface& mask, const Surface& color) {
    if (mask.Width() != color.Width() || mask.Height() < color.Height()) {
        return std::nullopt;
    }
    IconImage image;
    image.width = color.Width();
    image.height = color.Height();
    image.color = PixelsOf(color);
    if (color.IsMono()) {
        std::ranges::transform(image.color, image.color.begin(), [](Pixel bit) { return bit != 0 ? kColors : 0; });
    }
    image.has_alpha = std::ranges::any_of(image.color, [](Pixel pixel) { return pixel >> 24 != 0; });
    image.mask = Bits(PixelsOf(mask), 0, image.Count(), mask.IsMono());
    return image;
}

HICON Create(const ICONINFO& info) {
    const std::shared_ptr<BitmapObject> mask = FindGdi<BitmapObject>(info.hbmMask);
    const std::shared_ptr<BitmapObject> color = FindGdi<BitmapObject>(info.hbmColor);
    std::optional<IconImage> image;
    if (mask != nullptr && (info.hbmColor == nullptr || color != nullptr)) {
        image = color != nullptr ? FromBoth(*mask->surface, *color->surface) : FromMask(*mask->surface);
    }
    if (!image) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    image->is_icon = info.fIcon != FALSE;
    image->hot_spot = image->is_icon ? POINT{image->width / 2, image->height / 2}
                                     : POINT{static_cast<LONG>(info.xHotspot), static_cast<LONG>(info.yHotspot)};
    return AddIcon(std::make_shared<const IconImage>(*std::move(image)));
}

std::shared_ptr<Surface> MaskSurface(const IconImage& image) {
    const int rows = image.has_color ? image.height : image.height * 2;
    std::shared_ptr<Surface> surface = Surface::Make(image.width, rows, true);
    if (surface == nullptr) {
        return nullptr;
    }
    const auto width = static_cast<std::size_t>(image.width);
    for (int y = 0; y < rows; ++y) {
        const bool upper = y < image.height;
        const std::size_t start = static_cast<std::size_t>(upper ? y : y - image.height) * width;
        for (std::size_t x = 0; x < width; ++x) {
            surface->Row(y)[x] = upper ? image.mask[start + x] : (image.color[start + x] & kColors) != 0;
        }
    }
    return surface;
}

std::shared_ptr<Surface> ColorSurface(const IconImage& image) {
    std::shared_ptr<Surface> surface = Surface::Make(image.width, image.height);
    if (surface == nullptr) {
        return nullptr;
    }
    for (int y = 0; y < image.height; ++y) {
        std::copy_n(image.color.data() + static_cast<std::ptrdiff_t>(y) * image.width, image.width, surface->Row(y));
    }
    return surface;
}

BOOL Tell(HICON icon, ICONINFO& info) {
    const IconRef image = FindIcon(icon);
    if (image == nullptr) {
        return Fail(ERROR_INVALID_CURSOR_HANDLE);
    }
    const HBITMAP mask = AddBitmap(MaskSurface(*image));
    const HBITMAP color = image->has_color && mask != nullptr ? AddBitmap(ColorSurface(*image)) : nullptr;
    if (mask == nullptr || (image->has_color && color == nullptr)) {
        DeleteObject(mask);
        return Fail(ERROR_NOT_ENOUGH_MEMORY);
    }
    info = {image->is_icon, static_cast<DWORD>(image->hot_spot.x), static_cast<DWORD>(image->hot_spot.y), mask, color};
    return TRUE;
}

}  // namespace
}  // namespace kawin

HICON CreateIconIndirect(PICONINFO info) noexcept {
    return kawin::NoThrow([&]() -> HICON {
        if (info == nullptr) {
            SetLastError(ERROR_INVALID_PARAMETER);
            return nullptr;
        }
        return kawin::Create(*info);
    });
}

BOOL GetIconInfo(HICON icon, PICONINFO info) noexcept {
    return kawin::NoThrow([&] { return info != nullptr ? kawin::Tell(icon, *info) : kawin::Fail(ERROR_INVALID_PARAMETER); });
}

HICON CopyIcon(HICON icon) noexcept {
    return kawin::NoThrow([&]() -> HICON {
        const kawin::IconRef image = kawin::FindIcon(icon);
        if (image == nullptr) {
            SetLastError(ERROR_INVALID_CURSOR_HANDLE);
        }
        return kawin::AddIcon(image);
    });
}

BOOL DestroyIcon(HICON icon) noexcept {
    return kawin::IsSharedIcon(icon) || kawin::RemoveIcon(icon) || kawin::Fail(ERROR_INVALID_CURSOR_HANDLE);
}

BOOL DestroyCursor(HCURSOR cursor) noexcept {
    return DestroyIcon(cursor);
}
