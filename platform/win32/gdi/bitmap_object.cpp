#include "bitmap_object.h"

#include <new>

#include "describe.h"

namespace kawin {

BITMAP BitmapObject::Description() const noexcept {
    const int width = surface->Width();
    const int unit = dib_bits != nullptr ? 32 : 16;  // rows are multiples of this many bits
    const LONG row_bytes = (width * Depth() + unit - 1) / unit * unit / 8;
    return {0, width, surface->Height(), row_bytes, 1, Depth(), dib_bits};
}

int BitmapObject::Describe(int capacity, void* target) const noexcept {
    const BITMAP bitmap = Description();
    if (dib_bits == nullptr || target == nullptr || capacity < static_cast<int>(sizeof(DIBSECTION))) {
        return DescribeBy(bitmap, capacity, target);
    }
    DIBSECTION section = {};
    section.dsBm = bitmap;
    section.dsBmih.biSize = sizeof(BITMAPINFOHEADER);
    section.dsBmih.biWidth = bitmap.bmWidth;
    section.dsBmih.biHeight = bitmap.bmHeight;
    section.dsBmih.biPlanes = 1;
    section.dsBmih.biBitCount = bitmap.bmBitsPixel;
    section.dsBmih.biCompression = BI_RGB;
    section.dsBmih.biSizeImage = static_cast<DWORD>(bitmap.bmWidthBytes) * static_cast<DWORD>(bitmap.bmHeight);
    return DescribeBy(section, capacity, target);
}

HBITMAP AddBitmap(std::shared_ptr<Surface> surface) noexcept try {
    if (!surface) {
        throw std::bad_alloc();
    }
    return static_cast<HBITMAP>(AddGdiObject(std::make_shared<BitmapObject>(std::move(surface))));
} catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

HBITMAP AddSection(int width, int height, bool top_down) noexcept try {
    if (!Surface::IsPossible(width, height)) {
        throw std::bad_alloc();
    }
    const std::ptrdiff_t stride = width;
    const auto pixels = std::make_shared<Pixel[]>(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    Pixel* const top_row = pixels.get() + (top_down ? 0 : stride * (height - 1));
    auto surface = std::make_shared<Surface>(top_row, width, height, top_down ? stride : -stride, pixels);
    return static_cast<HBITMAP>(AddGdiObject(std::make_shared<BitmapObject>(std::move(surface), pixels.get())));
} catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

}  // namespace kawin
