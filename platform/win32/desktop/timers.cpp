#include "timers.h"

#include <algorithm>

#include "../base/error_map.h"
#include "../text/no_throw.h"
#include "../time/times.h"
#include "input_retrieval.h"
#include "timer_queue.h"

namespace kawin {
namespace {

auto FindTimer(ThreadQueue& queue, HWND window, UINT_PTR id) noexcept {
    return std::find_if(queue.timers.begin(), queue.timers.end(),
                        [&](const Timer& each) { return each.window == window && each.id == id; });
}

// The window must be of the calling thread. With the lock held.
bool MayHaveTimer(const DesktopLock& desktop, HWND window) noexcept {
    const Window* const found = desktop.Find(window);
    if (found == nullptr) {
        return false;
    }
    return found->thread == CurrentThreadId() || Fail(ERROR_ACCESS_DENIED);
}

UINT_PTR NewTimerId(ThreadQueue& queue) noexcept {
    do {
        queue.last_timer = queue.last_timer % 0x7FFF + 1;
    } while (FindTimer(queue, nullptr, queue.last_timer) != queue.timers.end());
    return queue.last_timer;
}

void ForgetTimerMessages(ThreadQueue& queue, HWND window, UINT_PTR id) noexcept {
    std::erase_if(queue.posted,
                  [&](const MSG& each) { return each.message == WM_TIMER && each.hwnd == window && each.wParam == id; });
}

UINT_PTR Set(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC procedure) {
    ThreadQueue& queue = *ThisQueue();
    const DesktopLock desktop;
    if (window != nullptr && !MayHaveTimer(desktop, window)) {
        return 0;
    }
    auto found = FindTimer(queue, window, id);
    if (found == queue.timers.end()) {
        id = window == nullptr ? NewTimerId(queue) : id;
        found = queue.timers.insert(queue.timers.end(), Timer{});
    }
    const std::chrono::milliseconds period(std::clamp(milliseconds, USER_TIMER_MINIMUM, USER_TIMER_MAXIMUM));
    *found = {window, id, period, TimerNow() + period, procedure};
    return id != 0 ? id : 1;
}

BOOL Kill(HWND window, UINT_PTR id) {
    ThreadQueue* const queue = ThisQueueIfAny();
    const DesktopLock desktop;
    if (window != nullptr && !MayHaveTimer(desktop, window)) {
        return FALSE;
    }
    const auto found = queue != nullptr ? FindTimer(*queue, window, id) : std::vector<Timer>::iterator{};
    if (queue == nullptr || found == queue->timers.end()) {
        return Fail(ERROR_INVALID_PARAMETER);
    }
    queue->timers.erase(found);
    ForgetTimerMessages(*queue, window, id);
    return TRUE;
}

}  // namespace

bool TakeTimer(ThreadQueue& queue, const MessageFilter& filter, bool remove, MSG& message) {
    const DesktopLock desktop;
    queue.fresh &= ~QS_TIMER;
    const Deadline now = TimerNow();
    Timer* found = nullptr;
    for (Timer& each : queue.timers) {
        const bool due = each.due <= now && filter.Takes(desktop, each.window, WM_TIMER);
        if (due && (found == nullptr || each.due < found->due)) {
            found = &each;
        }
    }
    if (found == nullptr) {
        return false;
    }
    message = {found->window, WM_TIMER, found->id, reinterpret_cast<LPARAM>(found->procedure), GetTickCount(), desktop->pointer};
    if (remove) {
        found->due = now + found->period;
    }
    return true;
}

Deadline NextTimer(ThreadQueue& queue) {
    const DesktopLock desktop;
    Deadline next = HoverDue(queue);
    for (const Timer& each : queue.timers) {
        next = std::min(next, each.due);
    }
    // Timers may run ahead of the clock that waits go by.
    return next == Deadline::max() ? next : next - (TimerNow() - Deadline::clock::now());
}

bool DispatchTimer(const MSG& message, LRESULT& result) {
    const auto procedure = reinterpret_cast<TIMERPROC>(message.lParam);
    if (message.message != WM_TIMER || procedure == nullptr) {
        return false;
    }
    {
        // A number that somebody posted is not called.
        const DesktopLock desktop;
        const ThreadQueue* const queue = ThisQueueIfAny();
        const bool known = queue != nullptr && std::any_of(queue->timers.begin(), queue->timers.end(),
                                                           [&](const Timer& each) { return each.procedure == procedure; });
        if (!known) {
            result = 0;
            return true;
        }
    }
    procedure(message.hwnd, WM_TIMER, message.wParam, GetTickCount());
    result = 0;
    return true;
}

void ForgetTimers(ThreadQueue& queue, HWND window) noexcept {
    std::erase_if(queue.timers, [&](const Timer& each) { return each.window == window; });
}

}  // namespace kawin

UINT_PTR SetTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC procedure) noexcept {
    return kawin::NoThrow([&] { return kawin::Set(window, id, milliseconds, procedure); });
}

BOOL KillTimer(HWND window, UINT_PTR id) noexcept {
    return kawin::NoThrow([&] { return kawin::Kill(window, id); });
}
