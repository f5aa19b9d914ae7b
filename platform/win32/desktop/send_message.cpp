// Sending: to a procedure of this thread at once, to another thread's by way of its queue.

#include "send_message.h"

#include <algorithm>

#include "../base/error_map.h"
#include "../text/no_throw.h"
#include "desktop_state.h"

namespace kawin {
namespace {

struct Sending {
    HWND window;
    UINT message;
    WPARAM wparam;
    LPARAM lparam;
};

enum class Target { None, Here, Elsewhere };

Target TargetOf(HWND window) {
    const DesktopLock desktop;
    const Window* const found = desktop.Find(window);
    if (found == nullptr) {
        return Target::None;
    }
    return found->thread == CurrentThreadId() || found->queue == nullptr ? Target::Here : Target::Elsewhere;
}

// Puts it into the queue of the window's thread; null with the last error when there is none.
std::shared_ptr<SentMessage> Enqueue(const Sending& sending, std::shared_ptr<ThreadQueue> sender) {
    auto message = std::make_shared<SentMessage>();
    message->window = sending.window;
    message->message = sending.message;
    message->wparam = sending.wparam;
    message->lparam = sending.lparam;
    message->sender = std::move(sender);
    const DesktopLock desktop;
    const Window* const found = desktop.Find(sending.window);
    if (found == nullptr || found->queue == nullptr || found->queue->ended) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return nullptr;
    }
    found->queue->sent.push_back(message);
    Signal(*found->queue, QS_SENDMESSAGE);
    return message;
}

// Whether the answer is there.
bool IsFinished(const SentMessage& message) {
    const DesktopLock desktop;
    return message.state == SentMessage::State::Done || message.state == SentMessage::State::Lost;
}

// The sender waits no more: what has not begun is never done.
void Abandon(const std::shared_ptr<SentMessage>& message) {
    const DesktopLock desktop;
    message->sender = nullptr;
    if (const Window* const found = desktop.Look(message->window); found != nullptr && found->queue != nullptr) {
        std::erase(found->queue->sent, message);
    }
}

// False with ERROR_TIMEOUT or ERROR_INVALID_WINDOW_HANDLE.
bool SendAcross(const Sending& sending, Deadline deadline, bool serve, LRESULT& result) {
    const std::shared_ptr<ThreadQueue> mine = ThisQueue();
    const std::shared_ptr<SentMessage> message = Enqueue(sending, mine);
    if (message == nullptr) {
        return false;
    }
    while (!IsFinished(*message)) {
        if (Deadline::clock::now() >= deadline) {
            Abandon(message);
            return Fail(ERROR_TIMEOUT);
        }
        if (!serve || !ServeSentMessages(*mine)) {
            WaitForWork(*mine, deadline);
        }
    }
    result = message->result;
    return message->state == SentMessage::State::Done || Fail(ERROR_INVALID_WINDOW_HANDLE);
}

std::vector<HWND> BroadcastTargets() {
    const DesktopLock desktop;
    std::vector<HWND> targets;
    for (const Window* const each : desktop->root->children) {
        targets.push_back(each->handle);
    }
    return targets;
}

bool SendWithin(const Sending& sending, Deadline deadline, bool serve, LRESULT& result) {
    if (sending.window == HWND_BROADCAST) {
        for (const HWND target : BroadcastTargets()) {
            LRESULT ignored = 0;
            SendWithin({target, sending.message, sending.wparam, sending.lparam}, deadline, serve, ignored);
        }
        result = 1;
        return true;
    }
    switch (TargetOf(sending.window)) {
        case Target::None:
            return false;
        case Target::Here:
            result = CallProcedure(sending.window, sending.message, sending.wparam, sending.lparam);
            return true;
        default:
            return SendAcross(sending, deadline, serve, result);
    }
}

// The next message that was sent to this thread, marked as running; null when there is none.
std::shared_ptr<SentMessage> TakeSent(ThreadQueue& queue) {
    const DesktopLock desktop;
    queue.fresh &= ~QS_SENDMESSAGE;
    if (queue.sent.empty()) {
        return nullptr;
    }
    queue.running.push_back(queue.sent.front());
    queue.sent.pop_front();
    queue.running.back()->state = SentMessage::State::Running;
    return queue.running.back();
}

}  // namespace

LRESULT CallProcedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    WNDPROC procedure = nullptr;
    {
        const DesktopLock desktop;
        const Window* const found = desktop.Find(window);
        procedure = found != nullptr ? found->procedure : nullptr;
    }
    return procedure != nullptr ? procedure(window, message, wparam, lparam) : 0;
}

void FinishSent(SentMessage& message, SentMessage::State state, LRESULT result) noexcept {
    if (message.state == SentMessage::State::Done || message.state == SentMessage::State::Lost) {
        return;
    }
    message.state = state;
    message.result = result;
    if (message.sender != nullptr) {
        Signal(*message.sender, 0);
    }
}

bool ServeSentMessages(ThreadQueue& queue) {
    bool any = false;
    while (const std::shared_ptr<SentMessage> message = TakeSent(queue)) {
        any = true;
        const LRESULT result = CallProcedure(message->window, message->message, message->wparam, message->lparam);
        const DesktopLock desktop;
        std::erase(queue.running, message);
        FinishSent(*message, SentMessage::State::Done, result);
    }
    return any;
}

}  // namespace kawin

LRESULT SendMessageW(HWND window, UINT message, WPARAM wparam, LPARAM lparam) noexcept {
    return kawin::NoThrow([&] {
        LRESULT result = 0;
        kawin::SendWithin({window, message, wparam, lparam}, kawin::Deadline::max(), true, result);
        return result;
    });
}

LRESULT SendMessageTimeoutW(HWND window, UINT message, WPARAM wparam, LPARAM lparam, UINT flags, UINT timeout,
                            DWORD_PTR* result) noexcept {
    return kawin::NoThrow([&]() -> LRESULT {
        const kawin::Deadline deadline = kawin::Deadline::clock::now() + std::chrono::milliseconds(timeout);
        LRESULT answer = 0;
        if (!kawin::SendWithin({window, message, wparam, lparam}, deadline, (flags & SMTO_BLOCK) == 0, answer)) {
            return 0;
        }
        if (result != nullptr) {
            *result = static_cast<DWORD_PTR>(answer);
        }
        return 1;
    });
}

BOOL SendNotifyMessageW(HWND window, UINT message, WPARAM wparam, LPARAM lparam) noexcept {
    return kawin::NoThrow([&]() -> BOOL {
        const kawin::Sending sending = {window, message, wparam, lparam};
        if (window != HWND_BROADCAST && kawin::TargetOf(window) == kawin::Target::Elsewhere) {
            return kawin::Enqueue(sending, nullptr) != nullptr;
        }
        LRESULT ignored = 0;
        return kawin::SendWithin(sending, kawin::Deadline::max(), true, ignored);
    });
}

BOOL InSendMessage() noexcept {
    const kawin::ThreadQueue* const queue = kawin::ThisQueueIfAny();
    const kawin::DesktopLock desktop;
    return queue != nullptr && !queue->running.empty();
}

BOOL ReplyMessage(LRESULT result) noexcept {
    kawin::ThreadQueue* const queue = kawin::ThisQueueIfAny();
    const kawin::DesktopLock desktop;
    if (queue == nullptr || queue->running.empty()) {
        return FALSE;
    }
    kawin::FinishSent(*queue->running.back(), kawin::SentMessage::State::Done, result);
    return TRUE;
}
