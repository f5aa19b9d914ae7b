// Posting, and the numbers of registered messages.

#include "../base/error_map.h"
#include "../base/text_length.h"
#include "../text/no_throw.h"
#include "../time/times.h"
#include "desktop_state.h"

namespace kawin {
namespace {

constexpr std::size_t kMostPosted = 10000;
constexpr std::size_t kLongestName = 255;

// With the lock held.
BOOL PostTo(const DesktopLock& desktop, ThreadQueue& queue, HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (queue.posted.size() >= kMostPosted) {
        return Fail(ERROR_NOT_ENOUGH_QUOTA);
    }
    queue.posted.push_back({window, message, wparam, lparam, GetTickCount(), desktop->pointer});
    Signal(queue, QS_POSTMESSAGE | QS_ALLPOSTMESSAGE);
    return TRUE;
}

BOOL PostToThread(DWORD thread, UINT message, WPARAM wparam, LPARAM lparam) {
    const DesktopLock desktop;
    const auto found = desktop->queues.find(thread);
    return found != desktop->queues.end() ? PostTo(desktop, *found->second, nullptr, message, wparam, lparam)
                                          : Fail(ERROR_INVALID_THREAD_ID);
}

BOOL PostToAll(UINT message, WPARAM wparam, LPARAM lparam) {
    const DesktopLock desktop;
    for (const Window* const each : desktop->root->children) {
        PostTo(desktop, *each->queue, each->handle, message, wparam, lparam);
    }
    return TRUE;
}

BOOL PostToWindow(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    const DesktopLock desktop;
    const Window* const found = desktop.FindOwn(window);
    return found != nullptr && PostTo(desktop, *found->queue, window, message, wparam, lparam);
}

}  // namespace
}  // namespace kawin

BOOL PostMessageW(HWND window, UINT message, WPARAM wparam, LPARAM lparam) noexcept {
    return kawin::NoThrow([&] {
        if (window == nullptr) {
            return kawin::PostToThread(kawin::ThisQueue()->thread, message, wparam, lparam);
        }
        return window == HWND_BROADCAST ? kawin::PostToAll(message, wparam, lparam)
                                        : kawin::PostToWindow(window, message, wparam, lparam);
    });
}

BOOL PostThreadMessageW(DWORD thread, UINT message, WPARAM wparam, LPARAM lparam) noexcept {
    return kawin::NoThrow([&] {
        if (thread == kawin::CurrentThreadId()) {
            kawin::ThisQueue();
        }
        return kawin::PostToThread(thread, message, wparam, lparam);
    });
}

void PostQuitMessage(int exit_code) noexcept {
    kawin::NoThrow([&] {
        kawin::ThreadQueue& queue = *kawin::ThisQueue();
        const kawin::DesktopLock desktop;
        queue.quit = true;
        queue.exit_code = exit_code;
        kawin::Signal(queue, QS_POSTMESSAGE | QS_ALLPOSTMESSAGE);
        return 0;
    });
}

UINT RegisterWindowMessageW(LPCWSTR name) noexcept {
    const std::size_t length = name != nullptr && !IS_INTRESOURCE(name) ? kawin::TextLength(name) : 0;
    if (length == 0 || length > kawin::kLongestName) {
        return static_cast<UINT>(kawin::Fail(ERROR_INVALID_PARAMETER));
    }
    return kawin::NoThrow([&]() -> UINT {
        const ATOM atom = kawin::AtomOf({name, length});
        return atom != 0 ? atom : static_cast<UINT>(kawin::Fail(ERROR_NOT_ENOUGH_MEMORY));
    });
}
