#include "pointer_target.h"

#include "../text/no_throw.h"
#include "rectangles.h"
#include "tree_walk.h"
#include "window_tree.h"

namespace kawin {
namespace {

bool Contains(const Window& window, POINT in_parent) {
    if (!window.IsVisible() || PtInRect(&window.rect, in_parent) == FALSE) {
        return false;
    }
    return !window.shape || window.shape->Contains({in_parent.x - window.rect.left, in_parent.y - window.rect.top});
}

// The window and its children at the point, in the order in which they are asked.
void Candidates(const Window& window, POINT in_parent, std::vector<HWND>& list) {
    if (PtInRect(&window.client, in_parent) != FALSE) {
        const POINT inside = {in_parent.x - window.client.left, in_parent.y - window.client.top};
        for (const Window* const child : window.children) {
            if ((child->style & WS_DISABLED) == 0 && Contains(*child, inside)) {
                Candidates(*child, inside, list);
            }
        }
    }
    list.push_back(window.handle);
}

struct Found {
    std::vector<HWND> candidates;
    HWND disabled = nullptr;
};

Found Look(POINT screen) {
    const DesktopLock desktop;
    Found found;
    const DWORD thread = CurrentThreadId();
    for (const Window* const top : desktop->root->children) {
        if (!Contains(*top, screen)) {
            continue;
        }
        if ((top->style & WS_DISABLED) != 0) {
            found.disabled = top->handle;
            return found;
        }
        Candidates(*top, screen, found.candidates);
        if (top->thread != thread) {
            return found;
        }
    }
    return found;
}

// Windows of other threads are not asked, so that nobody has to wait for them.
bool IsOfOtherThread(HWND window) noexcept {
    return GetWindowThreadProcessId(window, nullptr) != CurrentThreadId();
}

}  // namespace

Window* TopLevelAt(const DesktopLock& desktop, POINT screen) {
    for (Window* const top : desktop->root->children) {
        if (Contains(*top, screen)) {
            return top;
        }
    }
    return nullptr;
}

PointerTarget TargetAt(POINT screen) {
    const Found found = Look(screen);
    const LPARAM place = MAKELPARAM(static_cast<WORD>(screen.x), static_cast<WORD>(screen.y));
    for (const HWND each : found.candidates) {
        if (IsOfOtherThread(each)) {
            return {each, HTCLIENT};
        }
        const int hit = static_cast<int>(SendMessageW(each, WM_NCHITTEST, 0, place));
        if (hit != HTTRANSPARENT) {
            return {each, hit};
        }
    }
    return {found.disabled, found.disabled != nullptr ? HTERROR : HTNOWHERE};
}

}  // namespace kawin

HWND WindowFromPoint(POINT point) noexcept {
    return kawin::NoThrow([&] { return kawin::TargetAt(point).window; });
}
