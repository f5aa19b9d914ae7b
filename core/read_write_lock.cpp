#include <kadata/read_write_lock.h>

namespace {

// Not std::atomic::wait: where the system has no such call for words, libstdc++ 12 sleeps through wake-ups.
void SleepWhile(std::atomic<std::uint32_t>& word, std::uint32_t value) {
    static_assert(sizeof(word) == sizeof(value) && std::atomic<std::uint32_t>::is_always_lock_free);
    WaitOnAddress(&word, &value, sizeof(value), INFINITE);
}

}  // namespace

void KaCReadWriteLock::LockReadSlow() {
    if (IsOwner()) {
        m_ownReads.fetch_add(1, std::memory_order_relaxed);
        return;
    }
    // Counted already: when the writer leaves, no other can enter.
    for (std::uint32_t state = m_state.load(std::memory_order_acquire); (state & kWriter) != 0;
         state = m_state.load(std::memory_order_acquire)) {
        SleepWhile(m_state, state);
    }
}

// A writer that counts itself as waiting and then finds the lock taken is seen by whoever frees it: both orders are sequentially
// consistent. The turn is read before the lock is tried, so that a wake-up between the two is not slept through.
void KaCReadWriteLock::LockWriteSlow() {
    if (IsOwner()) {
        m_depth.fetch_add(1, std::memory_order_relaxed);
        return;
    }
    m_waitingWriters.fetch_add(1);
    for (;;) {
        const std::uint32_t turn = m_turns.load();
        std::uint32_t free = 0;
        if (m_state.compare_exchange_strong(free, kWriter)) {
            break;
        }
        SleepWhile(m_turns, turn);
    }
    m_waitingWriters.fetch_sub(1);
    m_owner.store(GetCurrentThreadId(), std::memory_order_relaxed);
    m_depth.store(1, std::memory_order_relaxed);
}

void KaCReadWriteLock::LeaveWriter() {
    m_owner.store(0, std::memory_order_relaxed);
    const std::uint32_t own = m_ownReads.exchange(0, std::memory_order_relaxed);
    const std::uint32_t readers = m_state.fetch_and(~kWriter) & ~kWriter;
    if (readers > own) {
        WakeByAddressAll(&m_state);
    }
    if (readers == 0) {
        WakeWriter();
    }
}

void KaCReadWriteLock::LetWriterLook() {
    m_turns.fetch_add(1);
    WakeByAddressSingle(&m_turns);
}

KaCReadWriteLock::SCounts KaCReadWriteLock::GetCounts() const {
    const std::uint32_t state = m_state.load();
    const std::uint32_t readers = state & ~kWriter;
    const DWORD own = m_ownReads.load();
    const bool writing = (state & kWriter) != 0;
    return {writing ? own : readers, writing && readers > own ? readers - own : 0, m_waitingWriters.load(), m_depth.load()};
}
