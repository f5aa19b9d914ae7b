#include "dib_format.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace kawin {
namespace {

constexpr DWORD kMasks[] = {0xFF0000, 0x00FF00, 0x0000FF};

bool HasUsualMasks(const BITMAPINFO& info) noexcept {
    return std::memcmp(info.bmiColors, kMasks, sizeof(kMasks)) == 0;
}

bool IsKnown(const BITMAPINFO& info) noexcept {
    switch (info.bmiHeader.biBitCount) {
        case 1:
        case 4:
        case 8:
        case 24:
            return info.bmiHeader.biCompression == BI_RGB;
        case 32:
            return info.bmiHeader.biCompression == BI_RGB ||
                   (info.bmiHeader.biCompression == BI_BITFIELDS && HasUsualMasks(info));
        default:
            return false;
    }
}

// A palette of 0 entries has as many as the depth can name.
std::span<const RGBQUAD> PaletteOf(const BITMAPINFO& info) noexcept {
    if (info.bmiHeader.biBitCount > 8) {
        return {};
    }
    const DWORD most = DWORD{1} << info.bmiHeader.biBitCount;
    const DWORD used = info.bmiHeader.biClrUsed;
    return {info.bmiColors, used == 0 ? most : std::min(used, most)};
}

}  // namespace

std::optional<DibFormat> ReadDibFormat(const BITMAPINFO* info) noexcept {
    if (info == nullptr || info->bmiHeader.biSize < sizeof(BITMAPINFOHEADER) || info->bmiHeader.biPlanes != 1 ||
        !IsKnown(*info)) {
        return {};
    }
    const LONG width = info->bmiHeader.biWidth;
    const LONG height = info->bmiHeader.biHeight;
    if (width < 1 || height == 0 || height == std::numeric_limits<LONG>::min()) {
        return {};
    }
    const LONG rows = height < 0 ? -height : height;
    if (!Surface::IsPossible(width, rows)) {
        return {};
    }
    return DibFormat{width, rows, height < 0, info->bmiHeader.biBitCount, PaletteOf(*info)};
}

void UnpackDibRow(const DibFormat& format, const BYTE* from, std::span<Pixel> to) noexcept {
    switch (format.depth) {
        case 32:
            std::memcpy(to.data(), from, to.size_bytes());
            break;
        case 24:
            UnpackTriples(from, to);
            break;
        default:
            UnpackIndices(from, format.depth, format.palette, to);
            break;
    }
}

}  // namespace kawin
