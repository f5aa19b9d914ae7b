#pragma once

// What a Graphics draws on: a context's surface or the pixels of a picture.

#include <memory>
#include <vector>

#include "../gdi/region_shape.h"
#include "../gdi/surface.h"
#include "piece_rows.h"
#include "pixel_store.h"

namespace kawin {

class Canvas {
public:
    explicit Canvas(std::shared_ptr<Surface> surface) noexcept : surface_(std::move(surface)) {}
    explicit Canvas(std::shared_ptr<PixelStore> store) noexcept : store_(std::move(store)) {}

    int Width() const noexcept { return surface_ ? surface_->Width() : store_->Width(); }
    int Height() const noexcept { return surface_ ? surface_->Height() : store_->Height(); }

    // Draws `rows`, a piece of that place and size inside the canvas, where `clip` lets it. With `replaces`, alpha is not looked
    // at: every pixel becomes what is drawn.
    void Draw(const RECT& place, const RegionShape& clip, PieceRows& rows, bool replaces);

private:
    void DrawSpan(int y, const RECT& cut, int left, const PieceRows::Row& row, bool replaces);
    Argb* BeginRow(int y) noexcept;
    void Touch(const RECT& area) noexcept;
    PixelKind Kind() const noexcept { return surface_ ? PixelKind::Context : store_->Kind(); }

    std::shared_ptr<Surface> surface_;   // either this
    std::shared_ptr<PixelStore> store_;  // or that
    std::vector<Argb> scratch_;
};

}  // namespace kawin
