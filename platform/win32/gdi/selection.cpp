#include "selection.h"

#include "../base/error.h"
#include "bitmap_object.h"
#include "brush_object.h"
#include "contexts.h"
#include "drawing_context.h"
#include "font_object.h"
#include "region_object.h"
#include "stock_objects.h"

namespace kawin {
namespace {

bool Claim(BitmapObject& bitmap, const DrawingContext& context) noexcept {
    if (bitmap.IsStock()) {
        return true;
    }
    const DrawingContext* owner = nullptr;
    return bitmap.selected_in.compare_exchange_strong(owner, &context) || owner == &context;
}

// Puts `object` in the place of `selected`; the handle of the one before.
template <class T>
HGDIOBJ Exchange(std::shared_ptr<T>& selected, std::shared_ptr<T> object) noexcept {
    selected.swap(object);
    return object ? object->Handle() : nullptr;
}

HGDIOBJ Refuse(DWORD error) noexcept {
    SetLastError(error);
    return nullptr;
}

HGDIOBJ ExchangeBitmap(DrawingContext& context, std::shared_ptr<BitmapObject> bitmap) noexcept {
    const std::shared_ptr<BitmapObject> before = context.state.bitmap;
    if (!context.memory || !SelectBitmap(context, std::move(bitmap))) {
        return Refuse(ERROR_INVALID_PARAMETER);
    }
    return before->Handle();
}

HGDIOBJ SelectRegion(HDC context, HGDIOBJ region) noexcept {
    const int kind = SelectClipRgn(context, static_cast<HRGN>(region));
    return kind == ERROR ? HGDI_ERROR : reinterpret_cast<HGDIOBJ>(static_cast<LONG_PTR>(kind));
}

HGDIOBJ HandleOf(const std::shared_ptr<GdiObject>& object) noexcept {
    return object ? object->Handle() : nullptr;
}

}  // namespace

bool SelectBitmap(DrawingContext& context, std::shared_ptr<BitmapObject> bitmap) noexcept {
    if (!bitmap || !Claim(*bitmap, context)) {
        return false;
    }
    if (bitmap != context.state.bitmap) {
        ReleaseBitmap(context);
    }
    context.surface = bitmap->IsStock() ? nullptr : bitmap->surface;
    context.extent = bitmap->surface->Bounds();
    context.state.bitmap = std::move(bitmap);
    return true;
}

void ReleaseBitmap(DrawingContext& context) noexcept {
    if (context.state.bitmap) {
        const DrawingContext* owner = &context;
        context.state.bitmap->selected_in.compare_exchange_strong(owner, nullptr);
    }
}

}  // namespace kawin

using namespace kawin;

HGDIOBJ SelectObject(HDC context, HGDIOBJ object) noexcept {
    const auto found = FindContext(context);
    if (!found) {
        return nullptr;
    }
    const std::shared_ptr<GdiObject> selected = FindGdiObject(object);
    switch (selected ? selected->Type() : 0) {
        case OBJ_BITMAP:
            return ExchangeBitmap(*found, std::static_pointer_cast<BitmapObject>(selected));
        case OBJ_BRUSH:
            return Exchange(found->state.brush, std::static_pointer_cast<BrushObject>(selected));
        case OBJ_PEN:
            return Exchange(found->state.pen, std::static_pointer_cast<PenObject>(selected));
        case OBJ_FONT:
            return Exchange(found->state.font, std::static_pointer_cast<FontObject>(selected));
        case OBJ_REGION:
            return SelectRegion(context, object);
        default:
            return Refuse(ERROR_INVALID_HANDLE);
    }
}

HGDIOBJ GetCurrentObject(HDC context, UINT kind) noexcept {
    const auto found = FindContext(context);
    if (!found) {
        return nullptr;
    }
    switch (kind) {
        case OBJ_BITMAP:
            return found->state.bitmap ? found->state.bitmap->Handle() : StockBitmap();
        case OBJ_BRUSH:
            return HandleOf(found->state.brush);
        case OBJ_PEN:
            return HandleOf(found->state.pen);
        case OBJ_FONT:
            return HandleOf(found->state.font);
        default:
            return Refuse(ERROR_INVALID_PARAMETER);
    }
}

DWORD GetObjectType(HGDIOBJ object) noexcept {
    const std::shared_ptr<GdiObject> found = FindGdiObject(object);
    if (!found) {
        SetLastError(ERROR_INVALID_HANDLE);
        return 0;
    }
    return found->Type();
}

int GetObjectW(HGDIOBJ object, int capacity, LPVOID target) noexcept {
    const std::shared_ptr<GdiObject> found = FindGdiObject(object);
    if (!found) {
        SetLastError(ERROR_INVALID_HANDLE);
        return 0;
    }
    return found->Describe(capacity, target);
}

BOOL DeleteObject(HGDIOBJ object) noexcept {
    const std::shared_ptr<GdiObject> found = FindGdiObject(object);
    if (found && found->IsStock()) {
        return TRUE;
    }
    if (dynamic_cast<DrawingContext*>(found.get()) != nullptr) {
        return DeleteDC(static_cast<HDC>(object));
    }
    const auto* const bitmap = dynamic_cast<BitmapObject*>(found.get());
    if (bitmap != nullptr && bitmap->selected_in != nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    if (!RemoveGdiObject(object)) {
        SetLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    return TRUE;
}
