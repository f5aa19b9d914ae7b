#include <cmath>
#include <new>
#include <utility>

#include "../gdi/bitmap_object.h"
#include "gdiplus_image.h"
#include "picture_files.h"
#include "startup.h"
#include "store_copy.h"

namespace Gdiplus {
namespace {

using kawin::Argb;
using kawin::PixelStore;

constexpr INT kStrideUnit = 4;

bool IsInside(const PixelStore& store, INT x, INT y, INT width, INT height) noexcept {
    return x >= 0 && y >= 0 && width > 0 && height > 0 && width <= store.Width() - x && height <= store.Height() - y;
}

// Whether rows of `stride` bytes hold the pixels, whichever way they go.
bool IsStride(INT stride, INT width, PixelFormat format) noexcept {
    const std::int64_t row = std::int64_t{width} * static_cast<std::int64_t>(GetPixelFormatSize(format) / 8);
    return stride % kStrideUnit == 0 && std::abs(std::int64_t{stride}) >= row;
}

Status Checked(bool is_valid) noexcept {
    if (!kawin::IsGdiplusStarted()) {
        return GdiplusNotInitialized;
    }
    return is_valid ? Ok : InvalidParameter;
}

std::shared_ptr<PixelStore> FromSurface(const kawin::Surface& surface) noexcept try {
    auto store = PixelStore::Make(surface.Width(), surface.Height(), PixelFormat32bppRGB);
    std::vector<Argb> row(static_cast<std::size_t>(surface.Width()));
    for (int y = 0; store && y < surface.Height(); ++y) {
        row.assign(surface.Row(y), surface.Row(y) + surface.Width());
        for (Argb& pixel : row) {
            pixel = surface.IsMono() && pixel != 0 ? static_cast<Argb>(Color::White) : pixel;
        }
        store->Write(0, y, surface.Width(), row.data());
    }
    return store;
} catch (const std::bad_alloc&) {
    return nullptr;
}

}  // namespace

Bitmap::Bitmap(std::shared_ptr<PixelStore> store) : Image(std::move(store), OutOfMemory) {}

Bitmap::Bitmap(INT width, INT height, PixelFormat format) {
    const Status status = Checked(PixelStore::IsPossible(width, height, format));
    Take(status == Ok ? PixelStore::Make(width, height, format) : nullptr, status == Ok ? OutOfMemory : status);
}

Bitmap::Bitmap(INT width, INT height, INT stride, PixelFormat format, BYTE* scan0) {
    const Status status =
        Checked(scan0 != nullptr && PixelStore::IsPossible(width, height, format) && IsStride(stride, width, format));
    std::byte* const rows = reinterpret_cast<std::byte*>(scan0);
    Take(status == Ok ? PixelStore::Over(width, height, stride, format, rows) : nullptr, status == Ok ? OutOfMemory : status);
}

Bitmap::Bitmap(HBITMAP bitmap, HPALETTE /*palette*/) {
    const auto found = kawin::FindGdi<kawin::BitmapObject>(bitmap);
    const Status status =
        Checked(found && PixelStore::IsPossible(found->surface->Width(), found->surface->Height(), PixelFormat32bppRGB));
    Take(status == Ok ? FromSurface(*found->surface) : nullptr, status == Ok ? OutOfMemory : status);
}

Bitmap::Bitmap(HINSTANCE module, const WCHAR* name) {
    kawin::ReadPicture read = kawin::ReadBitmapResource(module, name);
    Take(std::move(read.store), read.status);
}

Bitmap::Bitmap(const WCHAR* filename, BOOL use_color_management) : Image(filename, use_color_management) {}

Bitmap* Bitmap::FromFile(const WCHAR* filename, BOOL use_color_management) {
    return new (std::nothrow) Bitmap(filename, use_color_management);
}

Bitmap* Bitmap::FromHBITMAP(HBITMAP bitmap, HPALETTE palette) {
    return new (std::nothrow) Bitmap(bitmap, palette);
}

Bitmap* Bitmap::FromResource(HINSTANCE module, const WCHAR* name) {
    return new (std::nothrow) Bitmap(module, name);
}

Bitmap* Bitmap::Clone(INT x, INT y, INT width, INT height, PixelFormat format) {
    const PixelFormat wanted = format == PixelFormatDontCare && store_ ? store_->Format() : format;
    if (!store_ || !IsInside(*store_, x, y, width, height) || !PixelStore::IsPossible(width, height, wanted)) {
        Told(InvalidParameter);
        return nullptr;
    }
    auto copy = kawin::CopyPart(*store_, {x, y, x + width, y + height}, wanted);
    if (!copy) {
        Told(OutOfMemory);
        return nullptr;
    }
    return new (std::nothrow) Bitmap(std::move(copy));
}

Bitmap* Bitmap::Clone(const Rect& part, PixelFormat format) {
    return Clone(part.X, part.Y, part.Width, part.Height, format);
}

Bitmap* Bitmap::Clone(REAL x, REAL y, REAL width, REAL height, PixelFormat format) {
    const auto rounded = [](REAL value) {  // beyond every bitmap is far enough, and NaN is outside
        return std::abs(value) < 1e6F ? static_cast<INT>(std::floor(value + 0.5F)) : -1;
    };
    return Clone(rounded(x), rounded(y), rounded(width), rounded(height), format);
}

Bitmap* Bitmap::Clone(const RectF& part, PixelFormat format) {
    return Clone(part.X, part.Y, part.Width, part.Height, format);
}

Bitmap* Bitmap::Clone() const {
    auto copy = store_ ? kawin::CopyWhole(*store_) : nullptr;
    if (!copy) {
        Told(store_ ? OutOfMemory : InvalidParameter);
        return nullptr;
    }
    return new (std::nothrow) Bitmap(std::move(copy));
}

Status Bitmap::GetPixel(INT x, INT y, Color* color) {
    if (!store_ || color == nullptr || !IsInside(*store_, x, y, 1, 1)) {
        return Told(InvalidParameter);
    }
    Argb pixel = 0;
    store_->Read(x, y, 1, &pixel);
    color->SetValue(pixel);
    return Ok;
}

Status Bitmap::SetPixel(INT x, INT y, const Color& color) {
    if (!store_ || !IsInside(*store_, x, y, 1, 1)) {
        return Told(InvalidParameter);
    }
    const Argb pixel = color.GetValue();
    store_->Write(x, y, 1, &pixel);
    store_->Touch();
    return Ok;
}

}  // namespace Gdiplus
