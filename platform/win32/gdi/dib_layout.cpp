#include "dib_layout.h"

#include <bit>

#include "../resources/byte_view.h"

namespace kawin {
namespace {

using Bytes = std::span<const std::byte>;

constexpr DWORD kCoreHeader = 12;
constexpr DWORD kInfoHeader = 40;
constexpr DWORD kInfoWithMasks = 52;
constexpr DWORD kInfoWithAlphaMask = 56;
constexpr DWORD kV4Header = 108;
constexpr DWORD kV5Header = 124;

constexpr DWORD kRgb = 0;  // BI_RGB and its siblings
constexpr DWORD kRle8 = 1;
constexpr DWORD kRle4 = 2;
constexpr DWORD kBitFields = 3;

constexpr std::size_t kMasksAt = 40;  // behind the plain header, and inside every longer one
constexpr std::size_t kAlphaMaskAt = 52;
constexpr int kLongestSide = 65535;
constexpr std::uint32_t kOpaque = 0xFF000000;

// What the two kinds of header tell in different places.
struct Fields {
    DWORD size = 0;
    std::int64_t width = 0;
    std::int64_t height = 0;
    WORD planes = 0;
    WORD depth = 0;
    DWORD compression = kRgb;
    DWORD colors_used = 0;
};

std::optional<Fields> ReadCore(Bytes bytes) {
    if (!Slice(bytes, 0, kCoreHeader)) {
        return std::nullopt;
    }
    Fields fields;
    fields.size = kCoreHeader;
    fields.width = *Word(bytes, 4);
    fields.height = *Word(bytes, 6);
    fields.planes = *Word(bytes, 8);
    fields.depth = *Word(bytes, 10);
    return fields;
}

std::optional<Fields> ReadFields(Bytes bytes) {
    const auto size = Dword(bytes, 0);
    if (size == kCoreHeader) {
        return ReadCore(bytes);
    }
    const bool known =
        size == kInfoHeader || size == kInfoWithMasks || size == kInfoWithAlphaMask || size == kV4Header || size == kV5Header;
    if (!known || !Slice(bytes, 0, *size)) {
        return std::nullopt;
    }
    Fields fields;
    fields.size = *size;
    fields.width = static_cast<LONG>(*Dword(bytes, 4));
    fields.height = static_cast<LONG>(*Dword(bytes, 8));
    fields.planes = *Word(bytes, 12);
    fields.depth = *Word(bytes, 14);
    fields.compression = *Dword(bytes, 16);
    fields.colors_used = *Dword(bytes, 32);
    return fields;
}

bool TakeSize(const Fields& fields, bool halved, DibLayout& layout) noexcept {
    const bool top_down = fields.height < 0;
    const std::int64_t stored = top_down ? -fields.height : fields.height;
    if (halved && stored % 2 != 0) {
        return false;
    }
    const std::int64_t height = halved ? stored / 2 : stored;
    if (fields.width < 1 || height < 1 || fields.width > kLongestSide || height > kLongestSide ||
        fields.width * height > kMostDibPixels) {
        return false;
    }
    layout.width = static_cast<int>(fields.width);
    layout.height = static_cast<int>(height);
    layout.top_down = top_down;
    return true;
}

bool TakeCoding(const Fields& fields, DibLayout& layout) noexcept {
    const int depth = fields.depth;
    if (fields.planes != 1 || (depth != 1 && depth != 4 && depth != 8 && depth != 16 && depth != 24 && depth != 32)) {
        return false;
    }
    layout.bits_per_pixel = depth;
    layout.stride = (static_cast<std::size_t>(layout.width) * fields.depth + 31) / 32 * 4;
    switch (fields.compression) {
        case kRgb:
            return true;
        case kRle8:
            layout.coding = DibCoding::Runs8;
            return depth == 8 && !layout.top_down;
        case kRle4:
            layout.coding = DibCoding::Runs4;
            return depth == 4 && !layout.top_down;
        case kBitFields:
            return depth == 16 || depth == 32;
        default:
            return false;
    }
}

// False when the mask has gaps.
bool MakeChannel(std::uint32_t mask, DibChannel& channel) noexcept {
    if (mask == 0) {
        channel = {};
        return true;
    }
    channel = {mask, std::countr_zero(mask), std::popcount(mask)};
    return std::countl_zero(mask) + channel.bits + channel.shift == 32;
}

bool SetChannels(const std::array<std::uint32_t, 4>& masks, DibLayout& layout) noexcept {
    std::uint32_t all = 0;
    int bits = 0;
    for (const std::uint32_t mask : masks) {
        all |= mask;
        bits += std::popcount(mask);
    }
    const bool apart = std::popcount(all) == bits;
    const bool inside = layout.bits_per_pixel != 16 || all >> 16 == 0;
    return apart && inside && MakeChannel(masks[0], layout.red) && MakeChannel(masks[1], layout.green) &&
           MakeChannel(masks[2], layout.blue) && MakeChannel(masks[3], layout.alpha);
}

// Masks that come behind the header make it longer.
bool TakeChannels(Bytes bytes, const Fields& fields, DibLayout& layout) noexcept {
    layout.header_size = fields.size;
    layout.has_masks = fields.compression == kBitFields;
    if (!layout.has_masks) {
        return layout.bits_per_pixel == 16 ? SetChannels({0x7C00, 0x03E0, 0x001F, 0}, layout)
                                           : SetChannels({0x00FF0000, 0x0000FF00, 0x000000FF, 0}, layout);
    }
    const auto red = Dword(bytes, kMasksAt);
    const auto green = Dword(bytes, kMasksAt + 4);
    const auto blue = Dword(bytes, kMasksAt + 8);
    const auto alpha = fields.size >= kInfoWithAlphaMask ? Dword(bytes, kAlphaMaskAt) : 0;
    if (fields.size == kInfoHeader) {
        layout.header_size = kInfoWithMasks;
    }
    return red && green && blue && alpha && SetChannels({*red, *green, *blue, *alpha}, layout);
}

bool TakePalette(Bytes bytes, const Fields& fields, DibLayout& layout) {
    const bool indexed = layout.bits_per_pixel <= 8;
    const std::size_t most = indexed ? std::size_t{1} << layout.bits_per_pixel : 0;
    const std::size_t count = fields.colors_used != 0 ? fields.colors_used : most;
    const std::size_t entry = fields.size == kCoreHeader ? 3 : 4;
    if ((indexed && count > most) || count > bytes.size() / entry || !Slice(bytes, layout.header_size, count * entry)) {
        return false;
    }
    const Bytes table = bytes.subspan(layout.header_size, count * entry);
    layout.header_size += table.size();
    for (std::size_t at = 0; indexed && at < table.size(); at += entry) {
        layout.palette.push_back(kOpaque | std::to_integer<std::uint32_t>(table[at]) |
                                 std::to_integer<std::uint32_t>(table[at + 1]) << 8 |
                                 std::to_integer<std::uint32_t>(table[at + 2]) << 16);
    }
    return true;
}

}  // namespace

std::optional<DibLayout> ReadDibLayout(std::span<const std::byte> bytes, bool halved) {
    const auto fields = ReadFields(bytes);
    DibLayout layout;
    if (!fields || !TakeSize(*fields, halved, layout) || !TakeCoding(*fields, layout) || !TakeChannels(bytes, *fields, layout) ||
        !TakePalette(bytes, *fields, layout)) {
        return std::nullopt;
    }
    return layout;
}

}  // namespace kawin
