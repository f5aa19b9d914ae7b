#include <gtest/gtest.h>
#include <windows.h>

#include <thread>
#include <vector>

namespace {

class Section {
public:
    explicit Section(DWORD spins) { EXPECT_TRUE(InitializeCriticalSectionAndSpinCount(&section_, spins)); }
    ~Section() { DeleteCriticalSection(&section_); }
    LPCRITICAL_SECTION get() { return &section_; }

private:
    CRITICAL_SECTION section_;
};

BOOL TryInAnotherThread(LPCRITICAL_SECTION section) {
    BOOL entered = FALSE;
    std::thread([&] {
        entered = TryEnterCriticalSection(section);
        if (entered) {
            LeaveCriticalSection(section);
        }
    }).join();
    return entered;
}

TEST(CriticalSection, LetsOneThreadInAtATime) {
    constexpr int kThreads = 4;
    constexpr int kRounds = 20000;
    for (const DWORD spins : {0U, 100U}) {
        SCOPED_TRACE(spins);
        Section section(spins);
        int count = 0;
        std::vector<std::thread> threads;
        for (int i = 0; i < kThreads; ++i) {
            threads.emplace_back([&] {
                for (int round = 0; round < kRounds; ++round) {
                    EnterCriticalSection(section.get());
                    EnterCriticalSection(section.get());
                    ++count;
                    LeaveCriticalSection(section.get());
                    LeaveCriticalSection(section.get());
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        EXPECT_EQ(count, kThreads * kRounds);
    }
}

TEST(CriticalSection, KnowsItsOwnerAndDepth) {
    Section section(0);
    EXPECT_EQ(HANDLE(section.get()->OwningThread), nullptr);
    EnterCriticalSection(section.get());
    EXPECT_TRUE(TryEnterCriticalSection(section.get()));
    EXPECT_EQ(section.get()->RecursionCount, 2);
    EXPECT_EQ(reinterpret_cast<ULONG_PTR>(HANDLE(section.get()->OwningThread)), GetCurrentThreadId());
    EXPECT_FALSE(TryInAnotherThread(section.get()));

    LeaveCriticalSection(section.get());
    EXPECT_FALSE(TryInAnotherThread(section.get())) << "one entry is left";
    LeaveCriticalSection(section.get());
    EXPECT_TRUE(TryInAnotherThread(section.get()));
    EXPECT_EQ(HANDLE(section.get()->OwningThread), nullptr);
}

}  // namespace
