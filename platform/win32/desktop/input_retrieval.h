#pragma once

// From what the user did to the messages that tell of it. Without the lock held, unless said otherwise.

#include "message_filter.h"

namespace kawin {

// The next message of the keyboard or the pointer. Asks windows where they are hit, activates them, sets the cursor.
bool TakeInput(ThreadQueue& queue, const MessageFilter& filter, bool remove, MSG& message);

// When a hovering pointer is to be told, by the timers' clock. With the lock held.
Deadline HoverDue(const ThreadQueue& queue) noexcept;

}  // namespace kawin
