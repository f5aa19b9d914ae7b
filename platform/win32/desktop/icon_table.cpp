#include <mutex>
#include <new>
#include <unordered_map>

#include "../base/error.h"
#include "icon_image.h"

namespace kawin {
namespace {

struct Entry {
    IconRef image;
    bool shared = false;
};

struct Table {
    std::mutex mutex;
    std::unordered_map<ULONG_PTR, Entry> entries;  // guarded by mutex
    ULONG_PTR next_handle = 0x20001;               // guarded by mutex
};

// Never destroyed: icons may be destroyed while the process ends.
Table& TheTable() {
    static Table* const table = new Table;
    return *table;
}

}  // namespace

HICON AddIcon(IconRef image, bool shared) {
    if (image == nullptr) {
        return nullptr;
    }
    Table& table = TheTable();
    const std::lock_guard lock(table.mutex);
    const ULONG_PTR handle = table.next_handle;
    table.entries.emplace(handle, Entry{std::move(image), shared});
    table.next_handle += 2;
    return reinterpret_cast<HICON>(handle);
}

IconRef FindIcon(HICON icon) noexcept {
    Table& table = TheTable();
    const std::lock_guard lock(table.mutex);
    const auto found = table.entries.find(reinterpret_cast<ULONG_PTR>(icon));
    return found != table.entries.end() ? found->second.image : nullptr;
}

bool IsSharedIcon(HICON icon) noexcept {
    Table& table = TheTable();
    const std::lock_guard lock(table.mutex);
    const auto found = table.entries.find(reinterpret_cast<ULONG_PTR>(icon));
    return found != table.entries.end() && found->second.shared;
}

bool RemoveIcon(HICON icon) noexcept {
    Table& table = TheTable();
    const std::lock_guard lock(table.mutex);
    return table.entries.erase(reinterpret_cast<ULONG_PTR>(icon)) != 0;
}

std::size_t CountIcons() noexcept {
    Table& table = TheTable();
    const std::lock_guard lock(table.mutex);
    std::size_t count = 0;
    for (const auto& [handle, entry] : table.entries) {
        count += !entry.shared;
    }
    return count;
}

}  // namespace kawin
