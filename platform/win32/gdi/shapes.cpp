// Filling of rectangles and regions.

#include "shapes.h"

#include <memory>

#include "block.h"
#include "brush_object.h"
#include "contexts.h"
#include "drawing_call.h"
#include "paint.h"
#include "region_curves.h"
#include "region_object.h"
#include "system_brush.h"

namespace {

using kawin::BrushObject;
using kawin::DrawingContext;
using kawin::DrawOn;
using kawin::Paint;
using kawin::RegionShape;
using kawin::TableOf;

std::shared_ptr<BrushObject> FindBrush(HBRUSH brush) noexcept {
    auto found = kawin::FindGdi<BrushObject>(kawin::SystemBrushOr(brush));
    if (!found) {
        SetLastError(ERROR_INVALID_HANDLE);
    }
    return found;
}

// Fills what area(context) gives with a brush, mixing nothing.
template <class Area>
BOOL FillBy(HDC handle, HBRUSH brush, Area&& area) noexcept {
    const auto found = FindBrush(brush);
    return found && DrawOn(handle, [&](DrawingContext& context) {
               if (context.surface) {
                   kawin::FillArea(context, area(context), Paint(context, *found), TableOf(PATCOPY));
               }
           });
}

template <class Area>
BOOL InvertBy(HDC handle, Area&& area) noexcept {
    return DrawOn(handle, [&](DrawingContext& context) {
        kawin::FillArea(context, area(context), Paint(kawin::Pixel{0}), TableOf(DSTINVERT));
    });
}

RegionShape FrameOf(const RegionShape& shape, int width, int height) noexcept {
    RegionShape frame = shape;
    frame.Subtract(kawin::Eroded(shape, width, height));
    return frame;
}

// Areas of a rectangle or a region, on the surface.
auto Of(const RECT& rect) noexcept {
    return [&rect](const DrawingContext& context) {
        const SIZE size = {kawin::CutCoordinate(std::int64_t{rect.right} - rect.left),
                           kawin::CutCoordinate(std::int64_t{rect.bottom} - rect.top)};
        return RegionShape(kawin::BlockOn(context, {rect.left, rect.top}, size).Area());
    };
}
auto Of(const kawin::RegionObject& region) noexcept {
    return [&region](const DrawingContext& context) {
        RegionShape shape = region.shape;
        const POINT by = context.ToSurface(POINT{0, 0});
        shape.Offset(by.x, by.y);
        return shape;
    };
}

bool IsGiven(const RECT* rect) noexcept {
    if (rect == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
    }
    return rect != nullptr;
}

}  // namespace

int FillRect(HDC context, const RECT* rect, HBRUSH brush) noexcept {
    return IsGiven(rect) && FillBy(context, brush, Of(*rect));
}

int FrameRect(HDC context, const RECT* rect, HBRUSH brush) noexcept {
    if (!IsGiven(rect)) {
        return FALSE;
    }
    if (rect->left >= rect->right || rect->top >= rect->bottom) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    return FillBy(context, brush,
                  [rect](const DrawingContext& found) { return FrameOf(RegionShape(found.ToSurface(*rect)), 1, 1); });
}

BOOL InvertRect(HDC context, const RECT* rect) noexcept {
    return IsGiven(rect) && InvertBy(context, Of(*rect));
}

BOOL PatBlt(HDC context, int x, int y, int width, int height, DWORD operation) noexcept {
    const BYTE table = TableOf(operation);
    if (kawin::NeedsSource(table)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    return DrawOn(context, [&](DrawingContext& found) {
        if (found.surface && found.state.brush) {
            const RECT area = kawin::BlockOn(found, {x, y}, {width, height}).Area();
            kawin::FillArea(found, RegionShape(area), Paint(found, *found.state.brush), table);
        }
    });
}

BOOL FillRgn(HDC context, HRGN region, HBRUSH brush) noexcept {
    const auto found = kawin::FindRegion(region);
    return found && FillBy(context, brush, Of(*found));
}

BOOL PaintRgn(HDC context, HRGN region) noexcept {
    const auto found = kawin::FindRegion(region);
    return found && DrawOn(context, [&](DrawingContext& target) { kawin::FillByBrush(target, Of(*found)(target)); });
}

BOOL FrameRgn(HDC context, HRGN region, HBRUSH brush, int width, int height) noexcept {
    const auto found = kawin::FindRegion(region);
    if (!found) {
        return FALSE;
    }
    if (width < 1 || height < 1) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    return FillBy(context, brush, [&](const DrawingContext& target) { return FrameOf(Of(*found)(target), width, height); });
}

BOOL InvertRgn(HDC context, HRGN region) noexcept {
    const auto found = kawin::FindRegion(region);
    return found && InvertBy(context, Of(*found));
}
