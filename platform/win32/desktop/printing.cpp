// A window's picture: PrintWindow, WM_PRINT.

#include "../base/error_map.h"
#include "../gdi/contexts.h"
#include "../gdi/copies.h"
#include "../text/no_throw.h"
#include "default_steps.h"
#include "frame_paint.h"
#include "painting.h"
#include "tree_walk.h"
#include "window_tree.h"

namespace kawin {
namespace {

struct Child {
    HWND window;
    POINT place;  // in the parent's client area
};

// From the lowest to the topmost, so that the upper ones are drawn over the lower.
std::vector<Child> VisibleChildren(HWND handle) {
    const DesktopLock desktop;
    std::vector<Child> list;
    if (const Window* const window = desktop.Look(handle)) {
        for (auto each = window->children.rbegin(); each != window->children.rend(); ++each) {
            if ((*each)->IsVisible()) {
                list.push_back({(*each)->handle, {(*each)->rect.left, (*each)->rect.top}});
            }
        }
    }
    return list;
}

// Where the client area lies in the window.
POINT ClientPlace(HWND handle) {
    const DesktopLock desktop;
    const Window* const window = desktop.Look(handle);
    return window != nullptr ? POINT{window->client.left - window->rect.left, window->client.top - window->rect.top} : POINT{};
}

// Moves everything that is drawn while it lives.
class Shifted {
public:
    Shifted(HDC context, POINT way) noexcept : context_(context), depth_(SaveDC(context)) {
        OffsetViewportOrgEx(context, way.x, way.y, nullptr);
    }
    Shifted(const Shifted&) = delete;
    Shifted& operator=(const Shifted&) = delete;
    ~Shifted() { RestoreDC(context_, depth_); }

private:
    HDC context_;
    int depth_;
};

// A shown window's pixels are all there once it has painted what was due.
BOOL CopyShown(HWND window, HDC target, bool client_only) {
    RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    RECT rect = {};
    client_only ? GetClientRect(window, &rect) : GetWindowRect(window, &rect);
    const HDC source = GetDCEx(window, nullptr, DCX_CACHE | DCX_CLIPSIBLINGS | (client_only ? 0 : DCX_WINDOW));
    const BOOL copied = BitBlt(target, 0, 0, rect.right - rect.left, rect.bottom - rect.top, source, 0, 0, SRCCOPY);
    ReleaseDC(window, source);
    return copied;
}

BOOL Print(HWND window, HDC target, bool client_only) {
    if (IsWindow(window) == FALSE) {
        return Fail(ERROR_INVALID_WINDOW_HANDLE);
    }
    if (IsWindowVisible(window) != FALSE && IsIconic(window) == FALSE) {
        return CopyShown(window, target, client_only);
    }
    const LPARAM parts = PRF_CLIENT | PRF_ERASEBKGND | PRF_CHILDREN | (client_only ? 0 : PRF_NONCLIENT);
    SendMessageW(window, WM_PRINT, reinterpret_cast<WPARAM>(target), parts);
    return TRUE;
}

}  // namespace

void PrintTree(HWND window, HDC context, LPARAM parts) {
    if ((parts & PRF_CHECKVISIBLE) != 0 && IsWindowVisible(window) == FALSE) {
        return;
    }
    if ((parts & PRF_NONCLIENT) != 0) {
        PaintFrame(window, context);
    }
    const Shifted shifted(context, (parts & PRF_NONCLIENT) != 0 ? ClientPlace(window) : POINT{});
    if ((parts & PRF_ERASEBKGND) != 0) {
        SendMessageW(window, WM_ERASEBKGND, reinterpret_cast<WPARAM>(context), 0);
    }
    if ((parts & PRF_CLIENT) != 0) {
        SendMessageW(window, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(context), parts);
    }
    if ((parts & PRF_CHILDREN) != 0) {
        for (const Child& child : VisibleChildren(window)) {
            const Shifted at_child(context, child.place);
            SendMessageW(child.window, WM_PRINT, reinterpret_cast<WPARAM>(context), parts | PRF_NONCLIENT);
        }
    }
}

}  // namespace kawin

BOOL PrintWindow(HWND window, HDC context, UINT flags) noexcept {
    return kawin::NoThrow([&] { return kawin::Print(window, context, (flags & PW_CLIENTONLY) != 0); });
}
