#include <gtest/gtest.h>
#include <kadata/read_write_lock.h>

#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

namespace {

enum class Op { LockRead, UnlockRead, LockWrite, UnlockWrite };

void Do(KaCReadWriteLock& lock, Op op) {
    switch (op) {
        case Op::LockRead:
            return lock.LockRead();
        case Op::UnlockRead:
            return lock.UnlockRead();
        case Op::LockWrite:
            return lock.LockWrite();
        case Op::UnlockWrite:
            return lock.UnlockWrite();
    }
}

// A thread that does one operation after the other as it is told.
class Actor {
public:
    explicit Actor(KaCReadWriteLock& lock) : lock_(lock), thread_([this] { Run(); }) {}
    ~Actor() {
        Tell(std::nullopt);
        thread_.join();
    }
    void Tell(std::optional<Op> op) {
        const std::lock_guard guard(mutex_);
        next_.push_back(op);
        changed_.notify_all();
    }
    int Done() const { return done_.load(); }

private:
    void Run() {
        for (;;) {
            std::optional<Op> op;
            {
                std::unique_lock guard(mutex_);
                changed_.wait(guard, [this] { return !next_.empty(); });
                op = next_.front();
                next_.erase(next_.begin());
            }
            if (!op) {
                return;
            }
            Do(lock_, *op);
            ++done_;
        }
    }

    KaCReadWriteLock& lock_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<std::optional<Op>> next_;  // guarded by mutex_
    std::atomic<int> done_{0};
    std::thread thread_;  // last: uses all of the above
};

// What the lock is meant to do, said plainly: two that write and two that read.
constexpr int kActors = 4;
constexpr int kWriters = 2;
constexpr int kDepth = 10;

struct Model {
    int reads[kActors] = {};   // held
    int writes[kActors] = {};  // held
    int waits[kActors] = {};   // 0, 1 for reading, 2 for writing
    auto operator<=>(const Model&) const = default;

    int Sum(const int (&values)[kActors]) const { return values[0] + values[1] + values[2] + values[3]; }
    bool OtherWrites(int actor) const { return Sum(writes) != writes[actor]; }
    int Waiting(int kind) const {
        int count = 0;
        for (const int wait : waits) {
            count += wait == kind;
        }
        return count;
    }
    bool MayWrite(int actor) const { return writes[actor] > 0 || (Sum(writes) == 0 && Sum(reads) == 0 && Waiting(1) == 0); }

    bool IsAllowed(int actor, Op op) const {
        if (waits[actor] != 0) {
            return false;
        }
        switch (op) {
            case Op::LockRead:
                return reads[actor] < 2;
            case Op::UnlockRead:
                return reads[actor] > 0;
            case Op::LockWrite:  // who only reads would wait for itself; two that wait would have no order
                return actor < kWriters && writes[actor] < 2 && (reads[actor] == 0 || writes[actor] > 0) && Waiting(2) == 0;
            case Op::UnlockWrite:
                return writes[actor] > 0;
        }
        return false;
    }
    void Apply(int actor, Op op) {
        switch (op) {
            case Op::LockRead:
                (OtherWrites(actor) ? waits : reads)[actor] += 1;
                break;
            case Op::UnlockRead:
                --reads[actor];
                break;
            case Op::LockWrite:
                MayWrite(actor) ? ++writes[actor] : waits[actor] = 2;
                break;
            case Op::UnlockWrite:
                --writes[actor];
                break;
        }
        for (int kind : {1, 2}) {  // readers first
            for (int i = 0; i < kActors; ++i) {
                if (waits[i] == kind && (kind == 1 ? !OtherWrites(i) : MayWrite(i))) {
                    waits[i] = 0;
                    ++(kind == 1 ? reads : writes)[i];
                }
            }
        }
    }
    KaCReadWriteLock::SCounts Counts() const {
        return {static_cast<DWORD>(Sum(reads)), static_cast<DWORD>(Waiting(1)), static_cast<DWORD>(Waiting(2)),
                static_cast<DWORD>(Sum(writes))};
    }
};

struct Step {
    int actor;
    Op op;
};

// Plays the steps on a lock and real threads; after each one the lock's counts and who has come through are those of the model.
void Replay(const std::vector<Step>& steps) {
    KaCReadWriteLock lock;
    Model model;
    int told[kActors] = {};
    {
        std::vector<std::unique_ptr<Actor>> actors;
        for (int i = 0; i < kActors; ++i) {
            actors.push_back(std::make_unique<Actor>(lock));
        }
        const auto settled = [&] {
            for (int i = 0; i < kActors; ++i) {
                if (actors[static_cast<std::size_t>(i)]->Done() != told[i] - (model.waits[i] != 0)) {
                    return false;
                }
            }
            return lock.GetCounts() == model.Counts();
        };
        const auto play = [&](const Step& step) {
            ++told[step.actor];
            model.Apply(step.actor, step.op);
            actors[static_cast<std::size_t>(step.actor)]->Tell(step.op);
            while (!settled()) {  // a fault is a hang here, which the suite's time limit ends
                std::this_thread::yield();
            }
        };
        for (const Step& step : steps) {
            play(step);
        }
        for (int round = 0; round < 4 * kDepth; ++round) {  // let everybody out
            for (int i = 0; i < kActors; ++i) {
                for (const Op op : {Op::UnlockRead, Op::UnlockWrite}) {
                    if (model.IsAllowed(i, op)) {
                        play({i, op});
                    }
                }
            }
        }
    }
    EXPECT_EQ(lock.GetCounts(), KaCReadWriteLock::SCounts{});
}

TEST(ReadWriteLock, DoesWhatItsModelDoesInAllInterleavingsOfTwoWritersAndTwoReaders) {
    // Every state that ten steps reach, by one way to it; every step from each of them is played on the lock.
    std::map<Model, std::vector<Step>> ways = {{Model{}, {}}};
    std::vector<Model> edge = {Model{}};
    std::size_t played = 0;
    for (int depth = 0; depth < kDepth; ++depth) {
        std::vector<Model> next;
        for (const Model& model : edge) {
            for (int actor = 0; actor < kActors; ++actor) {
                for (const Op op : {Op::LockRead, Op::UnlockRead, Op::LockWrite, Op::UnlockWrite}) {
                    if (!model.IsAllowed(actor, op)) {
                        continue;
                    }
                    Model after = model;
                    after.Apply(actor, op);
                    std::vector<Step> way = ways[model];
                    way.push_back({actor, op});
                    Replay(way);
                    ++played;
                    if (ways.emplace(after, way).second) {
                        next.push_back(after);
                    }
                }
            }
        }
        edge = std::move(next);
    }
    EXPECT_GT(ways.size(), 50u);
    RecordProperty("played", static_cast<int>(played));
}

TEST(ReadWriteLock, LetsAThousandReadersAndAWriterTakeTurns) {
    KaCReadWriteLock lock;
    int value = 0;  // two halves that a writer changes one after the other
    int copy = 0;
    std::atomic<int> torn{0};
    std::vector<std::thread> readers;
    for (int i = 0; i < 1000; ++i) {
        readers.emplace_back([&] {
            for (int round = 0; round < 20; ++round) {
                lock.LockRead();
                torn += value != copy;
                lock.UnlockRead();
            }
        });
    }
    for (int round = 0; round < 2000; ++round) {
        const CSingleLock guard(&lock, TRUE);
        lock.LockRead();  // the writer may read
        ++value;
        lock.UnlockRead();
        ++copy;
    }
    for (std::thread& reader : readers) {
        reader.join();
    }
    EXPECT_EQ(torn, 0);
    EXPECT_EQ(value, 2000);
    EXPECT_EQ(lock.GetCounts(), KaCReadWriteLock::SCounts{});
}

TEST(ReadWriteLock, KeepsWritersApart) {
    KaCReadWriteLock lock;
    LONGLONG sum = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&, i] {
            for (int round = 0; round < 20000; ++round) {
                if ((round + i) % 4 == 0) {
                    lock.LockRead();
                    lock.UnlockRead();
                }
                lock.LockWrite();
                lock.LockWrite();
                ++sum;
                lock.UnlockWrite();
                lock.UnlockWrite();
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(sum, 80000);
    EXPECT_EQ(lock.GetCounts(), KaCReadWriteLock::SCounts{});
}

}  // namespace
