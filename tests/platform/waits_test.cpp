#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <thread>
#include <vector>

#include "support/child_process.h"
#include "support/handles.h"
#include "support/last_error.h"
#include "support/wine.h"

namespace {

using test::ChildArgs, test::ChildProcess, test::ErrorOf, test::Handle, test::UniqueName;
using Text = std::basic_string<TCHAR>;

constexpr DWORD kPatience = 20000;  // for what must happen

Handle NewEvent(BOOL manual, BOOL signalled = FALSE, const TCHAR* name = nullptr) {
    return Handle(CreateEventW(nullptr, manual, signalled, name));
}

Handle NewMutex(BOOL taken = FALSE, const TCHAR* name = nullptr) {
    return Handle(CreateMutexW(nullptr, taken, name));
}

DWORD Poll(HANDLE handle) {
    return WaitForSingleObject(handle, 0);
}

// Runs body(0), body(1) ... in a thread each, to their end.
template <class Body>
void InThreads(int count, Body body) {
    std::vector<std::jthread> threads;
    for (int i = 0; i < count; ++i)
        threads.emplace_back(body, i);
}

DWORD PollInAnotherThread(HANDLE handle) {
    DWORD result = WAIT_FAILED;
    InThreads(1, [&](int) { result = Poll(handle); });
    return result;
}

// Takes the mutex of the first name, or makes an event of it; signals the second, and keeps the first until it is killed.
int Hold(const ChildArgs& args) {
    Handle object(OpenMutexW(SYNCHRONIZE, FALSE, args[0].c_str()));
    if (!object)
        object = NewEvent(TRUE, TRUE, args[0].c_str());
    WaitForSingleObject(object, INFINITE);
    SetEvent(Handle(OpenEventW(EVENT_ALL_ACCESS, FALSE, args[1].c_str())));
    return static_cast<int>(WaitForSingleObject(NewEvent(TRUE), INFINITE));
}
REGISTER_CHILD(Hold)

// Opens, takes, releases and closes without end.
int ChurnForEver(const ChildArgs& args) {
    for (;;) {
        const Handle mutex = NewMutex(TRUE, args[0].c_str());
        const bool existed = GetLastError() == ERROR_ALREADY_EXISTS;
        if (!mutex || (existed && WaitForSingleObject(mutex, kPatience) == WAIT_TIMEOUT) || !ReleaseMutex(mutex))
            return 1;
        SetEvent(Handle(OpenEventW(EVENT_ALL_ACCESS, FALSE, args[1].c_str())));
    }
}
REGISTER_CHILD(ChurnForEver)

TEST(Event, LetsOneThroughOrStaysSignalled) {
    for (const BOOL manual : {FALSE, TRUE}) {
        SCOPED_TRACE(manual);
        const DWORD again = manual ? WAIT_OBJECT_0 : WAIT_TIMEOUT;
        const Handle event = NewEvent(manual, TRUE);
        EXPECT_EQ(Poll(event), WAIT_OBJECT_0);
        EXPECT_EQ(Poll(event), again);
        ResetEvent(event);
        EXPECT_EQ(WaitForSingleObject(event, 1), WAIT_TIMEOUT);
        SetEvent(event);
        SetEvent(event);
        EXPECT_EQ(Poll(event), WAIT_OBJECT_0);
        EXPECT_EQ(Poll(event), again) << "two signals without a waiting thread are one";
    }
}

TEST(Event, HandsEachSignalToOneThread) {
    constexpr int kSignals = 2000;
    const Handle work = NewEvent(FALSE), done = NewEvent(FALSE), stop = NewEvent(TRUE);
    int taken = 0;  // guarded by the strict turns of work and done
    InThreads(4, [&](int number) {
        const HANDLE both[] = {stop, work};
        while (number != 0 && WaitForMultipleObjects(2, both, FALSE, kPatience) == WAIT_OBJECT_0 + 1) {
            ++taken;
            SetEvent(done);
        }
        for (int i = 0; number == 0 && i < kSignals; ++i) {
            SetEvent(work);
            EXPECT_EQ(WaitForSingleObject(done, kPatience), WAIT_OBJECT_0);
        }
        SetEvent(stop);
    });
    EXPECT_EQ(taken, kSignals);
}

TEST(Mutex, BelongsToTheThreadThatTookIt) {
    const Handle mutex = NewMutex(TRUE);
    EXPECT_EQ(Poll(mutex), WAIT_OBJECT_0) << "again";
    EXPECT_TRUE(ReleaseMutex(mutex));
    EXPECT_EQ(PollInAnotherThread(mutex), WAIT_TIMEOUT) << "released once of twice";
    InThreads(1, [&](int) { EXPECT_EQ(ErrorOf(ReleaseMutex(mutex)), ERROR_NOT_OWNER); });
    EXPECT_TRUE(ReleaseMutex(mutex));
    EXPECT_EQ(ErrorOf(ReleaseMutex(mutex)), ERROR_NOT_OWNER);
}

TEST(Mutex, IsAbandonedByAThreadThatEnds) {
    for (const Text& name : {Text(), UniqueName(_T("Abandoned"))}) {
        const Handle mutex = NewMutex(FALSE, name.empty() ? nullptr : name.c_str());
        EXPECT_EQ(PollInAnotherThread(mutex), WAIT_OBJECT_0);
        EXPECT_EQ(WaitForSingleObject(mutex, kPatience), WAIT_ABANDONED);
        EXPECT_TRUE(ReleaseMutex(mutex));
        EXPECT_EQ(PollInAnotherThread(mutex), WAIT_OBJECT_0) << "told once";

        const Handle event = NewEvent(TRUE);
        const HANDLE both[] = {mutex, event};
        EXPECT_EQ(WaitForMultipleObjects(2, both, TRUE, 0), WAIT_TIMEOUT) << "not told while the other one is missing";
        EXPECT_EQ(WaitForMultipleObjects(2, both, FALSE, kPatience), WAIT_ABANDONED_0);
    }
}

TEST(WaitForMultipleObjects, ForOneTakesTheFirstSignalledOnly) {
    const Handle events[] = {NewEvent(FALSE), NewEvent(FALSE, TRUE), NewEvent(FALSE, TRUE)};
    const HANDLE list[] = {events[0], events[1], events[2]};
    EXPECT_EQ(WaitForMultipleObjects(3, list, FALSE, INFINITE), WAIT_OBJECT_0 + 1);
    EXPECT_EQ(WaitForMultipleObjects(3, list, FALSE, INFINITE), WAIT_OBJECT_0 + 2);
    EXPECT_EQ(WaitForMultipleObjects(3, list, FALSE, 1), WAIT_TIMEOUT);
}

TEST(WaitForMultipleObjects, ForAllTakesAllOrNone) {
    const Handle event = NewEvent(FALSE, TRUE), mutex = NewMutex(), missing = NewEvent(TRUE);
    const HANDLE list[] = {event, mutex, missing};
    EXPECT_EQ(WaitForMultipleObjects(3, list, TRUE, 1), WAIT_TIMEOUT);
    std::jthread([&] { EXPECT_TRUE(Poll(mutex) == WAIT_OBJECT_0 && ReleaseMutex(mutex)) << "not kept"; }).join();

    const std::jthread signaller([&] { SetEvent(missing); });
    EXPECT_EQ(WaitForMultipleObjects(3, list, TRUE, kPatience), WAIT_OBJECT_0);
    EXPECT_EQ(Poll(event), WAIT_TIMEOUT) << "taken";
    EXPECT_TRUE(ReleaseMutex(mutex));
}

TEST(WaitForMultipleObjects, RefusesWrongLists) {
    const Handle event = NewEvent(TRUE, TRUE);
    std::vector<HANDLE> many(MAXIMUM_WAIT_OBJECTS + 1, event);
    const auto error = [&many](DWORD count, BOOL all) {
        return WaitForMultipleObjects(count, many.data(), all, 0) == WAIT_FAILED ? GetLastError() : ERROR_SUCCESS;
    };
    EXPECT_EQ(error(0, FALSE), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(error(MAXIMUM_WAIT_OBJECTS + 1, FALSE), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(WaitForMultipleObjects(MAXIMUM_WAIT_OBJECTS, many.data(), FALSE, 0), WAIT_OBJECT_0);
    const Text name = UniqueName(_T("Twice"));
    const Handle mutex = NewMutex(FALSE, name.c_str()), again(OpenMutexW(SYNCHRONIZE, FALSE, name.c_str()));
    for (const auto& [first, second] : {std::pair<HANDLE, HANDLE>{event, event}, {mutex, again}}) {
        many = {first, second};
        EXPECT_EQ(error(2, TRUE), test::UnlessWine(ERROR_INVALID_PARAMETER, ERROR_SUCCESS)) << "one object twice";
    }
    many[1] = reinterpret_cast<HANDLE>(ULONG_PTR{0x7FFFFFF0});
    EXPECT_EQ(error(2, TRUE), ERROR_INVALID_HANDLE);
}

TEST(NamedObject, SaysWhetherItExistedOrCannot) {
    const Text name = UniqueName(_T("Named")) + Text(0x7000, _T('n'));
    Handle first = NewEvent(TRUE, TRUE, name.c_str());
    EXPECT_EQ(GetLastError(), ERROR_SUCCESS);
    Handle second = NewEvent(FALSE, FALSE, (_T("Local\\") + name).c_str());
    EXPECT_EQ(GetLastError(), ERROR_ALREADY_EXISTS);
    EXPECT_TRUE(Poll(second) == WAIT_OBJECT_0 && Poll(second) == WAIT_OBJECT_0) << "signalled and manual as made";

    EXPECT_EQ(ErrorOf(CreateMutexW(nullptr, FALSE, name.c_str())), ERROR_INVALID_HANDLE);
    // Case counts, and every character.
    for (const Text& other : {_T("Global\\") + name, _T("n") + name.substr(1), name + _T('n')}) {
        const Handle elsewhere = NewEvent(TRUE, FALSE, other.c_str());
        EXPECT_EQ(GetLastError(), ERROR_SUCCESS);
    }
    first.Close();
    EXPECT_TRUE(Handle(OpenEventW(SYNCHRONIZE, FALSE, name.c_str())));
    second.Close();
    EXPECT_EQ(ErrorOf(OpenEventW(SYNCHRONIZE, FALSE, name.c_str())), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(ErrorOf(CreateMutexW(nullptr, FALSE, _T("Local\\a\\b"))), ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(ErrorOf(OpenMutexW(SYNCHRONIZE, FALSE, _T("a\\b"))), ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(ErrorOf(OpenMutexW(SYNCHRONIZE, FALSE, nullptr)), ERROR_INVALID_PARAMETER);
}

TEST(BetweenProcesses, AKilledOwnerAbandonsItsMutex) {
    const Text name = UniqueName(_T("Killed")), ready_name = name + _T(".ready");
    const Handle mutex = NewMutex(FALSE, name.c_str());
    const Handle ready = NewEvent(FALSE, FALSE, ready_name.c_str());
    const ChildProcess child({_T("Hold"), name, ready_name});
    const HANDLE both[] = {ready, child.Process()};
    ASSERT_EQ(WaitForMultipleObjects(2, both, FALSE, kPatience), WAIT_OBJECT_0);
    EXPECT_EQ(Poll(mutex), WAIT_TIMEOUT);
    child.Kill();
    EXPECT_EQ(WaitForMultipleObjects(2, both, FALSE, kPatience), WAIT_OBJECT_0 + 1);
    EXPECT_EQ(WaitForSingleObject(mutex, kPatience), WAIT_ABANDONED);
    EXPECT_TRUE(ReleaseMutex(mutex));
}

TEST(BetweenProcesses, AKillAtAnyMomentLeavesTheNameUsable) {
    const Text name = UniqueName(_T("Churned")), ready_name = name + _T(".ready");
    const Handle ready = NewEvent(FALSE, FALSE, ready_name.c_str());
    const ChildProcess survivor({_T("ChurnForEver"), name, ready_name});
    for (int round = 0; round < 20; ++round) {
        const ChildProcess victim({_T("ChurnForEver"), name, ready_name});
        for (int i = 0; i <= round; ++i)
            ASSERT_EQ(WaitForSingleObject(ready, kPatience), WAIT_OBJECT_0);
        victim.Kill();
        const Handle mutex = NewMutex(FALSE, name.c_str());
        ASSERT_TRUE(mutex);
        ASSERT_NE(WaitForSingleObject(mutex, kPatience), WAIT_TIMEOUT);
        EXPECT_TRUE(ReleaseMutex(mutex));
    }
    EXPECT_EQ(survivor.Wait(0), std::nullopt) << "still at it";
    survivor.Kill();
    EXPECT_TRUE(NewMutex(FALSE, name.c_str())) << "and nothing is left when it is closed";
}

TEST(BetweenProcesses, AnObjectEndsWithItsLastProcess) {
    const Text name = UniqueName(_T("Life")), ready_name = name + _T(".ready");
    const Handle ready = NewEvent(FALSE, FALSE, ready_name.c_str());
    const ChildProcess child({_T("Hold"), name, ready_name});
    ASSERT_EQ(WaitForSingleObject(ready, kPatience), WAIT_OBJECT_0);
    EXPECT_TRUE(Handle(OpenEventW(SYNCHRONIZE, FALSE, name.c_str())));
    EXPECT_TRUE(Handle(OpenEventW(SYNCHRONIZE, FALSE, name.c_str()))) << "the child has it still";
    child.Kill();
    EXPECT_EQ(ErrorOf(OpenEventW(SYNCHRONIZE, FALSE, name.c_str())), ERROR_FILE_NOT_FOUND);
}

}  // namespace
