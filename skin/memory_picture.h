#pragma once

// A picture in memory, drawn by GDI and GDI+ alike and then copied at once, so that nothing flickers.

#include <afxwin.h>
#include <gdiplus.h>

#include <optional>

namespace kadata {

class MemoryPicture {
public:
    // Throws nothing: without memory it is not valid, and nothing must be drawn.
    MemoryPicture(CDC& like, CSize size) : size_(size) {
        if (dc_.CreateCompatibleDC(&like) && bitmap_.CreateCompatibleBitmap(&like, size.cx, size.cy)) {
            before_ = dc_.SelectObject(&bitmap_);
            graphics_.emplace(dc_.GetSafeHdc());
        }
    }
    MemoryPicture(const MemoryPicture&) = delete;
    MemoryPicture& operator=(const MemoryPicture&) = delete;
    ~MemoryPicture() {
        graphics_.reset();
        if (before_ != nullptr) {
            dc_.SelectObject(before_);
        }
    }

    bool IsValid() const { return graphics_.has_value(); }
    CDC& Context() { return dc_; }
    Gdiplus::Graphics* Graphics() { return &*graphics_; }
    CBitmap& Bitmap() { return bitmap_; }
    CRect Rect() const { return {CPoint(), size_}; }

    void CopyTo(CDC& target) {
        graphics_->Flush(Gdiplus::FlushIntentionSync);
        target.BitBlt(0, 0, size_.cx, size_.cy, &dc_, 0, 0, SRCCOPY);
    }

private:
    CSize size_;
    CDC dc_;
    CBitmap bitmap_;
    CBitmap* before_ = nullptr;
    std::optional<Gdiplus::Graphics> graphics_;
};

}  // namespace kadata
