// Activation and focus.

#include "activation.h"

#include "../base/error_map.h"
#include "../text/no_throw.h"
#include "hooks.h"
#include "input.h"
#include "tree_walk.h"
#include "z_order.h"

namespace kawin {
namespace {

// Whether `handle` is `tree` or in it. With the lock held.
bool IsIn(const DesktopLock& desktop, HWND handle, HWND tree) noexcept {
    const Window* const window = desktop.Look(handle);
    const Window* const root = desktop.Look(tree);
    return window != nullptr && root != nullptr && (window == root || IsBelow(*window, *root));
}

bool Exists(HWND window) {
    const DesktopLock desktop;
    return desktop.Look(window) != nullptr;
}

std::vector<HWND> TopLevelsOf(DWORD thread) {
    const DesktopLock desktop;
    std::vector<HWND> list;
    for (const Window* const each : desktop->root->children) {
        if (each->thread == thread) {
            list.push_back(each->handle);
        }
    }
    return list;
}

void TellApplication(bool active, DWORD other_thread) {
    for (const HWND each : TopLevelsOf(CurrentThreadId())) {
        SendMessageW(each, WM_ACTIVATEAPP, active, static_cast<LPARAM>(other_thread));
    }
}

WPARAM ActivateParameter(HWND window, WORD how) noexcept {
    return MAKEWPARAM(how, static_cast<WORD>(IsIconic(window) != FALSE));
}

// Without a window of this thread being active, the others may have one: it is told first.
std::shared_ptr<ThreadQueue> TakeForeground(const std::shared_ptr<ThreadQueue>& queue) {
    const DesktopLock desktop;
    return std::exchange(desktop->foreground, queue);
}

struct Active {
    HWND before = nullptr;
    bool known = false;
    bool is_same = false;
};

Active LookAt(ThreadQueue& queue, HWND window) {
    const DesktopLock desktop;
    const Window* const found = desktop.Look(window);
    return {queue.active, found != nullptr && found->parent == desktop->root,
            queue.active == window && desktop->foreground.get() == &queue};
}

void RememberPopup(HWND handle) {
    const DesktopLock desktop;
    for (Window* at = desktop.Look(handle); at != nullptr && at->owner != nullptr;) {
        Window* const owner = desktop.Look(at->owner);
        if (owner == nullptr || owner->last_popup == handle) {
            return;
        }
        owner->last_popup = handle;
        at = owner;
    }
}

// The previous window loses it; what it does may make the next one go.
void TellLoss(HWND before, HWND next) {
    SendMessageW(before, WM_NCACTIVATE, FALSE, reinterpret_cast<LPARAM>(next));
    SendMessageW(before, WM_ACTIVATE, ActivateParameter(before, WA_INACTIVE), reinterpret_cast<LPARAM>(next));
}

bool IsActive(const ThreadQueue& queue, HWND window) {
    const DesktopLock desktop;
    return queue.active == window;
}

bool HasFocusIn(const ThreadQueue& queue, HWND window) {
    const DesktopLock desktop;
    return IsIn(desktop, queue.focus, window);
}

}  // namespace

HWND MoveFocus(HWND window) {
    ThreadQueue& queue = *ThisQueue();
    HWND before = nullptr;
    {
        const DesktopLock desktop;
        before = queue.focus;
        if (before == window) {
            return before;
        }
        queue.focus = window;
    }
    if (before != nullptr) {
        SendMessageW(before, WM_KILLFOCUS, reinterpret_cast<WPARAM>(window), 0);
    }
    bool still = false;
    {
        const DesktopLock desktop;
        still = window != nullptr && queue.focus == window;
    }
    if (still) {
        SendMessageW(window, WM_SETFOCUS, reinterpret_cast<WPARAM>(before), 0);
    }
    return before;
}

bool ActivateWindow(HWND window, WORD how) {
    const std::shared_ptr<ThreadQueue> queue = ThisQueue();
    const Active active = LookAt(*queue, window);
    if (!active.known || active.is_same) {
        return active.known;
    }
    if (CallHooks(WH_CBT, HCBT_ACTIVATE, reinterpret_cast<WPARAM>(window), 0) != 0) {
        return false;
    }
    const std::shared_ptr<ThreadQueue> previous = TakeForeground(queue);
    if (previous != nullptr && previous != queue && previous->active != nullptr) {
        SendMessageTimeoutW(previous->active, WM_NCACTIVATE, FALSE, 0, SMTO_NORMAL, 1000, nullptr);
    }
    if (active.before != nullptr && active.before != window) {
        TellLoss(active.before, window);
    }
    {
        const DesktopLock desktop;
        queue->active = window;
    }
    RememberPopup(window);
    SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    if (previous != queue) {
        TellApplication(true, previous != nullptr ? previous->thread : 0);
    }
    if (!IsActive(*queue, window)) {
        return Exists(window);
    }
    SendMessageW(window, WM_NCACTIVATE, TRUE, reinterpret_cast<LPARAM>(active.before));
    SendMessageW(window, WM_ACTIVATE, ActivateParameter(window, how), reinterpret_cast<LPARAM>(active.before));
    if (IsActive(*queue, window) && !HasFocusIn(*queue, window) && IsIconic(window) == FALSE) {
        MoveFocus(window);
    }
    return Exists(window);
}

void Deactivate(HWND window, HWND next) {
    ThreadQueue& queue = *ThisQueue();
    if (next != nullptr && ActivateWindow(next, WA_ACTIVE)) {
        return;
    }
    TellLoss(window, nullptr);
    {
        const DesktopLock desktop;
        if (queue.active == window) {
            queue.active = nullptr;
        }
        if (desktop->foreground.get() == &queue) {
            desktop->foreground = nullptr;
        }
    }
    TellApplication(false, 0);
    MoveFocus(nullptr);
}

void LeaveHidden(HWND handle) {
    bool captured = false;
    bool active = false;
    HWND parent = nullptr;
    HWND next = nullptr;
    ThreadQueue* const queue = ThisQueueIfAny();
    if (queue == nullptr) {
        return;
    }
    {
        const DesktopLock desktop;
        const Window* const window = desktop.Look(handle);
        if (window == nullptr) {
            return;
        }
        captured = IsIn(desktop, queue->capture, handle);
        active = queue->active == handle;
        next = active ? SuccessorOf(desktop, *window) : nullptr;
        const bool inner = window->parent != nullptr && window->parent->parent != nullptr;
        parent = inner && IsIn(desktop, queue->focus, handle) ? window->parent->handle : nullptr;
    }
    if (captured) {
        ReleaseCapture();
    }
    if (active) {
        Deactivate(handle, next);
    } else if (parent != nullptr) {
        MoveFocus(parent);
    }
}

namespace {

// Whether a window can have the focus: it and its parents are enabled, its top-level window is not minimised.
bool MayHaveFocus(const Window& window) noexcept {
    for (const Window* at = &window; at->parent != nullptr; at = at->parent) {
        if ((at->style & (WS_DISABLED | WS_MINIMIZE)) != 0) {
            return false;
        }
    }
    return true;
}

HWND Focus(HWND handle) {
    if (handle == nullptr) {
        return MoveFocus(nullptr);
    }
    HWND top = nullptr;
    bool on_desktop = false;
    {
        const DesktopLock desktop;
        Window* const window = desktop.FindOwn(handle);
        if (window == nullptr) {
            return nullptr;
        }
        if (window->thread != CurrentThreadId()) {
            Fail(ERROR_ACCESS_DENIED);
            return nullptr;
        }
        if (!MayHaveFocus(*window)) {
            Fail(ERROR_INVALID_PARAMETER);
            return nullptr;
        }
        top = TopLevelOf(*window).handle;
        on_desktop = IsBelow(*window, *desktop->root);
    }
    const HWND before = GetFocus();
    if (before == handle) {
        return before;
    }
    if (on_desktop && GetActiveWindow() != top && !ActivateWindow(top, WA_ACTIVE)) {
        return nullptr;
    }
    MoveFocus(handle);
    return before;
}

template <class Read>
HWND OfThisThread(Read read) noexcept {
    const ThreadQueue* const queue = ThisQueueIfAny();
    const DesktopLock desktop;
    return queue != nullptr ? read(*queue) : nullptr;
}

}  // namespace
}  // namespace kawin

HWND SetFocus(HWND window) noexcept {
    return kawin::NoThrow([&] { return kawin::Focus(window); });
}

HWND GetFocus() noexcept {
    return kawin::OfThisThread([](const kawin::ThreadQueue& queue) { return queue.focus; });
}

HWND GetActiveWindow() noexcept {
    return kawin::OfThisThread([](const kawin::ThreadQueue& queue) { return queue.active; });
}

HWND SetActiveWindow(HWND window) noexcept {
    return kawin::NoThrow([&]() -> HWND {
        {
            const kawin::DesktopLock desktop;
            const kawin::Window* const found = desktop.FindOwn(window);
            if (found == nullptr || found->thread != kawin::CurrentThreadId()) {
                return nullptr;
            }
            if (found->IsChild() || (found->style & WS_DISABLED) != 0) {
                return kawin::ThisQueue()->active;
            }
        }
        const HWND before = GetActiveWindow();
        return kawin::ActivateWindow(window, WA_ACTIVE) ? before : nullptr;
    });
}

HWND GetForegroundWindow() noexcept {
    const kawin::DesktopLock desktop;
    return desktop->foreground != nullptr ? desktop->foreground->active : nullptr;
}

BOOL SetForegroundWindow(HWND window) noexcept {
    return kawin::NoThrow([&]() -> BOOL {
        bool mine = false;
        {
            const kawin::DesktopLock desktop;
            const kawin::Window* const found = desktop.FindOwn(window);
            if (found == nullptr) {
                return FALSE;
            }
            mine = found->thread == kawin::CurrentThreadId();
        }
        if (!mine) {
            kawin::Activated(window);
            return TRUE;
        }
        return kawin::ActivateWindow(GetAncestor(window, GA_ROOT), WA_ACTIVE);
    });
}
