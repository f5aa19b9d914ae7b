// Where windows are, and which is where.

#include "../base/error_map.h"
#include "../text/no_throw.h"
#include "frame.h"
#include "metrics.h"
#include "rectangles.h"
#include "tree_walk.h"
#include "window_position.h"
#include "window_tree.h"

namespace kawin {
namespace {

bool RectOf(HWND handle, RECT& rect) noexcept {
    bool screen = false;
    {
        const DesktopLock desktop;
        const Window* const window = desktop.Find(handle);
        if (window == nullptr) {
            return false;
        }
        screen = window->parent == nullptr;
        const POINT origin = WindowOrigin(*window);
        rect = {origin.x, origin.y, origin.x + window->Width(), origin.y + window->Height()};
    }
    if (screen) {
        rect = ScreenRect();
    }
    return true;
}

bool ClientOf(HWND handle, RECT& rect) noexcept {
    bool screen = false;
    {
        const DesktopLock desktop;
        const Window* const window = desktop.Find(handle);
        if (window == nullptr) {
            return false;
        }
        screen = window->parent == nullptr;
        rect = {0, 0, window->client.right - window->client.left, window->client.bottom - window->client.top};
    }
    if (screen) {
        rect = ScreenRect();
    }
    return true;
}

// The client area's corner on the screen; of a null handle the screen's.
bool OriginOf(HWND handle, POINT& origin) noexcept {
    origin = {};
    if (handle == nullptr) {
        return true;
    }
    const DesktopLock desktop;
    const Window* const window = desktop.Find(handle);
    if (window != nullptr) {
        origin = ClientOrigin(*window);
    }
    return window != nullptr;
}

bool Shift(HWND window, LPPOINT point, int sign) noexcept {
    POINT origin = {};
    if (point == nullptr || !OriginOf(window, origin)) {
        return false;
    }
    if (window == nullptr) {
        return Fail(ERROR_INVALID_WINDOW_HANDLE);
    }
    point->x += sign * origin.x;
    point->y += sign * origin.y;
    return true;
}

bool Skips(const Window& window, UINT flags) noexcept {
    return ((flags & CWP_SKIPINVISIBLE) != 0 && !window.IsVisible()) ||
           ((flags & CWP_SKIPDISABLED) != 0 && (window.style & WS_DISABLED) != 0) ||
           ((flags & CWP_SKIPTRANSPARENT) != 0 && (window.extended_style & WS_EX_TRANSPARENT) != 0);
}

HWND ChildAt(HWND parent, POINT point, UINT flags) noexcept {
    const DesktopLock desktop;
    const Window* const window = desktop.Find(parent);
    if (window == nullptr) {
        return nullptr;
    }
    const RECT client = {0, 0, window->client.right - window->client.left, window->client.bottom - window->client.top};
    if (PtInRect(&client, point) == FALSE) {
        return nullptr;
    }
    for (const Window* const child : window->children) {
        if (PtInRect(&child->rect, point) != FALSE && !Skips(*child, flags)) {
            return child->handle;
        }
    }
    return parent;
}

}  // namespace
}  // namespace kawin

BOOL GetWindowRect(HWND window, LPRECT rect) noexcept {
    return rect != nullptr ? kawin::RectOf(window, *rect) : kawin::Fail(ERROR_NOACCESS);
}

BOOL GetClientRect(HWND window, LPRECT rect) noexcept {
    return rect != nullptr ? kawin::ClientOf(window, *rect) : kawin::Fail(ERROR_NOACCESS);
}

BOOL ClientToScreen(HWND window, LPPOINT point) noexcept {
    return kawin::Shift(window, point, 1);
}

BOOL ScreenToClient(HWND window, LPPOINT point) noexcept {
    return kawin::Shift(window, point, -1);
}

int MapWindowPoints(HWND from, HWND to, LPPOINT points, UINT count) noexcept {
    POINT source = {};
    POINT target = {};
    if (points == nullptr || !kawin::OriginOf(from, source) || !kawin::OriginOf(to, target)) {
        return 0;
    }
    const int dx = source.x - target.x;
    const int dy = source.y - target.y;
    for (UINT i = 0; i < count; ++i) {
        points[i].x += dx;
        points[i].y += dy;
    }
    return MAKELONG(static_cast<WORD>(dx), static_cast<WORD>(dy));
}

HWND ChildWindowFromPoint(HWND parent, POINT point) noexcept {
    return kawin::ChildAt(parent, point, CWP_ALL);
}

HWND ChildWindowFromPointEx(HWND parent, POINT point, UINT flags) noexcept {
    return kawin::ChildAt(parent, point, flags);
}

HWND RealChildWindowFromPoint(HWND parent, POINT point) noexcept {
    return kawin::ChildAt(parent, point, CWP_SKIPTRANSPARENT | CWP_SKIPINVISIBLE);
}

BOOL AdjustWindowRect(LPRECT rect, DWORD style, BOOL menu) noexcept {
    return AdjustWindowRectEx(rect, style, menu, 0);
}

BOOL AdjustWindowRectEx(LPRECT rect, DWORD style, BOOL menu, DWORD extended_style) noexcept {
    if (rect == nullptr) {
        return kawin::Fail(ERROR_NOACCESS);
    }
    const kawin::FrameWidths frame = kawin::FrameOf(style, extended_style);

    const int bar = menu != FALSE ? GetSystemMetrics(SM_CYMENU) : 0;
    *rect = {rect->left - frame.left, rect->top - frame.top - bar, rect->right + frame.right, rect->bottom + frame.bottom};
    return TRUE;
}
