#pragma once

// Sleeping until a word in memory changes: what every wait of this room comes down to.

#include <atomic>
#include <span>

#include "../base/handle_table.h"

namespace kawin {

using FutexWord = std::atomic<std::uint32_t>;

enum class Reach { Process, Machine };  // who sees the word: this process's threads, or other processes too

// A reason to go on sleeping: the word still has the value.
struct WaitPoint {
    const FutexWord* word;
    std::uint32_t value;
    Reach reach;
};

// Sleep until a wake-up, a change of a word (of any of them), or the deadline. They also return for no reason at all: look again.
void SleepOn(const WaitPoint& point, Deadline deadline) noexcept;
void SleepOnAny(std::span<const WaitPoint> points, Deadline deadline) noexcept;  // at most MAXIMUM_WAIT_OBJECTS of them

void WakeOne(const FutexWord& word, Reach reach) noexcept;
void WakeAll(const FutexWord& word, Reach reach) noexcept;

bool IsPast(Deadline deadline) noexcept;

}  // namespace kawin
