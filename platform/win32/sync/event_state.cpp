#include "event_state.h"

#include <algorithm>

namespace kawin {
namespace {

constexpr std::uint32_t kSignalled = 1;
constexpr std::uint32_t kSetCall = 2;
constexpr std::uint32_t kTaker = 0x10000;

constexpr std::uint32_t Signals(std::uint32_t word) {
    return word & (kTaker - 1);
}
constexpr std::uint32_t Takers(std::uint32_t word) {
    return word / kTaker;
}

// Each waiting thread can be given one signal; without any, one is kept.
constexpr std::uint32_t MostSignals(std::uint32_t takers) {
    return std::max(takers, 1U);
}

template <class Change>
std::uint32_t Update(FutexWord& word, Change change) noexcept {
    std::uint32_t before = word.load(std::memory_order_relaxed);
    while (!word.compare_exchange_weak(before, change(before))) {
    }
    return before;
}

}  // namespace

void EventState::Initialize(Reset reset, bool signalled) noexcept {
    word_.store(signalled ? 1 : 0);
    onlookers_.store(0);
    reset_.store(static_cast<std::uint32_t>(reset));
}

void EventState::SetManual() noexcept {
    Update(word_, [](std::uint32_t word) { return (word + kSetCall) | kSignalled; });
}

void EventState::AddSignal() noexcept {
    Update(word_, [](std::uint32_t word) { return Signals(word) < MostSignals(Takers(word)) ? word + 1 : word; });
}

void EventState::Set(Reach reach) noexcept {
    IsManual() ? SetManual() : AddSignal();
    const bool takers = !IsManual() && Takers(word_.load()) != 0;
    if (takers || onlookers_.load() != 0) {
        WakeAll(word_, reach);
    }
}

// Signals that were given to threads which have not run yet stay theirs. Not between processes: there a killed process's count
// would keep the event signalled.
void EventState::Clear(Reach reach) noexcept {
    if (IsManual()) {
        Update(word_, [](std::uint32_t word) { return word & ~kSignalled; });
        return;
    }
    Update(word_, [reach](std::uint32_t word) {
        const std::uint32_t kept = reach == Reach::Process ? std::min(Signals(word), Takers(word)) : 0;
        return Takers(word) * kTaker + kept;
    });
}

std::uint32_t EventState::Join(Interest interest) noexcept {
    if (interest == Interest::Taker && !IsManual()) {
        return Update(word_, [](std::uint32_t word) { return word + kTaker; });
    }
    onlookers_.fetch_add(1);
    return word_.load() / kSetCall;
}

void EventState::Leave(Interest interest) noexcept {
    if (interest == Interest::Onlooker || IsManual()) {
        onlookers_.fetch_sub(1);
        return;
    }
    Update(word_, [](std::uint32_t word) {
        const std::uint32_t takers = Takers(word) - 1;
        return takers * kTaker + std::min(Signals(word), MostSignals(takers));
    });
}

bool EventState::Take(std::uint32_t ticket) noexcept {
    if (IsManual()) {
        const std::uint32_t word = word_.load(std::memory_order_acquire);
        return (word & kSignalled) != 0 || (ticket != Waitable::kNow && word / kSetCall != ticket);
    }
    const std::uint32_t before = Update(word_, [](std::uint32_t word) { return Signals(word) != 0 ? word - 1 : word; });
    return Signals(before) != 0;
}

void EventState::PutBack(Reach reach) noexcept {
    if (!IsManual()) {
        Set(reach);
    }
}

WaitPoint EventState::Point(Reach reach) const noexcept {
    return {&word_, word_.load(std::memory_order_acquire), reach};
}

}  // namespace kawin
