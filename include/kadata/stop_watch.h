#pragma once

// Elapsed time in whole seconds, in all and for the current period.

#include <afx.h>
#include <afxmt.h>
#include <kadata/export.h>

// Any thread may call any of it at any time.
class KADATA_API CStopWatch {
public:
    // `ticks` gives milliseconds and may wrap; null is the system's GetTickCount. A run may last 49 days.
    explicit CStopWatch(DWORD (*ticks)() = nullptr);

    // While it runs Start changes nothing, and while it stands Stop does not. Deliberate: Stop adds the run's whole seconds only,
    // so a run of 0.9 s adds nothing.
    void Start();
    void Stop();
    // Stops, and forgets both times.
    void Reset();
    // Forgets the period. Deliberate: a run that is going on counts from its own start.
    void ResetPeriod();
    BOOL IsRunning() const;

    // With the whole seconds of a run that is going on.
    CTimeSpan GetElapsedTime() const;
    CTimeSpan GetLastPeriodTime() const;
    // The same in seconds, from 65,536 on starting at 0 again.
    unsigned short GetElapsedTimeSecs() const;
    unsigned short GetLastPeriodSecs() const;

private:
    LONGLONG OfRun() const;  // whole seconds, with the lock held

    DWORD (*const m_pfnTicks)();
    CTimeSpan m_total;
    CTimeSpan m_period;
    DWORD m_nStartTick = 0;
    BOOL m_bRunning = FALSE;
    mutable CCriticalSection m_lock;  // guards all of the above
};
