// BeginPaint and EndPaint, and painting at once.

#include "painting.h"

#include "../base/error_map.h"
#include "../gdi/contexts.h"
#include "../gdi/drawing_context.h"
#include "../gdi/region_object.h"
#include "../gdi/regions.h"
#include "../text/no_throw.h"
#include "painting_steps.h"
#include "tree_walk.h"
#include "window_contexts.h"
#include "window_tree.h"

namespace kawin {
namespace {

RegionShape InWindow(RegionShape client_region, const Window& window) {
    const RECT client = ClientInWindow(window);
    client_region.Offset(client.left, client.top);
    return client_region;
}

// The update region is the paint's from here on.
struct Paint {
    HDC context = nullptr;
    RECT bounds = {};
    bool erase = false;
};

Paint TakeUpdate(HWND handle) {
    const DesktopLock desktop;
    Window* const window = desktop.Look(handle);
    if (window == nullptr) {
        return {};
    }
    const POINT origin = SurfaceOrigin(*window);
    RegionShape visible = VisibleRegion(*window, Area::Client, ClippingOf(*window));
    RegionShape update = window->update;
    update.Offset(origin.x, origin.y);
    visible.Intersect(update);
    Paint paint;
    const RECT client = ClientInWindow(*window);
    RegionShape bounds = visible;
    bounds.Offset(-origin.x - client.left, -origin.y - client.top);
    paint.bounds = bounds.Bounds();
    paint.erase = window->erase && !window->update.IsEmpty();
    paint.context = OpenContext(*window, Area::Client, std::move(visible));
    window->update = RegionShape();
    window->erase = window->internal_paint = window->paints_frame = false;
    return paint;
}

void MarkForErasing(HWND handle) {
    const DesktopLock desktop;
    if (Window* const window = desktop.Look(handle)) {
        window->erase = true;
    }
}

HDC Begin(HWND window, PAINTSTRUCT& paint) {
    paint = {};
    {
        const DesktopLock desktop;
        if (desktop.FindOwn(window) == nullptr) {
            return nullptr;
        }
    }
    PaintFrameIfDue(window);
    const Paint taken = TakeUpdate(window);
    paint.hdc = taken.context;
    paint.rcPaint = taken.bounds;
    if (taken.erase && taken.context != nullptr) {
        paint.fErase = SendMessageW(window, WM_ERASEBKGND, reinterpret_cast<WPARAM>(taken.context), 0) == 0;
        if (paint.fErase) {
            MarkForErasing(window);
        }
    }
    return paint.hdc;
}

bool IsEraseDue(HWND handle) {
    const DesktopLock desktop;
    const Window* const window = desktop.Look(handle);
    return window != nullptr && window->erase && !ClientUpdate(*window).IsEmpty();
}

// The windows at and below `window` that may have something to paint, parents first.
std::vector<HWND> InTree(HWND handle, UINT flags) {
    std::vector<HWND> list;
    const DesktopLock desktop;
    Window* const window = desktop.Look(handle);
    if (window == nullptr || !IsShown(*window)) {
        return list;
    }
    list.push_back(handle);
    if ((flags & RDW_NOCHILDREN) == 0) {
        WalkVisible(*window, [&](Window& each) {
            list.push_back(each.handle);
            return true;
        });
    }
    return list;
}

bool NeedsPaint(HWND handle) {
    const DesktopLock desktop;
    const Window* const window = desktop.Look(handle);
    return window != nullptr && window->NeedsPaint();
}

RegionShape PartOf(const Window& window, const RECT* rect, const RegionShape* region, UINT flags) {
    if (region != nullptr) {
        return InWindow(*region, window);
    }
    if (rect != nullptr) {
        return InWindow(RegionShape(*rect), window);
    }
    return RegionShape((flags & (RDW_FRAME | RDW_NOFRAME)) != 0 ? WholeWindow(window) : ClientInWindow(window));
}

// Marks, as the first part of RedrawWindow.
bool Mark(HWND handle, const RECT* rect, const RegionShape* region, UINT flags) {
    const DesktopLock desktop;
    Window* const window = desktop.Find(handle);
    if (window == nullptr) {
        return false;
    }
    if (window->parent == nullptr) {
        for (Window* const top : window->children) {
            if ((flags & RDW_INVALIDATE) != 0) {
                Invalidate(*top, RegionShape(WholeWindow(*top)), flags | RDW_FRAME | RDW_ALLCHILDREN);
            }
        }
        return true;
    }
    const RegionShape part = PartOf(*window, rect, region, flags);
    if ((flags & RDW_INVALIDATE) != 0) {
        Invalidate(*window, part, flags);
    } else if ((flags & RDW_VALIDATE) != 0) {
        Validate(*window, part, flags);
    }
    if ((flags & RDW_NOERASE) != 0) {
        window->erase = false;
    }
    if ((flags & (RDW_INTERNALPAINT | RDW_NOINTERNALPAINT)) != 0) {
        window->internal_paint = (flags & RDW_INTERNALPAINT) != 0;
        Signal(*window->queue, QS_PAINT);
    }
    return true;
}

void PaintNow(HWND window, UINT flags) {
    for (const HWND each : InTree(window, flags)) {
        if ((flags & RDW_UPDATENOW) != 0 && NeedsPaint(each)) {
            SendMessageW(each, WM_PAINT, 0, 0);
        } else if ((flags & RDW_ERASENOW) != 0 && NeedsPaint(each)) {
            PaintFrameIfDue(each);
            EraseIfDue(each);
        }
    }
}

BOOL Redraw(HWND window, const RECT* rect, HRGN region, UINT flags) noexcept {
    return NoThrow([&]() -> BOOL {
        const HWND target = window != nullptr ? window : GetDesktopWindow();
        const std::shared_ptr<RegionObject> object = FindGdi<RegionObject>(region);
        if (!Mark(target, rect, object != nullptr ? &object->shape : nullptr, flags)) {
            return FALSE;
        }
        PaintNow(target, flags);
        return TRUE;
    });
}

}  // namespace

void PaintFrameIfDue(HWND handle) {
    {
        const DesktopLock desktop;
        Window* const window = desktop.Look(handle);
        if (window == nullptr || !window->paints_frame) {
            return;
        }
        window->paints_frame = false;
        window->update.Intersect(ClientInWindow(*window));
    }
    constexpr WPARAM kWholeFrame = 1;
    SendMessageW(handle, WM_NCPAINT, kWholeFrame, 0);
}

void EraseIfDue(HWND handle) {
    if (!IsEraseDue(handle)) {
        return;
    }
    HDC context = nullptr;
    {
        const DesktopLock desktop;
        Window* const window = desktop.Look(handle);
        if (window == nullptr) {
            return;
        }
        window->erase = false;
        const POINT origin = SurfaceOrigin(*window);
        RegionShape update = window->update;
        update.Offset(origin.x, origin.y);
        RegionShape visible = VisibleRegion(*window, Area::Client, ClippingOf(*window));
        visible.Intersect(update);
        context = OpenContext(*window, Area::Client, std::move(visible));
    }
    if (context != nullptr && SendMessageW(handle, WM_ERASEBKGND, reinterpret_cast<WPARAM>(context), 0) == 0) {
        MarkForErasing(handle);
    }
    CloseWindowContext(context);
}

}  // namespace kawin

HDC BeginPaint(HWND window, LPPAINTSTRUCT paint) noexcept {
    return paint != nullptr ? kawin::NoThrow([&] { return kawin::Begin(window, *paint); }) : nullptr;
}

BOOL EndPaint(HWND /*window*/, const PAINTSTRUCT* paint) noexcept {
    if (paint != nullptr) {
        kawin::CloseWindowContext(paint->hdc);
    }
    return TRUE;
}

BOOL InvalidateRect(HWND window, const RECT* rect, BOOL erase) noexcept {
    if (window == nullptr) {
        return kawin::Redraw(nullptr, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_ERASE | RDW_FRAME);
    }
    return kawin::Redraw(window, rect, nullptr, RDW_INVALIDATE | (erase != FALSE ? RDW_ERASE : 0));
}

BOOL InvalidateRgn(HWND window, HRGN region, BOOL erase) noexcept {
    return kawin::Redraw(window, nullptr, region, RDW_INVALIDATE | (erase != FALSE ? RDW_ERASE : 0));
}

BOOL ValidateRect(HWND window, const RECT* rect) noexcept {
    if (window == nullptr) {
        return InvalidateRect(nullptr, nullptr, TRUE);  // as documented
    }
    return kawin::Redraw(window, rect, nullptr, RDW_VALIDATE | RDW_NOCHILDREN);
}

BOOL ValidateRgn(HWND window, HRGN region) noexcept {
    return kawin::Redraw(window, nullptr, region, RDW_VALIDATE | RDW_NOCHILDREN);
}

BOOL UpdateWindow(HWND window) noexcept {
    return kawin::Redraw(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

BOOL RedrawWindow(HWND window, const RECT* rect, HRGN region, UINT flags) noexcept {
    return kawin::Redraw(window, rect, region, flags);
}

BOOL GetUpdateRect(HWND window, LPRECT rect, BOOL erase) noexcept {
    return kawin::NoThrow([&]() -> BOOL {
        if (erase != FALSE) {
            kawin::PaintFrameIfDue(window);
            kawin::EraseIfDue(window);
        }
        const kawin::DesktopLock desktop;
        const kawin::Window* const found = desktop.Find(window);
        if (found == nullptr) {
            return FALSE;
        }
        const kawin::RegionShape update = kawin::ClientUpdate(*found);
        if (rect != nullptr) {
            *rect = update.Bounds();
        }
        return !update.IsEmpty();
    });
}

int GetUpdateRgn(HWND window, HRGN region, BOOL erase) noexcept {
    return kawin::NoThrow([&]() -> int {
        if (erase != FALSE) {
            kawin::PaintFrameIfDue(window);
            kawin::EraseIfDue(window);
        }
        const std::shared_ptr<kawin::RegionObject> object = kawin::FindGdi<kawin::RegionObject>(region);
        const kawin::DesktopLock desktop;
        const kawin::Window* const found = desktop.Find(window);
        if (found == nullptr || object == nullptr) {
            return ERROR;
        }
        object->shape = kawin::ClientUpdate(*found);
        return kawin::RegionKind(object->shape);
    });
}

int ExcludeUpdateRgn(HDC context, HWND window) noexcept {
    return kawin::NoThrow([&]() -> int {
        kawin::RegionShape update;
        {
            const kawin::DesktopLock desktop;
            const kawin::Window* const found = desktop.Find(window);
            if (found == nullptr) {
                return ERROR;
            }
            update = kawin::ClientUpdate(*found);
        }
        const HRGN region = kawin::AddRegion(std::move(update));
        const int kind = ExtSelectClipRgn(context, region, RGN_DIFF);
        DeleteObject(region);
        return kind;
    });
}
