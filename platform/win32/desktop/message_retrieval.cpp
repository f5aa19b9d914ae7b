// Retrieving: from what was sent, posted, typed and pointed at to what is to be painted and what a timer brings, in this order.

#include <algorithm>

#include "../base/error_map.h"
#include "../text/no_throw.h"
#include "../time/times.h"
#include "display.h"
#include "hooks.h"
#include "input_retrieval.h"
#include "message_filter.h"
#include "pointer_messages.h"
#include "send_message.h"
#include "timer_queue.h"
#include "tree_walk.h"

namespace kawin {

bool MessageFilter::TakesWindow(const DesktopLock& desktop, HWND of) const noexcept {
    static const HWND kThreadOnly = reinterpret_cast<HWND>(LONG_PTR{-1});
    if (window == nullptr || window == of) {
        return true;
    }
    if (window == kThreadOnly || of == nullptr) {
        return window == kThreadOnly && of == nullptr;
    }
    const Window* const ancestor = desktop.Look(window);
    const Window* const found = desktop.Look(of);
    return ancestor != nullptr && found != nullptr && IsBelow(*found, *ancestor);
}

namespace {

bool TakePosted(ThreadQueue& queue, const MessageFilter& filter, bool remove, MSG& message) {
    const DesktopLock desktop;
    queue.fresh &= ~(QS_POSTMESSAGE | QS_ALLPOSTMESSAGE);
    const auto found = std::find_if(queue.posted.begin(), queue.posted.end(),
                                    [&](const MSG& each) { return filter.Takes(desktop, each.hwnd, each.message); });
    if (found == queue.posted.end()) {
        return false;
    }
    message = *found;
    if (remove) {
        queue.posted.erase(found);
    }
    return true;
}

bool TakeQuit(ThreadQueue& queue, bool remove, MSG& message) {
    const DesktopLock desktop;
    if (!queue.quit) {
        return false;
    }
    message = {nullptr, WM_QUIT, static_cast<WPARAM>(queue.exit_code), 0, GetTickCount(), desktop->pointer};
    queue.quit = !remove;
    return true;
}

bool TakePaint(ThreadQueue& queue, const MessageFilter& filter, bool remove, MSG& message) {
    const DesktopLock desktop;
    queue.fresh &= ~QS_PAINT;
    if (!queue.may_paint || !filter.TakesNumber(WM_PAINT)) {
        return false;
    }
    bool any = false;
    Window* found = nullptr;
    WalkVisible(*desktop->root, [&](Window& each) {
        const bool due = each.queue.get() == &queue && each.NeedsPaint();
        any = any || due;
        if (due && found == nullptr && filter.TakesWindow(desktop, each.handle)) {
            found = &each;
        }
        return found == nullptr;
    });
    queue.may_paint = any;
    if (found == nullptr) {
        return false;
    }
    if (remove) {
        found->internal_paint = false;
    }
    message = {found->handle, WM_PAINT, 0, 0, GetTickCount(), desktop->pointer};
    return true;
}

// What the display has seen meanwhile.
void PollDisplay(ThreadQueue& queue) {
    if (Display* const display = TheDisplay(); display != nullptr && display->IsMine()) {
        WaitForWork(queue, Deadline::min());
    }
}

bool TakeAny(ThreadQueue& queue, const MessageFilter& filter, bool remove, MSG& message) {
    ServeSentMessages(queue);
    return TakePosted(queue, filter, remove, message) || TakeQuit(queue, remove, message) ||
           TakeInput(queue, filter, remove, message) || TakePaint(queue, filter, remove, message) ||
           TakeHover(queue, filter, remove, message) || TakeTimer(queue, filter, remove, message);
}

// Serves what comes with retrieving: the thread's idea of time and place, and the hooks.
void Note(ThreadQueue& queue, MSG& message, UINT remove) {
    {
        const DesktopLock desktop;
        queue.message_time = message.time;
        queue.message_position = message.pt;
    }
    CallHooks(WH_GETMESSAGE, HC_ACTION, remove, reinterpret_cast<LPARAM>(&message));
}

bool Peek(ThreadQueue& queue, const MessageFilter& filter, UINT remove, MSG& message) {
    const bool removes = (remove & PM_REMOVE) != 0;
    if (!TakeAny(queue, filter, removes, message)) {
        PollDisplay(queue);
        if (!TakeAny(queue, filter, removes, message)) {
            return false;
        }
    }
    Note(queue, message, remove);
    return true;
}

// False with ERROR_INVALID_WINDOW_HANDLE.
bool IsFilterGood(HWND window) {
    if (window == nullptr || window == reinterpret_cast<HWND>(LONG_PTR{-1})) {
        return true;
    }
    const DesktopLock desktop;
    return desktop.Find(window) != nullptr;
}

}  // namespace
}  // namespace kawin

BOOL GetMessageW(LPMSG message, HWND window, UINT first, UINT last) noexcept {
    if (message == nullptr) {
        kawin::Fail(ERROR_NOACCESS);
        return -1;
    }
    return kawin::NoThrow([&]() -> BOOL {
        if (!kawin::IsFilterGood(window)) {
            return -1;
        }
        const std::shared_ptr<kawin::ThreadQueue> queue = kawin::ThisQueue();
        const kawin::MessageFilter filter = {window, first, last};
        while (!kawin::Peek(*queue, filter, PM_REMOVE, *message)) {
            kawin::WaitForWork(*queue, kawin::NextTimer(*queue));
        }
        return message->message != WM_QUIT;
    });
}

BOOL PeekMessageW(LPMSG message, HWND window, UINT first, UINT last, UINT remove) noexcept {
    if (message == nullptr) {
        return kawin::Fail(ERROR_NOACCESS);
    }
    return kawin::NoThrow([&]() -> BOOL {
        return kawin::IsFilterGood(window) && kawin::Peek(*kawin::ThisQueue(), {window, first, last}, remove, *message);
    });
}

LRESULT DispatchMessageW(const MSG* message) noexcept {
    if (message == nullptr) {
        return kawin::Fail(ERROR_NOACCESS);
    }
    return kawin::NoThrow([&]() -> LRESULT {
        LRESULT result = 0;
        if (kawin::DispatchTimer(*message, result) || message->hwnd == nullptr) {
            return result;
        }
        {
            const kawin::DesktopLock desktop;
            const kawin::Window* const found = desktop.Find(message->hwnd);
            if (found == nullptr || found->thread != kawin::CurrentThreadId()) {
                return 0;
            }
        }
        return kawin::CallProcedure(message->hwnd, message->message, message->wParam, message->lParam);
    });
}

LONG GetMessageTime() noexcept {
    const kawin::ThreadQueue* const queue = kawin::ThisQueueIfAny();
    return queue != nullptr ? static_cast<LONG>(queue->message_time) : 0;
}

DWORD GetMessagePos() noexcept {
    const kawin::ThreadQueue* const queue = kawin::ThisQueueIfAny();
    if (queue == nullptr) {
        return 0;
    }
    const POINT at = queue->message_position;
    return static_cast<DWORD>(MAKELONG(static_cast<WORD>(at.x), static_cast<WORD>(at.y)));
}

LPARAM GetMessageExtraInfo() noexcept {
    return 0;
}

LRESULT CallWindowProcW(WNDPROC procedure, HWND window, UINT message, WPARAM wparam, LPARAM lparam) noexcept {
    return procedure != nullptr ? procedure(window, message, wparam, lparam) : 0;
}
