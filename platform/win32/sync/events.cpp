// CreateEventW, OpenEventW, SetEvent, ResetEvent.

#include "../base/error_map.h"
#include "../text/no_throw.h"
#include "event_state.h"
#include "shared_object.h"
#include "waits.h"

namespace kawin {
namespace {

static_assert(sizeof(EventState) <= SharedBlock::kSmallBody);

class EventObject final : public Waitable {
public:
    EventObject(Reset reset, bool signalled) : state_(own_), reach_(Reach::Process) { state_.Initialize(reset, signalled); }
    explicit EventObject(BlockRef block)
        : block_(std::move(block)), state_(*static_cast<EventState*>(block_->Body())), reach_(Reach::Machine) {}

    void Set() noexcept { state_.Set(reach_); }
    void Clear() noexcept { state_.Clear(reach_); }

    DWORD Wait(Deadline deadline) override;

    std::uint32_t Join(Interest interest) noexcept override { return state_.Join(interest); }
    void Leave(Interest interest) noexcept override { state_.Leave(interest); }
    DWORD Take(std::uint32_t ticket) noexcept override { return state_.Take(ticket) ? WAIT_OBJECT_0 : WAIT_TIMEOUT; }
    void PutBack(DWORD /*result*/) noexcept override { state_.PutBack(reach_); }
    WaitPoint Point() const noexcept override { return state_.Point(reach_); }

private:
    EventState own_;
    BlockRef block_;
    EventState& state_;  // own_ or the block's
    Reach reach_;
};

DWORD EventObject::Wait(Deadline deadline) {
    DWORD result = Take(kNow);
    if (result != WAIT_TIMEOUT || deadline == Deadline::min()) {
        return result;
    }
    const std::uint32_t ticket = Join(Interest::Taker);
    for (;;) {
        const WaitPoint point = Point();
        const bool past = IsPast(deadline);
        result = Take(ticket);
        if (result != WAIT_TIMEOUT || past) {
            break;
        }
        SleepOn(point, deadline);
    }
    Leave(Interest::Taker);
    return result;
}

HANDLE CreateNamed(LPCWSTR name, Reset reset, bool signalled) {
    const SharedObject shared =
        CreateShared(name, SharedKind::Event, 0, [=](void* body) { (new (body) EventState)->Initialize(reset, signalled); });
    if (!shared.block) {
        return nullptr;
    }
    SetLastError(shared.existed ? ERROR_ALREADY_EXISTS : ERROR_SUCCESS);
    return OpenHandle(MakeObject<EventObject>(shared.block));
}

}  // namespace
}  // namespace kawin

HANDLE CreateEventW(LPSECURITY_ATTRIBUTES /*security*/, BOOL manual, BOOL signalled, LPCWSTR name) noexcept {
    return kawin::NoThrow([&] {
        const kawin::Reset reset = manual != FALSE ? kawin::Reset::Manual : kawin::Reset::Auto;
        if (!kawin::IsUnnamed(name)) {
            return kawin::CreateNamed(name, reset, signalled != FALSE);
        }
        SetLastError(ERROR_SUCCESS);
        return kawin::OpenHandle(kawin::MakeObject<kawin::EventObject>(reset, signalled != FALSE));
    });
}

HANDLE OpenEventW(DWORD /*access*/, BOOL /*inherit*/, LPCWSTR name) noexcept {
    return kawin::NoThrow([&]() -> HANDLE {
        const kawin::SharedObject shared = kawin::OpenShared(name, kawin::SharedKind::Event);
        return shared.block ? kawin::OpenHandle(kawin::MakeObject<kawin::EventObject>(shared.block)) : nullptr;
    });
}

BOOL SetEvent(HANDLE event) noexcept {
    const auto object = kawin::FindObject<kawin::EventObject>(event);
    if (object) {
        object->Set();
    }
    return static_cast<bool>(object);
}

BOOL ResetEvent(HANDLE event) noexcept {
    const auto object = kawin::FindObject<kawin::EventObject>(event);
    if (object) {
        object->Clear();
    }
    return static_cast<bool>(object);
}
