#include "paint.h"

#include <algorithm>
#include <new>
#include <vector>

#include "contexts.h"
#include "dib_format.h"

namespace kawin {
namespace {

constexpr int kHatchSide = 8;

// Whether a hatch has its line at x, y.
bool IsHatched(ULONG_PTR hatch, int x, int y) noexcept {
    constexpr int kRow = 3;
    constexpr int kColumn = 4;
    switch (hatch) {
        case HS_HORIZONTAL:
            return y == kRow;
        case HS_VERTICAL:
            return x == kColumn;
        case HS_FDIAGONAL:
            return x == y;
        case HS_BDIAGONAL:
            return x == kHatchSide - 1 - y;
        case HS_CROSS:
            return y == kRow || x == kColumn;
        default:
            return x == y || x == kHatchSide - 1 - y;
    }
}

std::shared_ptr<Surface> MakeOrThrow(int width, int height, bool mono) {
    auto made = Surface::Make(width, height, mono);
    if (!made) {
        throw std::bad_alloc();
    }
    return made;
}

// `from` with each pixel as `each` makes it.
template <class Each>
std::shared_ptr<const Surface> Converted(const Surface& from, bool mono, Each&& each) {
    const auto made = MakeOrThrow(from.Width(), from.Height(), mono);
    for (int y = 0; y < from.Height(); ++y) {
        std::transform(from.Row(y), from.Row(y) + from.Width(), made->Row(y), each);
    }
    return made;
}

std::shared_ptr<const Surface> HatchMask(ULONG_PTR hatch) {
    const auto made = MakeOrThrow(kHatchSide, kHatchSide, true);
    for (int y = 0; y < kHatchSide; ++y) {
        for (int x = 0; x < kHatchSide; ++x) {
            made->Row(y)[x] = IsHatched(hatch, x, y) ? 1 : 0;
        }
    }
    return made;
}

// The pattern of a bitmap on a surface of any depth.
std::shared_ptr<const Surface> TileFor(const DrawingContext& context, std::shared_ptr<const Surface> pattern) {
    if (pattern->IsMono() == context.surface->IsMono()) {
        return pattern;
    }
    if (!pattern->IsMono()) {
        return Converted(*pattern, true, MonoOf);
    }
    const Pixel text = PixelOf(context.state.text_color);
    const Pixel back = PixelOf(context.state.back_color);
    return Converted(*pattern, false, [text, back](Pixel pixel) { return pixel != 0 ? back : text; });
}

// Repeats rows of a tile, which has its origin somewhere.
void ReadTile(const Surface& tile, POINT origin, int x, int y, std::span<Pixel> row) noexcept {
    const auto inside = [](int at, int size) { return (at % size + size) % size; };
    const Pixel* const from = tile.Row(inside(y - origin.y, tile.Height()));
    int column = inside(x - origin.x, tile.Width());
    while (!row.empty()) {
        const std::size_t run = std::min(row.size(), static_cast<std::size_t>(tile.Width() - column));
        std::copy_n(from + column, run, row.begin());
        row = row.subspan(run);
        column = 0;
    }
}

// The rows between which pieces of a fill are made.
struct Scratch {
    std::vector<Pixel> pattern;
    std::vector<Pixel> mixed;
    std::vector<Pixel> shown;
};

void FillRow(const Paint& paint, BYTE table, int x, int y, std::span<Pixel> target, Scratch& scratch) {
    const auto rows_of = [&target](std::vector<Pixel>& row) { return std::span(row).first(target.size()); };
    paint.Read(x, y, rows_of(scratch.pattern));
    if (!paint.HasHoles()) {
        CombineRow(table, target, nullptr, scratch.pattern.data());
        return;
    }
    std::copy(target.begin(), target.end(), scratch.mixed.begin());
    CombineRow(table, rows_of(scratch.mixed), nullptr, scratch.pattern.data());
    paint.ReadShown(x, y, rows_of(scratch.shown));
    for (std::size_t at = 0; at < target.size(); ++at) {
        target[at] = scratch.shown[at] != 0 ? scratch.mixed[at] : target[at];
    }
}

}  // namespace

Pixel PixelOn(const Surface& surface, COLORREF color) noexcept {
    const Pixel pixel = PixelOf(color);
    return surface.IsMono() ? MonoOf(pixel) : pixel;
}

Paint::Paint(const DrawingContext& context, const BrushObject& brush)
    : null_(brush.description.lbStyle == BS_NULL),
      solid_(PixelOn(*context.surface, brush.of_context ? context.state.brush_color : brush.description.lbColor)),
      origin_{CutCoordinate(std::int64_t{context.state.brush_origin.x} + context.origin.x),
              CutCoordinate(std::int64_t{context.state.brush_origin.y} + context.origin.y)} {
    if (brush.description.lbStyle == BS_PATTERN) {
        tile_ = TileFor(context, brush.pattern);
    } else if (brush.description.lbStyle == BS_HATCHED) {
        const std::shared_ptr<const Surface> mask = HatchMask(brush.description.lbHatch);
        const Pixel line = solid_;
        const Pixel back = PixelOn(*context.surface, context.state.back_color);
        tile_ = Converted(*mask, context.surface->IsMono(), [line, back](Pixel hit) { return hit != 0 ? line : back; });
        shown_ = context.state.back_mode == TRANSPARENT ? mask : nullptr;
    }
}

void Paint::Read(int x, int y, std::span<Pixel> row) const noexcept {
    if (tile_) {
        ReadTile(*tile_, origin_, x, y, row);
    } else {
        std::fill(row.begin(), row.end(), solid_);
    }
}

void Paint::ReadShown(int x, int y, std::span<Pixel> row) const noexcept {
    ReadTile(*shown_, origin_, x, y, row);
}

void FillArea(DrawingContext& context, const RegionShape& area, const Paint& paint, BYTE table) {
    if (!context.surface || (paint.IsNull() && NeedsPattern(table))) {
        return;
    }
    Surface& surface = *context.surface;
    RegionShape drawn = context.Drawable();
    drawn.Intersect(area);
    const RECT bounds = drawn.Bounds();
    const bool fills = table == TableOf(PATCOPY) && paint.IsSolid();
    Scratch scratch;
    if (!fills) {
        const std::size_t width = static_cast<std::size_t>(bounds.right - bounds.left);
        scratch = {std::vector<Pixel>(width), std::vector<Pixel>(width), std::vector<Pixel>(width)};
    }
    drawn.ForEachIn(bounds, [&](const RECT& rect) {
        for (LONG y = rect.top; y < rect.bottom; ++y) {
            const std::span<Pixel> row(surface.Row(y) + rect.left, static_cast<std::size_t>(rect.right - rect.left));
            if (fills) {
                std::fill(row.begin(), row.end(), paint.Solid());
                continue;
            }
            FillRow(paint, table, rect.left, y, row, scratch);
            if (surface.IsMono()) {
                CutToMono(row);
            }
        }
    });
    surface.Touch(bounds);
}

void FillByBrush(DrawingContext& context, const RegionShape& area) {
    if (context.surface && context.state.brush) {
        FillArea(context, area, Paint(context, *context.state.brush), TableOfMix(context.state.raster_op));
    }
}

}  // namespace kawin
