#pragma once

// What the header of a device-independent bitmap says, checked: nothing of it is taken from whoever wrote it without a look.
// The formats are those of "Bitmap Header Types" and "Bitmap Storage" in the platform's documentation.

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "gdi_types.h"

namespace kawin {

enum class DibCoding { Plain, Runs4, Runs8 };

// A channel of 16 or 32 stored bits: those of the mask, which have no gap. No bits: the channel is 0, and alpha 255.
struct DibChannel {
    std::uint32_t mask = 0;
    int shift = 0;  // of the lowest bit
    int bits = 0;
};

struct DibLayout {
    int width = 0;   // at least 1
    int height = 0;  // at least 1
    bool top_down = false;
    int bits_per_pixel = 0;  // 1, 4, 8, 16, 24 or 32
    DibCoding coding = DibCoding::Plain;
    DibChannel red, green, blue, alpha;  // of more than 8 bits
    bool has_masks = false;              // they are the header's, not the usual ones
    std::vector<std::uint32_t> palette;  // 0xFFRRGGBB; at most as many as the depth can name, none above 8 bits
    std::size_t header_size = 0;         // of header, masks and colour table together: where the pixels of a resource begin
    std::size_t stride = 0;              // bytes of a stored row, for every coding the plain one

    std::size_t PixelCount() const noexcept { return static_cast<std::size_t>(width) * static_cast<std::size_t>(height); }
    // What plain pixels take.
    std::size_t PlainSize() const noexcept { return stride * static_cast<std::size_t>(height); }
};

// The most pixels of a bitmap: 2^26, 256 MiB when they are decoded. Neither side is longer than 65,535.
constexpr std::int64_t kMostDibPixels = std::int64_t{1} << 26;

// Of a BITMAPCOREHEADER, BITMAPINFOHEADER (also with the two or four masks behind it), BITMAPV4HEADER or BITMAPV5HEADER and the
// colour table that follows it. With `halved`, the height is twice that of the picture, as in icons and cursors.
// Nothing when the bytes end before, for a side of 0, an impossible size or depth, a coding that does not go with the depth
// (JPEG and PNG inside a bitmap included), channels that overlap or have gaps, and a colour table that is longer than the depth.
std::optional<DibLayout> ReadDibLayout(std::span<const std::byte> bytes, bool halved = false);

}  // namespace kawin
