// What contexts are clipped to.

#include "../base/error.h"
#include "drawing_context.h"
#include "region_curves.h"
#include "region_object.h"
#include "regions.h"

namespace {

using kawin::DrawingContext;
using kawin::FindContext;
using kawin::FindRegion;
using kawin::RegionKind;
using kawin::RegionShape;

RECT ToDevice(const DrawingContext& context, const RECT& logical) noexcept {
    const POINT from = context.ToDevice({logical.left, logical.top});
    const POINT to = context.ToDevice({logical.right, logical.bottom});
    return kawin::Ordered({from.x, from.y, to.x, to.y});
}

// The selected clip, or everything that the context has.
RegionShape ClipOf(const DrawingContext& context) noexcept {
    return context.state.clip ? *context.state.clip : RegionShape(context.extent);
}

int Combine(DrawingContext& context, const RegionShape& region, int mode) noexcept {
    context.state.clip = mode == RGN_COPY ? region : kawin::Combined(ClipOf(context), region, mode);
    return RegionKind(*context.state.clip);
}

// What can be drawn on, in device coordinates; of a context without pixels, what it would have.
RegionShape Visible(const DrawingContext& context) noexcept {
    if (!context.surface) {
        RegionShape clip = ClipOf(context);
        clip.Intersect(context.extent);
        return clip;
    }
    RegionShape drawable = context.Drawable();
    drawable.Offset(-context.origin.x, -context.origin.y);
    return drawable;
}

int Refuse(int failed) noexcept {
    SetLastError(ERROR_INVALID_PARAMETER);
    return failed;
}

}  // namespace

int SelectClipRgn(HDC context, HRGN region) noexcept {
    return ExtSelectClipRgn(context, region, RGN_COPY);
}

int ExtSelectClipRgn(HDC context, HRGN region, int mode) noexcept {
    const auto found = FindContext(context);
    if (!found) {
        return ERROR;
    }
    if (mode < RGN_AND || mode > RGN_COPY || (region == nullptr && mode != RGN_COPY)) {
        return Refuse(ERROR);
    }
    if (region == nullptr) {
        found->state.clip.reset();
        return SIMPLEREGION;
    }
    const auto selected = FindRegion(region);
    return selected ? Combine(*found, selected->shape, mode) : ERROR;
}

int IntersectClipRect(HDC context, int left, int top, int right, int bottom) noexcept {
    const auto found = FindContext(context);
    return found ? Combine(*found, RegionShape(ToDevice(*found, {left, top, right, bottom})), RGN_AND) : ERROR;
}

int ExcludeClipRect(HDC context, int left, int top, int right, int bottom) noexcept {
    const auto found = FindContext(context);
    return found ? Combine(*found, RegionShape(ToDevice(*found, {left, top, right, bottom})), RGN_DIFF) : ERROR;
}

int OffsetClipRgn(HDC context, int dx, int dy) noexcept {
    const auto found = FindContext(context);
    if (!found) {
        return ERROR;
    }
    if (!found->state.clip) {
        return SIMPLEREGION;
    }
    found->state.clip->Offset(dx, dy);
    return RegionKind(*found->state.clip);
}

int GetClipBox(HDC context, LPRECT box) noexcept {
    const auto found = FindContext(context);
    if (!found) {
        return ERROR;
    }
    if (box == nullptr) {
        return Refuse(ERROR);
    }
    const RegionShape visible = Visible(*found);
    const RECT bounds = visible.Bounds();
    const POINT from = found->ToLogical({bounds.left, bounds.top});
    const POINT to = found->ToLogical({bounds.right, bounds.bottom});
    *box = visible.IsEmpty() ? RECT{} : RECT{from.x, from.y, to.x, to.y};
    return RegionKind(visible);
}

int GetClipRgn(HDC context, HRGN region) noexcept {
    const auto found = FindContext(context);
    const auto target = FindRegion(region);
    if (!found || !target) {
        return -1;
    }
    if (!found->state.clip) {
        return 0;
    }
    target->shape = *found->state.clip;
    return 1;
}

BOOL PtVisible(HDC context, int x, int y) noexcept {
    const auto found = FindContext(context);
    return found && Visible(*found).Contains(found->ToDevice({x, y}));
}

BOOL RectVisible(HDC context, const RECT* rect) noexcept {
    const auto found = FindContext(context);
    if (!found) {
        return FALSE;
    }
    return rect != nullptr ? Visible(*found).Touches(ToDevice(*found, *rect)) : Refuse(FALSE);
}
