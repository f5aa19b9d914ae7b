// WaitForSingleObject, WaitForSingleObjectEx, WaitForMultipleObjects.

#include "waits.h"

#include <algorithm>
#include <array>
#include <functional>
#include <optional>
#include <span>

#include "../base/error_map.h"
#include "../text/no_throw.h"
#include "waitable.h"

namespace kawin {
namespace {

constexpr std::chrono::milliseconds kLookInterval{15};

Deadline DeadlineAfter(DWORD milliseconds) {
    if (milliseconds == INFINITE) {
        return Deadline::max();
    }
    return milliseconds == 0 ? Deadline::min() : Deadline::clock::now() + std::chrono::milliseconds(milliseconds);
}

// One object of a wait for several. Objects that know nothing of joint waits are looked at from time to time.
class Participant {
public:
    Participant() = default;
    Participant(const Participant&) = delete;
    Participant& operator=(const Participant&) = delete;
    ~Participant() {
        if (waitable_ != nullptr) {
            waitable_->Leave(interest_);
        }
    }

    bool Enter(HANDLE handle, Interest interest) {
        object_ = FindObject(handle);
        waitable_ = dynamic_cast<Waitable*>(object_.get());
        if (waitable_ != nullptr) {
            interest_ = interest;
            ticket_ = waitable_->Join(interest);
        }
        return static_cast<bool>(object_);
    }

    // A wait for all takes what is signalled at this moment.
    DWORD Take() {
        if (waitable_ == nullptr) {
            return object_->Wait(Deadline::min());
        }
        return waitable_->Take(interest_ == Interest::Taker ? ticket_ : Waitable::kNow);
    }

    void PutBack(DWORD result) noexcept {
        if (waitable_ != nullptr) {
            waitable_->PutBack(result);
        }
    }

    // Empty for an object that has none.
    std::optional<WaitPoint> Point() const noexcept {
        return waitable_ != nullptr ? std::optional(waitable_->Point()) : std::nullopt;
    }
    bool NeedsLooking() const noexcept { return waitable_ == nullptr || waitable_->NeedsLooking(); }

    // The same for all handles of an object.
    const void* Identity() const noexcept {
        const std::optional<WaitPoint> point = Point();
        return point ? static_cast<const void*>(point->word) : object_.get();
    }

private:
    ObjectRef<KernelObject> object_;
    Waitable* waitable_ = nullptr;  // object_, when it is one
    Interest interest_ = Interest::Taker;
    std::uint32_t ticket_ = 0;
};

// What a thread goes to sleep on.
class Bed {
public:
    void Add(const Participant& participant) noexcept {
        if (const std::optional<WaitPoint> point = participant.Point()) {
            points_[count_++] = *point;
        }
        restless_ = restless_ || participant.NeedsLooking();
    }

    void Sleep(Deadline deadline) const noexcept {
        if (restless_) {
            deadline = std::min(deadline, Deadline::clock::now() + kLookInterval);
        }
        if (count_ == 0) {
            const FutexWord nothing{0};
            SleepOn({&nothing, 0, Reach::Process}, deadline);
        } else {
            SleepOnAny(std::span(points_).first(count_), deadline);
        }
    }

private:
    std::array<WaitPoint, MAXIMUM_WAIT_OBJECTS> points_;
    std::size_t count_ = 0;
    bool restless_ = false;
};

class JointWait {
public:
    // False with the last error set.
    bool Enter(std::span<const HANDLE> handles, Interest interest) {
        participants_ = std::span(storage_).first(handles.size());
        for (std::size_t i = 0; i < handles.size(); ++i) {
            if (!participants_[i].Enter(handles[i], interest)) {
                return false;
            }
        }
        return true;
    }

    bool HasTwins() const {
        std::array<const void*, MAXIMUM_WAIT_OBJECTS> sorted{};
        const auto end =
            std::transform(participants_.begin(), participants_.end(), sorted.begin(), std::mem_fn(&Participant::Identity));
        std::sort(sorted.begin(), end, std::less<>());
        return std::adjacent_find(sorted.begin(), end) != end;
    }

    DWORD Any(Deadline deadline) {
        for (;;) {
            const bool past = IsPast(deadline);
            Bed bed;
            for (const Participant& participant : participants_) {
                bed.Add(participant);
            }
            const DWORD result = TakeOne();
            if (result != WAIT_TIMEOUT || past) {
                return result;
            }
            bed.Sleep(deadline);
        }
    }

    // Sleeps on the first object that is not signalled: all the others change nothing as long as that one does not.
    DWORD All(Deadline deadline) {
        for (;;) {
            const bool past = IsPast(deadline);
            Bed bed;
            const DWORD result = TakeAll(bed);
            if (result != WAIT_TIMEOUT || past) {
                return result;
            }
            bed.Sleep(deadline);
        }
    }

private:
    DWORD TakeOne() {
        for (std::size_t i = 0; i < participants_.size(); ++i) {
            const DWORD result = participants_[i].Take();
            if (result != WAIT_TIMEOUT) {
                return result == WAIT_FAILED ? result : result + static_cast<DWORD>(i);
            }
        }
        return WAIT_TIMEOUT;
    }

    // All or none. Between here and a PutBack another thread may see an object as taken; no signal is lost.
    DWORD TakeAll(Bed& bed) {
        DWORD result = WAIT_OBJECT_0;
        for (std::size_t i = 0; i < participants_.size(); ++i) {
            Bed here;
            here.Add(participants_[i]);
            results_[i] = participants_[i].Take();
            if (results_[i] == WAIT_TIMEOUT || results_[i] == WAIT_FAILED) {
                PutBackBefore(i);
                bed = here;
                return results_[i];
            }
            result = std::max(result, results_[i]);
        }
        return result;
    }

    void PutBackBefore(std::size_t end) noexcept {
        for (std::size_t i = end; i > 0; --i) {
            participants_[i - 1].PutBack(results_[i - 1]);
        }
    }

    std::array<Participant, MAXIMUM_WAIT_OBJECTS> storage_;
    std::span<Participant> participants_;
    std::array<DWORD, MAXIMUM_WAIT_OBJECTS> results_{};
};

DWORD FailWait(DWORD error) {
    SetLastError(error);
    return WAIT_FAILED;
}

DWORD WaitForAny(std::span<const HANDLE> handles, Deadline deadline) {
    JointWait wait;
    return wait.Enter(handles, Interest::Taker) ? wait.Any(deadline) : WAIT_FAILED;
}

DWORD WaitForAll(std::span<const HANDLE> handles, Deadline deadline) {
    JointWait wait;
    if (!wait.Enter(handles, Interest::Onlooker)) {
        return WAIT_FAILED;
    }
    return wait.HasTwins() ? FailWait(ERROR_INVALID_PARAMETER) : wait.All(deadline);
}

}  // namespace
}  // namespace kawin

// The look without a deadline comes first: an uncontended wait does not ask the clock.
DWORD WaitForSingleObject(HANDLE handle, DWORD milliseconds) noexcept {
    const auto object = kawin::FindObject(handle);
    if (!object) {
        return WAIT_FAILED;
    }
    const DWORD result = object->Wait(kawin::Deadline::min());
    return result != WAIT_TIMEOUT || milliseconds == 0 ? result : object->Wait(kawin::DeadlineAfter(milliseconds));
}

DWORD WaitForSingleObjectEx(HANDLE handle, DWORD milliseconds, BOOL /*alertable*/) noexcept {
    return WaitForSingleObject(handle, milliseconds);
}

DWORD WaitForMultipleObjects(DWORD count, const HANDLE* handles, BOOL all, DWORD milliseconds) noexcept {
    if (count == 0 || count > MAXIMUM_WAIT_OBJECTS || handles == nullptr) {
        return kawin::FailWait(ERROR_INVALID_PARAMETER);
    }
    const std::span list(handles, count);
    const kawin::Deadline deadline = kawin::DeadlineAfter(milliseconds);
    return all != FALSE ? kawin::WaitForAll(list, deadline) : kawin::WaitForAny(list, deadline);
}
