#include "contexts.h"

#include <algorithm>
#include <iterator>
#include <new>
#include <string_view>
#include <utility>

#include "../base/error.h"
#include "../desktop/metrics.h"
#include "../text/case_fold.h"
#include "bitmap_object.h"
#include "brush_object.h"
#include "drawing_context.h"
#include "font_object.h"
#include "selection.h"
#include "stock_objects.h"

namespace kawin {
namespace {

// With the stock objects selected.
std::shared_ptr<DrawingContext> MakeContext() {
    auto context = std::make_shared<DrawingContext>();
    context->state.brush = StockObject<BrushObject>(WHITE_BRUSH);
    context->state.pen = StockObject<PenObject>(BLACK_PEN);
    context->state.font = StockObject<FontObject>(SYSTEM_FONT);
    return context;
}

HDC AddContext(std::shared_ptr<DrawingContext> context) noexcept {
    return static_cast<HDC>(AddGdiObject(std::move(context)));
}

}  // namespace

DrawingContext::~DrawingContext() {
    ReleaseBitmap(*this);
}

RegionShape DrawingContext::Drawable() const {
    RegionShape drawable = of_window ? visible : RegionShape(surface ? surface->Bounds() : RECT{});
    if (state.clip) {
        RegionShape clip = *state.clip;
        clip.Offset(origin.x, origin.y);
        drawable.Intersect(clip);
    }
    return drawable;
}

std::shared_ptr<DrawingContext> FindContext(HDC context) noexcept {
    auto found = FindGdi<DrawingContext>(context);
    if (!found) {
        SetLastError(ERROR_INVALID_HANDLE);
    }
    return found;
}

HDC OpenWindowContext(HWND window, std::shared_ptr<Surface> surface, POINT origin, const RECT& extent,
                      RegionShape visible) noexcept try {
    const auto context = MakeContext();
    context->of_window = true;
    context->window = window;
    context->surface = std::move(surface);
    context->origin = origin;
    context->extent = extent;
    context->visible = std::move(visible);
    if (context->surface) {
        context->visible.Intersect(context->surface->Bounds());
    }
    return AddContext(context);
} catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

bool CloseWindowContext(HDC context) noexcept {
    const auto found = FindGdi<DrawingContext>(context);
    return found && found->of_window && RemoveGdiObject(context);
}

}  // namespace kawin

using namespace kawin;

HDC CreateCompatibleDC(HDC like) noexcept try {
    if (like != nullptr && !FindContext(like)) {
        return nullptr;
    }
    const auto context = MakeContext();
    context->memory = true;
    SelectBitmap(*context, FindGdi<BitmapObject>(StockBitmap()));
    return AddContext(context);
} catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

HDC CreateDCW(LPCWSTR driver, LPCWSTR, LPCWSTR, const void*) noexcept try {
    if (driver == nullptr || CompareFolded(driver, u"DISPLAY") != 0) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    const auto context = MakeContext();
    context->extent = {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    return AddContext(context);
} catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

HDC CreateICW(LPCWSTR driver, LPCWSTR device, LPCWSTR output, const void* mode) noexcept {
    return CreateDCW(driver, device, output, mode);
}

BOOL DeleteDC(HDC context) noexcept {
    const auto found = FindContext(context);
    if (!found) {
        return FALSE;
    }
    if (found->of_window || !RemoveGdiObject(context)) {
        SetLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    return TRUE;
}

int SaveDC(HDC context) noexcept try {
    const auto found = FindContext(context);
    if (!found) {
        return 0;
    }
    found->saved.push_back(found->state);
    return static_cast<int>(found->saved.size());
} catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return 0;
}

BOOL RestoreDC(HDC context, int depth) noexcept {
    const auto found = FindContext(context);
    if (!found) {
        return FALSE;
    }
    const int saved = static_cast<int>(found->saved.size());
    const int wanted = depth < 0 ? saved + 1 + depth : depth;
    if (wanted < 1 || wanted > saved) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    const auto at = std::next(found->saved.begin(), wanted - 1);
    std::shared_ptr<BitmapObject> now = found->state.bitmap;
    found->state = std::move(*at);
    found->saved.erase(at, found->saved.end());
    if (found->memory) {
        std::swap(now, found->state.bitmap);
        SelectBitmap(*found, now);  // the present one stays where another context has taken the one of then
    }
    return TRUE;
}

HWND WindowFromDC(HDC context) noexcept {
    const auto found = FindContext(context);
    return found ? found->window : nullptr;
}
