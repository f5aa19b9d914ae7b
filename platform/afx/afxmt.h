#pragma once

// Locks. A CSingleLock guards a scope:
//     CSingleLock lock(&m_section, TRUE);

#include "afx_exception.h"

// What can be locked. Any thread may use one at any time.
class KADATA_API CSyncObject : public CObject {
    DECLARE_DYNAMIC(CSyncObject)

public:
    ~CSyncObject() override;

    // Waits at most `milliseconds`. FALSE when the time is over or the wait failed.
    virtual BOOL Lock(DWORD milliseconds = INFINITE);
    // FALSE when the calling thread has nothing to give back.
    virtual BOOL Unlock() = 0;

    operator HANDLE() const { return m_hObject; }
    HANDLE m_hObject = nullptr;  // null for a critical section

protected:
    CSyncObject() = default;
};

// Recursive, for the threads of one process. The constructor throws CAtlException when the system cannot give it one.
class KADATA_API CCriticalSection : public CSyncObject {
    DECLARE_DYNAMIC(CCriticalSection)

public:
    CCriticalSection();
    ~CCriticalSection() override;

    BOOL Lock() {
        EnterCriticalSection(&m_sect);
        return TRUE;
    }
    // Deliberate: the time is ignored, as the class has always done; a critical section waits for as long as it takes.
    BOOL Lock(DWORD /*milliseconds*/) override { return Lock(); }
    BOOL Unlock() override {
        LeaveCriticalSection(&m_sect);
        return TRUE;
    }

    operator CRITICAL_SECTION*() { return &m_sect; }
    CRITICAL_SECTION m_sect;
};

// Recursive, with a name for all processes. The constructor throws CResourceException* when there is none to be had.
class KADATA_API CMutex : public CSyncObject {
    DECLARE_DYNAMIC(CMutex)

public:
    explicit CMutex(BOOL initiallyOwned = FALSE, LPCTSTR name = nullptr, LPSECURITY_ATTRIBUTES security = nullptr);
    BOOL Unlock() override;
};

// Set or not; without manualReset a successful Lock resets it. The constructor throws CResourceException* when there is none
// to be had.
class KADATA_API CEvent : public CSyncObject {
    DECLARE_DYNAMIC(CEvent)

public:
    explicit CEvent(BOOL initiallySet = FALSE, BOOL manualReset = FALSE, LPCTSTR name = nullptr,
                    LPSECURITY_ATTRIBUTES security = nullptr);
    BOOL SetEvent() { return ::SetEvent(m_hObject); }
    BOOL ResetEvent() { return ::ResetEvent(m_hObject); }
    BOOL Unlock() override { return TRUE; }
};

// Locks one object and unlocks it when it goes. The object must outlive it.
class KADATA_API CSingleLock {
public:
    explicit CSingleLock(CSyncObject* object, BOOL lockNow = FALSE);
    CSingleLock(const CSingleLock&) = delete;
    CSingleLock& operator=(const CSingleLock&) = delete;
    ~CSingleLock() { Unlock(); }

    // TRUE when the lock is held; one that this guard already holds is not taken
    // again. FALSE when the time is over.
    BOOL Lock(DWORD milliseconds = INFINITE);
    // TRUE when the lock is not held any more.
    BOOL Unlock();
    BOOL IsLocked() const { return m_locked; }

private:
    CSyncObject* m_object;
    BOOL m_locked = FALSE;
};
