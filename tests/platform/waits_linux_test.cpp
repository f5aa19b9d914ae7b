#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>
#include <fstream>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "support/handles.h"

namespace {

using test::Handle;

constexpr DWORD kPatience = 20000;

bool IsAsleep(DWORD thread) {
    std::ifstream file("/proc/self/task/" + std::to_string(thread) + "/stat");
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    const std::size_t name_end = text.rfind(')');
    return name_end != std::string::npos && text[name_end + 2] == 'S';
}

// What `wait` gives to `count` threads that were all asleep in it when `signal` was called.
std::vector<DWORD> Woken(std::size_t count, const std::function<DWORD()>& wait, const std::function<void()>& signal) {
    std::vector<DWORD> results(count, WAIT_FAILED);
    std::vector<std::jthread> threads;
    for (DWORD& result : results) {
        std::atomic<DWORD> id{0};
        threads.emplace_back([&id, &result, wait] {
            id = GetCurrentThreadId();
            id.notify_one();
            result = wait();
        });
        id.wait(0);
        while (!IsAsleep(id))
            std::this_thread::yield();
    }
    signal();
    threads.clear();
    return results;
}

// A signal goes to who waits at that moment, although nobody runs until later and it may be taken back by then.
TEST(LinuxProcesses, HaveSleepingThreadsThatEachTakeASignal) {
    for (const BOOL manual : {FALSE, TRUE}) {
        SCOPED_TRACE(manual);
        const Handle event(CreateEventW(nullptr, manual, FALSE, nullptr)), never(CreateEventW(nullptr, TRUE, FALSE, nullptr));
        const HANDLE both[] = {never, event};
        const auto signal = [&] { EXPECT_TRUE(SetEvent(event) && ResetEvent(event)); };
        const auto single = [&] { return WaitForSingleObject(event, kPatience); };
        const auto joint = [&] { return WaitForMultipleObjects(2, both, FALSE, kPatience); };
        EXPECT_EQ(Woken(1, single, signal), std::vector{WAIT_OBJECT_0});
        EXPECT_EQ(Woken(1, joint, signal), std::vector{WAIT_OBJECT_0 + 1});
        EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_TIMEOUT);
    }
    const Handle event(CreateEventW(nullptr, FALSE, FALSE, nullptr));
    const auto signal = [&] { EXPECT_TRUE(SetEvent(event) && SetEvent(event) && SetEvent(event)); };
    const auto wait = [&] { return WaitForSingleObject(event, kPatience); };
    EXPECT_EQ(Woken(3, wait, signal), std::vector(3, WAIT_OBJECT_0));
    EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_TIMEOUT);
}

}  // namespace
