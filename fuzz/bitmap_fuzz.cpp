// Bitmaps as resources, icons and files.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>

#include "win32/gdi/dib_reader.h"

namespace {

// Every number that a picture has agrees with the others.
void Check(const std::optional<kawin::DibPicture>& picture, bool icon) {
    if (!picture) {
        return;
    }
    const std::size_t count = static_cast<std::size_t>(picture->width) * static_cast<std::size_t>(picture->height);
    const bool indexed = picture->bits_per_pixel <= 8;
    if (picture->width < 1 || picture->height < 1 || picture->pixels.size() != count ||
        picture->indices.size() != (indexed ? count : 0) || picture->mask.size() != (icon ? count : 0) ||
        picture->palette.size() > (indexed ? std::size_t{1} << picture->bits_per_pixel : 0)) {
        std::abort();
    }
    for (const std::uint32_t pixel : picture->pixels) {
        if (!picture->has_alpha && !picture->keeps_top_byte && pixel >> 24 != 0xFF) {
            std::abort();
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::span bytes(reinterpret_cast<const std::byte*>(data), size);
    Check(kawin::ReadDib(bytes), false);
    Check(kawin::ReadDib(bytes, kawin::DibUse::Icon), true);
    Check(kawin::ReadBitmapFile(bytes), false);
    return 0;
}
