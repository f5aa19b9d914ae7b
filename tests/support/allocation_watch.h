#pragma once

// What a thread takes from the free store, the library's code included. Linux only: there the program's operator new serves the
// library too.

#include <cstddef>
#include <limits>

namespace test {

// Watches the thread that made it for as long as it lives; one at a time.
class AllocationWatch {
public:
    static constexpr std::size_t NEVER = std::numeric_limits<std::size_t>::max();

    // The allocation of that number (0 is the first) throws std::bad_alloc.
    explicit AllocationWatch(std::size_t failAt = NEVER);
    AllocationWatch(const AllocationWatch&) = delete;
    AllocationWatch& operator=(const AllocationWatch&) = delete;
    ~AllocationWatch();

    std::size_t Largest() const;  // bytes
    bool HasFailed() const;       // whether there was an allocation of that number
};

}  // namespace test
