#pragma once

// Progress and remaining time of a long computation that is made of consecutive parts.
//
//     CProgressCalculator progress;
//     progress.AddPart(10, 0);                 // expected to take 10 s
//     progress.AddPart(30, 12);                // 30 s, in 12 steps
//     progress.Start();
//     progress.Hint(1, 0.5);                   // by the computation: half of part 1 is done
//     progress.GetProgress();                  // by the user interface: 0.0 to 1.0
//
// Any thread may call at any time; only Stop, EnableRemainingTimeInfo and AddProgressLogInfo, which take no lock, belong to the
// computation's thread. Before Start, and without parts, reports change nothing and questions are answered with 0.
//
// Deliberate: what is shown is computed at most every five seconds, so that it does not flicker, and the remaining time is
// smoothed. Thousandths are cut, not rounded. The oddities below are those that hosts know.

#include <afx.h>
#include <afxcoll.h>
#include <afxmt.h>
#include <kadata/export.h>

// Where the calculator takes its times from; the system's clocks where none is handed in.
class KADATA_API IProgressClock {
public:
    virtual ~IProgressClock() = default;
    // Units of 100 ns since 1601, UTC. A time before an earlier one counts as the same time.
    virtual ULONGLONG Time64() const = 0;
    // Milliseconds; wraps.
    virtual DWORD TickCount() const = 0;
};

struct SProgressPart {
    ULONGLONG nExpected;  // 100 ns
    ULONGLONG nMeasured;  // 100 ns; the expected duration until it was measured
    DWORD nSteps;         // 0: this part has no steps
    DWORD nCurrentStep;
};

// As an array of texts it is the list of the adjustments that were made, for diagnostics.
class KADATA_API CProgressCalculator : public CStringArray {
public:
    CProgressCalculator();
    // `clock` must outlive the calculator.
    explicit CProgressCalculator(const IProgressClock& clock);

    // Not running, without parts, remaining time enabled. The lines of the list stay.
    void Reset();
    // Returns the part's index. A duration of 0 s is allowed, but such a part knows no progress of its own.
    int AddPart(DWORD expectedSeconds, UINT steps);
    void RemoveLastPart();

    // Part 0 begins now; a second Start begins again. Without parts nothing happens.
    void Start();
    // Keeps the current part's duration. Deliberate: the calculator goes on running; only Reset ends that.
    void Stop();
    BOOL IsRunning() const;

    // `part` has come to `fraction` (0.0 to 1.0; less than 0.02 is ignored). A part behind the current one becomes the current
    // one, at most the last; all parts on the way there keep the time since the current one began. 1.0 begins the next part; the
    // last one just stays at 1.0. Deliberate: a part before the current one is not refused, 1.0 for it goes back to the one after
    // it; and a part behind the last restarts the last one's clock.
    void Hint(int part, double fraction);
    void Hint(double fraction);  // of the current part
    // One more of the part's steps is done.
    void HintStep(int part);

    // 0.0 to 1.0; computed when the last value is more than five seconds old.
    double GetProgress();
    // Seconds, a multiple of five; 0 while it is not known: when disabled, and in the first five seconds of a part. Changes by at
    // most 20 at a time. Deliberate: a value below 20 followed by one above it gives one near 2^32.
    DWORD GetRemainingTime();
    // Empty for 0. Up to 90 s the host's message 905 with the seconds (at least 10), then 904 with the minutes, rounded; and with
    // `formatId` that message of the host around it. Their inserts are %1!u! and %1. A missing message throws as
    // CString::FromResource does.
    CString GetRemainingTimeFormatted(UINT formatId);

    // Multiplies the expected durations of the parts from first to last by what the reference part tells: measured / expected
    // when it is done; extrapolated when it is the current one, five seconds after its start. A first part below 0 is part 0; a
    // last part outside the parts is the last of them. Adds a line to the list, also when nothing is known of the reference part.
    void AdjustExpectedTimes(int referencePart, int firstPart, int lastPart);
    void EnableRemainingTimeInfo(BOOL enable) { m_bRemainingTimeEnabled = enable; }
    void AddProgressLogInfo(const CString& line) { Add(line); }

    // The parts: their count (16 bits; from 65,535 on 0xFFFF and 32 bits) and the records, 24 bytes each, little-endian. An
    // archive that ends too early throws CArchiveException*, and the parts stay. Takes no lock.
    void SerializeParts(CArchive& archive);

protected:
    double GetProgressOfCurrentPart() const;     // 0.0 to 1.0
    double GetFractionOfCurrentPart() const;     // of all expected durations, in thousandths; 1.0 without a current part
    double GetProgressOfCompletedParts() const;  // of all expected durations, in thousandths each
    static ULONGLONG GetCurrentTime64();         // the system's

private:
    bool IsCurrent() const;  // there is a current part
    ULONGLONG SinceStartOfPart() const;
    ULONGLONG ExpectedOfAll() const;
    void BeginPart(int part);
    void MoveTo(int part);
    DWORD EstimateRemaining(double progress) const;

    const IProgressClock& m_clock;
    CArray<SProgressPart> m_aParts;
    int m_nCurrentPart = 0;
    double m_dHintFraction = 0;
    ULONGLONG m_nHintTime = 0;  // 0: no hint
    ULONGLONG m_nPartStart = 0;
    double m_dProgress = 0;
    DWORD m_nProgressTick = 0;  // 0: never computed
    DWORD m_nRemaining = 0;
    DWORD m_nRemainingTick = 0;  // 0: never computed
    BOOL m_bRunning = FALSE;
    BOOL m_bRemainingTimeEnabled = TRUE;
    mutable CCriticalSection m_lock;  // guards all of the above
};
