#pragma once

// Objects that one thread can wait for together with others.

#include "futex.h"

namespace kawin {

enum class Interest : std::uint8_t {
    Taker,     // takes the object's signal as soon as it is there: a signal may be meant for this thread
    Onlooker,  // only wants to see changes
};

// A waiting thread joins, looks (Take) and sleeps (on Point) in turn, and leaves:
//
//     const std::uint32_t ticket = object.Join(interest);
//     loop: point = object.Point(); object.Take(ticket) or sleep on the point
//     object.Leave(interest);
class Waitable : public KernelObject {
public:
    virtual std::uint32_t Join(Interest interest) noexcept = 0;
    virtual void Leave(Interest interest) noexcept = 0;

    // Takes what a successful wait takes, without waiting: WAIT_OBJECT_0, WAIT_ABANDONED_0, WAIT_TIMEOUT when not signalled, or
    // WAIT_FAILED with the last error set. kNow as ticket looks at the present state only.
    virtual DWORD Take(std::uint32_t ticket) noexcept = 0;

    // Undoes a Take that returned `result`.
    virtual void PutBack(DWORD result) noexcept = 0;

    // What to sleep on; taken before a Take, so that no signal after it is missed.
    virtual WaitPoint Point() const noexcept = 0;

    // Whether some signals show only when one looks again, because they do not change the word of Point.
    virtual bool NeedsLooking() const noexcept { return false; }

    static constexpr std::uint32_t kNow = 0xFFFFFFFF;
};

}  // namespace kawin
