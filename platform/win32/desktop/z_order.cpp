#include "z_order.h"

#include <algorithm>

namespace kawin {
namespace {

bool IsTopmost(const Window& window) noexcept {
    return (window.extended_style & WS_EX_TOPMOST) != 0;
}

std::size_t PlaceOf(const Window& window) noexcept {
    const std::vector<Window*>& all = window.parent->children;
    return static_cast<std::size_t>(std::find(all.begin(), all.end(), &window) - all.begin());
}

// The first place of the windows that are not topmost.
std::size_t FirstOrdinary(const Window& parent) noexcept {
    const auto first =
        std::find_if_not(parent.children.begin(), parent.children.end(), [](const Window* each) { return IsTopmost(*each); });
    return static_cast<std::size_t>(first - parent.children.begin());
}

void MoveTo(Window& window, std::size_t place) {
    Window& parent = *window.parent;
    UnlinkWindow(window);
    LinkWindow(window, parent, place);
}

std::size_t TopOfKind(const Window& window, const Window& parent) noexcept {
    return window.IsChild() || IsTopmost(window) ? 0 : FirstOrdinary(parent);
}

// Where `window`, which is out of the list, goes.
std::size_t Target(const DesktopLock& desktop, const Window& window, const Window& parent, HWND after) {
    if (after == HWND_BOTTOM) {
        return parent.children.size();
    }
    const Window* const behind = desktop.Look(after);
    if (behind == nullptr || behind->parent != &parent) {
        return TopOfKind(window, parent);
    }
    const std::size_t wanted = PlaceOf(*behind) + 1;
    if (window.IsChild()) {
        return wanted;
    }
    const std::size_t border = FirstOrdinary(parent);
    return IsTopmost(window) ? std::min(wanted, border) : std::max(wanted, border);
}

void SetTopmost(Window& window, bool topmost) noexcept {
    window.extended_style = topmost ? window.extended_style | WS_EX_TOPMOST : window.extended_style & ~WS_EX_TOPMOST;
}

void RaiseOwned(const DesktopLock& desktop, Window& owner, int depth) {
    constexpr int kDeepest = 50;  // owners may form a ring through GWLP_HWNDPARENT
    if (depth > kDeepest) {
        return;
    }
    const std::vector<Window*> all = owner.parent->children;
    for (auto each = all.rbegin(); each != all.rend(); ++each) {
        Window& window = **each;
        if (window.owner != owner.handle || &window == &owner) {
            continue;
        }
        SetTopmost(window, IsTopmost(window) || IsTopmost(owner));
        if (PlaceOf(window) > PlaceOf(owner)) {
            MoveTo(window, PlaceOf(owner));
        }
        RaiseOwned(desktop, window, depth + 1);
    }
}

void RaiseOwner(const DesktopLock& desktop, const Window& window, int depth) {
    constexpr int kDeepest = 50;
    Window* const owner = desktop.Look(window.owner);
    if (owner == nullptr || owner->parent != window.parent || depth > kDeepest) {
        return;
    }
    RaiseOwner(desktop, *owner, depth + 1);
    MoveTo(*owner, TopOfKind(*owner, *owner->parent));
    RaiseOwned(desktop, *owner, 0);
}

}  // namespace

bool PlaceInOrder(const DesktopLock& desktop, Window& window, HWND after, bool owners) {
    Window& parent = *window.parent;
    const std::vector<Window*> before = parent.children;
    const bool was_topmost = IsTopmost(window);
    if (!window.IsChild()) {
        const bool off = after == HWND_NOTOPMOST || after == HWND_BOTTOM;
        SetTopmost(window, after == HWND_TOPMOST || (was_topmost && !off));
        if (after == HWND_NOTOPMOST && !was_topmost) {
            return false;
        }
        if (owners && after == HWND_TOP) {
            RaiseOwner(desktop, window, 0);
        }
    }
    UnlinkWindow(window);
    LinkWindow(window, parent, Target(desktop, window, parent, after));
    if (!window.IsChild()) {
        RaiseOwned(desktop, window, 0);
    }
    return parent.children != before || was_topmost != IsTopmost(window);
}

void LinkNew(Window& window, Window& parent) {
    LinkWindow(window, parent, window.IsChild() ? parent.children.size() : TopOfKind(window, parent));
}

HWND SuccessorOf(const DesktopLock& desktop, const Window& window) {
    const auto suits = [&](const Window& each) {
        return &each != &window && each.thread == window.thread && each.IsVisible() && !each.being_destroyed &&
               (each.style & (WS_DISABLED | WS_MINIMIZE)) == 0 && (each.extended_style & WS_EX_NOACTIVATE) == 0;
    };
    if (const Window* const owner = desktop.Look(window.owner); owner != nullptr && suits(*owner)) {
        return owner->handle;
    }
    for (const Window* const each : desktop->root->children) {
        if (suits(*each)) {
            return each->handle;
        }
    }
    return nullptr;
}

}  // namespace kawin
