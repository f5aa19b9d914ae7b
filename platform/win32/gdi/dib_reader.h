#pragma once

// The one reader of bitmaps that come as bytes: resources, icons and files. The bytes may be anyone's; every place that they
// name is checked, and a picture that is cut short is none.

#include "dib_layout.h"

namespace kawin {

struct DibPicture {
    int width = 0;   // at least 1
    int height = 0;  // at least 1
    int bits_per_pixel = 0;
    // The top byte is alpha, not multiplied in: the header has a mask for it.
    bool has_alpha = false;
    // 32 bits without masks: the top byte is as it was stored. Whether it means anything the reader's caller knows (in an icon
    // it is alpha where any is not 0). Without this and has_alpha it is 255.
    bool keeps_top_byte = false;
    std::vector<std::uint32_t> palette;  // 0xFFRRGGBB, for up to 8 bits
    std::vector<std::uint32_t> pixels;   // 0xAARRGGBB, rows from the top, width * height; a number without a colour is black
    std::vector<std::uint8_t> indices;   // likewise, the numbers in the palette; empty above 8 bits
    std::vector<std::uint8_t> mask;      // of an icon, likewise: 1 where what is behind shows. Empty otherwise

    // A colour table of just black and white, in any order: what the system makes a monochrome bitmap of.
    bool IsBlackAndWhite() const noexcept;
};

enum class DibUse { Bitmap, Icon };

// A bitmap resource: header, colour table and pixels. As DibUse::Icon an icon's: the pixels are followed by a mask of one bit,
// and the height counts both. Nothing as ReadDibLayout says, for pixels that are cut, and without memory.
// In run-length coded pictures, pixels that no run reaches are of colour 0, and what lies outside of the picture is left out;
// one whose runs end before its last row without an end mark is
// cut, as is one of more than 1,024 pixels a byte.
std::optional<DibPicture> ReadDib(std::span<const std::byte> resource, DibUse use = DibUse::Bitmap) noexcept;

// A bitmap file: the same with a BITMAPFILEHEADER in front, which says where the pixels are.
std::optional<DibPicture> ReadBitmapFile(std::span<const std::byte> file) noexcept;

// Pixels that lie apart from their header.
std::optional<DibPicture> DecodeDib(const DibLayout& layout, std::span<const std::byte> stored) noexcept;

}  // namespace kawin
