#pragma once

// The calling thread's number, cheap enough for the first line of every lock.

#include "../base/types.h"

namespace kawin {

// The number once asked for in this thread, else 0. Initial-exec: one load, no call, also from a host's code. Never a
// wrapper function, because it is constant-initialised.
extern KADATA_API constinit thread_local DWORD cached_thread_id __attribute__((tls_model("initial-exec")));

// Asks the kernel and fills the cache. A fork empties the child's cache.
KADATA_API DWORD RefreshThreadId() noexcept;

inline DWORD CurrentThreadId() noexcept {
    const DWORD id = cached_thread_id;
    return id != 0 ? id : RefreshThreadId();
}

// A number of the calling thread that no other thread on the machine has had since it started: thread numbers are used again,
// and a dead owner left in shared memory must not be taken for its successor.
ULONGLONG ThreadIdentity() noexcept;

}  // namespace kawin
