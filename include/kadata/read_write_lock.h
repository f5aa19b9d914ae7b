#pragma once

// Many readers or one writer.

#include <afxmt.h>
#include <kadata/export.h>

#include <atomic>

// Any thread may call any of it. Calls are paired by the caller, an UnlockRead for each LockRead and an UnlockWrite for each
// LockWrite, on the thread that locked. The thread that writes may lock again, for writing and for reading.
//
// Deliberate: readers go before writers. A reader never waits for a writer that waits, and a writer waits as long as any reader
// is in or waits, so steady reading can keep writers out. A thread that reads and asks to write waits for itself, for ever.
//
// Taken as a CSyncObject (by CSingleLock, say) it is its write lock.
class KADATA_API KaCReadWriteLock : public CCriticalSection {
public:
    KaCReadWriteLock() = default;

    void LockRead() {
        if ((m_state.fetch_add(1, std::memory_order_acquire) & kWriter) != 0) [[unlikely]] {
            LockReadSlow();
        }
    }
    void UnlockRead() {
        const std::uint32_t before = m_state.fetch_sub(1);
        if (before == 1) {
            WakeWriter();
        } else if ((before & kWriter) != 0) [[unlikely]] {
            m_ownReads.fetch_sub(1, std::memory_order_relaxed);
        }
    }
    void LockWrite() {
        std::uint32_t free = 0;
        if (m_state.compare_exchange_strong(free, kWriter, std::memory_order_acquire, std::memory_order_relaxed)) [[likely]] {
            m_owner.store(GetCurrentThreadId(), std::memory_order_relaxed);
            m_depth.store(1, std::memory_order_relaxed);
            return;
        }
        LockWriteSlow();
    }
    void UnlockWrite() {
        if (m_depth.fetch_sub(1, std::memory_order_relaxed) == 1) {
            LeaveWriter();
        }
    }

    // The write lock; the time is ignored, as a critical section's is.
    BOOL Lock() {
        LockWrite();
        return TRUE;
    }
    BOOL Lock(DWORD /*milliseconds*/) override { return Lock(); }
    BOOL Unlock() override {
        UnlockWrite();
        return TRUE;
    }

    // A moment's picture for diagnostics; it may be old when it is returned.
    struct SCounts {
        DWORD nActiveReaders;  // reads of the writer itself among them
        DWORD nWaitingReaders;
        DWORD nWaitingWriters;
        DWORD nWriterDepth;
        bool operator==(const SCounts&) const = default;
    };
    SCounts GetCounts() const;

private:
    static constexpr std::uint32_t kWriter = 0x80000000;

    void LockReadSlow();
    void LockWriteSlow();
    void LeaveWriter();
    void WakeWriter() {
        if (m_waitingWriters.load() != 0) [[unlikely]] {
            LetWriterLook();
        }
    }
    void LetWriterLook();
    bool IsOwner() const { return m_owner.load(std::memory_order_relaxed) == GetCurrentThreadId(); }

    // The lock: kWriter while somebody writes, and the number of readers, those included that wait for the writer. It is free for
    // a writer when it is 0.
    std::atomic<std::uint32_t> m_state{0};
    std::atomic<std::uint32_t> m_turns{0};  // grows when a writer that waits should look again: what writers sleep on
    std::atomic<std::uint32_t> m_waitingWriters{0};
    std::atomic<DWORD> m_owner{0};     // who writes; 0: nobody
    std::atomic<DWORD> m_ownReads{0};  // of m_state's readers, those of the writer
    std::atomic<DWORD> m_depth{0};     // changed by the writer only
};
