#include "gdi_objects.h"

#include <mutex>
#include <new>
#include <vector>

#include "../base/error.h"

namespace kawin {
namespace {

// A handle is a slot and the slot's generation, so that one that was removed is not mistaken for its successor.
constexpr unsigned kSlotBits = 24;
constexpr ULONG_PTR kSlotMask = (ULONG_PTR{1} << kSlotBits) - 1;
constexpr ULONG_PTR kMostSlots = kSlotMask;

struct Slot {
    std::shared_ptr<GdiObject> object;
    DWORD generation = 1;
};

struct Table {
    std::mutex mutex;
    std::vector<Slot> slots;         // guarded by mutex
    std::vector<std::size_t> empty;  // guarded by mutex; room for every slot, so that removing needs no memory
};

// Never destroyed: objects may be deleted while the process ends.
Table& TheTable() {
    static Table* const table = new Table;
    return *table;
}

HGDIOBJ HandleOf(std::size_t slot, DWORD generation) noexcept {
    return reinterpret_cast<HGDIOBJ>((ULONG_PTR{generation} << kSlotBits) | (slot + 1));
}

// The slot in use behind a handle; null when there is none. With the table's mutex held.
Slot* SlotOf(Table& table, HGDIOBJ handle) noexcept {
    const ULONG_PTR value = reinterpret_cast<ULONG_PTR>(handle);
    const ULONG_PTR number = value & kSlotMask;
    if (number == 0 || number > table.slots.size()) {
        return nullptr;
    }
    Slot& slot = table.slots[number - 1];
    return slot.object && slot.generation == value >> kSlotBits ? &slot : nullptr;
}

std::size_t EmptySlot(Table& table) {
    if (!table.empty.empty()) {
        const std::size_t slot = table.empty.back();
        table.empty.pop_back();
        return slot;
    }
    if (table.slots.size() >= kMostSlots) {
        throw std::bad_alloc();
    }
    table.slots.emplace_back();
    table.empty.reserve(table.slots.capacity());
    return table.slots.size() - 1;
}

}  // namespace

int GdiObject::Describe(int, void*) const noexcept {
    SetLastError(ERROR_INVALID_HANDLE);
    return 0;
}

HGDIOBJ AddGdiObject(std::shared_ptr<GdiObject> object) noexcept try {
    if (!object) {
        throw std::bad_alloc();
    }
    Table& table = TheTable();
    const std::lock_guard lock(table.mutex);
    const std::size_t slot = EmptySlot(table);
    object->handle_ = HandleOf(slot, table.slots[slot].generation);
    const HGDIOBJ handle = object->handle_;
    table.slots[slot].object = std::move(object);
    return handle;
} catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

std::shared_ptr<GdiObject> FindGdiObject(HGDIOBJ handle) noexcept {
    Table& table = TheTable();
    const std::lock_guard lock(table.mutex);
    const Slot* const slot = SlotOf(table, handle);
    return slot != nullptr ? slot->object : nullptr;
}

bool RemoveGdiObject(HGDIOBJ handle) noexcept {
    std::shared_ptr<GdiObject> removed;  // may be destroyed here, without the lock
    Table& table = TheTable();
    const std::lock_guard lock(table.mutex);
    Slot* const slot = SlotOf(table, handle);
    if (slot == nullptr) {
        return false;
    }
    removed = std::move(slot->object);
    ++slot->generation;
    table.empty.push_back(static_cast<std::size_t>(slot - table.slots.data()));
    return true;
}

std::size_t CountGdiObjects() noexcept {
    Table& table = TheTable();
    const std::lock_guard lock(table.mutex);
    std::size_t count = 0;
    for (const Slot& slot : table.slots) {
        count += slot.object && !slot.object->IsStock();
    }
    return count;
}

}  // namespace kawin
