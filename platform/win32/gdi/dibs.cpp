// Device-independent pixels to and from bitmaps.

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <optional>
#include <span>
#include <vector>

#include "../base/error.h"
#include "bitmap_object.h"
#include "bitmaps.h"
#include "contexts.h"
#include "dib_format.h"
#include "drawing_context.h"

namespace {

using kawin::BitmapObject;
using kawin::DibFormat;
using kawin::FindGdi;
using kawin::Pixel;
using kawin::Surface;

template <class T>
T Refuse(T failed, DWORD error = ERROR_INVALID_PARAMETER) noexcept {
    SetLastError(error);
    return failed;
}

constexpr std::array<RGBQUAD, 2> kBlackAndWhite = {RGBQUAD{0, 0, 0, 0}, RGBQUAD{255, 255, 255, 0}};

// Which rows of a DIB the caller has in memory: counted from the lowest, whichever way they lie.
struct RowRange {
    UINT first;
    UINT lines;
};

// Calls each(y, row) for the rows that both have, y counted from the top: the upper left corners of DIB and bitmap are the same
// pixel. How many there were.
template <class Byte, class Each>
int ForEachRow(const DibFormat& format, const RowRange& rows, const Surface& surface, Byte* bits, Each&& each) {
    int copied = 0;
    for (int y = 0; y < std::min(format.height, surface.Height()); ++y) {
        const UINT line = static_cast<UINT>(format.height - 1 - y);
        if (line < rows.first || line - rows.first >= rows.lines) {
            continue;
        }
        const UINT in_memory = format.top_down ? rows.lines - 1 - (line - rows.first) : line - rows.first;
        each(y, bits + format.RowBytes() * in_memory);
        ++copied;
    }
    return copied;
}

// A row of a bitmap in colours.
void ReadColors(const Surface& surface, int y, std::span<Pixel> colors) noexcept {
    std::copy_n(surface.Row(y), colors.size(), colors.begin());
    if (surface.IsMono()) {
        std::for_each(colors.begin(), colors.end(), [](Pixel& pixel) { pixel = pixel != 0 ? 0xFFFFFF : 0; });
    }
}

void PackDibRow(const DibFormat& format, std::span<Pixel> colors, BYTE* to) noexcept {
    switch (format.depth) {
        case 32:
            std::memcpy(to, colors.data(), colors.size_bytes());
            break;
        case 24:
            kawin::PackTriples(colors, to);
            break;
        default:
            std::transform(colors.begin(), colors.end(), colors.begin(), kawin::MonoOf);
            kawin::PackBits(colors, to);
            break;
    }
}

// The answer to a question for the format alone.
int FillHeader(const Surface& surface, BITMAPINFOHEADER& header) noexcept {
    if (header.biSize < sizeof(BITMAPINFOHEADER)) {
        return Refuse(0);
    }
    const WORD depth = header.biBitCount != 0 ? header.biBitCount : surface.IsMono() ? 1 : 32;
    if (depth != 1 && depth != 24 && depth != 32) {
        return Refuse(0);
    }
    const bool top_down = header.biBitCount != 0 && header.biHeight < 0;
    header.biWidth = surface.Width();
    header.biHeight = top_down ? -surface.Height() : surface.Height();
    header.biPlanes = 1;
    header.biBitCount = depth;
    header.biCompression = BI_RGB;
    header.biSizeImage = static_cast<DWORD>(kawin::RowBytes(surface.Width(), depth, 4)) * static_cast<DWORD>(surface.Height());
    return surface.Height();
}

// What both directions ask first.
std::shared_ptr<BitmapObject> FindForDib(HDC context, HBITMAP bitmap) noexcept {
    auto found = FindGdi<BitmapObject>(bitmap);
    if (!found || !kawin::FindContext(context)) {
        return Refuse<std::shared_ptr<BitmapObject>>(nullptr, ERROR_INVALID_HANDLE);
    }
    return found;
}

}  // namespace

HBITMAP CreateDIBSection(HDC, const BITMAPINFO* info, UINT usage, void** bits, HANDLE section, DWORD) noexcept {
    if (bits != nullptr) {
        *bits = nullptr;
    }
    const std::optional<DibFormat> format = kawin::ReadDibFormat(info);
    if (!format || format->depth != 32 || usage != DIB_RGB_COLORS || section != nullptr) {
        return Refuse<HBITMAP>(nullptr);
    }
    const HBITMAP made = kawin::AddSection(format->width, format->height, format->top_down);
    if (made != nullptr && bits != nullptr) {
        *bits = FindGdi<BitmapObject>(made)->dib_bits;
    }
    return made;
}

int GetDIBits(HDC context, HBITMAP bitmap, UINT first, UINT lines, LPVOID bits, LPBITMAPINFO info, UINT usage) noexcept try {
    const auto found = FindForDib(context, bitmap);
    if (!found) {
        return 0;
    }
    if (info == nullptr || usage != DIB_RGB_COLORS) {
        return Refuse(0);
    }
    const Surface& surface = *found->surface;
    if (bits == nullptr) {
        return FillHeader(surface, info->bmiHeader);
    }
    const std::optional<DibFormat> format = kawin::ReadDibFormat(info);
    if (!format || format->depth == 4 || format->depth == 8) {
        return Refuse(0);
    }
    if (format->depth == 1) {
        std::memcpy(info->bmiColors, kBlackAndWhite.data(), sizeof(kBlackAndWhite));
    }
    std::vector<Pixel> colors(static_cast<std::size_t>(std::min(format->width, surface.Width())));
    return ForEachRow(*format, {first, lines}, surface, static_cast<BYTE*>(bits), [&](int y, BYTE* row) {
        ReadColors(surface, y, colors);
        PackDibRow(*format, colors, row);
    });
} catch (const std::bad_alloc&) {
    return Refuse(0, ERROR_NOT_ENOUGH_MEMORY);
}

int SetDIBits(HDC context, HBITMAP bitmap, UINT first, UINT lines, const void* bits, const BITMAPINFO* info,
              UINT usage) noexcept {
    const auto found = FindForDib(context, bitmap);
    if (!found) {
        return 0;
    }
    const std::optional<DibFormat> format = kawin::ReadDibFormat(info);
    if (!format || bits == nullptr || usage != DIB_RGB_COLORS) {
        return Refuse(0);
    }
    Surface& surface = *found->surface;
    const int copied = ForEachRow(*format, {first, lines}, surface, static_cast<const BYTE*>(bits), [&](int y, const BYTE* row) {
        const std::span<Pixel> target(surface.Row(y), static_cast<std::size_t>(std::min(format->width, surface.Width())));
        kawin::UnpackDibRow(*format, row, target);
        if (surface.IsMono()) {
            std::transform(target.begin(), target.end(), target.begin(), kawin::MonoOf);
        }
    });
    surface.Touch(surface.Bounds());
    return copied;
}

HBITMAP CreateDIBitmap(HDC context, const BITMAPINFOHEADER* header, DWORD flags, const void* bits, const BITMAPINFO* info,
                       UINT usage) noexcept {
    if (header == nullptr || header->biWidth < 1 || header->biHeight == 0 ||
        header->biHeight == std::numeric_limits<LONG>::min()) {
        return Refuse<HBITMAP>(nullptr);
    }
    const LONG height = header->biHeight < 0 ? -header->biHeight : header->biHeight;
    const HBITMAP made = CreateBitmap(header->biWidth, height, 1, 32, nullptr);
    if (made != nullptr && (flags & CBM_INIT) != 0 &&
        SetDIBits(context, made, 0, static_cast<UINT>(height), bits, info, usage) == 0) {
        DeleteObject(made);
        return nullptr;
    }
    return made;
}
