#pragma once

// Timers, as retrieval sees them. Without the lock held.

#include "message_filter.h"

namespace kawin {

// WM_TIMER for the timer that has been due for longest.
bool TakeTimer(ThreadQueue& queue, const MessageFilter& filter, bool remove, MSG& message);

// When the next one is due; Deadline::max() without timers.
Deadline NextTimer(ThreadQueue& queue);

// Calls the procedure of a timer when the message is of one that has a procedure.
bool DispatchTimer(const MSG& message, LRESULT& result);

// Of a window that goes. With the lock held.
void ForgetTimers(ThreadQueue& queue, HWND window) noexcept;

}  // namespace kawin
