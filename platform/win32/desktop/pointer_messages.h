#pragma once

// Messages of the pointer. Without the lock held.

#include "message_filter.h"
#include "pointer_target.h"

namespace kawin {

// Where an event of the pointer goes: the window that has captured it, else what it is on. A null window: nowhere.
PointerTarget TargetOf(ThreadQueue& queue, const InputEvent& event);

// The message for it, without any effect yet.
MSG PointerMessage(ThreadQueue& queue, const InputEvent& event, const PointerTarget& target);

// What goes along with retrieving the message: activation, the cursor, leaving. False: nobody gets the message.
bool Accompany(ThreadQueue& queue, const InputEvent& event, const PointerTarget& target, const MSG& message);

// WM_MOUSEHOVER when it is due.
bool TakeHover(ThreadQueue& queue, const MessageFilter& filter, bool remove, MSG& message);

}  // namespace kawin
