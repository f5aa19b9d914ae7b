#include "pixel_store.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "../gdi/dib_layout.h"
#include "piece_cache.h"

namespace kawin {
namespace {

using Gdiplus::PixelFormat;

constexpr int kLongestSide = 65535;

std::uint64_t NextId() noexcept {
    static std::atomic<std::uint64_t> last = 0;
    return ++last;
}

Argb ToStraight(PixelKind kind, Argb pixel) noexcept {
    switch (kind) {
        case PixelKind::Opaque:
            return pixel | kOpaque;
        case PixelKind::Premultiplied:
            return Straight(pixel);
        default:
            return pixel;
    }
}

Argb FromStraight(PixelKind kind, Argb straight) noexcept {
    switch (kind) {
        case PixelKind::Opaque:
            return straight | kOpaque;
        case PixelKind::Premultiplied:
            return Premultiplied(straight);
        default:
            return straight;
    }
}

// Between the format's bytes and four a pixel, without looking at alpha.
void Widen(PixelFormat format, const std::byte* from, int count, Argb* to) noexcept {
    if (format != Gdiplus::PixelFormat24bppRGB) {
        std::memcpy(to, from, static_cast<std::size_t>(count) * sizeof(Argb));
        return;
    }
    for (int i = 0; i < count; ++i, from += 3) {
        to[i] =
            kOpaque | std::to_integer<Argb>(from[0]) | std::to_integer<Argb>(from[1]) << 8 | std::to_integer<Argb>(from[2]) << 16;
    }
}

void Narrow(PixelFormat format, const Argb* from, int count, std::byte* to) noexcept {
    if (format != Gdiplus::PixelFormat24bppRGB) {
        std::memcpy(to, from, static_cast<std::size_t>(count) * sizeof(Argb));
        return;
    }
    for (int i = 0; i < count; ++i, to += 3) {
        to[0] = static_cast<std::byte>(from[i]);
        to[1] = static_cast<std::byte>(from[i] >> 8);
        to[2] = static_cast<std::byte>(from[i] >> 16);
    }
}

std::ptrdiff_t BytesOf(PixelFormat format) noexcept {
    return static_cast<std::ptrdiff_t>(Gdiplus::GetPixelFormatSize(format) / 8);
}

}  // namespace

PixelKind KindOf(PixelFormat format) noexcept {
    if (format == Gdiplus::PixelFormat32bppARGB) {
        return PixelKind::Straight;
    }
    return format == Gdiplus::PixelFormat32bppPARGB ? PixelKind::Premultiplied : PixelKind::Opaque;
}

void ReadPixels(PixelFormat format, const std::byte* from, int count, Argb* straight) noexcept {
    Widen(format, from, count, straight);
    const PixelKind kind = KindOf(format);
    std::transform(straight, straight + count, straight, [kind](Argb pixel) { return ToStraight(kind, pixel); });
}

void WritePixels(PixelFormat format, const Argb* straight, int count, std::byte* to) noexcept {
    const PixelKind kind = KindOf(format);
    const std::ptrdiff_t bytes = BytesOf(format);
    for (int i = 0; i < count; ++i) {
        const Argb pixel = FromStraight(kind, straight[i]);
        Narrow(format, &pixel, 1, to + bytes * i);
    }
}

bool PixelStore::IsPossible(int width, int height, PixelFormat format) noexcept {
    const bool known = format == Gdiplus::PixelFormat24bppRGB || format == Gdiplus::PixelFormat32bppRGB ||
                       format == Gdiplus::PixelFormat32bppARGB || format == Gdiplus::PixelFormat32bppPARGB;
    return known && width >= 1 && height >= 1 && width <= kLongestSide && height <= kLongestSide &&
           std::int64_t{width} * height <= kMostDibPixels;
}

PixelStore::PixelStore(int width, int height, PixelFormat format) noexcept
    : width_(width), height_(height), format_(format), kind_(KindOf(format)), id_(NextId()) {}

PixelStore::~PixelStore() {
    ForgetPieces(id_);
}

std::shared_ptr<PixelStore> PixelStore::Make(int width, int height, PixelFormat format) noexcept try {
    std::shared_ptr<PixelStore> store(new PixelStore(width, height, format));
    store->own_.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height),
                       store->kind_ == PixelKind::Opaque ? kOpaque : 0);
    return store;
} catch (const std::bad_alloc&) {
    return nullptr;
}

std::shared_ptr<PixelStore> PixelStore::Over(int width, int height, std::ptrdiff_t stride, PixelFormat format,
                                             std::byte* top_row) noexcept try {
    std::shared_ptr<PixelStore> store(new PixelStore(width, height, format));
    store->foreign_ = top_row;
    store->stride_ = stride;
    return store;
} catch (const std::bad_alloc&) {
    return nullptr;
}

const Argb* PixelStore::Row(int y, Argb* scratch) const noexcept {
    if (foreign_ == nullptr) {
        return own_.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width_);
    }
    Widen(format_, foreign_ + stride_ * y, width_, scratch);
    if (kind_ == PixelKind::Opaque) {  // the owner may have put anything there
        std::for_each(scratch, scratch + width_, [](Argb& pixel) { pixel |= kOpaque; });
    }
    return scratch;
}

const Argb* PixelStore::StraightRow(int y, Argb* scratch) const noexcept {
    const Argb* const row = Row(y, scratch);
    if (kind_ != PixelKind::Premultiplied) {
        return row;
    }
    std::transform(row, row + width_, scratch, Straight);
    return scratch;
}

Argb* PixelStore::BeginRow(int y, Argb* scratch) noexcept {
    return const_cast<Argb*>(Row(y, scratch));  // our own, or scratch
}

void PixelStore::EndRow(int y, int x, int count, const Argb* row) noexcept {
    if (foreign_ != nullptr) {
        Narrow(format_, row + x, count, foreign_ + stride_ * y + BytesOf(format_) * x);
    }
}

void PixelStore::Read(int x, int y, int count, Argb* straight) const noexcept {
    if (foreign_ != nullptr) {
        ReadPixels(format_, foreign_ + stride_ * y + BytesOf(format_) * x, count, straight);
        return;
    }
    const Argb* const from = Row(y, nullptr) + x;
    std::transform(from, from + count, straight, [this](Argb pixel) { return ToStraight(kind_, pixel); });
}

void PixelStore::Write(int x, int y, int count, const Argb* straight) noexcept {
    if (foreign_ != nullptr) {
        WritePixels(format_, straight, count, foreign_ + stride_ * y + BytesOf(format_) * x);
        return;
    }
    std::transform(straight, straight + count, BeginRow(y, nullptr) + x,
                   [this](Argb pixel) { return FromStraight(kind_, pixel); });
}

}  // namespace kawin
