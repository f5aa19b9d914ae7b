#include "bitmap_loading.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <span>

#include "../base/error.h"
#include "../resources/resources.h"
#include "bitmap_object.h"
#include "contexts.h"
#include "copies.h"
#include "dib_format.h"
#include "dib_reader.h"

namespace kawin {
namespace {

constexpr UINT kKnownFlags = LR_MONOCHROME | LR_COLOR | LR_VGACOLOR | LR_DEFAULTSIZE | LR_CREATEDIBSECTION | LR_SHARED;

HBITMAP Refuse(DWORD error) noexcept {
    SetLastError(error);
    return nullptr;
}

std::optional<DibPicture> ReadResource(HINSTANCE module, LPCWSTR name) noexcept {
    const HRSRC resource = FindResourceW(module, name, RT_BITMAP);
    if (resource == nullptr) {
        return {};
    }
    const void* const bytes = LockResource(LoadResource(module, resource));
    auto picture = ReadDib({static_cast<const std::byte*>(bytes), SizeofResource(module, resource)});
    if (!picture) {
        SetLastError(ERROR_INVALID_DATA);
    }
    return picture;
}

void CopyInto(const DibPicture& picture, Surface& surface) noexcept {
    const bool keeps_top = picture.has_alpha || picture.keeps_top_byte;
    for (int y = 0; y < picture.height; ++y) {
        const auto row = picture.pixels.begin() + static_cast<std::ptrdiff_t>(y) * picture.width;
        std::transform(row, row + picture.width, surface.Row(y), [&](Pixel pixel) {
            return surface.IsMono() ? MonoOf(pixel) : keeps_top ? pixel : pixel & 0xFFFFFF;
        });
    }
}

HBITMAP MakeEmpty(int width, int height, bool mono, bool section) noexcept {
    return section ? AddSection(width, height, false) : AddBitmap(Surface::Make(width, height, mono));
}

// Copies all of one bitmap over all of another.
bool StretchInto(HBITMAP target, const SIZE& to, HBITMAP source, const SIZE& from) noexcept {
    const HDC target_context = CreateCompatibleDC(nullptr);
    const HDC source_context = CreateCompatibleDC(nullptr);
    SelectObject(target_context, target);
    SelectObject(source_context, source);
    SetStretchBltMode(target_context, COLORONCOLOR);
    const BOOL done = StretchBlt(target_context, 0, 0, to.cx, to.cy, source_context, 0, 0, from.cx, from.cy, SRCCOPY);
    DeleteDC(source_context);
    DeleteDC(target_context);
    return done != FALSE;
}

// A scaled copy; `bitmap` is deleted.
HBITMAP Scaled(HBITMAP bitmap, const SIZE& size, const SIZE& wanted, bool mono, bool section) noexcept {
    const HBITMAP scaled = MakeEmpty(wanted.cx, wanted.cy, mono, section);
    const bool done = scaled != nullptr && StretchInto(scaled, wanted, bitmap, size);
    DeleteObject(bitmap);
    if (done || scaled == nullptr) {
        return scaled;
    }
    DeleteObject(scaled);
    return Refuse(ERROR_NOT_ENOUGH_MEMORY);
}

}  // namespace

HBITMAP LoadBitmapImage(HINSTANCE module, LPCWSTR name, int width, int height, UINT flags) noexcept {
    if ((flags & ~kKnownFlags) != 0 || width < 0 || height < 0) {
        return Refuse(ERROR_INVALID_PARAMETER);
    }
    const std::optional<DibPicture> picture = ReadResource(module, name);
    if (!picture) {
        return nullptr;
    }
    const bool section = (flags & LR_CREATEDIBSECTION) != 0;
    const bool mono = !section && ((flags & LR_MONOCHROME) != 0 || picture->IsBlackAndWhite());
    const HBITMAP made = MakeEmpty(picture->width, picture->height, mono, section);
    const auto bitmap = FindGdi<BitmapObject>(made);
    if (!bitmap) {
        return nullptr;
    }
    CopyInto(*picture, *bitmap->surface);
    const SIZE size = {picture->width, picture->height};
    const SIZE wanted = {width != 0 ? width : size.cx, height != 0 ? height : size.cy};
    const bool as_it_is = wanted.cx == size.cx && wanted.cy == size.cy;
    return as_it_is ? made : Scaled(made, size, wanted, mono, section);
}

}  // namespace kawin

HBITMAP LoadBitmapW(HINSTANCE module, LPCWSTR name) noexcept {
    return kawin::LoadBitmapImage(module, name, 0, 0, LR_DEFAULTCOLOR);
}
