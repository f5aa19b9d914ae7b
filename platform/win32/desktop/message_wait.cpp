// Waiting for messages, alone or together with objects.

#include <algorithm>
#include <array>

#include "../base/error_map.h"
#include "../sync/waits.h"
#include "../text/no_throw.h"
#include "desktop_state.h"
#include "display.h"
#include "input_retrieval.h"
#include "timer_queue.h"
#include "update_regions.h"

namespace kawin {
namespace {

UINT KindsOf(const InputEvent& event) noexcept {
    switch (event.kind) {
        case InputEvent::Kind::Move:
            return QS_MOUSEMOVE;
        case InputEvent::Kind::Button:
        case InputEvent::Kind::Wheel:
            return QS_MOUSEBUTTON;
        default:
            return QS_KEY;
    }
}

// What is in the queue. With the lock held.
UINT Present(const ThreadQueue& queue) {
    UINT kinds = 0;
    kinds |= queue.sent.empty() ? 0 : QS_SENDMESSAGE;
    kinds |= queue.posted.empty() && !queue.quit ? 0 : QS_POSTMESSAGE | QS_ALLPOSTMESSAGE;
    for (const InputEvent& each : queue.input) {
        kinds |= KindsOf(each);
    }
    const Deadline now = TimerNow();
    const bool due = HoverDue(queue) <= now ||
                     std::any_of(queue.timers.begin(), queue.timers.end(), [&](const Timer& each) { return each.due <= now; });
    kinds |= due ? QS_TIMER : 0;
    return kinds | (queue.may_paint ? QS_PAINT : 0);
}

// A timer that has become due since the last look is something new. With the lock held.
UINT Fresh(const ThreadQueue& queue) {
    return queue.fresh | (Present(queue) & QS_TIMER);
}

bool Has(const ThreadQueue& queue, UINT kinds, bool present) {
    const DesktopLock desktop;
    return ((present ? Present(queue) | queue.fresh : Fresh(queue)) & kinds) != 0;
}

// What was new is so no more.
void Look(ThreadQueue& queue, UINT kinds) {
    const DesktopLock desktop;
    queue.fresh &= ~kinds;
}

Deadline After(DWORD milliseconds) noexcept {
    return milliseconds == INFINITE ? Deadline::max() : Deadline::clock::now() + std::chrono::milliseconds(milliseconds);
}

struct Objects {
    std::array<HANDLE, MAXIMUM_WAIT_OBJECTS> handles{};  // the queue's signal is the last
    DWORD count = 0;                                     // without it
};

// What of the objects is signalled within a time; `count` for the queue, WAIT_TIMEOUT for nothing. While the thread serves a
// display, that is looked after from time to time.
DWORD Sleep(ThreadQueue& queue, const Objects& objects, Deadline until) {
    constexpr std::chrono::milliseconds kGlance{15};
    Display* const display = TheDisplay();
    if (display == nullptr || !display->IsMine()) {
        return WaitForMultipleObjects(objects.count + 1, objects.handles.data(), FALSE, MillisecondsUntil(until));
    }
    const Deadline glance = objects.count == 0 ? until : std::min(until, Deadline::clock::now() + kGlance);
    WaitForWork(queue, glance);
    return objects.count == 0 ? objects.count : WaitForMultipleObjects(objects.count, objects.handles.data(), FALSE, 0);
}

bool AllSignalled(const Objects& objects, DWORD& result) {
    result = objects.count == 0 ? WAIT_OBJECT_0 : WaitForMultipleObjects(objects.count, objects.handles.data(), TRUE, 0);
    return result != WAIT_TIMEOUT;
}

DWORD Wait(ThreadQueue& queue, const Objects& objects, Deadline deadline, DWORD kinds, DWORD flags) {
    const bool all = (flags & MWMO_WAITALL) != 0;
    const bool present = (flags & MWMO_INPUTAVAILABLE) != 0;
    for (;;) {
        const bool past = Deadline::clock::now() >= deadline;
        DWORD result = WAIT_TIMEOUT;
        if (Has(queue, kinds, present)) {
            if (!all || AllSignalled(objects, result)) {
                Look(queue, kinds);
                return all ? result : WAIT_OBJECT_0 + objects.count;
            }
        }
        const Deadline until = past ? Deadline::min() : std::min(deadline, NextTimer(queue));
        result = Sleep(queue, objects, until);
        if (result == WAIT_FAILED || (!all && result != WAIT_TIMEOUT && result != WAIT_OBJECT_0 + objects.count)) {
            return result;
        }
        if (past && !Has(queue, kinds, present)) {
            return WAIT_TIMEOUT;
        }
    }
}

}  // namespace
}  // namespace kawin

DWORD MsgWaitForMultipleObjectsEx(DWORD count, const HANDLE* objects, DWORD milliseconds, DWORD kinds, DWORD flags) noexcept {
    if (count >= MAXIMUM_WAIT_OBJECTS || (count != 0 && objects == nullptr)) {
        kawin::Fail(ERROR_INVALID_PARAMETER);
        return WAIT_FAILED;
    }
    DWORD result = WAIT_FAILED;
    kawin::NoThrow([&] {
        kawin::ThreadQueue& queue = *kawin::ThisQueue();
        kawin::Objects list;
        std::copy_n(objects, count, list.handles.begin());
        list.handles[count] = queue.signal;
        list.count = count;
        result = kawin::Wait(queue, list, kawin::After(milliseconds), kinds, flags);
        return 0;
    });
    return result;
}

DWORD MsgWaitForMultipleObjects(DWORD count, const HANDLE* objects, BOOL all, DWORD milliseconds, DWORD kinds) noexcept {
    return MsgWaitForMultipleObjectsEx(count, objects, milliseconds, kinds, all != FALSE ? MWMO_WAITALL : 0);
}

BOOL WaitMessage() noexcept {
    return MsgWaitForMultipleObjectsEx(0, nullptr, INFINITE, QS_ALLINPUT, 0) != WAIT_FAILED;
}

DWORD GetQueueStatus(UINT kinds) noexcept {
    return kawin::NoThrow([&]() -> DWORD {
        kawin::ThreadQueue& queue = *kawin::ThisQueue();
        const kawin::DesktopLock desktop;
        const UINT fresh = kawin::Fresh(queue) & kinds;
        queue.fresh &= ~kinds;
        return static_cast<DWORD>(MAKELONG(fresh, kawin::Present(queue) & kinds));
    });
}
