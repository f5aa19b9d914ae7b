#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>
#include <thread>

#include "support/last_error.h"

namespace {

using test::ErrorOf;

TEST(WaitOnAddress, ReturnsAtOnceForAnotherValueAndInTimeForTheSame) {
    ULONGLONG value = 0x0102030405060708;
    for (const SIZE_T size : {1, 2, 4, 8}) {
        ULONGLONG compare = value;
        EXPECT_EQ(ErrorOf(WaitOnAddress(&value, &compare, size, 20)), DWORD{ERROR_TIMEOUT}) << size;
        compare = ~value;
        EXPECT_TRUE(WaitOnAddress(&value, &compare, size, INFINITE)) << size;
        compare = value ^ 0xFF00000000000000;  // differs in the last byte only
        EXPECT_EQ(WaitOnAddress(&value, &compare, size, 0) != FALSE, size == 8) << size;
    }
    EXPECT_EQ(ErrorOf(WaitOnAddress(&value, &value, 3, 0)), DWORD{ERROR_INVALID_PARAMETER});
    WakeByAddressSingle(&value);  // nobody
    WakeByAddressAll(&value);
}

TEST(WaitOnAddress, LosesNoWakeUp) {
    constexpr int kRounds = 20000;
    std::atomic<BYTE> turn{0};  // whose turn it is, of two
    const auto play = [&](BYTE own) {
        for (int round = 0; round < kRounds; ++round) {
            BYTE other = 1 - own;
            while (turn.load() == other) {
                WaitOnAddress(&turn, &other, sizeof(other), INFINITE);
            }
            turn.store(other, std::memory_order_release);
            WakeByAddressSingle(&turn);
        }
    };
    std::thread second([&] { play(1); });
    play(0);
    second.join();
    EXPECT_EQ(turn.load(), 0);
}

}  // namespace
