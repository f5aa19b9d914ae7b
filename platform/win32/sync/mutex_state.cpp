#include "mutex_state.h"

#include <signal.h>
#include <unistd.h>

#include <cerrno>

#include "../process/thread_id.h"
#include "waits.h"

namespace kawin {
namespace {

timespec ToTime(std::chrono::nanoseconds since_start) {
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(since_start);
    return {seconds.count(), (since_start - seconds).count()};
}

// The thread sanitizer does not know the call that takes the steady clock, and would miss the lock.
#if defined(__SANITIZE_THREAD__)
int TimedLock(pthread_mutex_t* mutex, Deadline deadline) {
    const auto end = std::chrono::system_clock::now() + (deadline - Deadline::clock::now());
    const timespec time = ToTime(end.time_since_epoch());
    return pthread_mutex_timedlock(mutex, &time);
}
#else
int TimedLock(pthread_mutex_t* mutex, Deadline deadline) {
    const timespec time = ToTime(deadline.time_since_epoch());
    return pthread_mutex_clocklock(mutex, CLOCK_MONOTONIC, &time);
}
#endif

int LockUntil(pthread_mutex_t* mutex, Deadline deadline) {
    if (deadline == Deadline::max()) {
        return pthread_mutex_lock(mutex);
    }
    return deadline == Deadline::min() ? pthread_mutex_trylock(mutex) : TimedLock(mutex, deadline);
}

pid_t ThreadOf(ULONGLONG identity) {
    return static_cast<pid_t>(identity >> 32);
}

}  // namespace

void MutexState::Initialize() noexcept {
    pthread_mutexattr_t attributes;
    pthread_mutexattr_init(&attributes);
    pthread_mutexattr_setrobust(&attributes, PTHREAD_MUTEX_ROBUST);
    pthread_mutexattr_setpshared(&attributes, PTHREAD_PROCESS_SHARED);
    pthread_mutex_init(&lock_, &attributes);
    pthread_mutexattr_destroy(&attributes);
}

bool MutexState::IsMine() const noexcept {
    return owner_.load(std::memory_order_relaxed) == ThreadIdentity();
}

bool MutexState::IsOwnedInThisProcess() const noexcept {
    const ULONGLONG owner = owner_.load(std::memory_order_relaxed);
    return owner != 0 && tgkill(getpid(), ThreadOf(owner), 0) == 0;
}

DWORD MutexState::Lock(Deadline deadline) noexcept {
    if (IsMine()) {
        ++depth_;
        return WAIT_OBJECT_0;
    }
    return Acquired(LockUntil(&lock_, deadline));
}

DWORD MutexState::Acquired(int result) noexcept {
    if (result != 0 && result != EOWNERDEAD) {
        return WAIT_TIMEOUT;
    }
    if (result == EOWNERDEAD) {
        pthread_mutex_consistent(&lock_);
        abandoned_ = true;
    }
    owner_.store(ThreadIdentity(), std::memory_order_relaxed);
    depth_ = 1;
    return std::exchange(abandoned_, false) ? WAIT_ABANDONED_0 : WAIT_OBJECT_0;
}

bool MutexState::Unlock(Reach reach) noexcept {
    if (!IsMine()) {
        return false;
    }
    if (--depth_ != 0) {
        return true;
    }
    owner_.store(0, std::memory_order_relaxed);
    pthread_mutex_unlock(&lock_);
    if (onlookers_.load() != 0) {
        releases_.fetch_add(1);
        WakeAll(releases_, reach);
    }
    return true;
}

}  // namespace kawin
