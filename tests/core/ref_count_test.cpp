#include <gtest/gtest.h>
#include <kadata/ref_count.h>

#include <thread>
#include <vector>

namespace {

class Counted : public CRefCount {
public:
    explicit Counted(int& ends) : ends_(ends) {}

    int value = 0;  // guarded by nothing: written before the threads start, read by whoever ends the object

protected:
    ~Counted() override { ends_ += value + 1; }

private:
    int& ends_;
};

TEST(RefCount, EndsTheObjectWithTheLastReference) {
    int ends = 0;
    Counted* object = new Counted(ends);
    EXPECT_EQ(object->AddRef(), object);
    object->Release();
    EXPECT_EQ(ends, 0);
    object->Release();
    EXPECT_EQ(ends, 1);
}

// Its end waits for another thread that takes the object's lock: it would wait for ever if the lock were still held.
class WaitingForItsLock : public CRefCount {
protected:
    ~WaitingForItsLock() override {
        CRefCount* taken = nullptr;
        std::thread([&] { taken = AddRef(); }).join();
        EXPECT_EQ(taken, this);
    }
};

TEST(RefCount, EndsTheObjectOutsideItsLock) {
    (new WaitingForItsLock)->Release();
}

TEST(RefCount, CountsTheReferencesOfManyThreads) {
    constexpr int threadCount = 8;
    constexpr int objects = 50;
    constexpr int pairs = 500;
    for (int round = 0; round < objects; ++round) {
        int ends = 0;
        Counted* object = new Counted(ends);
        object->value = 1;
        std::vector<std::thread> threads;
        for (int i = 0; i < threadCount; ++i) {
            threads.emplace_back([held = object->AddRef()] {
                for (int pair = 0; pair < pairs; ++pair) {
                    held->AddRef()->Release();
                }
                held->Release();
            });
        }
        object->Release();
        for (std::thread& thread : threads) {
            thread.join();
        }
        ASSERT_EQ(ends, 2);
    }
}

TEST(AutoReleaser, GivesItsReferenceBackAtTheEndOfTheScope) {
    int ends = 0;
    {
        const CAutoReleaser nothing(nullptr);
        const CAutoReleaser guard(new Counted(ends));
        EXPECT_EQ(ends, 0);
    }
    EXPECT_EQ(ends, 1);
}

TEST(AutoReleaser, HandsOnThePointerAloneWhenAssigned) {
    int first = 0;
    int second = 0;
    Counted* kept = new Counted(first);
    {
        CAutoReleaser source(new Counted(second));
        CAutoReleaser target(kept);
        target = source;
        source = CAutoReleaser(nullptr);
        EXPECT_EQ(first, 0);  // what the target held is not given back
        EXPECT_EQ(second, 0);
    }
    EXPECT_EQ(second, 1);
    kept->Release();
    EXPECT_EQ(first, 1);
}

}  // namespace
