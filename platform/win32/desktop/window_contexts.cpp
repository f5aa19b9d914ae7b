// Contexts to draw on windows with.

#include "window_contexts.h"
#include "../base/error_map.h"
#include "../gdi/contexts.h"
#include "../gdi/drawing_context.h"
#include "../gdi/region_object.h"
#include "../text/no_throw.h"
#include "metrics.h"
#include "painting.h"
#include "tree_walk.h"
#include "update_regions.h"

namespace kawin {

HDC OpenContext(Window& window, Area area, RegionShape visible) {
    POINT origin = SurfaceOrigin(window);
    RECT extent = WholeWindow(window);
    if (area == Area::Client) {
        const RECT client = ClientInWindow(window);
        origin = {origin.x + client.left, origin.y + client.top};
        extent = {0, 0, client.right - client.left, client.bottom - client.top};
    }
    // What is not shown is not drawn, so that it needs no pixels either.
    std::shared_ptr<Surface> surface = visible.IsEmpty() ? TopLevelOf(window).surface : SurfaceOf(window);
    return OpenWindowContext(window.handle, std::move(surface), origin, extent, std::move(visible));
}

namespace {

// A region that belongs to the system from now on, as a shape.
RegionShape TakeRegion(HRGN region) {
    const std::shared_ptr<RegionObject> object = FindGdi<RegionObject>(region);
    RegionShape shape = object != nullptr ? object->shape : RegionShape();
    DeleteObject(region);
    return shape;
}

HDC OpenScreen() {
    return OpenWindowContext(nullptr, nullptr, {}, {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)},
                             RegionShape());
}

void LimitTo(RegionShape& visible, const RegionShape& limit, DWORD flags, DWORD intersect, DWORD exclude) {
    if ((flags & intersect) != 0) {
        visible.Intersect(limit);
    } else if ((flags & exclude) != 0) {
        visible.Subtract(limit);
    }
}

HDC Open(HWND handle, HRGN clip, DWORD flags) {
    const bool has_clip = clip != nullptr && (flags & (DCX_INTERSECTRGN | DCX_EXCLUDERGN)) != 0;
    RegionShape limit = has_clip ? TakeRegion(clip) : RegionShape();
    const DesktopLock desktop;
    Window* const window = desktop.Find(handle);
    if (window == nullptr) {
        return nullptr;
    }
    if (window->parent == nullptr) {
        return OpenScreen();
    }
    const Area area = (flags & DCX_WINDOW) != 0 ? Area::Window : Area::Client;
    RegionShape visible = VisibleRegion(*window, area, {(flags & DCX_CLIPCHILDREN) != 0, (flags & DCX_CLIPSIBLINGS) != 0});
    if (has_clip) {
        const POINT screen = WindowOrigin(TopLevelOf(*window));
        limit.Offset(-screen.x, -screen.y);
        LimitTo(visible, limit, flags, DCX_INTERSECTRGN, DCX_EXCLUDERGN);
    }
    if ((flags & (DCX_INTERSECTUPDATE | DCX_EXCLUDEUPDATE | DCX_VALIDATE)) != 0) {
        RegionShape update = window->update;
        const POINT origin = SurfaceOrigin(*window);
        update.Offset(origin.x, origin.y);
        LimitTo(visible, update, flags, DCX_INTERSECTUPDATE, DCX_EXCLUDEUPDATE);
        if ((flags & DCX_VALIDATE) != 0) {
            ForgetUpdates(*window);
        }
    }
    return OpenContext(*window, area, std::move(visible));
}

// What GetDC and GetWindowDC clip by: the window's own styles.
DWORD StyleFlags(HWND handle) {
    const DesktopLock desktop;
    const Window* const window = desktop.Look(handle);
    if (window == nullptr) {
        return 0;
    }
    const Clipping clipping = ClippingOf(*window);
    return (clipping.children ? DCX_CLIPCHILDREN : 0) | (clipping.siblings ? DCX_CLIPSIBLINGS : 0);
}

HDC OpenByStyle(HWND window, DWORD flags) noexcept {
    return NoThrow([&] { return window == nullptr ? OpenScreen() : Open(window, nullptr, flags | StyleFlags(window)); });
}

}  // namespace
}  // namespace kawin

HDC GetDC(HWND window) noexcept {
    return kawin::OpenByStyle(window, 0);
}

HDC GetWindowDC(HWND window) noexcept {
    // A frame lies around the children; those of a window context are not in its way.
    return kawin::NoThrow([&] {
        const DWORD siblings = kawin::StyleFlags(window) & DCX_CLIPSIBLINGS;
        return window == nullptr ? kawin::OpenScreen() : kawin::Open(window, nullptr, DCX_WINDOW | siblings);
    });
}

HDC GetDCEx(HWND window, HRGN clip, DWORD flags) noexcept {
    return kawin::NoThrow([&] {
        if (window == nullptr) {
            return kawin::OpenScreen();
        }
        const bool by_style = (flags & DCX_CACHE) == 0;
        return kawin::Open(window, clip, by_style ? flags | kawin::StyleFlags(window) : flags);
    });
}

int ReleaseDC(HWND /*window*/, HDC context) noexcept {
    return kawin::CloseWindowContext(context) ? 1 : 0;
}
