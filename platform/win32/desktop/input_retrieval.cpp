#include "input_retrieval.h"

#include <algorithm>

#include "activation.h"
#include "key_messages.h"
#include "mouse_tracking.h"
#include "pointer_messages.h"
#include "window_position.h"

namespace kawin {
namespace {

using Kind = InputEvent::Kind;

// The first event after the one of that number.
std::optional<InputEvent> NextAfter(ThreadQueue& queue, ULONGLONG number) {
    const DesktopLock desktop;
    const auto found =
        std::find_if(queue.input.begin(), queue.input.end(), [&](const InputEvent& each) { return each.number > number; });
    return found != queue.input.end() ? std::optional(*found) : std::nullopt;
}

// False when somebody else has taken it meanwhile.
bool Remove(ThreadQueue& queue, const InputEvent& event) {
    const DesktopLock desktop;
    const bool removed = std::erase_if(queue.input, [&](const InputEvent& each) { return each.number == event.number; }) != 0;
    if (removed && (event.kind == Kind::Key || event.kind == Kind::Button)) {
        queue.keys = event.keys;
    }
    return removed;
}

void Follow(ThreadQueue& queue, const InputEvent& event) {
    if (event.kind == Kind::Place) {
        const RECT& r = event.rect;
        SetPosition({event.window, nullptr, r.left, r.top, r.right - r.left, r.bottom - r.top, SWP_NOZORDER | SWP_NOACTIVATE});
        return;
    }
    if (event.window != nullptr) {
        ActivateWindow(event.window, WA_ACTIVE);
        return;
    }
    HWND active = nullptr;
    {
        const DesktopLock desktop;
        active = queue.active;
    }
    if (active != nullptr) {
        Deactivate(active, nullptr);
    }
}

bool TakeKey(ThreadQueue& queue, const InputEvent& event, const MessageFilter& filter, bool remove, MSG& message) {
    {
        const DesktopLock desktop;
        message = KeyMessage(queue, event);
        if (message.hwnd != nullptr && !filter.Takes(desktop, message.hwnd, message.message)) {
            return false;
        }
    }
    if ((remove || message.hwnd == nullptr) && !Remove(queue, event)) {
        return false;
    }
    if (remove) {
        const DesktopLock desktop;
        queue.key_text = event.text;
    }
    return message.hwnd != nullptr;
}

bool TakePointer(ThreadQueue& queue, const InputEvent& event, const MessageFilter& filter, bool remove, MSG& message) {
    const PointerTarget target = TargetOf(queue, event);
    if (target.window == nullptr) {
        if (event.kind == Kind::Move) {
            NoteMove(queue, target, event.position);
        }
        Remove(queue, event);
        return false;
    }
    message = PointerMessage(queue, event, target);
    {
        const DesktopLock desktop;
        if (!filter.Takes(desktop, target.window, message.message)) {
            return false;
        }
    }
    const bool nobodys = target.hit == HTERROR;
    if (!remove && !nobodys) {
        return true;
    }
    return Remove(queue, event) && Accompany(queue, event, target, message);
}

}  // namespace

bool TakeInput(ThreadQueue& queue, const MessageFilter& filter, bool remove, MSG& message) {
    {
        const DesktopLock desktop;
        queue.fresh &= ~QS_INPUT;
    }
    ULONGLONG number = 0;
    while (const std::optional<InputEvent> event = NextAfter(queue, number)) {
        number = event->number;
        switch (event->kind) {
            case Kind::Activate:
            case Kind::Place:
                Remove(queue, *event);
                Follow(queue, *event);
                break;
            case Kind::Key:
            case Kind::Character:
                if (TakeKey(queue, *event, filter, remove, message)) {
                    return true;
                }
                break;
            default:
                if (TakePointer(queue, *event, filter, remove, message)) {
                    return true;
                }
                break;
        }
    }
    return false;
}

}  // namespace kawin
