// The window that has all of the pointer.

#include "../base/error_map.h"
#include "../text/no_throw.h"
#include "desktop_state.h"
#include "display.h"
#include "input.h"

namespace kawin {
namespace {

// The window before, which is told.
HWND Capture(HWND window) {
    ThreadQueue& queue = *ThisQueue();
    HWND before = nullptr;
    {
        const DesktopLock desktop;
        before = std::exchange(queue.capture, window);
    }
    if (Display* const display = TheDisplay(); display != nullptr && display->IsMine()) {
        display->Capture(window);
    }
    if (before != nullptr && before != window) {
        SendMessageW(before, WM_CAPTURECHANGED, 0, reinterpret_cast<LPARAM>(window));
    }
    return before;
}

// False with the last error set.
bool IsMine(HWND handle) {
    const DesktopLock desktop;
    const Window* const window = desktop.FindOwn(handle);
    return window != nullptr && (window->thread == CurrentThreadId() || Fail(ERROR_ACCESS_DENIED));
}

}  // namespace
}  // namespace kawin

HWND SetCapture(HWND window) noexcept {
    return kawin::NoThrow([&]() -> HWND { return kawin::IsMine(window) ? kawin::Capture(window) : nullptr; });
}

HWND GetCapture() noexcept {
    const kawin::ThreadQueue* const queue = kawin::ThisQueueIfAny();
    const kawin::DesktopLock desktop;
    return queue != nullptr ? queue->capture : nullptr;
}

BOOL ReleaseCapture() noexcept {
    return kawin::NoThrow([]() -> BOOL {
        if (GetCapture() != nullptr) {
            kawin::Capture(nullptr);
        }
        return TRUE;
    });
}
