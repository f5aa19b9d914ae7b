#include "brushes.h"

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

#include "../base/error.h"
#include "bitmap_object.h"
#include "brush_object.h"
#include "region_shape.h"

namespace {

using kawin::BitmapObject;
using kawin::BrushObject;
using kawin::PenObject;
using kawin::Surface;

template <class Handle>
Handle Refuse(DWORD error) noexcept {
    SetLastError(error);
    return nullptr;
}

HBRUSH AddBrush(const LOGBRUSH& description, std::shared_ptr<const Surface> pattern = nullptr) noexcept try {
    return static_cast<HBRUSH>(kawin::AddGdiObject(std::make_shared<BrushObject>(description, std::move(pattern))));
} catch (const std::bad_alloc&) {
    return Refuse<HBRUSH>(ERROR_NOT_ENOUGH_MEMORY);
}

std::shared_ptr<const Surface> CopyOf(const Surface& from) noexcept {
    auto copy = Surface::Make(from.Width(), from.Height(), from.IsMono());
    for (int y = 0; copy && y < from.Height(); ++y) {
        std::copy_n(from.Row(y), from.Width(), copy->Row(y));
    }
    return copy;
}

}  // namespace

HBRUSH CreateSolidBrush(COLORREF color) noexcept {
    return AddBrush({BS_SOLID, color, 0});
}

HBRUSH CreateHatchBrush(int hatch, COLORREF color) noexcept {
    if (hatch < HS_HORIZONTAL || hatch > HS_DIAGCROSS) {
        return Refuse<HBRUSH>(ERROR_INVALID_PARAMETER);
    }
    return AddBrush({BS_HATCHED, color, static_cast<ULONG_PTR>(hatch)});
}

HBRUSH CreatePatternBrush(HBITMAP bitmap) noexcept {
    const auto found = kawin::FindGdi<BitmapObject>(bitmap);
    if (!found) {
        return Refuse<HBRUSH>(ERROR_INVALID_HANDLE);
    }
    auto pattern = CopyOf(*found->surface);
    if (!pattern) {
        return Refuse<HBRUSH>(ERROR_NOT_ENOUGH_MEMORY);
    }
    return AddBrush({BS_PATTERN, 0, reinterpret_cast<ULONG_PTR>(bitmap)}, std::move(pattern));
}

HBRUSH CreateBrushIndirect(const LOGBRUSH* brush) noexcept {
    switch (brush != nullptr ? brush->lbStyle : ~UINT{0}) {
        case BS_SOLID:
            return CreateSolidBrush(brush->lbColor);
        case BS_NULL:
            return AddBrush({BS_NULL, 0, 0});
        case BS_HATCHED:
            return brush->lbHatch <= HS_DIAGCROSS ? CreateHatchBrush(static_cast<int>(brush->lbHatch), brush->lbColor)
                                                  : Refuse<HBRUSH>(ERROR_INVALID_PARAMETER);
        case BS_PATTERN:
            return CreatePatternBrush(reinterpret_cast<HBITMAP>(brush->lbHatch));
        default:
            return Refuse<HBRUSH>(ERROR_INVALID_PARAMETER);
    }
}

HPEN CreatePen(int style, int width, COLORREF color) noexcept try {
    if (style < PS_SOLID || style > PS_INSIDEFRAME) {
        return Refuse<HPEN>(ERROR_INVALID_PARAMETER);
    }
    const bool null = style == PS_NULL;
    const LONG pixels = width < 0 ? kawin::CutCoordinate(-std::int64_t{width}) : width;
    const LOGPEN description = {static_cast<UINT>(style), {null ? 1 : pixels, 0}, null ? 0 : color};
    return static_cast<HPEN>(kawin::AddGdiObject(std::make_shared<PenObject>(description)));
} catch (const std::bad_alloc&) {
    return Refuse<HPEN>(ERROR_NOT_ENOUGH_MEMORY);
}

HPEN CreatePenIndirect(const LOGPEN* pen) noexcept {
    if (pen == nullptr) {
        return Refuse<HPEN>(ERROR_INVALID_PARAMETER);
    }
    return CreatePen(static_cast<int>(pen->lopnStyle), pen->lopnWidth.x, pen->lopnColor);
}
