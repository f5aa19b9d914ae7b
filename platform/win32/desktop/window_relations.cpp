// Parents, owners, children, neighbours.

#include <algorithm>

#include "../base/error_map.h"
#include "../process/process.h"
#include "../text/no_throw.h"
#include "painting.h"
#include "tree_walk.h"
#include "update_regions.h"
#include "window_tree.h"
#include "z_order.h"

namespace kawin {
namespace {

HWND HandleOf(const Window* window) noexcept {
    return window != nullptr ? window->handle : nullptr;
}

// A popup's owner, a child's parent.
HWND ParentOrOwner(const DesktopLock& desktop, const Window& window) noexcept {
    if (window.IsChild()) {
        return HandleOf(window.parent);
    }
    const bool popup = (window.style & WS_POPUP) != 0;
    return popup && desktop.Look(window.owner) != nullptr ? window.owner : nullptr;
}

HWND Ancestor(const DesktopLock& desktop, Window& window, UINT which) noexcept {
    if (window.parent == nullptr) {
        return nullptr;
    }
    switch (which) {
        case GA_PARENT:
            return HandleOf(window.parent);
        case GA_ROOT:
            return TopLevelOf(window).handle;
        case GA_ROOTOWNER: {
            HWND at = window.handle;
            while (const Window* const found = desktop.Look(at)) {
                const HWND next = ParentOrOwner(desktop, *found);
                if (next == nullptr || next == desktop->root->handle) {
                    break;
                }
                at = next;
            }
            return at;
        }
        default:
            return nullptr;
    }
}

HWND Neighbour(const Window& window, std::ptrdiff_t way) noexcept {
    if (window.parent == nullptr) {
        return nullptr;
    }
    const std::vector<Window*>& all = window.parent->children;
    const std::ptrdiff_t place = std::find(all.begin(), all.end(), &window) - all.begin() + way;
    return place >= 0 && place < std::ssize(all) ? all[static_cast<std::size_t>(place)]->handle : nullptr;
}

HWND PopupOf(const DesktopLock& desktop, const Window& owner) noexcept {
    for (const Window* const each : desktop->root->children) {
        if (each->owner == owner.handle && each->IsVisible() && (each->style & WS_DISABLED) == 0) {
            return each->handle;
        }
    }
    return nullptr;
}

HWND Related(const DesktopLock& desktop, const Window& window, UINT which) noexcept {
    switch (which) {
        case GW_HWNDFIRST:
            return window.parent != nullptr ? window.parent->children.front()->handle : nullptr;
        case GW_HWNDLAST:
            return window.parent != nullptr ? window.parent->children.back()->handle : nullptr;
        case GW_HWNDNEXT:
            return Neighbour(window, 1);
        case GW_HWNDPREV:
            return Neighbour(window, -1);
        case GW_OWNER:
            return desktop.Look(window.owner) != nullptr ? window.owner : nullptr;
        case GW_CHILD:
            return window.children.empty() ? nullptr : window.children.front()->handle;
        case GW_ENABLEDPOPUP:
            return PopupOf(desktop, window);
        default:
            SetLastError(ERROR_INVALID_PARAMETER);
            return nullptr;
    }
}

// The new parent; null with the last error. With the lock held.
Window* NewParent(const DesktopLock& desktop, const Window& window, HWND wanted) noexcept {
    Window* const parent = wanted == HWND_MESSAGE ? desktop->message_root
                           : wanted == nullptr    ? desktop->root
                                                  : desktop.Find(wanted);
    if (parent == &window || (parent != nullptr && IsBelow(*parent, window))) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    return parent;
}

struct Adoption {
    HWND before = nullptr;
    bool visible = false;
    POINT place = {};
    bool good = false;
};

Adoption Look(HWND handle, HWND wanted) {
    const DesktopLock desktop;
    Window* const window = desktop.FindOwn(handle);
    if (window == nullptr || NewParent(desktop, *window, wanted) == nullptr) {
        return {};
    }
    // A position on the screen stays what it is in numbers.
    return {window->parent->handle, window->IsVisible(), {window->rect.left, window->rect.top}, true};
}

bool Adopt(HWND handle, HWND wanted) {
    std::shared_ptr<Surface> unused;  // ends without the lock
    const DesktopLock desktop;
    Window* const window = desktop.Look(handle);
    Window* const parent = window != nullptr ? NewParent(desktop, *window, wanted) : nullptr;
    if (parent == nullptr) {
        return false;
    }
    UnlinkWindow(*window);
    LinkWindow(*window, *parent, 0);
    unused = std::move(window->surface);
    window->surface = nullptr;
    if (parent->parent != nullptr) {
        window->owner = nullptr;
    }
    ForgetUpdates(*window);
    return true;
}

HWND SetParentOf(HWND window, HWND parent) {
    const Adoption adoption = Look(window, parent);
    if (!adoption.good) {
        return nullptr;
    }
    if (adoption.visible) {
        ShowWindow(window, SW_HIDE);
    }
    if (!Adopt(window, parent)) {
        return nullptr;
    }
    const UINT show = adoption.visible ? SWP_SHOWWINDOW : 0;
    SetWindowPos(window, HWND_TOP, adoption.place.x, adoption.place.y, 0, 0, SWP_NOSIZE | SWP_NOACTIVATE | show);
    return adoption.before;
}

template <class Ask>
HWND AskOf(HWND handle, Ask ask) noexcept {
    const DesktopLock desktop;
    Window* const window = desktop.Find(handle);
    return window != nullptr ? ask(desktop, *window) : nullptr;
}

}  // namespace
}  // namespace kawin

BOOL IsWindow(HWND window) noexcept {
    const kawin::DesktopLock desktop;
    return desktop.Look(window) != nullptr;
}

HWND GetDesktopWindow() noexcept {
    const kawin::DesktopLock desktop;
    return desktop->root->handle;
}

HWND GetParent(HWND window) noexcept {
    return kawin::AskOf(window, kawin::ParentOrOwner);
}

HWND SetParent(HWND window, HWND parent) noexcept {
    return kawin::NoThrow([&] { return kawin::SetParentOf(window, parent); });
}

HWND GetAncestor(HWND window, UINT which) noexcept {
    return kawin::AskOf(window,
                        [&](const auto& desktop, kawin::Window& found) { return kawin::Ancestor(desktop, found, which); });
}

HWND GetWindow(HWND window, UINT which) noexcept {
    return kawin::AskOf(window, [&](const auto& desktop, kawin::Window& found) { return kawin::Related(desktop, found, which); });
}

HWND GetTopWindow(HWND window) noexcept {
    return GetWindow(window != nullptr ? window : GetDesktopWindow(), GW_CHILD);
}

HWND GetLastActivePopup(HWND window) noexcept {
    const kawin::DesktopLock desktop;
    const kawin::Window* const found = desktop.Find(window);
    if (found == nullptr) {
        return window;
    }
    return desktop.Look(found->last_popup) != nullptr ? found->last_popup : window;
}

BOOL IsChild(HWND parent, HWND window) noexcept {
    const kawin::DesktopLock desktop;
    const kawin::Window* const above = desktop.Look(parent);
    const kawin::Window* at = desktop.Look(window);
    while (above != nullptr && at != nullptr && at->IsChild()) {
        at = at->parent;
        if (at == above) {
            return TRUE;
        }
    }
    return FALSE;
}

int GetDlgCtrlID(HWND window) noexcept {
    const kawin::DesktopLock desktop;
    const kawin::Window* const found = desktop.Find(window);
    return found != nullptr ? static_cast<int>(found->id) : 0;
}

DWORD GetWindowThreadProcessId(HWND window, LPDWORD process) noexcept {
    const kawin::DesktopLock desktop;
    const kawin::Window* const found = desktop.Find(window);
    if (found == nullptr) {
        return 0;
    }
    if (process != nullptr) {
        *process = GetCurrentProcessId();
    }
    return found->thread;
}
