#include "regions.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <new>
#include <optional>
#include <utility>
#include <vector>

#include "../base/error.h"
#include "region_curves.h"
#include "region_object.h"

namespace kawin {

std::shared_ptr<RegionObject> FindRegion(HRGN region) noexcept {
    auto found = FindGdi<RegionObject>(region);
    if (!found) {
        SetLastError(ERROR_INVALID_HANDLE);
    }
    return found;
}

HRGN AddRegion(RegionShape shape) noexcept try {
    return static_cast<HRGN>(AddGdiObject(std::make_shared<RegionObject>(std::move(shape))));
} catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

int RegionKind(const RegionShape& shape) noexcept {
    const int rects = shape.CountRects();
    return rects == 0 ? NULLREGION : rects == 1 ? SIMPLEREGION : COMPLEXREGION;
}

RegionShape Combined(RegionShape first, const RegionShape& second, int mode) noexcept {
    switch (mode) {
        case RGN_AND:
            first.Intersect(second);
            break;
        case RGN_OR:
            first.Unite(second);
            break;
        case RGN_XOR:
            first.ExclusiveOr(second);
            break;
        case RGN_DIFF:
            first.Subtract(second);
            break;
        default:
            break;
    }
    return first;
}

namespace {

constexpr DWORD kHeaderBytes = sizeof(RGNDATAHEADER);
static_assert(kHeaderBytes == offsetof(RGNDATA, Buffer));

template <class T>
T Refuse(T failed) noexcept {
    SetLastError(ERROR_INVALID_PARAMETER);
    return failed;
}

HRGN AddMade(std::optional<RegionShape> shape) noexcept {
    if (!shape) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    return AddRegion(std::move(*shape));
}

// Without its last column and row; empty when it has no others.
RECT Shortened(const RECT& corners) noexcept {
    const RECT rect = Ordered(corners);
    return {rect.left, rect.top, std::max(rect.left, CutCoordinate(std::int64_t{rect.right} - 1)),
            std::max(rect.top, CutCoordinate(std::int64_t{rect.bottom} - 1))};
}

bool IsInReach(const RECT& bounds, std::int64_t dx, std::int64_t dy) noexcept {
    return bounds.left + dx >= -kFarthest && bounds.right + dx <= kFarthest && bounds.top + dy >= -kFarthest &&
           bounds.bottom + dy <= kFarthest;
}

}  // namespace
}  // namespace kawin

using namespace kawin;

HRGN CreateRectRgn(int left, int top, int right, int bottom) noexcept {
    return AddRegion(RegionShape(Ordered({left, top, right, bottom})));
}

HRGN CreateRectRgnIndirect(const RECT* rect) noexcept {
    return rect != nullptr ? CreateRectRgn(rect->left, rect->top, rect->right, rect->bottom) : Refuse<HRGN>(nullptr);
}

BOOL SetRectRgn(HRGN region, int left, int top, int right, int bottom) noexcept {
    const auto found = FindRegion(region);
    if (!found) {
        return FALSE;
    }
    found->shape = RegionShape(Ordered({left, top, right, bottom}));
    return TRUE;
}

HRGN CreateRoundRectRgn(int left, int top, int right, int bottom, int width, int height) noexcept {
    return AddMade(RoundRectShape(Shortened({left, top, right, bottom}), {width, height}, kEverywhere));
}

HRGN CreateEllipticRgn(int left, int top, int right, int bottom) noexcept {
    return AddMade(EllipseShape(Shortened({left, top, right, bottom}), kEverywhere));
}

HRGN CreateEllipticRgnIndirect(const RECT* rect) noexcept {
    return rect != nullptr ? CreateEllipticRgn(rect->left, rect->top, rect->right, rect->bottom) : Refuse<HRGN>(nullptr);
}

HRGN CreatePolygonRgn(const POINT* points, int count, int mode) noexcept {
    if (points == nullptr || count < 2 || (mode != ALTERNATE && mode != WINDING)) {
        return Refuse<HRGN>(nullptr);
    }
    return AddMade(PolygonShape({points, static_cast<std::size_t>(count)}, mode == WINDING, kEverywhere));
}

DWORD GetRegionData(HRGN region, DWORD capacity, LPRGNDATA data) noexcept {
    const auto found = FindRegion(region);
    if (!found) {
        return 0;
    }
    const DWORD count = static_cast<DWORD>(found->shape.CountRects());
    const DWORD bytes = kHeaderBytes + count * DWORD{sizeof(RECT)};
    if (data == nullptr) {
        return bytes;
    }
    if (capacity < bytes) {
        return Refuse<DWORD>(0);
    }
    data->rdh = {kHeaderBytes, RDH_RECTANGLES, count, count * DWORD{sizeof(RECT)}, found->shape.Bounds()};
    for (DWORD index = 0; index < count; ++index) {
        const RECT rect = found->shape.Rect(static_cast<int>(index));
        std::memcpy(data->Buffer + index * sizeof(RECT), &rect, sizeof(RECT));
    }
    return bytes;
}

HRGN ExtCreateRegion(const XFORM* transform, DWORD size, const RGNDATA* data) noexcept try {
    if (transform != nullptr || data == nullptr || size < kHeaderBytes || data->rdh.dwSize < kHeaderBytes ||
        data->rdh.dwSize > size || data->rdh.iType != RDH_RECTANGLES ||
        data->rdh.nCount > (size - data->rdh.dwSize) / sizeof(RECT)) {
        return Refuse<HRGN>(nullptr);
    }
    std::vector<RECT> rects(data->rdh.nCount);
    if (!rects.empty()) {
        std::memcpy(rects.data(), reinterpret_cast<const char*>(data) + data->rdh.dwSize, rects.size() * sizeof(RECT));
    }
    return AddRegion(RegionShape(rects));
} catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

int CombineRgn(HRGN target, HRGN first, HRGN second, int mode) noexcept {
    if (mode < RGN_AND || mode > RGN_COPY) {
        return Refuse(ERROR);
    }
    const auto result = FindRegion(target);
    const auto a = FindRegion(first);
    const auto b = mode == RGN_COPY ? a : FindRegion(second);
    if (!result || !a || !b) {
        return ERROR;
    }
    result->shape = Combined(a->shape, b->shape, mode);
    return RegionKind(result->shape);
}

int OffsetRgn(HRGN region, int dx, int dy) noexcept {
    const auto found = FindRegion(region);
    if (!found) {
        return ERROR;
    }
    if (!IsInReach(found->shape.Bounds(), dx, dy)) {
        return Refuse(ERROR);
    }
    found->shape.Offset(dx, dy);
    return RegionKind(found->shape);
}

BOOL EqualRgn(HRGN first, HRGN second) noexcept {
    const auto a = FindRegion(first);
    const auto b = FindRegion(second);
    return a && b && a->shape == b->shape;
}

int GetRgnBox(HRGN region, LPRECT box) noexcept {
    const auto found = FindRegion(region);
    if (!found) {
        return ERROR;
    }
    if (box == nullptr) {
        return Refuse(ERROR);
    }
    *box = found->shape.Bounds();
    return RegionKind(found->shape);
}

BOOL PtInRegion(HRGN region, int x, int y) noexcept {
    const auto found = FindRegion(region);
    return found && found->shape.Contains({x, y});
}

BOOL RectInRegion(HRGN region, const RECT* rect) noexcept {
    const auto found = FindRegion(region);
    if (!found) {
        return FALSE;
    }
    return rect != nullptr ? found->shape.Touches(Ordered(*rect)) : Refuse(FALSE);
}
