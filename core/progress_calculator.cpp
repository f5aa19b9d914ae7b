#include <kadata/progress_calculator.h>

#include <algorithm>

namespace {

constexpr ULONGLONG kUnitsPerMillisecond = 10'000;
constexpr ULONGLONG kUnitsPerSecond = 10'000'000;
constexpr DWORD kRecomputeAfter = 5000;      // milliseconds
constexpr ULONGLONG kTrustHintAfter = 5000;  // milliseconds into the part
constexpr double kLeastHint = 0.02;
constexpr DWORD kRemainingStep = 5;  // seconds
constexpr DWORD kMostChange = 20;    // seconds
constexpr DWORD kSecondsUntilMinutes = 91;
constexpr DWORD kLeastShown = 10;  // seconds
constexpr UINT kMessageMinutes = 904;
constexpr UINT kMessageSeconds = 905;
constexpr int kLongestLine = 200;

class SystemClock : public IProgressClock {
public:
    ULONGLONG Time64() const override {
        FILETIME now;
        GetSystemTimeAsFileTime(&now);
        return (ULONGLONG{now.dwHighDateTime} << 32) | now.dwLowDateTime;
    }
    DWORD TickCount() const override { return ::GetTickCount(); }
};

const IProgressClock& TheSystemClock() {
    static const SystemClock clock;
    return clock;
}

double InThousandths(ULONGLONG part, ULONGLONG whole) {
    return whole == 0 ? 0.0 : static_cast<double>(part * 1000 / whole) / 1000.0;
}

double Clamped(double fraction) {
    return std::clamp(fraction, 0.0, 1.0);
}

// What an unsigned integer of that size holds of a result that is not negative.
template <class Integer>
Integer Truncated(double value) {
    constexpr double kEnd = 18446744073709551616.0;  // 2^64
    return static_cast<Integer>(value >= kEnd ? ~ULONGLONG{0} : static_cast<ULONGLONG>(value));
}

// The host's message with one insert in place.
CString FromMessage(UINT id, DWORD_PTR insert) {
    const CString message = CString::FromResource(id);
    LPTSTR text = nullptr;
    FormatMessageW(FORMAT_MESSAGE_FROM_STRING | FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_ARGUMENT_ARRAY, message, 0, 0,
                   reinterpret_cast<LPTSTR>(&text), 0, reinterpret_cast<va_list*>(&insert));
    const CString formatted = text;
    LocalFree(text);
    return formatted;
}

}  // namespace

CProgressCalculator::CProgressCalculator() : CProgressCalculator(TheSystemClock()) {}

CProgressCalculator::CProgressCalculator(const IProgressClock& clock) : m_clock(clock) {
    Reset();
}

ULONGLONG CProgressCalculator::GetCurrentTime64() {
    return TheSystemClock().Time64();
}

void CProgressCalculator::Reset() {
    CSingleLock lock(&m_lock, TRUE);
    m_bRunning = FALSE;
    m_bRemainingTimeEnabled = TRUE;
    m_aParts.RemoveAll();
}

int CProgressCalculator::AddPart(DWORD expectedSeconds, UINT steps) {
    CSingleLock lock(&m_lock, TRUE);
    const ULONGLONG expected = expectedSeconds * kUnitsPerSecond;
    return static_cast<int>(m_aParts.Add({expected, expected, steps, 0}));
}

void CProgressCalculator::RemoveLastPart() {
    CSingleLock lock(&m_lock, TRUE);
    if (!m_aParts.IsEmpty()) {
        m_aParts.RemoveAt(m_aParts.GetUpperBound());
    }
}

void CProgressCalculator::Start() {
    CSingleLock lock(&m_lock, TRUE);
    if (m_aParts.IsEmpty()) {
        return;
    }
    m_bRunning = TRUE;
    m_dHintFraction = 0;
    m_nHintTime = 0;
    for (INT_PTR i = 0; i < m_aParts.GetSize(); ++i) {
        m_aParts[i].nMeasured = m_aParts[i].nExpected;
    }
    BeginPart(0);
    m_dProgress = 0;
    m_nProgressTick = 0;
    m_nRemaining = 0;
}

void CProgressCalculator::Stop() {
    if (IsCurrent()) {
        m_aParts[m_nCurrentPart].nMeasured = SinceStartOfPart();
    }
}

BOOL CProgressCalculator::IsRunning() const {
    CSingleLock lock(&m_lock, TRUE);
    return m_bRunning;
}

bool CProgressCalculator::IsCurrent() const {
    return m_bRunning && m_nCurrentPart >= 0 && m_nCurrentPart < m_aParts.GetSize();
}

ULONGLONG CProgressCalculator::SinceStartOfPart() const {
    const ULONGLONG now = m_clock.Time64();
    return now > m_nPartStart ? now - m_nPartStart : 0;
}

ULONGLONG CProgressCalculator::ExpectedOfAll() const {
    ULONGLONG sum = 0;
    for (INT_PTR i = 0; i < m_aParts.GetSize(); ++i) {
        sum += m_aParts[i].nExpected;
    }
    return sum;
}

void CProgressCalculator::BeginPart(int part) {
    m_nCurrentPart = part;
    m_nPartStart = m_clock.Time64();
}

double CProgressCalculator::GetProgressOfCurrentPart() const {
    if (m_nHintTime != 0 && m_nHintTime >= m_nPartStart + kTrustHintAfter * kUnitsPerMillisecond) {
        return Clamped(static_cast<double>(SinceStartOfPart()) * m_dHintFraction /
                       static_cast<double>(m_nHintTime - m_nPartStart));
    }
    return IsCurrent() ? Clamped(InThousandths(SinceStartOfPart(), m_aParts[m_nCurrentPart].nExpected)) : 0.0;
}

double CProgressCalculator::GetFractionOfCurrentPart() const {
    return IsCurrent() ? InThousandths(m_aParts[m_nCurrentPart].nExpected, ExpectedOfAll()) : 1.0;
}

double CProgressCalculator::GetProgressOfCompletedParts() const {
    const ULONGLONG all = ExpectedOfAll();
    double progress = 0;
    for (INT_PTR i = 0; i < m_nCurrentPart && i < m_aParts.GetSize(); ++i) {
        progress += InThousandths(m_aParts[i].nExpected, all);
    }
    return progress;
}

double CProgressCalculator::GetProgress() {
    CSingleLock lock(&m_lock, TRUE);
    if (!m_bRunning || m_aParts.IsEmpty()) {
        return 0.0;
    }
    const DWORD tick = m_clock.TickCount();
    if (m_nProgressTick == 0 || tick - m_nProgressTick > kRecomputeAfter) {
        m_dProgress = Clamped(GetProgressOfCurrentPart() * GetFractionOfCurrentPart() + GetProgressOfCompletedParts());
        m_nProgressTick = tick;
    }
    return m_dProgress;
}

// Every part from the current one up to `part` took the time since the current one began.
void CProgressCalculator::MoveTo(int part) {
    const ULONGLONG measured = SinceStartOfPart();
    for (int i = std::max(m_nCurrentPart, 0); i <= part; ++i) {
        m_aParts[i].nMeasured = measured;
    }
    BeginPart(part);
}

void CProgressCalculator::Hint(int part, double fraction) {
    CSingleLock lock(&m_lock, TRUE);
    if (!(fraction >= kLeastHint) || !m_bRunning || m_aParts.IsEmpty()) {
        return;
    }
    const int last = static_cast<int>(m_aParts.GetUpperBound());
    if (part > m_nCurrentPart) {
        part = std::min(part, last);
        MoveTo(part);
    }
    if (fraction >= 1.0 && part < last) {
        if (IsCurrent()) {
            m_aParts[m_nCurrentPart].nMeasured = SinceStartOfPart();
        }
        m_nHintTime = 0;
        BeginPart(part + 1);
        return;
    }
    m_dHintFraction = fraction;
    m_nHintTime = m_clock.Time64();
}

void CProgressCalculator::Hint(double fraction) {
    CSingleLock lock(&m_lock, TRUE);
    Hint(m_nCurrentPart, fraction);
}

void CProgressCalculator::HintStep(int part) {
    CSingleLock lock(&m_lock, TRUE);
    if (!m_bRunning || part < 0 || part >= m_aParts.GetSize() || m_aParts[part].nSteps == 0) {
        return;
    }
    SProgressPart& stepped = m_aParts[part];
    ++stepped.nCurrentStep;
    Hint(part, static_cast<double>(stepped.nCurrentStep) / stepped.nSteps);
}

// Seconds until the current part, at `progress` now, and all later ones are done.
DWORD CProgressCalculator::EstimateRemaining(double progress) const {
    const double elapsed = static_cast<double>(SinceStartOfPart() / kUnitsPerMillisecond) / 1000.0;
    DWORD remaining = Truncated<DWORD>((1.0 - progress) * elapsed / progress);
    for (INT_PTR i = m_nCurrentPart + 1; i < m_aParts.GetSize(); ++i) {
        remaining += static_cast<DWORD>(m_aParts[i].nExpected / kUnitsPerSecond);
    }
    return (remaining + kRemainingStep - 1) / kRemainingStep * kRemainingStep;
}

DWORD CProgressCalculator::GetRemainingTime() {
    CSingleLock lock(&m_lock, TRUE);
    if (!m_bRemainingTimeEnabled || !m_bRunning) {
        return 0;
    }
    const DWORD tick = m_clock.TickCount();
    if (m_nRemainingTick != 0 && tick - m_nRemainingTick <= kRecomputeAfter) {
        return m_nRemaining;
    }
    if (!IsCurrent() || SinceStartOfPart() / kUnitsPerMillisecond <= kRecomputeAfter) {
        return 0;
    }
    const double progress = GetProgressOfCurrentPart();
    if (progress <= 0.0) {
        return 0;
    }
    DWORD remaining = EstimateRemaining(progress);
    if (m_nRemainingTick != 0) {
        remaining = std::min(remaining, m_nRemaining + kMostChange);
        if (remaining > kMostChange) {
            remaining = std::max(remaining, m_nRemaining - kMostChange);  // Deliberate: wraps below 20
        }
    }
    m_nRemaining = remaining;
    m_nRemainingTick = tick;
    return remaining;
}

CString CProgressCalculator::GetRemainingTimeFormatted(UINT formatId) {
    const DWORD remaining = GetRemainingTime();
    if (remaining == 0) {
        return {};
    }
    const CString text = remaining < kSecondsUntilMinutes ? FromMessage(kMessageSeconds, std::max(remaining, kLeastShown))
                                                          : FromMessage(kMessageMinutes, (remaining + 30) / 60);
    return formatId == 0 ? text : FromMessage(formatId, reinterpret_cast<DWORD_PTR>(static_cast<LPCTSTR>(text)));
}

void CProgressCalculator::AdjustExpectedTimes(int referencePart, int firstPart, int lastPart) {
    CSingleLock lock(&m_lock, TRUE);
    if (!m_bRunning || m_aParts.IsEmpty()) {
        return;
    }
    double factor = 1.0;
    double progress = 0.0;
    const bool known = referencePart >= 0 && referencePart < m_aParts.GetSize();
    const ULONGLONG expected = known ? m_aParts[referencePart].nExpected / kUnitsPerMillisecond : 0;
    if (expected != 0 && referencePart < m_nCurrentPart) {
        factor = static_cast<double>(m_aParts[referencePart].nMeasured / kUnitsPerMillisecond) / static_cast<double>(expected);
    } else if (expected != 0 && referencePart == m_nCurrentPart) {
        const ULONGLONG elapsed = SinceStartOfPart() / kUnitsPerMillisecond;
        progress = GetProgressOfCurrentPart();
        if (progress > 0.0) {
            const double whole = elapsed < kTrustHintAfter ? 0.0 : static_cast<double>(elapsed) / progress;
            factor = static_cast<double>(Truncated<ULONGLONG>(whole)) / static_cast<double>(expected);
        }
    }
    const int last = static_cast<int>(m_aParts.GetUpperBound());
    firstPart = std::max(firstPart, 0);
    lastPart = lastPart < 0 || lastPart > last ? last : lastPart;
    if (factor <= 0.0) {
        AddProgressLogInfo(_T("No adjust done!"));
        return;
    }
    CString line;
    line.Format(_T("Adjusting parts from %u to %u by %f    ProgressOfCurrent %f"), static_cast<UINT>(firstPart),
                static_cast<UINT>(lastPart), factor, progress);
    AddProgressLogInfo(line.Left(kLongestLine));
    for (int i = firstPart; i <= lastPart; ++i) {
        m_aParts[i].nExpected = Truncated<ULONGLONG>(static_cast<double>(m_aParts[i].nExpected) * factor);
    }
}

void CProgressCalculator::SerializeParts(CArchive& archive) {
    constexpr WORD kLongCount = 0xFFFF;  // the count follows in 32 bits, as the collections' own archives have it
    if (archive.IsStoring()) {
        const auto count = static_cast<DWORD>(m_aParts.GetSize());
        if (count < kLongCount) {
            archive << static_cast<WORD>(count);
        } else {
            archive << kLongCount << count;
        }
        for (INT_PTR i = 0; i < m_aParts.GetSize(); ++i) {
            const SProgressPart& part = m_aParts[i];
            archive << part.nExpected << part.nMeasured << part.nSteps << part.nCurrentStep;
        }
        return;
    }
    WORD shortCount = 0;
    archive >> shortCount;
    DWORD count = shortCount;
    if (shortCount == kLongCount) {
        archive >> count;
    }
    CArray<SProgressPart> parts;  // what the archive does not hold is not believed: the array grows as records arrive
    for (DWORD i = 0; i < count; ++i) {
        SProgressPart part;
        archive >> part.nExpected >> part.nMeasured >> part.nSteps >> part.nCurrentStep;
        parts.Add(part);
    }
    m_aParts.Copy(parts);
}
