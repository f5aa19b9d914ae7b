#include "pixel_rows.h"

#include <algorithm>

namespace kawin {

void UnpackBits(const BYTE* from, std::span<Pixel> to) noexcept {
    for (std::size_t x = 0; x < to.size(); ++x) {
        to[x] = (from[x / 8] >> (7 - x % 8)) & 1;
    }
}

void PackBits(std::span<const Pixel> from, BYTE* to) noexcept {
    std::fill_n(to, (from.size() + 7) / 8, BYTE{0});
    for (std::size_t x = 0; x < from.size(); ++x) {
        to[x / 8] = static_cast<BYTE>(to[x / 8] | ((from[x] & 1) << (7 - x % 8)));
    }
}

void UnpackTriples(const BYTE* from, std::span<Pixel> to) noexcept {
    for (Pixel& pixel : to) {
        pixel = Pixel{from[0]} | Pixel{from[1]} << 8 | Pixel{from[2]} << 16;
        from += 3;
    }
}

void PackTriples(std::span<const Pixel> from, BYTE* to) noexcept {
    for (const Pixel pixel : from) {
        *to++ = static_cast<BYTE>(pixel);
        *to++ = static_cast<BYTE>(pixel >> 8);
        *to++ = static_cast<BYTE>(pixel >> 16);
    }
}

void UnpackIndices(const BYTE* from, int depth, std::span<const RGBQUAD> palette, std::span<Pixel> to) noexcept {
    const std::size_t per_byte = 8 / static_cast<std::size_t>(depth);
    for (std::size_t x = 0; x < to.size(); ++x) {
        const std::size_t shift = (per_byte - 1 - x % per_byte) * static_cast<std::size_t>(depth);
        const std::size_t index = (from[x / per_byte] >> shift) & ((std::size_t{1} << depth) - 1);
        const RGBQUAD color = index < palette.size() ? palette[index] : RGBQUAD{};
        to[x] = Pixel{color.rgbBlue} | Pixel{color.rgbGreen} << 8 | Pixel{color.rgbRed} << 16;
    }
}

}  // namespace kawin
