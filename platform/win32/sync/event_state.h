#pragma once

// The state of an event; the same in a process's own memory and in memory shared between processes, where all zero is a valid one
// (an auto-reset event, not signalled).

#include "waitable.h"

namespace kawin {

enum class Reset : std::uint32_t { Auto, Manual };

// Safe from every thread and process. A process that is killed while it waits leaves a count behind; that costs a wake-up call
// per signal, and an auto-reset event may then keep one signal more than it should, but no signal is lost.
class EventState {
public:
    EventState() = default;
    void Initialize(Reset reset, bool signalled) noexcept;

    void Set(Reach reach) noexcept;
    void Clear(Reach reach) noexcept;

    std::uint32_t Join(Interest interest) noexcept;
    void Leave(Interest interest) noexcept;
    bool Take(std::uint32_t ticket) noexcept;
    void PutBack(Reach reach) noexcept;  // a taken signal
    WaitPoint Point(Reach reach) const noexcept;

private:
    bool IsManual() const noexcept { return reset_.load(std::memory_order_relaxed) == static_cast<std::uint32_t>(Reset::Manual); }
    void SetManual() noexcept;
    void AddSignal() noexcept;

    // Manual: lowest bit signalled, above it the number of Set calls. Auto: low half signals to be taken, high half waiting
    // takers.
    FutexWord word_{0};
    std::atomic<std::uint32_t> onlookers_{0};  // threads to be woken that word_ does not count
    std::atomic<std::uint32_t> reset_{0};
};

}  // namespace kawin
