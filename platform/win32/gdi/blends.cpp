// Blends of colours: AlphaBlend and GradientFill.

#include <algorithm>
#include <span>
#include <utility>
#include <vector>

#include "contexts.h"
#include "copies.h"
#include "copy_rows.h"
#include "dib_format.h"
#include "drawing_call.h"

namespace {

using kawin::Block;
using kawin::BlockOn;
using kawin::DrawingContext;
using kawin::DrawOn;
using kawin::Pixel;
using kawin::RegionShape;
using kawin::Surface;

constexpr Pixel kOpaque = 255;

// Of kOpaque parts, rounded.
constexpr Pixel Part(Pixel value, Pixel alpha) noexcept {
    return (value * alpha + kOpaque / 2) / kOpaque;
}

constexpr Pixel Channel(Pixel pixel, int shift) noexcept {
    return pixel >> shift & 0xFF;
}

// A source whose colours are multiplied by their alpha already, and all of it by `constant`.
Pixel BlendByPixel(Pixel target, Pixel source, Pixel constant) noexcept {
    const Pixel left = kOpaque - Part(Channel(source, 24), constant);
    Pixel result = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        const Pixel sum = Part(Channel(source, shift), constant) + Part(Channel(target, shift), left);
        result |= std::min(sum, kOpaque) << shift;
    }
    return result;
}

Pixel BlendByConstant(Pixel target, Pixel source, Pixel constant) noexcept {
    Pixel result = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        const Pixel weighed = Channel(source, shift) * constant + Channel(target, shift) * (kOpaque - constant);
        result |= (weighed + kOpaque / 2) / kOpaque << shift;
    }
    return result;
}

void BlendRow(std::span<Pixel> row, const Pixel* from, const BLENDFUNCTION& blend) noexcept {
    const Pixel constant = blend.SourceConstantAlpha;
    if (blend.AlphaFormat == AC_SRC_ALPHA) {
        std::transform(row.begin(), row.end(), from, row.begin(),
                       [constant](Pixel d, Pixel s) { return BlendByPixel(d, s, constant); });
    } else {
        std::transform(row.begin(), row.end(), from, row.begin(),
                       [constant](Pixel d, Pixel s) { return BlendByConstant(d, s, constant); });
    }
}

bool IsKnown(const BLENDFUNCTION& blend) noexcept {
    return blend.BlendOp == AC_SRC_OVER && blend.BlendFlags == 0 && (blend.AlphaFormat & ~AC_SRC_ALPHA) == 0;
}

bool IsInside(const RECT& area, const RECT& bounds) noexcept {
    return area.left >= bounds.left && area.top >= bounds.top && area.right <= bounds.right && area.bottom <= bounds.bottom;
}

// Along the axis on which the colour changes.
struct Gradient {
    LONG start;
    LONG length;
    TRIVERTEX from;
    TRIVERTEX to;

    Pixel At(LONG position) const noexcept {
        const std::int64_t at = position - start;
        const auto channel = [&](COLOR16 a, COLOR16 b) { return static_cast<Pixel>((a * (length - at) + b * at) / length >> 8); };
        return channel(from.Red, to.Red) << 16 | channel(from.Green, to.Green) << 8 | channel(from.Blue, to.Blue);
    }
};

void FillGradient(DrawingContext& context, TRIVERTEX from, TRIVERTEX to, bool vertical) {
    const POINT a = context.ToSurface(POINT{from.x, from.y});
    const POINT b = context.ToSurface(POINT{to.x, to.y});
    if (vertical ? b.y < a.y : b.x < a.x) {
        std::swap(from, to);
    }
    const RECT rect = {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
    const Gradient gradient =
        vertical ? Gradient{rect.top, rect.bottom - rect.top, from, to} : Gradient{rect.left, rect.right - rect.left, from, to};
    RegionShape drawn = context.Drawable();
    drawn.Intersect(rect);
    const RECT bounds = drawn.Bounds();
    const auto color_at = [&](LONG position) {
        return context.surface->IsMono() ? kawin::MonoOf(gradient.At(position)) : gradient.At(position);
    };
    std::vector<Pixel> colors;
    for (LONG at = vertical ? bounds.top : bounds.left; at < (vertical ? bounds.bottom : bounds.right); ++at) {
        colors.push_back(color_at(at));
    }
    drawn.ForEachIn(bounds, [&](const RECT& piece) {
        for (LONG y = piece.top; y < piece.bottom; ++y) {
            Pixel* const row = context.surface->Row(y) + piece.left;
            if (vertical) {
                std::fill_n(row, piece.right - piece.left, colors[static_cast<std::size_t>(y - bounds.top)]);
            } else {
                std::copy_n(colors.begin() + (piece.left - bounds.left), piece.right - piece.left, row);
            }
        }
    });
    context.surface->Touch(bounds);
}

BOOL Refuse() noexcept {
    SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
}

}  // namespace

BOOL AlphaBlend(HDC target, int x, int y, int width, int height, HDC source, int source_x, int source_y, int source_width,
                int source_height, BLENDFUNCTION blend) noexcept {
    const auto from = kawin::FindContext(source);
    if (!from) {
        return FALSE;
    }
    if (width < 0 || height < 0 || source_width < 0 || source_height < 0 || !IsKnown(blend)) {
        return Refuse();
    }
    const Block block = BlockOn(*from, {source_x, source_y}, {source_width, source_height});
    if (from->surface &&
        (!IsInside(block.Area(), from->surface->Bounds()) || (blend.AlphaFormat == AC_SRC_ALPHA && from->surface->IsMono()))) {
        return Refuse();
    }
    const auto to = kawin::FindContext(target);
    if (to && to->surface && to->surface->IsMono()) {
        return Refuse();
    }
    return DrawOn(target, [&](DrawingContext& context) {
        if (!context.surface || !from->surface) {
            return;
        }
        const kawin::Transfer transfer = {context, *from, BlockOn(context, {x, y}, {width, height}), block};
        const bool averages = context.state.stretch_mode == HALFTONE;
        const auto pixels =
            ReadSource(transfer, averages ? kawin::Shrinking::Average : kawin::Shrinking::Last, context.Drawable().Bounds());
        ForEachRow(context, pixels, [&](int, int, std::span<Pixel> row, const Pixel* pixel) { BlendRow(row, pixel, blend); });
    });
}

BOOL GradientFill(HDC context, PTRIVERTEX vertices, ULONG count, PVOID mesh, ULONG meshes, ULONG mode) noexcept {
    if (vertices == nullptr || mesh == nullptr || count == 0 || meshes == 0 || mode > GRADIENT_FILL_RECT_V) {
        return Refuse();
    }
    const std::span corners(vertices, count);
    const std::span rects(static_cast<const GRADIENT_RECT*>(mesh), meshes);
    if (std::any_of(rects.begin(), rects.end(),
                    [count](const GRADIENT_RECT& rect) { return rect.UpperLeft >= count || rect.LowerRight >= count; })) {
        return Refuse();
    }
    return DrawOn(context, [&](DrawingContext& found) {
        if (!found.surface) {
            return;
        }
        for (const GRADIENT_RECT& rect : rects) {
            FillGradient(found, corners[rect.UpperLeft], corners[rect.LowerRight], mode == GRADIENT_FILL_RECT_V);
        }
    });
}
