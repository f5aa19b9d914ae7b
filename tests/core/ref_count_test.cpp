#include <gtest/gtest.h>
#include <kadata/ref_count.h>

#include <thread>
#include <vector>

namespace {

// Its end takes the object's lock on another thread, and would wait for ever if the lock were still held.
struct Counted : CRefCount {
    explicit Counted(int& ends) : ends_(ends) {}
    ~Counted() override {
        std::thread([this] { AddRef(); }).join();
        ++ends_;
    }

    int& ends_;  // guarded by nothing but the count: whoever gives back the last reference is alone
};

TEST(RefCount, EndsTheObjectOutsideItsLockWithTheLastReferenceOfManyThreads) {
    for (int round = 1; round <= 50; ++round) {
        int ends = 0;
        Counted* object = new Counted(ends);
        std::vector<std::thread> threads;
        for (int i = 0; i < 8; ++i) {
            threads.emplace_back([held = object->AddRef()] {
                for (int pair = 0; pair < 50; ++pair)
                    held->AddRef()->Release();
                held->Release();
            });
        }
        object->Release();
        for (std::thread& thread : threads)
            thread.join();
        ASSERT_EQ(ends, 1);
    }
}

TEST(AutoReleaser, GivesBackOneReferenceAndHandsOnThePointerAlone) {
    int ends = 0, others = 0;
    Counted* other = new Counted(others);
    {
        CAutoReleaser source(new Counted(ends));
        CAutoReleaser target(other);
        target = source;
        source = CAutoReleaser(nullptr);
        EXPECT_EQ(ends, 0);
    }
    EXPECT_EQ(ends, 1);
    EXPECT_EQ(others, 0);  // what the target held before is not given back
    other->Release();
    EXPECT_EQ(others, 1);
}

}  // namespace
