#include <afxmt.h>
#include <gtest/gtest.h>

#include <thread>

#include "expect.h"

namespace {

// Whether another thread could have the lock now.
bool IsFree(CSyncObject& object) {
    BOOL locked = FALSE;
    std::thread([&] { locked = CSingleLock(&object).Lock(0); }).join();
    return locked != FALSE;
}

bool IsFree(CCriticalSection& section) {
    BOOL entered = FALSE;
    std::thread([&] {
        entered = TryEnterCriticalSection(section);
        if (entered)
            section.Unlock();
    }).join();
    return entered != FALSE;
}

template <class Lock>
void ExpectAGuardedScope() {
    Lock object;
    EXPECT_TRUE(test::IsInvalid([&] {
        CSingleLock lock(&object, TRUE);
        EXPECT_TRUE(lock.IsLocked());
        EXPECT_FALSE(IsFree(object));
        EXPECT_TRUE(lock.Lock());  // already held, so one Unlock is enough
        EXPECT_TRUE(lock.Unlock());
        EXPECT_FALSE(lock.IsLocked());
        EXPECT_TRUE(IsFree(object));
        EXPECT_TRUE(lock.Lock());
        EXPECT_FALSE(IsFree(object));
        AfxThrowInvalidArgException();
    }));
    EXPECT_TRUE(IsFree(object));
}

TEST(SingleLock, HoldsItsObjectUntilAnExceptionPasses) {
    ExpectAGuardedScope<CCriticalSection>();
    ExpectAGuardedScope<CMutex>();
}

TEST(SingleLock, GivesUpWhenTheTimeIsOver) {
    CEvent event;
    CSingleLock lock(&event);
    EXPECT_FALSE(lock.Lock(0));
    EXPECT_FALSE(lock.IsLocked());
    event.SetEvent();
    EXPECT_TRUE(lock.Lock(0));
    EXPECT_FALSE(IsFree(event));  // it let one through
}

TEST(Locks, ThrowWhenTheSystemHasNone) {
    EXPECT_THROW(CMutex(FALSE, _T("Local\\a\\b")), CResourceException*);
    EXPECT_THROW(CEvent(FALSE, FALSE, _T("Local\\a\\b")), CResourceException*);
}

}  // namespace
