#pragma once

// How a message gets to a window's procedure.

#include "thread_queue.h"

namespace kawin {

// Calls the procedure of a window of the calling thread, 0 when it does not exist (any more). Without the lock held.
LRESULT CallProcedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);

// Gives the sender its answer, once. With the lock held.
void FinishSent(SentMessage& message, SentMessage::State state, LRESULT result) noexcept;

}  // namespace kawin
