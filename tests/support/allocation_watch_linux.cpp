#include "allocation_watch.h"

#include <algorithm>
#include <cstdlib>
#include <new>

namespace {

struct Watched {
    bool active = false;
    std::size_t count = 0;
    std::size_t largest = 0;
    std::size_t failAt = test::AllocationWatch::NEVER;
};

thread_local constinit Watched watched;

void* Allocate(std::size_t size) {
    if (watched.active) {
        watched.largest = std::max(watched.largest, size);
        if (watched.count++ == watched.failAt) {
            throw std::bad_alloc();
        }
    }
    void* memory = std::malloc(std::max<std::size_t>(size, 1));
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

}  // namespace

void* operator new(std::size_t size) {
    return Allocate(size);
}

void* operator new[](std::size_t size) {
    return Allocate(size);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return Allocate(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete[](void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace test {

AllocationWatch::AllocationWatch(std::size_t failAt) {
    watched = {true, 0, 0, failAt};
}

AllocationWatch::~AllocationWatch() {
    watched.active = false;
}

std::size_t AllocationWatch::Largest() const {
    return watched.largest;
}

bool AllocationWatch::HasFailed() const {
    return watched.count > watched.failAt;
}

}  // namespace test
