// Icons as resources have them.

#include <cairo/cairo.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>

#include "../gdi/dib_reader.h"
#include "../resources/byte_view.h"
#include "icon_image.h"

namespace kawin {
namespace {

using Bytes = std::span<const std::byte>;

constexpr int kLongestSide = 1024;

// PNG, 3rd edition, 5.2 and 11.2.1: signature, then the IHDR chunk with width and height, most significant byte first.
constexpr std::array<unsigned char, 16> kPngStart = {0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A,
                                                     0,    0,   0,   13,  'I',  'H',  'D',  'R'};

bool IsPng(Bytes bytes) noexcept {
    return bytes.size() >= kPngStart.size() + 8 && std::memcmp(bytes.data(), kPngStart.data(), kPngStart.size()) == 0;
}

std::uint32_t BigEndian(Bytes bytes, std::size_t at) noexcept {
    std::uint32_t value = 0;
    for (std::size_t index = 0; index < 4; ++index) {
        value = (value << 8) | std::to_integer<std::uint32_t>(bytes[at + index]);
    }
    return value;
}

cairo_status_t ReadOn(void* rest, unsigned char* target, unsigned int count) {
    Bytes& bytes = *static_cast<Bytes*>(rest);
    if (count > bytes.size()) {
        return CAIRO_STATUS_READ_ERROR;
    }
    std::memcpy(target, bytes.data(), count);
    bytes = bytes.subspan(count);
    return CAIRO_STATUS_SUCCESS;
}

// The size is looked at before anything of that size is made.
std::optional<IconImage> ReadPng(Bytes bytes) {
    const std::uint32_t width = BigEndian(bytes, kPngStart.size());
    const std::uint32_t height = BigEndian(bytes, kPngStart.size() + 4);
    if (width < 1 || height < 1 || width > kLongestSide || height > kLongestSide) {
        return std::nullopt;
    }
    cairo_surface_t* const surface = cairo_image_surface_create_from_png_stream(ReadOn, &bytes);
    std::vector<Pixel> pixels;
    const cairo_format_t format = cairo_image_surface_get_format(surface);
    if (cairo_surface_status(surface) == CAIRO_STATUS_SUCCESS &&
        (format == CAIRO_FORMAT_ARGB32 || format == CAIRO_FORMAT_RGB24)) {
        const Pixel opaque = format == CAIRO_FORMAT_RGB24 ? 0xFF000000 : 0;
        for (std::uint32_t y = 0; y < height; ++y) {
            const unsigned char* const row = cairo_image_surface_get_data(surface) +
                                             std::ptrdiff_t{cairo_image_surface_get_stride(surface)} * static_cast<int>(y);
            std::transform(reinterpret_cast<const Pixel*>(row), reinterpret_cast<const Pixel*>(row) + width,
                           std::back_inserter(pixels), [opaque](Pixel pixel) { return Straight(pixel | opaque); });
        }
    }
    cairo_surface_destroy(surface);
    if (pixels.empty()) {
        return std::nullopt;
    }
    return FromAlpha(static_cast<int>(width), static_cast<int>(height), std::move(pixels));
}

std::optional<IconImage> ReadDibIcon(Bytes bytes) {
    std::optional<DibPicture> picture = ReadDib(bytes, DibUse::Icon);
    if (!picture || picture->width > kLongestSide || picture->height > kLongestSide) {
        return std::nullopt;
    }
    IconImage image;
    image.width = picture->width;
    image.height = picture->height;
    image.has_color = picture->bits_per_pixel != 1 || !picture->IsBlackAndWhite();
    image.has_alpha = (picture->has_alpha || picture->keeps_top_byte) &&
                      std::ranges::any_of(picture->pixels, [](Pixel pixel) { return pixel >> 24 != 0; });
    image.color = std::move(picture->pixels);
    if (!image.has_alpha) {
        std::ranges::transform(image.color, image.color.begin(), [](Pixel pixel) { return pixel & 0x00FFFFFF; });
    }
    image.mask = std::move(picture->mask);
    return image;
}

// A cursor's picture comes after its hot spot, of two words.
constexpr std::size_t kHotSpotSize = 4;

// A directory of resources: three words (0, kind, count), then entries of 14 bytes: of an icon width, height, colours, 0 in
// bytes; of a cursor width and double height in words; then planes, bits per pixel and the picture's size, and its number in the
// last word.
constexpr std::size_t kDirectoryHeader = 6;
constexpr std::size_t kEntrySize = 14;
constexpr std::size_t kBitsAt = 6;
constexpr std::size_t kNumberAt = 12;
constexpr WORD kIconDirectory = 1;
constexpr WORD kCursorDirectory = 2;

struct Candidate {
    int width = 0;
    int height = 0;
    int bits = 0;
    WORD number = 0;
};

Candidate ReadCandidate(Bytes entry, bool is_icon) noexcept {
    Candidate candidate;
    if (is_icon) {
        const auto side = [&](std::size_t at) { return std::to_integer<int>(entry[at]); };
        candidate.width = side(0) != 0 ? side(0) : 256;
        candidate.height = side(1) != 0 ? side(1) : 256;
    } else {
        candidate.width = Word(entry, 0).value_or(0);
        candidate.height = Word(entry, 2).value_or(0) / 2;
    }
    candidate.bits = Word(entry, kBitsAt).value_or(0);
    candidate.number = Word(entry, kNumberAt).value_or(0);
    return candidate;
}

bool IsBetter(const Candidate& a, const Candidate& b, int width, int height) noexcept {
    const auto away = [&](const Candidate& each) { return std::abs(each.width - width) + std::abs(each.height - height); };
    return away(a) != away(b) ? away(a) < away(b) : a.bits > b.bits;
}

}  // namespace

IconRef ReadIcon(Bytes bytes, bool is_icon) {
    POINT hot_spot = {};
    if (!is_icon) {
        if (bytes.size() < kHotSpotSize) {
            return nullptr;
        }
        hot_spot = {Word(bytes, 0).value_or(0), Word(bytes, 2).value_or(0)};
        bytes = bytes.subspan(kHotSpotSize);
    }
    std::optional<IconImage> image = IsPng(bytes) ? ReadPng(bytes) : ReadDibIcon(bytes);
    if (!image) {
        return nullptr;
    }
    image->is_icon = is_icon;
    image->hot_spot = is_icon ? POINT{image->width / 2, image->height / 2} : hot_spot;
    return std::make_shared<const IconImage>(*std::move(image));
}

WORD ChooseIcon(Bytes directory, bool is_icon, int width, int height) noexcept {
    if (Word(directory, 0).value_or(1) != 0 || Word(directory, 2) != (is_icon ? kIconDirectory : kCursorDirectory)) {
        return 0;
    }
    const std::size_t count = Word(directory, 4).value_or(0);
    Candidate best;
    for (std::size_t index = 0; index < count; ++index) {
        const std::optional<Bytes> entry = Slice(directory, kDirectoryHeader + index * kEntrySize, kEntrySize);
        if (!entry) {
            break;
        }
        const Candidate candidate = ReadCandidate(*entry, is_icon);
        if (best.number == 0 || IsBetter(candidate, best, width, height)) {
            best = candidate;
        }
    }
    return best.number;
}

}  // namespace kawin
