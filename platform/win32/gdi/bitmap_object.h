#pragma once

// What is behind an HBITMAP.

#include <atomic>
#include <memory>
#include <utility>

#include "bitmaps.h"
#include "gdi_objects.h"
#include "surface.h"

namespace kawin {

class DrawingContext;

class BitmapObject : public GdiObject {
public:
    // `bits` null: a bitmap without pixels in memory that its owner knows of.
    explicit BitmapObject(std::shared_ptr<Surface> pixels, void* bits = nullptr) noexcept
        : surface(std::move(pixels)), dib_bits(bits) {}

    DWORD Type() const noexcept override { return OBJ_BITMAP; }
    int Describe(int capacity, void* target) const noexcept override;

    WORD Depth() const noexcept { return surface->IsMono() ? 1 : 32; }
    BITMAP Description() const noexcept;

    const std::shared_ptr<Surface> surface;  // never null
    void* const dib_bits;                    // of CreateDIBSection: the pixels; null for other bitmaps

    // The memory context that draws on it: a bitmap is in one at a time. Stock bitmaps are in any, and never drawn on.
    std::atomic<const DrawingContext*> selected_in = nullptr;
};

// A handle for a new bitmap over `surface`; null with ERROR_NOT_ENOUGH_MEMORY, also for a null surface.
HBITMAP AddBitmap(std::shared_ptr<Surface> surface) noexcept;

// The same for one of 32 bits with its pixels in memory, as of CreateDIBSection. Black.
HBITMAP AddSection(int width, int height, bool top_down) noexcept;

}  // namespace kawin
