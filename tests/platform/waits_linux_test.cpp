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

// Threads that do nothing but wait, and are known to be asleep in it.
class Sleepers {
public:
    Sleepers(int count, const std::function<DWORD()>& wait) : results_(static_cast<std::size_t>(count), WAIT_FAILED) {
        for (DWORD& result : results_) {
            std::atomic<DWORD> id{0};
            threads_.emplace_back([&id, &result, wait] {
                id = GetCurrentThreadId();
                id.notify_one();
                result = wait();
            });
            id.wait(0);
            while (!IsAsleep(id)) {
                std::this_thread::yield();
            }
        }
    }

    std::vector<DWORD> Results() {
        for (std::thread& thread : threads_) {
            thread.join();
        }
        return results_;
    }

private:
    std::vector<DWORD> results_;
    std::vector<std::thread> threads_;
};

// A signal goes to who waits at that moment, although nobody runs until later and it may be taken back by then.
TEST(LinuxProcesses, HaveSleepingThreadsThatEachTakeASignal) {
    for (const BOOL manual : {FALSE, TRUE}) {
        SCOPED_TRACE(manual);
        const Handle event(CreateEventW(nullptr, manual, FALSE, nullptr)), never(CreateEventW(nullptr, TRUE, FALSE, nullptr));
        const HANDLE both[] = {never, event};
        Sleepers single(1, [&] { return WaitForSingleObject(event, kPatience); });
        SetEvent(event);
        ResetEvent(event);
        EXPECT_EQ(single.Results(), std::vector{WAIT_OBJECT_0});
        Sleepers joint(1, [&] { return WaitForMultipleObjects(2, both, FALSE, kPatience); });
        SetEvent(event);
        ResetEvent(event);
        EXPECT_EQ(joint.Results(), std::vector{WAIT_OBJECT_0 + 1});
        EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_TIMEOUT);
    }
    const Handle event(CreateEventW(nullptr, FALSE, FALSE, nullptr));
    Sleepers sleepers(3, [&] { return WaitForSingleObject(event, kPatience); });
    for (int i = 0; i < 3; ++i) {
        SetEvent(event);
    }
    EXPECT_EQ(sleepers.Results(), std::vector(3, WAIT_OBJECT_0));
    EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_TIMEOUT);
}

}  // namespace
