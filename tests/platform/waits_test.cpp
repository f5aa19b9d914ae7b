#include <gtest/gtest.h>
#include <windows.h>

#include <thread>
#include <vector>

#include "support/child_process.h"
#include "support/handles.h"

namespace {

using test::ChildArgs;
using test::ChildProcess;
using test::Handle;
using test::UniqueName;
using Text = std::basic_string<TCHAR>;

constexpr DWORD kPatience = 20000;  // for what must happen

Handle NewEvent(BOOL manual, BOOL signalled = FALSE, const TCHAR* name = nullptr) {
    return Handle(CreateEventW(nullptr, manual, signalled, name));
}

DWORD WaitInAnotherThread(HANDLE handle, DWORD milliseconds) {
    DWORD result = WAIT_FAILED;
    std::thread([&] { result = WaitForSingleObject(handle, milliseconds); }).join();
    return result;
}

// Children. The first argument is a name, others follow.

// Takes the mutex, says so, and keeps it until it is killed.
int HoldMutex(const ChildArgs& args) {
    const Handle mutex(OpenMutexW(SYNCHRONIZE, FALSE, args[0].c_str()));
    const Handle ready(OpenEventW(EVENT_ALL_ACCESS, FALSE, args[1].c_str()));
    WaitForSingleObject(mutex, INFINITE);
    SetEvent(ready);
    return static_cast<int>(WaitForSingleObject(NewEvent(TRUE), INFINITE));
}
REGISTER_CHILD(HoldMutex)

// Makes an event, says so, and keeps it until it is killed.
int HoldEvent(const ChildArgs& args) {
    const Handle event = NewEvent(TRUE, TRUE, args[0].c_str());
    SetEvent(Handle(OpenEventW(EVENT_ALL_ACCESS, FALSE, args[1].c_str())));
    return static_cast<int>(WaitForSingleObject(NewEvent(TRUE), INFINITE));
}
REGISTER_CHILD(HoldEvent)

constexpr int kCounts = 2000;

// Counts in shared memory without any atomic operation, under the mutex.
int CountUnderMutex(const ChildArgs& args) {
    const Handle mutex(OpenMutexW(SYNCHRONIZE, FALSE, args[0].c_str()));
    const Handle mapping(OpenFileMappingW(FILE_MAP_ALL_ACCESS, FALSE, args[1].c_str()));
    auto* const count = static_cast<volatile int*>(MapViewOfFile(mapping, FILE_MAP_ALL_ACCESS, 0, 0, 0));
    for (int i = 0; i < kCounts; ++i) {
        if (WaitForSingleObject(mutex, kPatience) != WAIT_OBJECT_0) {
            return 1;
        }
        *count = *count + 1;
        ReleaseMutex(mutex);
    }
    return 0;
}
REGISTER_CHILD(CountUnderMutex)

// Passes each of three signals on.
int Echo(const ChildArgs& args) {
    const Handle ping(OpenEventW(EVENT_ALL_ACCESS, FALSE, args[0].c_str()));
    const Handle pong(OpenEventW(EVENT_ALL_ACCESS, FALSE, args[1].c_str()));
    for (int i = 0; i < 3; ++i) {
        if (WaitForSingleObject(ping, kPatience) != WAIT_OBJECT_0) {
            return 1;
        }
        SetEvent(pong);
    }
    return 0;
}
REGISTER_CHILD(Echo)

// Opens, takes, releases and closes without end.
int ChurnForEver(const ChildArgs& args) {
    for (;;) {
        const Handle mutex(CreateMutexW(nullptr, TRUE, args[0].c_str()));
        const bool existed = GetLastError() == ERROR_ALREADY_EXISTS;
        if (!mutex || (existed && WaitForSingleObject(mutex, kPatience) == WAIT_TIMEOUT) || !ReleaseMutex(mutex)) {
            return 1;
        }
        SetEvent(Handle(OpenEventW(EVENT_ALL_ACCESS, FALSE, args[1].c_str())));
    }
}
REGISTER_CHILD(ChurnForEver)

TEST(Event, LetsOneThroughOrStaysSignalled) {
    const Handle single = NewEvent(FALSE, TRUE);
    EXPECT_EQ(WaitForSingleObject(single, 0), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(single, 0), WAIT_TIMEOUT);
    SetEvent(single);
    SetEvent(single);
    EXPECT_EQ(WaitForSingleObject(single, 0), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(single, 1), WAIT_TIMEOUT) << "two signals without a waiting thread are one";

    const Handle manual = NewEvent(TRUE);
    EXPECT_EQ(WaitForSingleObject(manual, 0), WAIT_TIMEOUT);
    SetEvent(manual);
    EXPECT_EQ(WaitForSingleObject(manual, 0), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(manual, 0), WAIT_OBJECT_0);
    ResetEvent(manual);
    EXPECT_EQ(WaitForSingleObject(manual, 0), WAIT_TIMEOUT);
}

TEST(Event, HandsEachSignalToOneThread) {
    constexpr int kSignals = 2000;
    const Handle work = NewEvent(FALSE);
    const Handle done = NewEvent(FALSE);
    const Handle stop = NewEvent(TRUE);
    int taken = 0;  // guarded by the strict turns of work and done
    std::vector<std::thread> threads;
    for (int i = 0; i < 3; ++i) {
        threads.emplace_back([&] {
            const HANDLE both[] = {stop, work};
            while (WaitForMultipleObjects(2, both, FALSE, kPatience) == WAIT_OBJECT_0 + 1) {
                ++taken;
                SetEvent(done);
            }
        });
    }
    for (int i = 0; i < kSignals; ++i) {
        SetEvent(work);
        ASSERT_EQ(WaitForSingleObject(done, kPatience), WAIT_OBJECT_0);
    }
    SetEvent(stop);
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(taken, kSignals);
}

TEST(Mutex, BelongsToTheThreadThatTookIt) {
    const Handle mutex(CreateMutexW(nullptr, TRUE, nullptr));
    EXPECT_EQ(GetLastError(), ERROR_SUCCESS);
    EXPECT_EQ(WaitForSingleObject(mutex, 0), WAIT_OBJECT_0) << "again";
    EXPECT_TRUE(ReleaseMutex(mutex));
    EXPECT_EQ(WaitInAnotherThread(mutex, 0), WAIT_TIMEOUT) << "released once of twice";
    std::thread([&] {
        EXPECT_FALSE(ReleaseMutex(mutex));
        EXPECT_EQ(GetLastError(), ERROR_NOT_OWNER);
    }).join();
    EXPECT_TRUE(ReleaseMutex(mutex));
    EXPECT_FALSE(ReleaseMutex(mutex));
    EXPECT_EQ(GetLastError(), ERROR_NOT_OWNER);
}

TEST(Mutex, IsAbandonedByAThreadThatEnds) {
    for (const Text& name : {Text(), UniqueName(_T("Abandoned"))}) {
        const Handle mutex(CreateMutexW(nullptr, FALSE, name.empty() ? nullptr : name.c_str()));
        EXPECT_EQ(WaitInAnotherThread(mutex, 0), WAIT_OBJECT_0);
        EXPECT_EQ(WaitForSingleObject(mutex, kPatience), WAIT_ABANDONED);
        EXPECT_TRUE(ReleaseMutex(mutex));
        EXPECT_EQ(WaitForSingleObject(mutex, 0), WAIT_OBJECT_0) << "told once";
        ReleaseMutex(mutex);

        const Handle event = NewEvent(TRUE);
        EXPECT_EQ(WaitInAnotherThread(mutex, 0), WAIT_OBJECT_0);
        const HANDLE both[] = {mutex, event};
        EXPECT_EQ(WaitForMultipleObjects(2, both, TRUE, 0), WAIT_TIMEOUT) << "not told while the other one is missing";
        EXPECT_EQ(WaitForMultipleObjects(2, both, FALSE, kPatience), WAIT_ABANDONED_0);
        ReleaseMutex(mutex);
    }
}

TEST(Mutex, MayBeClosedWhileOwned) {
    const Text name = UniqueName(_T("ClosedOwned"));
    Handle mine(CreateMutexW(nullptr, TRUE, name.c_str()));
    const Handle released = NewEvent(TRUE);
    const Handle taken = NewEvent(TRUE);
    Handle other(CreateMutexW(nullptr, FALSE, nullptr));
    std::thread owner([&] {
        WaitForSingleObject(other, INFINITE);
        SetEvent(taken);
        WaitForSingleObject(released, INFINITE);
        const Handle later(CreateMutexW(nullptr, TRUE, nullptr));  // its list of mutexes is still whole
        EXPECT_TRUE(ReleaseMutex(later));
    });
    EXPECT_EQ(WaitForSingleObject(taken, kPatience), WAIT_OBJECT_0);
    mine.Close();
    other.Close();
    SetEvent(released);
    owner.join();
    const Handle again(CreateMutexW(nullptr, FALSE, name.c_str()));
    EXPECT_EQ(GetLastError(), ERROR_SUCCESS) << "a new one";
    EXPECT_EQ(WaitInAnotherThread(again, 0), WAIT_OBJECT_0);
}

TEST(WaitForMultipleObjects, ForOneTakesTheFirstSignalledOnly) {
    const Handle events[] = {NewEvent(FALSE), NewEvent(FALSE, TRUE), NewEvent(FALSE, TRUE)};
    const HANDLE list[] = {events[0], events[1], events[2]};
    EXPECT_EQ(WaitForMultipleObjects(3, list, FALSE, INFINITE), WAIT_OBJECT_0 + 1);
    EXPECT_EQ(WaitForMultipleObjects(3, list, FALSE, INFINITE), WAIT_OBJECT_0 + 2);
    EXPECT_EQ(WaitForMultipleObjects(3, list, FALSE, 1), WAIT_TIMEOUT);
    std::thread signaller([&] { SetEvent(events[0]); });
    EXPECT_EQ(WaitForMultipleObjects(3, list, FALSE, kPatience), WAIT_OBJECT_0);
    signaller.join();
}

TEST(WaitForMultipleObjects, ForAllTakesAllOrNone) {
    const Handle event = NewEvent(FALSE, TRUE);
    const Handle mutex(CreateMutexW(nullptr, FALSE, nullptr));
    const Handle missing = NewEvent(TRUE);
    const HANDLE list[] = {event, mutex, missing};
    EXPECT_EQ(WaitForMultipleObjects(3, list, TRUE, 1), WAIT_TIMEOUT);
    EXPECT_EQ(WaitInAnotherThread(mutex, 0), WAIT_OBJECT_0) << "not kept";
    EXPECT_EQ(WaitForSingleObject(mutex, kPatience), WAIT_ABANDONED);
    ReleaseMutex(mutex);

    std::thread signaller([&] { SetEvent(missing); });
    EXPECT_EQ(WaitForMultipleObjects(3, list, TRUE, kPatience), WAIT_OBJECT_0);
    signaller.join();
    EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_TIMEOUT) << "taken";
    EXPECT_TRUE(ReleaseMutex(mutex));
}

TEST(WaitForMultipleObjects, RefusesWrongLists) {
    const Handle event = NewEvent(TRUE, TRUE);
    std::vector<HANDLE> many(MAXIMUM_WAIT_OBJECTS + 1, event);
    const struct {
        DWORD count;
        BOOL all;
        DWORD error;
    } rows[] = {{0, FALSE, ERROR_INVALID_PARAMETER},
                {MAXIMUM_WAIT_OBJECTS + 1, FALSE, ERROR_INVALID_PARAMETER},
                {2, TRUE, ERROR_INVALID_PARAMETER}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.count);
        EXPECT_EQ(WaitForMultipleObjects(row.count, many.data(), row.all, 0), WAIT_FAILED);
        EXPECT_EQ(GetLastError(), row.error);
    }
    EXPECT_EQ(WaitForMultipleObjects(MAXIMUM_WAIT_OBJECTS, many.data(), FALSE, 0), WAIT_OBJECT_0);
    many[1] = reinterpret_cast<HANDLE>(ULONG_PTR{0x7FFFFFF0});
    EXPECT_EQ(WaitForMultipleObjects(2, many.data(), TRUE, 0), WAIT_FAILED);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
}

TEST(NamedObject, SaysWhetherItExisted) {
    const Text name = UniqueName(_T("Named"));
    Handle first = NewEvent(TRUE, TRUE, name.c_str());
    EXPECT_EQ(GetLastError(), ERROR_SUCCESS);
    Handle second = NewEvent(FALSE, FALSE, (_T("Local\\") + name).c_str());
    EXPECT_EQ(GetLastError(), ERROR_ALREADY_EXISTS);
    EXPECT_EQ(WaitForSingleObject(second, 0), WAIT_OBJECT_0) << "signalled as made";
    EXPECT_EQ(WaitForSingleObject(second, 0), WAIT_OBJECT_0) << "manual as made";

    EXPECT_EQ(CreateMutexW(nullptr, FALSE, name.c_str()), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
    const Handle elsewhere = NewEvent(TRUE, FALSE, (_T("Global\\") + name).c_str());
    EXPECT_EQ(GetLastError(), ERROR_SUCCESS);

    first.Close();
    EXPECT_TRUE(Handle(OpenEventW(SYNCHRONIZE, FALSE, name.c_str())));
    second.Close();
    EXPECT_EQ(OpenEventW(SYNCHRONIZE, FALSE, name.c_str()), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
}

TEST(NamedObject, RefusesWrongNames) {
    const struct {
        Text name;
        DWORD error;
    } rows[] = {
        {_T("a\\b"), ERROR_PATH_NOT_FOUND},
        {_T("Local\\a\\b"), ERROR_PATH_NOT_FOUND},
        {Text(MAX_PATH + 1, _T('n')), ERROR_FILENAME_EXCED_RANGE},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.error);
        EXPECT_EQ(CreateMutexW(nullptr, FALSE, row.name.c_str()), nullptr);
        EXPECT_EQ(GetLastError(), row.error);
        EXPECT_EQ(OpenMutexW(SYNCHRONIZE, FALSE, row.name.c_str()), nullptr);
        EXPECT_EQ(GetLastError(), row.error);
    }
    EXPECT_EQ(OpenMutexW(SYNCHRONIZE, FALSE, nullptr), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);

    const Text name = UniqueName(_T("case"));
    const Handle lower(CreateMutexW(nullptr, FALSE, name.c_str()));
    const Handle upper(CreateMutexW(nullptr, FALSE, (_T("C") + name.substr(1)).c_str()));
    EXPECT_EQ(GetLastError(), ERROR_SUCCESS) << "names that differ in case are two";
}

TEST(NamedObject, ComesAndGoesWholeInManyThreads) {
    const Text name = UniqueName(_T("Churn"));
    int inside = 0;  // guarded by the mutex, whichever it is at the moment
    const Handle keeper(CreateMutexW(nullptr, FALSE, (name + _T(".kept")).c_str()));
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < 200; ++round) {
                const Handle churned = NewEvent(TRUE, TRUE, name.c_str());
                EXPECT_EQ(WaitForSingleObject(churned, 0), WAIT_OBJECT_0);
                const Handle kept(CreateMutexW(nullptr, FALSE, (name + _T(".kept")).c_str()));
                EXPECT_EQ(WaitForSingleObject(kept, kPatience), WAIT_OBJECT_0);
                ++inside;
                EXPECT_TRUE(ReleaseMutex(kept));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(inside, 800);
}

TEST(BetweenProcesses, AMutexKeepsOthersOut) {
    const Text mutex_name = UniqueName(_T("Count"));
    const Text memory_name = mutex_name + _T(".memory");
    const Handle mutex(CreateMutexW(nullptr, FALSE, mutex_name.c_str()));
    const Handle mapping(CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(int), memory_name.c_str()));
    auto* const count = static_cast<int*>(MapViewOfFile(mapping, FILE_MAP_READ, 0, 0, 0));
    ASSERT_NE(count, nullptr);
    const ChildProcess first({_T("CountUnderMutex"), mutex_name, memory_name});
    const ChildProcess second({_T("CountUnderMutex"), mutex_name, memory_name});
    EXPECT_EQ(first.Wait(kPatience), 0U);
    EXPECT_EQ(second.Wait(kPatience), 0U);
    EXPECT_EQ(*count, 2 * kCounts);
    UnmapViewOfFile(count);
}

TEST(BetweenProcesses, AKilledOwnerAbandonsItsMutex) {
    const Text name = UniqueName(_T("Killed"));
    const Handle mutex(CreateMutexW(nullptr, FALSE, name.c_str()));
    const Handle ready = NewEvent(FALSE, FALSE, (name + _T(".ready")).c_str());
    for (int round = 0; round < 3; ++round) {
        const ChildProcess child({_T("HoldMutex"), name, name + _T(".ready")});
        ASSERT_EQ(WaitForSingleObject(ready, kPatience), WAIT_OBJECT_0);
        EXPECT_EQ(WaitForSingleObject(mutex, 0), WAIT_TIMEOUT);
        child.Kill();
        EXPECT_EQ(WaitForSingleObject(mutex, kPatience), WAIT_ABANDONED);
        EXPECT_TRUE(ReleaseMutex(mutex));
    }
}

TEST(BetweenProcesses, AKillAtAnyMomentLeavesTheNameUsable) {
    const Text name = UniqueName(_T("Churned"));
    const Handle ready = NewEvent(FALSE, FALSE, (name + _T(".ready")).c_str());
    const ChildProcess survivor({_T("ChurnForEver"), name, name + _T(".ready")});
    for (int round = 0; round < 20; ++round) {
        const ChildProcess victim({_T("ChurnForEver"), name, name + _T(".ready")});
        for (int i = 0; i <= round; ++i) {
            ASSERT_EQ(WaitForSingleObject(ready, kPatience), WAIT_OBJECT_0);
        }
        victim.Kill();
        const Handle mutex(CreateMutexW(nullptr, FALSE, name.c_str()));
        ASSERT_TRUE(mutex);
        ASSERT_NE(WaitForSingleObject(mutex, kPatience), WAIT_TIMEOUT);
        EXPECT_TRUE(ReleaseMutex(mutex));
    }
    EXPECT_EQ(survivor.Wait(0), std::nullopt) << "still at it";
    survivor.Kill();
    EXPECT_TRUE(Handle(CreateMutexW(nullptr, FALSE, name.c_str()))) << "and nothing is left when it is closed";
}

TEST(BetweenProcesses, AnObjectEndsWithItsLastProcess) {
    const Text name = UniqueName(_T("Life"));
    const Handle ready = NewEvent(FALSE, FALSE, (name + _T(".ready")).c_str());
    const ChildProcess child({_T("HoldEvent"), name, name + _T(".ready")});
    ASSERT_EQ(WaitForSingleObject(ready, kPatience), WAIT_OBJECT_0);
    Handle event = NewEvent(TRUE, FALSE, name.c_str());
    EXPECT_EQ(GetLastError(), ERROR_ALREADY_EXISTS);
    event.Close();
    EXPECT_TRUE(Handle(OpenEventW(SYNCHRONIZE, FALSE, name.c_str()))) << "the child has it still";

    child.Kill();
    EXPECT_EQ(OpenEventW(SYNCHRONIZE, FALSE, name.c_str()), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
    event = NewEvent(TRUE, FALSE, name.c_str());
    EXPECT_EQ(GetLastError(), ERROR_SUCCESS);
    EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_TIMEOUT) << "not the signalled one of the child";
}

TEST(BetweenProcesses, EventsAndTheEndOfAProcessAreSeen) {
    const Text name = UniqueName(_T("Echo"));
    const Handle ping = NewEvent(FALSE, FALSE, name.c_str());
    const Handle pong = NewEvent(FALSE, FALSE, (name + _T(".back")).c_str());
    const ChildProcess child({_T("Echo"), name, name + _T(".back")});
    const HANDLE both[] = {pong, child.Process()};
    for (int i = 0; i < 3; ++i) {
        SetEvent(ping);
        EXPECT_EQ(WaitForMultipleObjects(2, both, FALSE, kPatience), WAIT_OBJECT_0);
    }
    EXPECT_EQ(WaitForMultipleObjects(2, both, FALSE, kPatience), WAIT_OBJECT_0 + 1);
    EXPECT_EQ(child.Wait(0), 0U);
}

}  // namespace
