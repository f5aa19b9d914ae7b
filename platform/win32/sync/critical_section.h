#pragma once

// Critical sections: locks for the threads of one process that the owning thread may enter again.
//
// Owner and depth can be read: OwningThread is the owner's thread number (null when free) and may be read from any thread;
// RecursionCount is meaningful to the owner only. Waiting threads are not served in order.

#include <atomic>

#include "../process/thread_id.h"

struct CRITICAL_SECTION {
    std::atomic<std::uint32_t> LockWord;  // 0 free, 1 entered, 2 entered and perhaps waited for
    LONG RecursionCount;                  // entries of the owner; guarded by the section itself
    std::atomic<HANDLE> OwningThread;
    ULONG_PTR SpinCount;
};
using LPCRITICAL_SECTION = CRITICAL_SECTION*;
using PCRITICAL_SECTION = CRITICAL_SECTION*;

constexpr DWORD CRITICAL_SECTION_NO_DEBUG_INFO = 0x01000000;

namespace kawin {

KADATA_API void EnterCriticalSectionSlow(CRITICAL_SECTION& section, HANDLE thread) noexcept;
KADATA_API void WakeCriticalSection(CRITICAL_SECTION& section) noexcept;

inline HANDLE CurrentThreadAsOwner() noexcept {
    return reinterpret_cast<HANDLE>(static_cast<ULONG_PTR>(CurrentThreadId()));
}

// Takes a free section, or enters deeper into one that `thread` owns.
inline bool TryEnterCriticalSection(CRITICAL_SECTION& section, HANDLE thread) noexcept {
    std::uint32_t free = 0;
    if (section.LockWord.compare_exchange_strong(free, 1, std::memory_order_acquire, std::memory_order_relaxed)) [[likely]] {
        section.OwningThread.store(thread, std::memory_order_relaxed);
        section.RecursionCount = 1;
        return true;
    }
    if (section.OwningThread.load(std::memory_order_relaxed) == thread) {
        ++section.RecursionCount;
        return true;
    }
    return false;
}

}  // namespace kawin

// The three ways to make one. They need no memory and do not fail here. `spins` is how often a thread looks again before it
// sleeps, 0 for not at all. Flags other than CRITICAL_SECTION_NO_DEBUG_INFO are ERROR_INVALID_PARAMETER.
KADATA_API void InitializeCriticalSection(LPCRITICAL_SECTION section) noexcept;
KADATA_API BOOL InitializeCriticalSectionAndSpinCount(LPCRITICAL_SECTION section, DWORD spins) noexcept;
KADATA_API BOOL InitializeCriticalSectionEx(LPCRITICAL_SECTION section, DWORD spins, DWORD flags) noexcept;

// Returns the previous count.
KADATA_API DWORD SetCriticalSectionSpinCount(LPCRITICAL_SECTION section, DWORD spins) noexcept;

// The section must be free and nobody may wait for it.
KADATA_API void DeleteCriticalSection(LPCRITICAL_SECTION section) noexcept;

inline void EnterCriticalSection(LPCRITICAL_SECTION section) noexcept {
    const HANDLE thread = kawin::CurrentThreadAsOwner();
    if (!kawin::TryEnterCriticalSection(*section, thread)) {
        kawin::EnterCriticalSectionSlow(*section, thread);
    }
}

// TRUE when the calling thread now owns the section, FALSE when another thread does; never waits.
inline BOOL TryEnterCriticalSection(LPCRITICAL_SECTION section) noexcept {
    return kawin::TryEnterCriticalSection(*section, kawin::CurrentThreadAsOwner()) ? TRUE : FALSE;
}

// Undoes one entry of the calling thread, which must be the owner.
inline void LeaveCriticalSection(LPCRITICAL_SECTION section) noexcept {
    if (--section->RecursionCount != 0) {
        return;
    }
    section->OwningThread.store(nullptr, std::memory_order_relaxed);
    if (section->LockWord.exchange(0, std::memory_order_release) == 2) [[unlikely]] {
        kawin::WakeCriticalSection(*section);
    }
}
