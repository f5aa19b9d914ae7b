// DestroyWindow.

#include "window_destroy.h"

#include <algorithm>

#include "../base/error_map.h"
#include "../text/no_throw.h"
#include "activation.h"
#include "display.h"
#include "hooks.h"
#include "timer_queue.h"
#include "tree_walk.h"
#include "window_position.h"

namespace kawin {
namespace {

std::vector<HWND> ChildrenOf(HWND handle) {
    const DesktopLock desktop;
    std::vector<HWND> list;
    if (const Window* const window = desktop.Look(handle)) {
        for (const Window* const child : window->children) {
            list.push_back(child->handle);
        }
    }
    return list;
}

std::vector<HWND> OwnedBy(HWND handle) {
    const DesktopLock desktop;
    std::vector<HWND> list;
    for (const Window* const each : desktop->root->children) {
        if (each->owner == handle && handle != nullptr) {
            list.push_back(each->handle);
        }
    }
    return list;
}

bool Exists(HWND window) {
    const DesktopLock desktop;
    return desktop.Look(window) != nullptr;
}

// What a thread remembers of the window. With the lock held.
void Forget(Desktop& desktop, ThreadQueue& queue, HWND window) noexcept {
    std::erase_if(queue.posted, [&](const MSG& each) { return each.hwnd == window; });
    ForgetTimers(queue, window);
    for (HWND* const held :
         {&queue.focus, &queue.active, &queue.capture, &queue.moved_over, &queue.tracking.window, &queue.click.window}) {
        *held = *held == window ? nullptr : *held;
    }
    if (desktop.foreground.get() == &queue && queue.active == nullptr) {
        desktop.foreground = nullptr;
    }
}

void TellParent(HWND handle) {
    HWND parent = nullptr;
    LONG_PTR id = 0;
    {
        const DesktopLock desktop;
        const Window* const window = desktop.Look(handle);
        if (window == nullptr || !window->IsChild() || (window->extended_style & WS_EX_NOPARENTNOTIFY) != 0) {
            return;
        }
        parent = window->parent->handle;
        id = window->id;
    }
    SendMessageW(parent, WM_PARENTNOTIFY, MAKEWPARAM(WM_DESTROY, static_cast<WORD>(id)), reinterpret_cast<LPARAM>(handle));
}

// WM_DESTROY to the window and to everything in it, from outside in.
void TellDestruction(HWND window) {
    SendMessageW(window, WM_DESTROY, 0, 0);
    for (const HWND child : ChildrenOf(window)) {
        if (Exists(child)) {
            TellDestruction(child);
        }
    }
}

bool MayDestroy(HWND handle) {
    const DesktopLock desktop;
    Window* const window = desktop.FindOwn(handle);
    if (window == nullptr) {
        return false;
    }
    if (window->thread != CurrentThreadId()) {
        return Fail(ERROR_ACCESS_DENIED);
    }
    return true;
}

// False when it is already going.
bool MarkDestroyed(HWND handle) {
    const DesktopLock desktop;
    Window* const window = desktop.Look(handle);
    return window != nullptr && !std::exchange(window->being_destroyed, true);
}

BOOL Destroy(HWND window) {
    if (!MayDestroy(window) || CallHooks(WH_CBT, HCBT_DESTROYWND, reinterpret_cast<WPARAM>(window), 0) != 0) {
        return FALSE;
    }
    if (!MarkDestroyed(window)) {
        return FALSE;
    }
    TellParent(window);
    const auto style = static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE));
    if ((style & WS_CHILD) != 0) {
        ShowWindow(window, SW_HIDE);
    } else if ((style & WS_VISIBLE) != 0) {
        SetPosition({window, nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_HIDEWINDOW});
    }
    LeaveHidden(window);
    for (const HWND owned : OwnedBy(window)) {
        if (MayDestroy(owned)) {
            DestroyWindow(owned);
        }
    }
    TellDestruction(window);
    DropWindow(window);
    return TRUE;
}

}  // namespace

void DropWindow(HWND window) {
    for (const HWND child : ChildrenOf(window)) {
        if (Exists(child)) {
            DropWindow(child);
        }
    }
    SendMessageW(window, WM_NCDESTROY, 0, 0);
    EraseWindow(window);
}

void EraseWindow(HWND handle) {
    LeaveHidden(handle);
    for (const HWND child : ChildrenOf(handle)) {
        EraseWindow(child);  // made meanwhile
    }
    std::shared_ptr<Window> removed;  // its parts end without the lock
    const DesktopLock desktop;
    Window* const window = desktop.Look(handle);
    if (window == nullptr) {
        return;
    }
    Forget(*desktop, *window->queue, handle);
    --window->window_class->windows;
    removed = RemoveWindow(*desktop, *window);
}

}  // namespace kawin

BOOL DestroyWindow(HWND window) noexcept {
    return kawin::NoThrow([&] { return kawin::Destroy(window); });
}
