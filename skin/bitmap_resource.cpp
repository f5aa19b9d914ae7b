#include "bitmap_resource.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <span>

namespace kadata {
namespace {

constexpr std::uint64_t CORE_COLOR_SIZE = 3;  // blue, green, red

using Bytes = std::span<const std::byte>;

// What the headers of all versions tell of the bytes behind them.
struct BitmapLayout {
    std::uint64_t header = 0;
    std::uint64_t colors = 0;
    std::uint64_t colorSize = 0;
    std::uint64_t masks = 0;
    std::uint64_t width = 0;
    std::uint64_t height = 0;
    std::uint64_t depth = 0;
    std::uint64_t packed = 0;  // bytes of pixels that are not in rows of equal length; 0: they are
    bool possible = false;
};

template <class Header>
Header ReadHeader(Bytes bytes) {
    Header header;
    std::memcpy(&header, bytes.data(), sizeof(header));
    return header;
}

BitmapLayout CoreLayout(Bytes bytes) {
    const auto core = ReadHeader<BITMAPCOREHEADER>(bytes);
    BitmapLayout layout;
    layout.header = core.bcSize;
    layout.colors = core.bcBitCount <= 8 ? 1U << core.bcBitCount : 0;
    layout.colorSize = CORE_COLOR_SIZE;
    layout.width = core.bcWidth;
    layout.height = core.bcHeight;
    layout.depth = core.bcBitCount;
    layout.possible = true;
    return layout;
}

BitmapLayout InfoLayout(Bytes bytes) {
    const auto info = ReadHeader<BITMAPINFOHEADER>(bytes);
    const bool indexed = info.biBitCount <= 8;
    const std::uint64_t most = indexed ? 1U << info.biBitCount : info.biClrUsed;
    BitmapLayout layout;
    layout.header = info.biSize;
    layout.colors = indexed && info.biClrUsed == 0 ? most : info.biClrUsed;
    layout.colorSize = sizeof(RGBQUAD);
    layout.masks = info.biCompression == BI_BITFIELDS && info.biSize == sizeof(info) ? 3 * sizeof(DWORD) : 0;
    layout.width = static_cast<std::uint64_t>(info.biWidth);
    layout.height = static_cast<std::uint64_t>(std::abs(std::int64_t{info.biHeight}));
    layout.depth = info.biBitCount;
    layout.packed = info.biCompression == BI_RGB || info.biCompression == BI_BITFIELDS ? 0 : info.biSizeImage;
    layout.possible = info.biWidth > 0 && info.biSize <= bytes.size() && layout.colors <= most;
    return layout;
}

BitmapLayout LayoutOf(Bytes bytes) {
    DWORD headerSize = 0;
    if (bytes.size() >= sizeof(headerSize)) {
        std::memcpy(&headerSize, bytes.data(), sizeof(headerSize));
    }
    if (headerSize == sizeof(BITMAPCOREHEADER) && bytes.size() >= sizeof(BITMAPCOREHEADER)) {
        return CoreLayout(bytes);
    }
    if (headerSize >= sizeof(BITMAPINFOHEADER) && bytes.size() >= sizeof(BITMAPINFOHEADER)) {
        return InfoLayout(bytes);
    }
    return {};
}

bool IsWhole(Bytes bytes) {
    const BitmapLayout layout = LayoutOf(bytes);
    const std::uint64_t before = layout.header + layout.masks + layout.colors * layout.colorSize;
    if (!layout.possible || before > bytes.size()) {
        return false;
    }
    const std::uint64_t left = bytes.size() - before;
    if (layout.packed != 0) {
        return layout.packed <= left;
    }
    const std::uint64_t row = (layout.width * layout.depth + 31) / 32 * 4;
    return row <= left && layout.height <= left && row * layout.height <= left;  // small enough to be multiplied
}

}  // namespace

bool IsWholeBitmap(HMODULE module, LPCTSTR name) {
    const HRSRC resource = FindResourceW(module, name, RT_BITMAP);
    if (resource == nullptr) {
        return false;
    }
    const auto* const bytes = static_cast<const std::byte*>(LockResource(LoadResource(module, resource)));
    return bytes != nullptr && IsWhole({bytes, SizeofResource(module, resource)});
}

}  // namespace kadata
