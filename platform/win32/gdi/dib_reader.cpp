#include "dib_reader.h"

#include <algorithm>
#include <new>

#include "../resources/byte_view.h"
#include "dib_runs.h"

namespace kawin {
namespace {

using Bytes = std::span<const std::byte>;

constexpr std::uint32_t kOpaque = 0xFF000000;
constexpr std::size_t kFileHeader = 14;
constexpr std::size_t kPixelsAt = 10;
// A run of two bytes is 255 pixels long, and moves leave out more. So few bytes for so many pixels are only there to use up
// memory.
constexpr std::size_t kMostPixelsOfARunByte = 1024;

constexpr WORD kFileMark = 0x4D42;  // "BM"

std::uint32_t At(Bytes row, std::size_t at) noexcept {
    return std::to_integer<std::uint32_t>(row[at]);
}

// The stored row of line `y` from the top.
Bytes RowOf(const DibLayout& layout, Bytes stored, int y) noexcept {
    const int row = layout.top_down ? y : layout.height - 1 - y;
    return stored.subspan(layout.stride * static_cast<std::size_t>(row), layout.stride);
}

void ReadIndexRow(Bytes row, int depth, std::span<std::uint8_t> indices) noexcept {
    const std::size_t per_byte = static_cast<std::size_t>(8 / depth);
    const std::uint32_t most = (1U << depth) - 1;
    for (std::size_t x = 0; x < indices.size(); ++x) {
        const std::size_t shift = 8 - static_cast<std::size_t>(depth) * (x % per_byte + 1);
        indices[x] = static_cast<std::uint8_t>(At(row, x / per_byte) >> shift & most);
    }
}

// All values of a channel's highest 8 bits as bytes: fewer bits are repeated downwards, so that full is 255.
class ChannelTable {
public:
    explicit ChannelTable(const DibChannel& channel, std::uint8_t without) noexcept : channel_(channel) {
        const int bits = std::min(channel.bits, 8);
        drop_ = channel.bits - bits;
        values_[0] = channel.bits == 0 ? without : 0;
        for (std::uint32_t value = 1; value < 1U << bits; ++value) {
            std::uint32_t wide = value << (8 - bits);
            for (int have = bits; have < 8; have *= 2) {
                wide |= wide >> have;
            }
            values_[value] = static_cast<std::uint8_t>(wide);
        }
    }
    std::uint32_t Of(std::uint32_t pixel) const noexcept { return values_[(pixel & channel_.mask) >> channel_.shift >> drop_]; }

private:
    DibChannel channel_;
    int drop_ = 0;
    std::array<std::uint8_t, 256> values_ = {};
};

void DecodeMasked(const DibLayout& layout, Bytes stored, DibPicture& picture) {
    const ChannelTable red(layout.red, 0), green(layout.green, 0), blue(layout.blue, 0), alpha(layout.alpha, 255);
    const std::size_t bytes = static_cast<std::size_t>(layout.bits_per_pixel) / 8;
    auto target = picture.pixels.begin();
    for (int y = 0; y < layout.height; ++y) {
        const Bytes row = RowOf(layout, stored, y);
        for (std::size_t x = 0; x < static_cast<std::size_t>(layout.width); ++x) {
            std::uint32_t pixel = 0;
            for (std::size_t i = 0; i < bytes; ++i) {
                pixel |= At(row, x * bytes + i) << (8 * i);
            }
            const std::uint32_t top = picture.keeps_top_byte ? pixel & kOpaque : alpha.Of(pixel) << 24;
            *target++ = top | red.Of(pixel) << 16 | green.Of(pixel) << 8 | blue.Of(pixel);
        }
    }
}

void ColorIndices(const DibLayout& layout, DibPicture& picture) {
    picture.palette = layout.palette;
    std::transform(picture.indices.begin(), picture.indices.end(), picture.pixels.begin(),
                   [&](std::uint8_t index) { return index < layout.palette.size() ? layout.palette[index] : kOpaque; });
}

bool DecodeIndexed(const DibLayout& layout, Bytes stored, DibPicture& picture) {
    picture.indices.resize(picture.pixels.size());
    const std::span<std::uint8_t> all = picture.indices;
    const std::size_t width = static_cast<std::size_t>(layout.width);
    if (layout.coding != DibCoding::Plain) {
        if (!DecodeDibRuns(layout, stored, all)) {
            return false;
        }
    } else {
        for (int y = 0; y < layout.height; ++y) {
            ReadIndexRow(RowOf(layout, stored, y), layout.bits_per_pixel,
                         all.subspan(static_cast<std::size_t>(y) * width, width));
        }
    }
    ColorIndices(layout, picture);
    return true;
}

std::optional<DibPicture> Decode(const DibLayout& layout, Bytes stored) {
    const std::size_t least =
        layout.coding == DibCoding::Plain ? layout.PlainSize() : layout.PixelCount() / kMostPixelsOfARunByte;
    if (stored.size() < least) {
        return std::nullopt;
    }
    DibPicture picture;
    picture.width = layout.width;
    picture.height = layout.height;
    picture.bits_per_pixel = layout.bits_per_pixel;
    picture.has_alpha = layout.alpha.bits != 0;
    picture.keeps_top_byte = layout.bits_per_pixel == 32 && !layout.has_masks;
    picture.pixels.resize(layout.PixelCount());
    if (layout.bits_per_pixel > 8) {
        DecodeMasked(layout, stored, picture);
    } else if (!DecodeIndexed(layout, stored, picture)) {
        return std::nullopt;
    }
    return picture;
}

// The mask of an icon lies behind its plain pixels, in rows of one bit.
bool DecodeMask(const DibLayout& layout, Bytes stored, DibPicture& picture) {
    DibLayout mask = layout;
    mask.bits_per_pixel = 1;
    mask.stride = (static_cast<std::size_t>(layout.width) + 31) / 32 * 4;
    const auto bits = Slice(stored, layout.PlainSize(), mask.PlainSize());
    if (!bits || layout.coding != DibCoding::Plain) {
        return false;
    }
    picture.mask.resize(picture.pixels.size());
    const std::size_t width = static_cast<std::size_t>(layout.width);
    for (int y = 0; y < layout.height; ++y) {
        ReadIndexRow(RowOf(mask, *bits, y), 1, std::span(picture.mask).subspan(static_cast<std::size_t>(y) * width, width));
    }
    return true;
}

}  // namespace

bool DibPicture::IsBlackAndWhite() const noexcept {
    constexpr std::uint32_t black = kOpaque;
    constexpr std::uint32_t white = 0xFFFFFFFF;
    return bits_per_pixel == 1 && palette.size() == 2 &&
           ((palette[0] == black && palette[1] == white) || (palette[0] == white && palette[1] == black));
}

std::optional<DibPicture> DecodeDib(const DibLayout& layout, std::span<const std::byte> stored) noexcept try {
    return Decode(layout, stored);
} catch (const std::bad_alloc&) {
    return std::nullopt;
}

std::optional<DibPicture> ReadDib(std::span<const std::byte> resource, DibUse use) noexcept try {
    const auto layout = ReadDibLayout(resource, use == DibUse::Icon);
    if (!layout) {
        return std::nullopt;
    }
    const Bytes stored = resource.subspan(layout->header_size);
    auto picture = Decode(*layout, stored);
    if (picture && use == DibUse::Icon && !DecodeMask(*layout, stored, *picture)) {
        return std::nullopt;
    }
    return picture;
} catch (const std::bad_alloc&) {
    return std::nullopt;
}

std::optional<DibPicture> ReadBitmapFile(std::span<const std::byte> file) noexcept try {
    if (Word(file, 0) != kFileMark || file.size() < kFileHeader) {
        return std::nullopt;
    }
    const auto layout = ReadDibLayout(file.subspan(kFileHeader));
    const std::size_t pixels_at = *Dword(file, kPixelsAt);
    if (!layout || pixels_at < kFileHeader + layout->header_size || pixels_at > file.size()) {
        return std::nullopt;
    }
    return Decode(*layout, file.subspan(pixels_at));
} catch (const std::bad_alloc&) {
    return std::nullopt;
}

}  // namespace kawin
