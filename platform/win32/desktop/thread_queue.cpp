#include "thread_queue.h"

#include <algorithm>
#include <atomic>

#include "../sync/waits.h"
#include "desktop_state.h"
#include "display.h"
#include "send_message.h"

namespace kawin {
namespace {

std::atomic<std::chrono::milliseconds::rep> clock_shift{0};

void TakeSubtree(Desktop& desktop, Window& window, std::vector<std::shared_ptr<Window>>& taken) {
    while (!window.children.empty()) {
        TakeSubtree(desktop, *window.children.back(), taken);
    }
    --window.window_class->windows;
    taken.push_back(RemoveWindow(desktop, window));
}

// A thread that ends takes its windows along, without a message: its procedures can run no more.
void EndQueue(ThreadQueue& queue) {
    std::vector<std::shared_ptr<Window>> taken;  // destroyed without the lock
    const DesktopLock desktop;
    for (Desktop::Slot& slot : desktop->slots) {
        if (slot.window != nullptr && slot.window->queue.get() == &queue) {
            TakeSubtree(*desktop, *slot.window, taken);
        }
    }
    queue.ended = true;
    for (const auto& list : {queue.running, std::vector(queue.sent.begin(), queue.sent.end())}) {
        for (const std::shared_ptr<SentMessage>& message : list) {
            FinishSent(*message, SentMessage::State::Lost, 0);
        }
    }
    queue.sent.clear();
    if (desktop->foreground.get() == &queue) {
        desktop->foreground = nullptr;
    }
    if (desktop->pressed_in.get() == &queue) {
        desktop->pressed_in = nullptr;
    }
    desktop->queues.erase(queue.thread);
}

struct OwnQueue {
    std::shared_ptr<ThreadQueue> queue;
    ~OwnQueue() {
        if (queue != nullptr) {
            EndQueue(*queue);
        }
    }
};

OwnQueue& Own() noexcept {
    static thread_local OwnQueue own;
    return own;
}

}  // namespace

ThreadQueue::ThreadQueue(DWORD id) : thread(id), signal(CreateEventW(nullptr, FALSE, FALSE, nullptr)) {
    if (signal == nullptr) {
        throw std::bad_alloc();
    }
}

ThreadQueue::~ThreadQueue() {
    CloseHandle(signal);
}

const std::shared_ptr<ThreadQueue>& ThisQueue() {
    OwnQueue& own = Own();
    if (own.queue == nullptr) {
        auto made = std::make_shared<ThreadQueue>(CurrentThreadId());
        const DesktopLock desktop;
        desktop->queues[made->thread] = made;
        own.queue = std::move(made);
    }
    return own.queue;
}

ThreadQueue* ThisQueueIfAny() noexcept {
    return Own().queue.get();
}

void Signal(ThreadQueue& queue, UINT kinds) noexcept {
    queue.fresh |= kinds;
    if ((kinds & QS_PAINT) != 0) {
        queue.may_paint = true;
    }
    SetEvent(queue.signal);
    if (Display* const display = TheDisplay(); display != nullptr && queue.thread != CurrentThreadId()) {
        display->Wake();
    }
}

void WaitForWork(ThreadQueue& queue, Deadline deadline) {
    Display* const display = ServedDisplay();
    if (display != nullptr && display->IsMine()) {
        display->Synchronise();
        display->Wait(deadline);
    } else {
        if (display != nullptr) {
            display->HandOver();
        }
        WaitForSingleObject(queue.signal, MillisecondsUntil(deadline));
    }
}

DWORD MillisecondsUntil(Deadline deadline) noexcept {
    const Deadline now = Deadline::clock::now();
    if (deadline == Deadline::max() || deadline <= now) {
        return deadline <= now ? 0 : INFINITE;
    }
    constexpr std::chrono::milliseconds::rep kLongest = 0x7FFFFFFF;
    return static_cast<DWORD>(std::min(std::chrono::ceil<std::chrono::milliseconds>(deadline - now).count(), kLongest));
}

Deadline TimerNow() noexcept {
    return Deadline::clock::now() + std::chrono::milliseconds(clock_shift.load());
}

void AdvanceTimerClock(std::chrono::milliseconds way) noexcept {
    clock_shift += way.count();
}

}  // namespace kawin
