// CreateMutexW, OpenMutexW, ReleaseMutex.

#include <memory>

#include "../base/error_map.h"
#include "../text/no_throw.h"
#include "mutex_state.h"
#include "shared_object.h"
#include "waits.h"

namespace kawin {
namespace {

static_assert(sizeof(MutexState) <= SharedBlock::kSmallBody);

class MutexObject final : public Waitable {
public:
    MutexObject() : own_(std::make_shared<MutexState>()), state_(*own_), reach_(Reach::Process) { state_.Initialize(); }
    explicit MutexObject(BlockRef block)
        : block_(std::move(block)), state_(*static_cast<MutexState*>(block_->Body())), reach_(Reach::Machine) {}
    ~MutexObject() override;

    DWORD Wait(Deadline deadline) override { return state_.Lock(deadline); }
    bool Unlock() noexcept { return state_.Unlock(reach_); }

    std::uint32_t Join(Interest /*interest*/) noexcept override {
        state_.Join();
        return kNow;
    }
    void Leave(Interest /*interest*/) noexcept override { state_.Leave(); }
    DWORD Take(std::uint32_t /*ticket*/) noexcept override { return state_.Lock(Deadline::min()); }
    WaitPoint Point() const noexcept override { return state_.Point(reach_); }
    bool NeedsLooking() const noexcept override { return true; }
    void PutBack(DWORD result) noexcept override;

private:
    bool IsLastOfBlock() const noexcept { return block_ == nullptr || block_.use_count() == 1; }

    std::shared_ptr<MutexState> own_;  // or
    BlockRef block_;                   // who holds the state
    MutexState& state_;
    Reach reach_;
};

// The last handle is closed. An owner that is left loses the mutex when it is the closing thread; for another thread the memory
// must stay.
MutexObject::~MutexObject() {
    while (IsLastOfBlock() && Unlock()) {
    }
    if (IsLastOfBlock() && state_.IsOwnedInThisProcess()) {
        KeepForEver(block_ != nullptr ? std::shared_ptr<void>(block_) : own_);
    }
}

void MutexObject::PutBack(DWORD result) noexcept {
    if (result == WAIT_ABANDONED_0) {
        state_.PassAbandonment();
    }
    Unlock();
}

ObjectRef<MutexObject> CreateUnnamed() {
    SetLastError(ERROR_SUCCESS);
    return MakeObject<MutexObject>();
}

ObjectRef<MutexObject> CreateNamed(LPCWSTR name, bool owned) {
    const auto prepare = [owned](void* body) {
        auto* const state = new (body) MutexState;
        state->Initialize();
        if (owned) {
            state->Lock(Deadline::max());
        }
    };
    const SharedObject shared = CreateShared(name, SharedKind::Mutex, 0, prepare);
    if (!shared.block) {
        return {};
    }
    SetLastError(shared.existed ? ERROR_ALREADY_EXISTS : ERROR_SUCCESS);
    return MakeObject<MutexObject>(shared.block);
}

}  // namespace
}  // namespace kawin

HANDLE CreateMutexW(LPSECURITY_ATTRIBUTES /*security*/, BOOL owned, LPCWSTR name) noexcept {
    return kawin::NoThrow([&]() -> HANDLE {
        const bool unnamed = kawin::IsUnnamed(name);
        kawin::ObjectRef<kawin::MutexObject> mutex = unnamed ? kawin::CreateUnnamed() : kawin::CreateNamed(name, owned != FALSE);
        if (mutex && unnamed && owned != FALSE) {
            mutex->Wait(kawin::Deadline::max());
        }
        return mutex ? kawin::OpenHandle(std::move(mutex)) : nullptr;
    });
}

HANDLE OpenMutexW(DWORD /*access*/, BOOL /*inherit*/, LPCWSTR name) noexcept {
    return kawin::NoThrow([&]() -> HANDLE {
        const kawin::SharedObject shared = kawin::OpenShared(name, kawin::SharedKind::Mutex);
        return shared.block ? kawin::OpenHandle(kawin::MakeObject<kawin::MutexObject>(shared.block)) : nullptr;
    });
}

BOOL ReleaseMutex(HANDLE mutex) noexcept {
    const auto object = kawin::FindObject<kawin::MutexObject>(mutex);
    return object && (object->Unlock() || kawin::Fail(ERROR_NOT_OWNER));
}
