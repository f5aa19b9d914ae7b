#include "icon_image.h"

#include <cairo/cairo.h>

#include <algorithm>

namespace kawin {
namespace {

constexpr unsigned kOpaque = 255;

unsigned AlphaOf(Pixel pixel) noexcept {
    return pixel >> 24;
}

template <class Part>
Pixel EachPart(Pixel pixel, Part part) noexcept {
    Pixel result = pixel & 0xFF000000;
    for (int shift = 0; shift < 24; shift += 8) {
        result |= static_cast<Pixel>(part((pixel >> shift) & 0xFF)) << shift;
    }
    return result;
}

struct SurfaceEnd {
    void operator()(cairo_surface_t* surface) const noexcept { cairo_surface_destroy(surface); }
};
using CairoSurface = std::unique_ptr<cairo_surface_t, SurfaceEnd>;

Pixel* RowOf(cairo_surface_t* surface, int y) noexcept {
    return reinterpret_cast<Pixel*>(cairo_image_surface_get_data(surface) +
                                    std::ptrdiff_t{cairo_image_surface_get_stride(surface)} * y);
}

CairoSurface ToCairo(const IconImage& image) {
    CairoSurface surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, image.width, image.height));
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) {
        return nullptr;
    }
    const Pixel* source = image.color.data();
    for (int y = 0; y < image.height; ++y, source += image.width) {
        std::transform(source, source + image.width, RowOf(surface.get(), y), Multiplied);
    }
    cairo_surface_mark_dirty(surface.get());
    return surface;
}

std::vector<Pixel> FromCairo(cairo_surface_t* surface, int width, int height) {
    cairo_surface_flush(surface);
    std::vector<Pixel> pixels;
    pixels.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    for (int y = 0; y < height; ++y) {
        const Pixel* const row = RowOf(surface, y);
        std::transform(row, row + width, std::back_inserter(pixels), Straight);
    }
    return pixels;
}

// Empty without memory.
std::vector<Pixel> ScaleSmoothly(const IconImage& image, int width, int height) {
    const CairoSurface source = ToCairo(image);
    const CairoSurface target(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height));
    if (source == nullptr || cairo_surface_status(target.get()) != CAIRO_STATUS_SUCCESS) {
        return {};
    }
    cairo_t* const cairo = cairo_create(target.get());
    cairo_scale(cairo, static_cast<double>(width) / image.width, static_cast<double>(height) / image.height);
    cairo_set_source_surface(cairo, source.get(), 0, 0);
    cairo_pattern_set_filter(cairo_get_source(cairo), CAIRO_FILTER_GOOD);
    cairo_pattern_set_extend(cairo_get_source(cairo), CAIRO_EXTEND_PAD);
    cairo_paint(cairo);
    cairo_destroy(cairo);
    return FromCairo(target.get(), width, height);
}

template <class Each>
std::vector<Each> ScaleByChoice(const std::vector<Each>& source, const IconImage& image, int width, int height) {
    std::vector<Each> target;
    target.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    for (std::int64_t y = 0; y < height; ++y) {
        const std::size_t row = static_cast<std::size_t>(y * image.height / height) * static_cast<std::size_t>(image.width);
        for (std::int64_t x = 0; x < width; ++x) {
            target.push_back(source[row + static_cast<std::size_t>(x * image.width / width)]);
        }
    }
    return target;
}

std::vector<std::uint8_t> MaskOf(const std::vector<Pixel>& color) {
    std::vector<std::uint8_t> mask;
    mask.reserve(color.size());
    std::transform(color.begin(), color.end(), std::back_inserter(mask),
                   [](Pixel pixel) { return static_cast<std::uint8_t>(AlphaOf(pixel) == 0); });
    return mask;
}

}  // namespace

Pixel Multiplied(Pixel straight) noexcept {
    const unsigned alpha = AlphaOf(straight);
    return EachPart(straight, [alpha](unsigned part) { return (part * alpha + kOpaque / 2) / kOpaque; });
}

Pixel Straight(Pixel multiplied) noexcept {
    const unsigned alpha = AlphaOf(multiplied);
    if (alpha == 0) {
        return 0;
    }
    return EachPart(multiplied, [alpha](unsigned part) { return std::min(kOpaque, (part * kOpaque + alpha / 2) / alpha); });
}

IconImage FromAlpha(int width, int height, std::vector<Pixel> color) {
    IconImage image;
    image.width = width;
    image.height = height;
    image.has_alpha = true;
    image.mask = MaskOf(color);
    image.color = std::move(color);
    return image;
}

IconRef Scaled(const IconRef& image, int width, int height) {
    if (image == nullptr || (image->width == width && image->height == height)) {
        return image;
    }
    auto scaled = std::make_shared<IconImage>(*image);
    scaled->width = width;
    scaled->height = height;
    scaled->hot_spot = {image->hot_spot.x * width / image->width, image->hot_spot.y * height / image->height};
    if (image->has_alpha) {
        scaled->color = ScaleSmoothly(*image, width, height);
        scaled->mask = MaskOf(scaled->color);
        return scaled->color.empty() ? nullptr : scaled;
    }
    scaled->color = ScaleByChoice(image->color, *image, width, height);
    scaled->mask = ScaleByChoice(image->mask, *image, width, height);
    return scaled;
}

}  // namespace kawin
