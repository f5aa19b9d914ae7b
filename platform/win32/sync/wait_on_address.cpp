#include "wait_on_address.h"

#include <array>
#include <cstring>

#include "../base/error_map.h"
#include "futex.h"

namespace {

// Threads sleep on a word of the address's bucket, not on the address: that may have any size, and the kernel knows words. A
// wake-up wakes the whole bucket, since it cannot tell whose threads are whose; those that were not meant look again, as callers
// have to.
struct alignas(64) Bucket {
    kawin::FutexWord turn{0};
    kawin::FutexWord waiting{0};
};

Bucket& BucketOf(const volatile void* address) noexcept {
    static constinit std::array<Bucket, 64> buckets;
    const auto number = reinterpret_cast<std::uintptr_t>(address);
    return buckets[((number >> 3) ^ (number >> 12)) % buckets.size()];
}

template <class Value>
bool IsStill(const volatile void* address, const void* compare) noexcept {
    Value expected;
    std::memcpy(&expected, compare, sizeof(expected));
    return __atomic_load_n(static_cast<const volatile Value*>(address), __ATOMIC_SEQ_CST) == expected;
}

using Comparison = bool (*)(const volatile void*, const void*) noexcept;

Comparison ComparisonOf(SIZE_T size) noexcept {
    switch (size) {
        case 1:
            return &IsStill<std::uint8_t>;
        case 2:
            return &IsStill<std::uint16_t>;
        case 4:
            return &IsStill<std::uint32_t>;
        case 8:
            return &IsStill<std::uint64_t>;
        default:
            return nullptr;
    }
}

}  // namespace

BOOL WaitOnAddress(volatile void* address, PVOID compare, SIZE_T size, DWORD milliseconds) noexcept {
    const Comparison is_still = address != nullptr && compare != nullptr ? ComparisonOf(size) : nullptr;
    if (is_still == nullptr) {
        return kawin::Fail(ERROR_INVALID_PARAMETER);
    }
    const kawin::Deadline deadline = milliseconds == INFINITE
                                         ? kawin::Deadline::max()
                                         : std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    Bucket& bucket = BucketOf(address);
    bucket.waiting.fetch_add(1);
    // The turn is read before the value: a wake-up after the value was looked at has another turn.
    const std::uint32_t turn = bucket.turn.load();
    bool timed_out = false;
    if (is_still(address, compare)) {
        kawin::SleepOn({&bucket.turn, turn, kawin::Reach::Process}, deadline);
        timed_out = kawin::IsPast(deadline) && bucket.turn.load() == turn && is_still(address, compare);
    }
    bucket.waiting.fetch_sub(1);
    return timed_out ? kawin::Fail(ERROR_TIMEOUT) : TRUE;
}

void WakeByAddressAll(PVOID address) noexcept {
    Bucket& bucket = BucketOf(address);
    if (bucket.waiting.fetch_add(0) != 0) {  // writes: the caller's change comes before it, however it was stored
        bucket.turn.fetch_add(1);
        kawin::WakeAll(bucket.turn, kawin::Reach::Process);
    }
}

void WakeByAddressSingle(PVOID address) noexcept {
    WakeByAddressAll(address);
}
