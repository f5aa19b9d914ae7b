#include "png_picture.h"

#include <png.h>

#include <array>
#include <bit>
#include <cstring>

namespace kawin {
namespace {

constexpr std::array<unsigned char, 8> kSignature = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};

// The library's pixels of four bytes in the order of ours.
constexpr png_uint_32 kFourBytes = std::endian::native == std::endian::little ? PNG_FORMAT_BGRA : PNG_FORMAT_ARGB;

// What the library keeps of a picture goes with it.
struct PngImage : png_image {
    PngImage() noexcept : png_image() { version = PNG_IMAGE_VERSION; }
    PngImage(const PngImage&) = delete;
    PngImage& operator=(const PngImage&) = delete;
    ~PngImage() { png_image_free(this); }
};

// All pixels, straight.
std::vector<Argb> AllStraight(const PixelStore& store) {
    const std::size_t width = static_cast<std::size_t>(store.Width());
    std::vector<Argb> pixels(width * static_cast<std::size_t>(store.Height()));
    std::vector<Argb> scratch(width);
    for (int y = 0; y < store.Height(); ++y) {
        std::memcpy(&pixels[width * static_cast<std::size_t>(y)], store.StraightRow(y, scratch.data()), width * sizeof(Argb));
    }
    return pixels;
}

// The library writes what its format says there is; rows of three bytes have no padding here.
std::vector<std::byte> WithoutAlpha(const std::vector<Argb>& pixels) {
    std::vector<std::byte> narrow(pixels.size() * 3);
    WritePixels(Gdiplus::PixelFormat24bppRGB, pixels.data(), static_cast<int>(pixels.size()), narrow.data());
    return narrow;
}

std::vector<std::byte> Encode(PngImage& image, const void* pixels) {
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
    std::vector<std::byte> file(size);
    if (png_image_write_to_memory(&image, file.data(), &size, 0, pixels, 0, nullptr) == 0) {
        return {};
    }
    file.resize(size);
    return file;
}

}  // namespace

bool IsPng(std::span<const std::byte> file) noexcept {
    return file.size() > kSignature.size() && std::memcmp(file.data(), kSignature.data(), kSignature.size()) == 0;
}

ReadPicture ReadPng(std::span<const std::byte> file) {
    PngImage image;
    if (png_image_begin_read_from_memory(&image, file.data(), file.size()) == 0) {
        return {nullptr, Gdiplus::UnknownImageFormat};
    }
    const bool has_alpha = (image.format & PNG_FORMAT_FLAG_ALPHA) != 0;
    const Gdiplus::PixelFormat format = has_alpha ? Gdiplus::PixelFormat32bppARGB : Gdiplus::PixelFormat24bppRGB;
    const int width = image.width > INT32_MAX ? 0 : static_cast<int>(image.width);
    const int height = image.height > INT32_MAX ? 0 : static_cast<int>(image.height);
    if (!PixelStore::IsPossible(width, height, format)) {
        return {nullptr, Gdiplus::OutOfMemory};
    }
    auto store = PixelStore::Make(width, height, format);
    std::vector<Argb> pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    image.format = kFourBytes;
    if (!store || png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr) == 0) {
        return {nullptr, store ? Gdiplus::UnknownImageFormat : Gdiplus::OutOfMemory};
    }
    for (int y = 0; y < height; ++y) {
        store->Write(0, y, width, &pixels[static_cast<std::size_t>(width) * static_cast<std::size_t>(y)]);
    }
    return {std::move(store), Gdiplus::Ok};
}

std::vector<std::byte> MakePng(const PixelStore& store) {
    PngImage image;
    image.width = static_cast<png_uint_32>(store.Width());
    image.height = static_cast<png_uint_32>(store.Height());
    const std::vector<Argb> pixels = AllStraight(store);
    if (store.Kind() == PixelKind::Opaque) {
        image.format = PNG_FORMAT_BGR;
        return Encode(image, WithoutAlpha(pixels).data());
    }
    image.format = kFourBytes;
    return Encode(image, pixels.data());
}

}  // namespace kawin
