#pragma once

// What the processes that write into one log folder know of each other: a named mutex around each message, and a small shared
// memory that tells which file is current and how long it is, so that nobody has to ask the disk before each message.

#include <afx.h>

class CLogShare {
public:
    // Current file of the folder. Guarded by the named mutex. All zero before the first process has chosen a file.
    struct SState {
        DWORD dwGeneration;  // counts the choices of a file; a writer that knows another one follows
        DWORD dwNumber;      // of the current file; NO_NUMBER when its name has none
        DWORD dwSize;        // of the current file, in bytes
        DWORD dwTorn;        // not 0: the last message may have been cut; the next writer looks
    };
    static constexpr DWORD NO_NUMBER = MAXDWORD;

    CLogShare() = default;
    CLogShare(const CLogShare&) = delete;
    CLogShare& operator=(const CLogShare&) = delete;
    ~CLogShare();

    // Waits for the other processes, at most a second. Whether or not the mutex was obtained the caller goes on and calls Leave.
    void Enter();
    void Leave();

    // Finds the shared memory of `folder`, which must exist. Without it State() stays null and the disk is asked instead.
    void Attach(const CString& folder);

    // Null unless Enter obtained the mutex and Attach found the memory.
    SState* State() const;

private:
    void Detach();
    void ForgetAfterCrash();

    HANDLE m_hMutex = nullptr;
    HANDLE m_hMapping = nullptr;
    SState* m_pState = nullptr;
    ULONGLONG m_ullFolder = 0;  // identity of the folder that m_pState belongs to
    bool m_bHeld = false;
};
