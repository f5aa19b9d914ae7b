#pragma once

// Hooks of the calling thread. Without the lock held.

#include "message_queue.h"

namespace kawin {

// Calls the newest hook of a kind, which calls the next; 0 without one.
LRESULT CallHooks(int kind, int code, WPARAM wparam, LPARAM lparam);

}  // namespace kawin
