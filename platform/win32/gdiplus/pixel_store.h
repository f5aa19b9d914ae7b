#pragma once

// The pixels of a GDI+ picture.

#include <atomic>
#include <cstddef>
#include <memory>
#include <vector>

#include "gdiplus_pixel_formats.h"
#include "pixel_math.h"

namespace kawin {

// What the four bytes of a pixel in memory are.
enum class PixelKind {
    Opaque,         // the top byte is 255
    Straight,       // 0xAARRGGBB
    Premultiplied,  // the same, premultiplied
    Context,        // premultiplied; of a GDI surface
};

class PixelStore {
public:
    // Whether a picture of that size and format can be: the contract of Bitmap's constructor.
    static bool IsPossible(int width, int height, Gdiplus::PixelFormat format) noexcept;

    // Black, transparent where there is alpha. Null without memory. IsPossible holds.
    static std::shared_ptr<PixelStore> Make(int width, int height, Gdiplus::PixelFormat format) noexcept;

    // Over pixels of somebody else, who keeps them: rows of `stride` bytes, those of a row in the format's own layout.
    static std::shared_ptr<PixelStore> Over(int width, int height, std::ptrdiff_t stride, Gdiplus::PixelFormat format,
                                            std::byte* top_row) noexcept;

    ~PixelStore();
    PixelStore(const PixelStore&) = delete;
    PixelStore& operator=(const PixelStore&) = delete;

    int Width() const noexcept { return width_; }
    int Height() const noexcept { return height_; }
    Gdiplus::PixelFormat Format() const noexcept { return format_; }
    PixelKind Kind() const noexcept { return kind_; }
    bool IsForeign() const noexcept { return foreign_ != nullptr; }

    // Tells pictures apart for the life of the process, and the states of one.
    std::uint64_t Id() const noexcept { return id_; }
    std::uint64_t Version() const noexcept { return version_; }
    void Touch() noexcept { ++version_; }

    // A row, four bytes a pixel of Kind(): the pixels themselves, or `scratch` (a row long) filled with them.
    const Argb* Row(int y, Argb* scratch) const noexcept;
    // The same, straight.
    const Argb* StraightRow(int y, Argb* scratch) const noexcept;

    // A row to change: between the two, what Row gives is changed in place. EndRow takes over `count` pixels from `x` on.
    Argb* BeginRow(int y, Argb* scratch) noexcept;
    void EndRow(int y, int x, int count, const Argb* row) noexcept;

    // Part of a row, straight.
    void Read(int x, int y, int count, Argb* straight) const noexcept;
    void Write(int x, int y, int count, const Argb* straight) noexcept;

    bool locked = false;  // by LockBits

private:
    PixelStore(int width, int height, Gdiplus::PixelFormat format) noexcept;

    int width_;
    int height_;
    Gdiplus::PixelFormat format_;
    PixelKind kind_;
    std::uint64_t id_;
    std::uint64_t version_ = 0;
    std::vector<Argb> own_;         // empty when they are somebody else's
    std::byte* foreign_ = nullptr;  // the top row
    std::ptrdiff_t stride_ = 0;     // of the foreign rows, bytes
};

// `count` pixels between memory in a format and straight ones.
void ReadPixels(Gdiplus::PixelFormat format, const std::byte* from, int count, Argb* straight) noexcept;
void WritePixels(Gdiplus::PixelFormat format, const Argb* straight, int count, std::byte* to) noexcept;

PixelKind KindOf(Gdiplus::PixelFormat format) noexcept;

}  // namespace kawin
