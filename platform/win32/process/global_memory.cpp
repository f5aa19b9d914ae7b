#include "global_memory.h"

#include <map>
#include <memory>
#include <mutex>

#include "../base/error_map.h"
#include "../text/no_throw.h"

namespace kawin {
namespace {

struct Block {
    std::unique_ptr<std::byte[]> bytes;
    std::size_t size = 0;
    unsigned locks = 0;
    bool moveable = false;
};

struct Heap {
    std::mutex mutex;
    std::map<HGLOBAL, std::unique_ptr<Block>> blocks;  // guarded by it
};

// Never destroyed: blocks may be freed while the process ends.
Heap& TheHeap() {
    static Heap& heap = *new Heap;
    return heap;
}

// `work` with the block, under the lock; `none` with ERROR_INVALID_HANDLE when there is no such block.
template <class Work, class Result>
Result WithBlock(HGLOBAL handle, Result none, Work&& work) noexcept {
    Heap& heap = TheHeap();
    const std::lock_guard lock(heap.mutex);
    const auto found = heap.blocks.find(handle);
    if (found == heap.blocks.end()) {
        SetLastError(ERROR_INVALID_HANDLE);
        return none;
    }
    return work(*found->second);
}

HGLOBAL Allocate(UINT flags, std::size_t size) {
    auto block = std::make_unique<Block>();
    block->moveable = (flags & GMEM_MOVEABLE) != 0;
    block->size = size;
    // A fixed block of no size has an address, too.
    block->bytes.reset((flags & GMEM_ZEROINIT) != 0 ? new std::byte[size + 1]() : new std::byte[size + 1]);
    const HGLOBAL handle = block->moveable ? static_cast<HGLOBAL>(block.get()) : block->bytes.get();
    Heap& heap = TheHeap();
    const std::lock_guard lock(heap.mutex);
    heap.blocks.emplace(handle, std::move(block));
    return handle;
}

}  // namespace
}  // namespace kawin

HGLOBAL GlobalAlloc(UINT flags, std::size_t size) noexcept {
    constexpr std::size_t kMost = static_cast<std::size_t>(-1) / 2;
    if (size > kMost) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    return kawin::NoThrow([&] { return kawin::Allocate(flags, size); });
}

HGLOBAL GlobalFree(HGLOBAL block) noexcept {
    if (block == nullptr) {
        return nullptr;
    }
    kawin::Heap& heap = kawin::TheHeap();
    const std::lock_guard lock(heap.mutex);
    if (heap.blocks.erase(block) == 0) {
        SetLastError(ERROR_INVALID_HANDLE);
        return block;
    }
    return nullptr;
}

LPVOID GlobalLock(HGLOBAL block) noexcept {
    return kawin::WithBlock(block, LPVOID{}, [](kawin::Block& found) -> LPVOID {
        if (found.moveable && found.size == 0) {
            SetLastError(ERROR_DISCARDED);
            return nullptr;
        }
        found.locks += found.moveable;
        return found.bytes.get();
    });
}

BOOL GlobalUnlock(HGLOBAL block) noexcept {
    return kawin::WithBlock(block, FALSE, [](kawin::Block& found) -> BOOL {
        if (!found.moveable) {
            return TRUE;
        }
        if (found.locks == 0) {
            return kawin::Fail(ERROR_NOT_LOCKED);
        }
        return --found.locks != 0 ? TRUE : kawin::Fail(NO_ERROR);
    });
}

std::size_t GlobalSize(HGLOBAL block) noexcept {
    return kawin::WithBlock(block, std::size_t{0}, [](kawin::Block& found) { return found.size; });
}
