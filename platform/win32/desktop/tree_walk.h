#pragma once

// Ways through the tree of windows. All with the lock held.

#include "desktop_state.h"

namespace kawin {

// Whether `window` lies somewhere below `ancestor`, not being it.
inline bool IsBelow(const Window& window, const Window& ancestor) noexcept {
    for (const Window* at = window.parent; at != nullptr; at = at->parent) {
        if (at == &ancestor) {
            return true;
        }
    }
    return false;
}

// The window's top-level window; itself for a root.
inline Window& TopLevelOf(Window& window) noexcept {
    Window* at = &window;
    while (at->parent != nullptr && at->parent->parent != nullptr) {
        at = at->parent;
    }
    return *at;
}

// Whether it and all its parents have WS_VISIBLE.
inline bool IsShown(const Window& window) noexcept {
    for (const Window* at = &window; at != nullptr; at = at->parent) {
        if (!at->IsVisible()) {
            return false;
        }
    }
    return true;
}

// Calls `each(Window&)` for everything below `root` that is visible, parents first, from top to bottom; until it returns false.
template <class Each>
bool WalkVisible(Window& root, Each&& each) {
    for (Window* const child : root.children) {
        if (child->IsVisible() && (!each(*child) || !WalkVisible(*child, each))) {
            return false;
        }
    }
    return true;
}

// The same for all, and down to every depth.
template <class Each>
bool WalkAll(Window& root, Each&& each) {
    for (Window* const child : root.children) {
        if (!each(*child) || !WalkAll(*child, each)) {
            return false;
        }
    }
    return true;
}

// Where the corner of the window's client area (of the whole window) lies on the screen.
inline POINT ClientOrigin(const Window& window) noexcept {
    POINT origin = {};
    for (const Window* at = &window; at != nullptr; at = at->parent) {
        origin.x += at->client.left;
        origin.y += at->client.top;
    }
    return origin;
}
inline POINT WindowOrigin(const Window& window) noexcept {
    const POINT parent = window.parent != nullptr ? ClientOrigin(*window.parent) : POINT{};
    return {parent.x + window.rect.left, parent.y + window.rect.top};
}

}  // namespace kawin
