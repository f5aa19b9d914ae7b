#include "thread_id.h"

#include <pthread.h>
#include <time.h>
#include <unistd.h>

#include <atomic>
#include <mutex>

#include "process.h"

namespace kawin {
namespace {

constinit thread_local ULONGLONG identity = 0;
constinit std::atomic<DWORD> process_id{0};
constinit std::once_flag fork_watch;

void ForgetAfterFork() {
    cached_thread_id = 0;
    identity = 0;
    process_id.store(0, std::memory_order_relaxed);
}

void WatchForks() {
    std::call_once(fork_watch, [] { pthread_atfork(nullptr, nullptr, ForgetAfterFork); });
}

ULONGLONG MachineTime() {
    timespec now{};
    clock_gettime(CLOCK_BOOTTIME, &now);
    return static_cast<ULONGLONG>(now.tv_sec) * 1'000'000 + static_cast<ULONGLONG>(now.tv_nsec) / 1000;
}

}  // namespace

constinit thread_local DWORD cached_thread_id = 0;

DWORD RefreshThreadId() noexcept {
    WatchForks();
    cached_thread_id = static_cast<DWORD>(gettid());
    return cached_thread_id;
}

ULONGLONG ThreadIdentity() noexcept {
    if (identity == 0) {
        identity = static_cast<ULONGLONG>(CurrentThreadId()) << 32 | (MachineTime() & MAXDWORD);
    }
    return identity;
}

}  // namespace kawin

DWORD GetCurrentProcessId() noexcept {
    DWORD id = kawin::process_id.load(std::memory_order_relaxed);
    if (id == 0) {
        kawin::WatchForks();
        id = static_cast<DWORD>(getpid());
        kawin::process_id.store(id, std::memory_order_relaxed);
    }
    return id;
}
