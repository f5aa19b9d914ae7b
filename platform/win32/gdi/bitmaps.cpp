#include "bitmaps.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <span>
#include <vector>

#include "../base/error.h"
#include "bitmap_object.h"
#include "drawing_context.h"
#include "pixel_rows.h"
#include "stock_objects.h"

namespace {

using kawin::AddBitmap;
using kawin::BitmapObject;
using kawin::FindContext;
using kawin::FindGdi;
using kawin::Pixel;
using kawin::Surface;

constexpr std::size_t kRowUnit = 2;

template <class T>
T Refuse(DWORD error, T failed) noexcept {
    SetLastError(error);
    return failed;
}

std::span<Pixel> RowOf(Surface& surface, int y) noexcept {
    return {surface.Row(y), static_cast<std::size_t>(surface.Width())};
}

// One row of a bitmap as CreateBitmap has it in memory.
void ReadRow(const BYTE* from, Surface& surface, int y) noexcept {
    const std::span<Pixel> row = RowOf(surface, y);
    if (surface.IsMono()) {
        kawin::UnpackBits(from, row);
    } else {
        std::memcpy(row.data(), from, row.size_bytes());
    }
}

void WriteRow(Surface& surface, int y, BYTE* to) noexcept {
    const std::span<Pixel> row = RowOf(surface, y);
    if (surface.IsMono()) {
        kawin::PackBits(row, to);
    } else {
        std::memcpy(to, row.data(), row.size_bytes());
    }
}

std::size_t RowBytesOf(const Surface& surface) noexcept {
    return kawin::RowBytes(surface.Width(), surface.IsMono() ? 1 : 32, kRowUnit);
}

// Of the bytes from the top as many as there are; the last row may be cut.
void ReadRows(const BYTE* from, std::size_t size, Surface& surface) {
    const std::size_t row_bytes = RowBytesOf(surface);
    std::vector<BYTE> row(row_bytes);
    for (int y = 0; y < surface.Height() && size > 0; ++y) {
        const std::size_t bytes = std::min(size, row_bytes);
        WriteRow(surface, y, row.data());
        std::memcpy(row.data(), from, bytes);
        ReadRow(row.data(), surface, y);
        from += bytes;
        size -= bytes;
    }
    surface.Touch(surface.Bounds());
}

std::shared_ptr<BitmapObject> FindBitmap(HBITMAP bitmap) noexcept {
    auto found = FindGdi<BitmapObject>(bitmap);
    if (!found) {
        SetLastError(ERROR_INVALID_HANDLE);
    }
    return found;
}

}  // namespace

HBITMAP CreateCompatibleBitmap(HDC context, int width, int height) noexcept {
    const auto found = FindContext(context);
    if (!found) {
        return nullptr;
    }
    if (width < 0 || height < 0) {
        return Refuse<HBITMAP>(ERROR_INVALID_PARAMETER, nullptr);
    }
    if (width == 0 || height == 0) {
        return AddBitmap(Surface::Make(1, 1, true));
    }
    if (found->memory && found->state.bitmap->dib_bits != nullptr) {
        return kawin::AddSection(width, height, false);
    }
    const bool mono = found->memory && found->state.bitmap->surface->IsMono();
    return AddBitmap(Surface::Make(width, height, mono));
}

HBITMAP CreateBitmap(int width, int height, UINT planes, UINT depth, const void* bits) noexcept try {
    if (width < 0 || height < 0 || planes != 1 || (depth != 1 && depth != 32)) {
        return Refuse<HBITMAP>(ERROR_INVALID_PARAMETER, nullptr);
    }
    if (width == 0 || height == 0) {
        return AddBitmap(Surface::Make(1, 1, true));
    }
    auto surface = Surface::Make(width, height, depth == 1);
    if (surface && bits != nullptr) {
        ReadRows(static_cast<const BYTE*>(bits), RowBytesOf(*surface) * static_cast<std::size_t>(height), *surface);
    }
    return AddBitmap(std::move(surface));
} catch (const std::bad_alloc&) {
    return Refuse<HBITMAP>(ERROR_NOT_ENOUGH_MEMORY, nullptr);
}

HBITMAP CreateBitmapIndirect(const BITMAP* bitmap) noexcept {
    if (bitmap == nullptr || bitmap->bmType != 0) {
        return Refuse<HBITMAP>(ERROR_INVALID_PARAMETER, nullptr);
    }
    return CreateBitmap(bitmap->bmWidth, bitmap->bmHeight, bitmap->bmPlanes, bitmap->bmBitsPixel, bitmap->bmBits);
}

LONG GetBitmapBits(HBITMAP bitmap, LONG capacity, LPVOID bits) noexcept try {
    const auto found = FindBitmap(bitmap);
    if (!found) {
        return 0;
    }
    Surface& surface = *found->surface;
    const std::size_t row_bytes = RowBytesOf(surface);
    const std::size_t all = row_bytes * static_cast<std::size_t>(surface.Height());
    if (bits == nullptr || capacity < 0) {
        return bits == nullptr ? static_cast<LONG>(all) : Refuse<LONG>(ERROR_INVALID_PARAMETER, 0);
    }
    const std::size_t size = std::min(all, static_cast<std::size_t>(capacity));
    std::vector<BYTE> row(row_bytes);
    for (std::size_t at = 0; at < size; at += row_bytes) {
        WriteRow(surface, static_cast<int>(at / row_bytes), row.data());
        std::memcpy(static_cast<BYTE*>(bits) + at, row.data(), std::min(row_bytes, size - at));
    }
    return static_cast<LONG>(size);
} catch (const std::bad_alloc&) {
    return Refuse<LONG>(ERROR_NOT_ENOUGH_MEMORY, 0);
}

LONG SetBitmapBits(HBITMAP bitmap, DWORD size, const void* bits) noexcept try {
    const auto found = FindBitmap(bitmap);
    if (!found) {
        return 0;
    }
    if (bits == nullptr) {
        return Refuse<LONG>(ERROR_INVALID_PARAMETER, 0);
    }
    Surface& surface = *found->surface;
    const std::size_t all = RowBytesOf(surface) * static_cast<std::size_t>(surface.Height());
    const std::size_t taken = std::min(all, std::size_t{size});
    ReadRows(static_cast<const BYTE*>(bits), taken, surface);
    return static_cast<LONG>(taken);
} catch (const std::bad_alloc&) {
    return Refuse<LONG>(ERROR_NOT_ENOUGH_MEMORY, 0);
}
