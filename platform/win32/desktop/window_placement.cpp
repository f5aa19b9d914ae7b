// Placements, several positions at once, and shapes.

#include <memory>
#include <optional>
#include <vector>

#include "../base/error_map.h"
#include "../gdi/contexts.h"
#include "../gdi/region_object.h"
#include "../text/no_throw.h"
#include "painting.h"
#include "tree_walk.h"
#include "update_regions.h"
#include "window_position.h"

namespace kawin {
namespace {

BOOL Placement(HWND handle, WINDOWPLACEMENT& placement) {
    const DesktopLock desktop;
    const Window* const window = desktop.FindOwn(handle);
    if (window == nullptr) {
        return FALSE;
    }
    const bool iconic = (window->style & WS_MINIMIZE) != 0;
    const bool zoomed = (window->style & WS_MAXIMIZE) != 0;
    constexpr POINT kNone = {-1, -1};
    placement.flags = zoomed || window->restores_to_maximised ? WPF_RESTORETOMAXIMIZED : 0;
    placement.showCmd = static_cast<UINT>(iconic ? SW_SHOWMINIMIZED : zoomed ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL);
    placement.ptMinPosition = iconic ? POINT{window->rect.left, window->rect.top} : kNone;
    placement.ptMaxPosition = zoomed ? POINT{window->rect.left, window->rect.top} : kNone;
    placement.rcNormalPosition = window->normal;
    return TRUE;
}

BOOL SetPlacement(HWND handle, const WINDOWPLACEMENT& placement) {
    bool normal = false;
    {
        const DesktopLock desktop;
        Window* const window = desktop.FindOwn(handle);
        if (window == nullptr) {
            return FALSE;
        }
        window->normal = placement.rcNormalPosition;
        window->restores_to_maximised = (placement.flags & WPF_RESTORETOMAXIMIZED) != 0;
        normal = (window->style & (WS_MINIMIZE | WS_MAXIMIZE)) == 0;
    }
    const RECT& r = placement.rcNormalPosition;
    if (normal) {
        SetPosition({handle, nullptr, r.left, r.top, r.right - r.left, r.bottom - r.top, SWP_NOZORDER | SWP_NOACTIVATE});
    }
    ShowWindow(handle, static_cast<int>(placement.showCmd));
    return TRUE;
}

// Later wishes for a window add to earlier ones.
void Add(std::vector<WINDOWPOS>& positions, const WINDOWPOS& wish) {
    for (WINDOWPOS& each : positions) {
        if (each.hwnd != wish.hwnd) {
            continue;
        }
        if ((wish.flags & SWP_NOMOVE) == 0) {
            each.x = wish.x;
            each.y = wish.y;
        }
        if ((wish.flags & SWP_NOSIZE) == 0) {
            each.cx = wish.cx;
            each.cy = wish.cy;
        }
        if ((wish.flags & SWP_NOZORDER) == 0) {
            each.hwndInsertAfter = wish.hwndInsertAfter;
        }
        constexpr UINT kRefusals =
            SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOREDRAW | SWP_NOACTIVATE | SWP_NOCOPYBITS | SWP_NOOWNERZORDER;
        constexpr UINT kWishes = SWP_SHOWWINDOW | SWP_HIDEWINDOW | SWP_FRAMECHANGED;
        each.flags = (each.flags & wish.flags & kRefusals) | ((each.flags | wish.flags) & kWishes);
        return;
    }
    positions.push_back(wish);
}

HDWP BeginPositions() {
    const DesktopLock desktop;
    desktop->deferred[++desktop->last_deferred];
    return reinterpret_cast<HDWP>(desktop->last_deferred);
}

// Null, and everything lost, for a window that there is not.
HDWP Defer(HDWP handle, const WINDOWPOS& wish) {
    const DesktopLock desktop;
    const auto found = desktop->deferred.find(reinterpret_cast<ULONG_PTR>(handle));
    if (found == desktop->deferred.end()) {
        Fail(ERROR_INVALID_DWP_HANDLE);
        return nullptr;
    }
    if (desktop.Find(wish.hwnd) == nullptr) {
        desktop->deferred.erase(found);
        return nullptr;
    }
    Add(found->second, wish);
    return handle;
}

// What was deferred; nothing with the last error set.
std::optional<std::vector<WINDOWPOS>> TakePositions(HDWP handle) {
    const DesktopLock desktop;
    const auto found = desktop->deferred.extract(reinterpret_cast<ULONG_PTR>(handle));
    if (found.empty()) {
        Fail(ERROR_INVALID_DWP_HANDLE);
        return {};
    }
    return found.mapped();
}

BOOL EndPositions(HDWP handle) {
    const std::optional<std::vector<WINDOWPOS>> list = TakePositions(handle);
    bool all = list.has_value();
    for (const WINDOWPOS& each : list.value_or(std::vector<WINDOWPOS>())) {
        all = SetPosition(each) != FALSE && all;
    }
    return all;
}

int SetShape(HWND handle, std::optional<RegionShape> shape) {
    const DesktopLock desktop;
    Window* const window = desktop.FindOwn(handle);
    if (window == nullptr) {
        return FALSE;
    }
    const RegionShape old = window->shape ? *window->shape : RegionShape(WholeWindow(*window));
    window->shape = std::move(shape);
    // What lies bare now belongs to the parent.
    if (!window->IsTopLevel() && IsShown(*window)) {
        RegionShape bare = old;
        if (window->shape) {
            bare.Subtract(*window->shape);
        }
        const RECT client = ClientInWindow(*window->parent);
        bare.Offset(window->rect.left + client.left, window->rect.top + client.top);
        Invalidate(*window->parent, bare, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    }
    return TRUE;
}

}  // namespace
}  // namespace kawin

BOOL GetWindowPlacement(HWND window, LPWINDOWPLACEMENT placement) noexcept {
    // As on Windows, the length is not looked at when it is asked for.
    return placement != nullptr ? kawin::Placement(window, *placement) : kawin::Fail(ERROR_INVALID_PARAMETER);
}

BOOL SetWindowPlacement(HWND window, const WINDOWPLACEMENT* placement) noexcept {
    if (placement == nullptr || placement->length != sizeof(WINDOWPLACEMENT)) {
        return kawin::Fail(ERROR_INVALID_PARAMETER);
    }
    return kawin::NoThrow([&] { return kawin::SetPlacement(window, *placement); });
}

HDWP BeginDeferWindowPos(int count) noexcept {
    if (count < 0) {
        kawin::Fail(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    return kawin::NoThrow(kawin::BeginPositions);
}

HDWP DeferWindowPos(HDWP positions, HWND window, HWND after, int x, int y, int width, int height, UINT flags) noexcept {
    return kawin::NoThrow([&] { return kawin::Defer(positions, {window, after, x, y, width, height, flags}); });
}

BOOL EndDeferWindowPos(HDWP positions) noexcept {
    return kawin::NoThrow([&] { return kawin::EndPositions(positions); });
}

int SetWindowRgn(HWND window, HRGN region, BOOL redraw) noexcept {
    return kawin::NoThrow([&]() -> int {
        std::optional<kawin::RegionShape> shape;
        if (region != nullptr) {
            const std::shared_ptr<kawin::RegionObject> object = kawin::FindRegion(region);
            if (object == nullptr) {
                return FALSE;
            }
            shape = object->shape;
        }
        if (kawin::SetShape(window, std::move(shape)) == FALSE) {
            return FALSE;
        }
        if (region != nullptr) {
            DeleteObject(region);
        }
        const UINT quiet = redraw != FALSE ? 0 : SWP_NOREDRAW;
        kawin::SetPosition(
            {window, nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED | quiet});
        return TRUE;
    });
}

int GetWindowRgn(HWND window, HRGN region) noexcept {
    return kawin::NoThrow([&]() -> int {
        const std::shared_ptr<kawin::RegionObject> object = kawin::FindRegion(region);
        const kawin::DesktopLock desktop;
        const kawin::Window* const found = desktop.Find(window);
        if (found == nullptr || object == nullptr || !found->shape) {
            return ERROR;
        }
        object->shape = *found->shape;
        return kawin::RegionKind(object->shape);
    });
}

BOOL GetGUIThreadInfo(DWORD thread, PGUITHREADINFO info) noexcept {
    if (info == nullptr || info->cbSize != sizeof(GUITHREADINFO)) {
        return kawin::Fail(ERROR_INVALID_PARAMETER);
    }
    const kawin::DesktopLock desktop;
    const auto found = desktop->queues.find(thread);
    const kawin::ThreadQueue* const queue = thread == 0                      ? desktop->foreground.get()
                                            : found != desktop->queues.end() ? found->second.get()
                                                                             : nullptr;
    if (queue == nullptr) {
        return kawin::Fail(ERROR_INVALID_PARAMETER);
    }
    *info = {.cbSize = sizeof(GUITHREADINFO),
             .flags = 0,
             .hwndActive = queue->active,
             .hwndFocus = queue->focus,
             .hwndCapture = queue->capture,
             .hwndMenuOwner = nullptr,
             .hwndMoveSize = nullptr,
             .hwndCaret = nullptr,
             .rcCaret = {}};
    return TRUE;
}
