#include "handle_table.h"

#include <mutex>
#include <new>
#include <thread>

namespace kawin {
namespace {

constexpr std::size_t kChunkSlots = 256;
constexpr std::size_t kChunks = 256;
constexpr ULONG_PTR kHandleStep = 4;  // handles are multiples of four, as callers may expect

struct Slot {
    std::atomic<bool> busy{false};
    KernelObject* object = nullptr;  // guarded by busy
};

class SlotLock {
public:
    explicit SlotLock(Slot& slot) noexcept : slot_(slot) {
        while (slot_.busy.exchange(true, std::memory_order_acquire)) {
            std::this_thread::yield();
        }
    }
    SlotLock(const SlotLock&) = delete;
    SlotLock& operator=(const SlotLock&) = delete;
    ~SlotLock() { slot_.busy.store(false, std::memory_order_release); }

private:
    Slot& slot_;
};

struct Chunk {
    Slot slots[kChunkSlots];
};

// Chunks are never freed: a lookup needs no lock to find its slot, and handles stay valid while the process ends.
constinit std::atomic<Chunk*> chunks[kChunks] = {};
constinit std::mutex growth;          // guards chunk creation and next_free
constinit std::size_t next_free = 1;  // no free slot below; slot 0 would be the null handle

Slot* SlotOf(std::size_t index) noexcept {
    Chunk* const chunk = chunks[index / kChunkSlots].load(std::memory_order_acquire);
    return chunk == nullptr ? nullptr : &chunk->slots[index % kChunkSlots];
}

Slot* SlotOf(HANDLE handle) noexcept {
    const auto value = reinterpret_cast<ULONG_PTR>(handle);
    const ULONG_PTR index = value / kHandleStep;
    if (value % kHandleStep != 0 || index == 0 || index >= kChunks * kChunkSlots) {
        return nullptr;
    }
    return SlotOf(index);
}

bool EnsureChunk(std::size_t index) {
    std::atomic<Chunk*>& chunk = chunks[index / kChunkSlots];
    if (chunk.load(std::memory_order_relaxed) == nullptr) {
        chunk.store(new (std::nothrow) Chunk, std::memory_order_release);
    }
    return chunk.load(std::memory_order_relaxed) != nullptr;
}

}  // namespace

DWORD KernelObject::Wait(Deadline /*deadline*/) {
    SetLastError(ERROR_INVALID_HANDLE);
    return MAXDWORD;  // WAIT_FAILED
}

void KernelObject::Release() noexcept {
    if (count_.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        delete this;
    }
}

HANDLE OpenHandle(ObjectRef<KernelObject> object) {
    const std::lock_guard lock(growth);
    for (std::size_t index = next_free; index < kChunks * kChunkSlots && EnsureChunk(index); ++index) {
        Slot& slot = *SlotOf(index);
        const SlotLock slot_lock(slot);
        if (slot.object == nullptr) {
            slot.object = object.release();
            next_free = index + 1;
            return reinterpret_cast<HANDLE>(index * kHandleStep);
        }
    }
    SetLastError(ERROR_TOO_MANY_OPEN_FILES);
    return nullptr;
}

ObjectRef<KernelObject> FindObject(HANDLE handle) noexcept {
    if (Slot* const slot = SlotOf(handle)) {
        const SlotLock lock(*slot);
        if (slot->object != nullptr) {
            slot->object->Retain();
            return ObjectRef<KernelObject>(slot->object);
        }
    }
    SetLastError(ERROR_INVALID_HANDLE);
    return {};
}

bool RemoveHandle(HANDLE handle) noexcept {
    Slot* const slot = SlotOf(handle);
    ObjectRef<KernelObject> removed;  // released after the locks are left
    if (slot != nullptr) {
        const std::lock_guard lock(growth);
        const SlotLock slot_lock(*slot);
        removed = ObjectRef<KernelObject>(std::exchange(slot->object, nullptr));
        if (removed) {
            next_free = std::min(next_free, static_cast<std::size_t>(reinterpret_cast<ULONG_PTR>(handle) / kHandleStep));
        }
    }
    if (!removed) {
        SetLastError(ERROR_INVALID_HANDLE);
    }
    return static_cast<bool>(removed);
}

}  // namespace kawin

BOOL CloseHandle(HANDLE handle) noexcept {
    return handle == GetCurrentProcess() || kawin::RemoveHandle(handle);
}

HANDLE GetCurrentProcess() noexcept {
    return reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(-1));
}
