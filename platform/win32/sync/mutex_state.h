#pragma once

// The state of a mutex; the same in a process's own memory and in memory shared between processes.

#include <pthread.h>

#include "waitable.h"

namespace kawin {

// A robust mutex of the C library with what the system's has beyond it: an owner who may take it again and is known. It must not
// move or go away while a thread of this process owns it, because the thread's list of robust mutexes leads through it.
class MutexState {
public:
    MutexState() = default;
    void Initialize() noexcept;

    // WAIT_OBJECT_0, WAIT_ABANDONED_0 or WAIT_TIMEOUT.
    DWORD Lock(Deadline deadline) noexcept;

    // False when the calling thread is not the owner.
    bool Unlock(Reach reach) noexcept;

    // Hands the news of a dead owner, which the calling thread has got, on to the next owner.
    void PassAbandonment() noexcept { abandoned_ = true; }

    void Join() noexcept { onlookers_.fetch_add(1); }
    void Leave() noexcept { onlookers_.fetch_sub(1); }
    WaitPoint Point(Reach reach) const noexcept { return {&releases_, releases_.load(), reach}; }

    bool IsMine() const noexcept;
    bool IsOwnedInThisProcess() const noexcept;

private:
    DWORD Acquired(int result) noexcept;

    pthread_mutex_t lock_;
    std::atomic<ULONGLONG> owner_{0};  // ThreadIdentity; only good for comparing with one's own
    std::uint32_t depth_ = 0;          // guarded by lock_
    bool abandoned_ = false;           // guarded by lock_
    std::atomic<std::uint32_t> onlookers_{0};
    FutexWord releases_{0};  // counts while there are onlookers
};

}  // namespace kawin
