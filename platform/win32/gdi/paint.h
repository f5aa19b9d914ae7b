#pragma once

// Brushes made ready for a context, and filling with them. Everything that draws without reading a source ends here.

#include <memory>
#include <span>

#include "brush_object.h"
#include "drawing_context.h"
#include "raster_rows.h"

namespace kawin {

// What a colour is on this surface: on a monochrome one black or white, whichever is nearer.
Pixel PixelOn(const Surface& surface, COLORREF color) noexcept;

// The pattern that a brush makes on a context's surface.
class Paint {
public:
    explicit Paint(Pixel color) noexcept : solid_(color) {}
    // The context has a surface. Throws std::bad_alloc.
    Paint(const DrawingContext& context, const BrushObject& brush);

    bool IsNull() const noexcept { return null_; }
    bool IsSolid() const noexcept { return !tile_; }
    Pixel Solid() const noexcept { return solid_; }
    // A hatch over a transparent background.
    bool HasHoles() const noexcept { return shown_ != nullptr; }

    // The pattern from x, y of the surface to the right.
    void Read(int x, int y, std::span<Pixel> row) const noexcept;
    // Likewise: 1 where it covers, 0 in a hole.
    void ReadShown(int x, int y, std::span<Pixel> row) const noexcept;

private:
    bool null_ = false;
    Pixel solid_ = 0;
    std::shared_ptr<const Surface> tile_;   // of the surface's depth
    std::shared_ptr<const Surface> shown_;  // likewise, 0 and 1; null when all is
    POINT origin_ = {};                     // of a tile, on the surface
};

// Changes the pixels of `area` (surface coordinates) that may be drawn on, by a table that needs no source. Nothing happens
// without a surface or for a null brush that the table needs. Throws std::bad_alloc.
void FillArea(DrawingContext& context, const RegionShape& area, const Paint& paint, BYTE table);

// With the context's brush and mix.
void FillByBrush(DrawingContext& context, const RegionShape& area);

}  // namespace kawin
