#include "bitmap_pixels.h"

#include "bitmap_context.h"

namespace kadata {
namespace {

constexpr DWORD COLOR_BITS = 0x00FFFFFF;

BITMAPINFO FormatOf(CSize size) {
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = size.cx;
    info.bmiHeader.biHeight = -size.cy;  // from the top
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    return info;
}

}  // namespace

BitmapPixels ReadPixels(HBITMAP bitmap) {
    BITMAP description = {};
    if (GetObjectW(bitmap, sizeof(description), &description) == 0) {
        return {};
    }
    BitmapPixels pixels{{description.bmWidth, description.bmHeight}, {}};
    pixels.colors.resize(static_cast<std::size_t>(pixels.size.cx) * static_cast<std::size_t>(pixels.size.cy));
    BITMAPINFO info = FormatOf(pixels.size);
    const ClientContext screen(nullptr);
    const int read = GetDIBits(screen, bitmap, 0, static_cast<UINT>(pixels.size.cy), pixels.colors.data(), &info, DIB_RGB_COLORS);
    if (read != pixels.size.cy) {
        return {};
    }
    for (DWORD& color : pixels.colors) {
        color &= COLOR_BITS;
    }
    return pixels;
}

bool WritePixels(HBITMAP bitmap, const BitmapPixels& pixels) {
    const BITMAPINFO info = FormatOf(pixels.size);
    const ClientContext screen(nullptr);
    return SetDIBits(screen, bitmap, 0, static_cast<UINT>(pixels.size.cy), pixels.colors.data(), &info, DIB_RGB_COLORS) != 0;
}

HBITMAP MakeBitmap(const BitmapPixels& pixels) {
    const ClientContext screen(nullptr);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, pixels.size.cx, pixels.size.cy);
    if (bitmap != nullptr && !WritePixels(bitmap, pixels)) {
        DeleteObject(bitmap);
        return nullptr;
    }
    return bitmap;
}

}  // namespace kadata
