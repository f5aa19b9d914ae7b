// Pixels of a bitmap in memory of somebody's.

#include <cstdlib>
#include <new>
#include <vector>

#include "../gdi/bitmaps.h"
#include "../gdi/contexts.h"
#include "gdiplus_image.h"
#include "pixel_store.h"

namespace Gdiplus {

struct Bitmap::Lock {
    Rect part;
    UINT mode = 0;
    BitmapData data = {};
    std::vector<std::byte> own;    // empty for a buffer of the user's
    std::vector<kawin::Argb> row;  // of the part

    std::byte* Row(int y) const noexcept { return static_cast<std::byte*>(data.Scan0) + std::ptrdiff_t{data.Stride} * y; }
    void Fill(const kawin::PixelStore& store) noexcept {
        for (int y = 0; y < part.Height; ++y) {
            store.Read(part.X, part.Y + y, part.Width, row.data());
            kawin::WritePixels(data.PixelFormat, row.data(), part.Width, Row(y));
        }
    }
    void TakeOver(kawin::PixelStore& store) noexcept {
        for (int y = 0; y < part.Height; ++y) {
            kawin::ReadPixels(data.PixelFormat, Row(y), part.Width, row.data());
            store.Write(part.X, part.Y + y, part.Width, row.data());
        }
        store.Touch();
    }
};

namespace {

constexpr UINT kLockModes = ImageLockModeRead | ImageLockModeWrite | ImageLockModeUserInputBuf;

bool IsPart(const Rect& part, const kawin::PixelStore& store) noexcept {
    return part.X >= 0 && part.Y >= 0 && part.Width > 0 && part.Height > 0 && part.Width <= store.Width() - part.X &&
           part.Height <= store.Height() - part.Y;
}

// A buffer of the user's holds what is asked for.
bool IsBuffer(const BitmapData& data, const Rect& part, PixelFormat format) noexcept {
    return data.Scan0 != nullptr &&
           std::abs(std::int64_t{data.Stride}) >= std::int64_t{part.Width} * GetPixelFormatSize(format) / 8;
}

kawin::Argb OverBackground(kawin::Argb pixel, kawin::Argb background) noexcept {
    return kawin::AlphaOf(background) == 0 ? kawin::Premultiplied(pixel)
                                           : kawin::OverStraight(pixel, background | kawin::kOpaque);
}

}  // namespace

Status Bitmap::LockBits(const Rect* part, UINT mode, PixelFormat format, BitmapData* data) try {
    if (!store_ || data == nullptr || (mode & ~kLockModes) != 0 || (mode & (ImageLockModeRead | ImageLockModeWrite)) == 0) {
        return Told(InvalidParameter);
    }
    const Rect wanted = part != nullptr ? *part : Rect(0, 0, store_->Width(), store_->Height());
    const bool users = (mode & ImageLockModeUserInputBuf) != 0;
    if (!IsPart(wanted, *store_) || !kawin::PixelStore::IsPossible(wanted.Width, wanted.Height, format) ||
        (users && !IsBuffer(*data, wanted, format))) {
        return Told(InvalidParameter);
    }
    if (store_->locked) {
        return Told(WrongState);
    }
    auto lock = std::make_shared<Lock>();
    lock->part = wanted;
    lock->mode = mode;
    lock->row.resize(static_cast<std::size_t>(wanted.Width));
    const INT stride = (wanted.Width * static_cast<INT>(GetPixelFormatSize(format)) / 8 + 3) / 4 * 4;
    lock->own.resize(users ? 0 : static_cast<std::size_t>(stride) * static_cast<std::size_t>(wanted.Height));
    lock->data = {static_cast<UINT>(wanted.Width),        static_cast<UINT>(wanted.Height),
                  users ? data->Stride : stride,          format,
                  users ? data->Scan0 : lock->own.data(), 0};
    if ((mode & ImageLockModeRead) != 0) {
        lock->Fill(*store_);
    }
    *data = lock->data;
    lock_ = std::move(lock);
    store_->locked = true;
    return Ok;
} catch (const std::bad_alloc&) {
    return Told(OutOfMemory);
}

Status Bitmap::UnlockBits(BitmapData* data) {
    if (!store_ || data == nullptr) {
        return Told(InvalidParameter);
    }
    if (!lock_) {
        return Told(WrongState);
    }
    if ((lock_->mode & ImageLockModeWrite) != 0) {
        lock_->TakeOver(*store_);
    }
    lock_.reset();
    store_->locked = false;
    return Ok;
}

Status Bitmap::GetHBITMAP(const Color& background, HBITMAP* bitmap) try {
    if (!store_ || bitmap == nullptr) {
        return Told(InvalidParameter);
    }
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = store_->Width();
    info.bmiHeader.biHeight = store_->Height();
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    std::vector<kawin::Argb> row(static_cast<std::size_t>(store_->Width()));
    *bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (*bitmap == nullptr) {
        return Told(OutOfMemory);
    }
    kawin::Argb* target = static_cast<kawin::Argb*>(bits);
    for (int y = store_->Height() - 1; y >= 0; --y, target += row.size()) {
        store_->Read(0, y, store_->Width(), row.data());
        for (std::size_t x = 0; x < row.size(); ++x) {
            target[x] = OverBackground(row[x], background.GetValue());
        }
    }
    return Ok;
} catch (const std::bad_alloc&) {
    return Told(OutOfMemory);
}

}  // namespace Gdiplus
