#include <kadata/stop_watch.h>

namespace {

DWORD SystemTicks() {
    return ::GetTickCount();
}

}  // namespace

CStopWatch::CStopWatch(DWORD (*ticks)()) : m_pfnTicks(ticks != nullptr ? ticks : &SystemTicks) {}

LONGLONG CStopWatch::OfRun() const {
    return m_bRunning ? (m_pfnTicks() - m_nStartTick) / 1000 : 0;
}

void CStopWatch::Start() {
    CSingleLock lock(&m_lock, TRUE);
    if (!m_bRunning) {
        m_bRunning = TRUE;
        m_nStartTick = m_pfnTicks();
    }
}

void CStopWatch::Stop() {
    CSingleLock lock(&m_lock, TRUE);
    const CTimeSpan run(OfRun());
    m_bRunning = FALSE;
    m_total += run;
    m_period += run;
}

void CStopWatch::Reset() {
    CSingleLock lock(&m_lock, TRUE);
    m_bRunning = FALSE;
    m_total = CTimeSpan();
    m_period = CTimeSpan();
}

void CStopWatch::ResetPeriod() {
    CSingleLock lock(&m_lock, TRUE);
    m_period = CTimeSpan();
}

BOOL CStopWatch::IsRunning() const {
    CSingleLock lock(&m_lock, TRUE);
    return m_bRunning;
}

CTimeSpan CStopWatch::GetElapsedTime() const {
    CSingleLock lock(&m_lock, TRUE);
    return m_total + CTimeSpan(OfRun());
}

CTimeSpan CStopWatch::GetLastPeriodTime() const {
    CSingleLock lock(&m_lock, TRUE);
    return m_period + CTimeSpan(OfRun());
}

unsigned short CStopWatch::GetElapsedTimeSecs() const {
    return static_cast<unsigned short>(GetElapsedTime().GetTotalSeconds());
}

unsigned short CStopWatch::GetLastPeriodSecs() const {
    return static_cast<unsigned short>(GetLastPeriodTime().GetTotalSeconds());
}
