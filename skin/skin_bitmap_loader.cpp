#include "skin_bitmap_loader.h"

#include <kadata/skin_info.h>

#include <limits>

#include "bitmap_resource.h"

namespace kadata {
namespace {

// Red, green and blue of a pixel, without its alpha.
COLORREF ColorAt(Gdiplus::Bitmap& bitmap, int x, int y) {
    Gdiplus::Color color;
    bitmap.GetPixel(x, y, &color);
    return color.ToCOLORREF();
}

void MakeTransparent(Gdiplus::Bitmap& bitmap, COLORREF color) {
    const Gdiplus::Color none(0, GetRValue(color), GetGValue(color), GetBValue(color));
    const int width = static_cast<int>(bitmap.GetWidth());
    const int height = static_cast<int>(bitmap.GetHeight());
    for (int x = 0; x < width; ++x) {
        for (int y = 0; y < height; ++y) {
            if (ColorAt(bitmap, x, y) == color) {
                bitmap.SetPixel(x, y, none);
            }
        }
    }
}

}  // namespace

std::unique_ptr<Gdiplus::Bitmap> LoadSkinBitmap(UINT id) {
    if (id == 0 || id > std::numeric_limits<WORD>::max()) {  // MAKEINTRESOURCE would cut it to another number
        return nullptr;
    }
    const LPCTSTR name = MAKEINTRESOURCEW(static_cast<WORD>(id));
    HINSTANCE module = AfxFindResourceHandle(name, RT_BITMAP);
    if (module == nullptr) {
        module = AfxGetResourceHandle();
    }
    if (!IsWholeBitmap(module, name)) {  // the system may read on behind the resource
        return nullptr;
    }
    std::unique_ptr<Gdiplus::Bitmap> bitmap(Gdiplus::Bitmap::FromResource(module, name));
    if (bitmap == nullptr || bitmap->GetLastStatus() != Gdiplus::Ok) {
        return nullptr;
    }
    return bitmap;
}

std::unique_ptr<Gdiplus::Bitmap> WithColorKey(std::unique_ptr<Gdiplus::Bitmap> bitmap, COLORREF key) {
    if (key == SKIN_NO_COLOR_KEY) {
        return bitmap;
    }
    const int width = static_cast<int>(bitmap->GetWidth());
    const int height = static_cast<int>(bitmap->GetHeight());
    std::unique_ptr<Gdiplus::Bitmap> keyed(bitmap->Clone(0, 0, width, height, PixelFormat32bppARGB));
    if (keyed == nullptr || keyed->GetLastStatus() != Gdiplus::Ok) {
        return bitmap;
    }
    // The uppermost byte of a colour says nothing.
    MakeTransparent(*keyed, key == SKIN_CORNER_COLOR_KEY ? ColorAt(*keyed, 0, 0) : key & RGB(0xFF, 0xFF, 0xFF));
    return keyed;
}

}  // namespace kadata
