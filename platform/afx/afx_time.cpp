#include "afx_time.h"

#include <algorithm>

namespace {

constexpr ULONGLONG kFileTimeTicksPerSecond = 10'000'000;
constexpr LONGLONG kFileTimeEpoch = -11'644'473'600;  // 1601-01-01
constexpr LONGLONG kYear1900 = -2'208'988'800;        // 1900-01-01
constexpr int kFirstYearTaken = 1900;

LONGLONG SecondsOf(const FILETIME& time) noexcept {
    const ULONGLONG ticks = (static_cast<ULONGLONG>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
    return static_cast<LONGLONG>(ticks / kFileTimeTicksPerSecond) + kFileTimeEpoch;
}

SYSTEMTIME SystemTimeOf(const std::tm& parts) noexcept {
    SYSTEMTIME time = {};
    time.wYear = static_cast<WORD>(parts.tm_year + 1900);
    time.wMonth = static_cast<WORD>(parts.tm_mon + 1);
    time.wDayOfWeek = static_cast<WORD>(parts.tm_wday);
    time.wDay = static_cast<WORD>(parts.tm_mday);
    time.wHour = static_cast<WORD>(parts.tm_hour);
    time.wMinute = static_cast<WORD>(parts.tm_min);
    time.wSecond = static_cast<WORD>(std::min(parts.tm_sec, 59));
    return time;
}

void Require(bool valid) {
    if (!valid)
        AfxThrowInvalidArgException();
}

bool IsIn(int value, int first, int last) noexcept {
    return value >= first && value <= last;
}

// Copies a format; put(target, letter, alternate) replaces what stands behind a '%' and says whether it knows the letter.
template <class Put>
CString Expand(LPCTSTR format, Put put) {
    CString text;
    for (LPCTSTR at = format == nullptr ? _T("") : format; *at != 0; ++at) {
        if (*at != '%') {
            text += *at;
            continue;
        }
        const bool alternate = at[1] == '#';
        const TCHAR letter = at[alternate ? 2 : 1];
        if (letter == '%')
            text += letter;
        else if (letter == 0 || !put(text, letter, alternate)) {
            text += *at;
            continue;
        }
        at += alternate ? 2 : 1;
    }
    return text;
}

struct NumberField {
    TCHAR letter;
    int width;
    int (*value)(const std::tm&);
};

constexpr NumberField kNumberFields[] = {
    {'d', 2, [](const std::tm& t) { return t.tm_mday; }},
    {'H', 2, [](const std::tm& t) { return t.tm_hour; }},
    {'I', 2, [](const std::tm& t) { return (t.tm_hour + 11) % 12 + 1; }},
    {'j', 3, [](const std::tm& t) { return t.tm_yday + 1; }},
    {'m', 2, [](const std::tm& t) { return t.tm_mon + 1; }},
    {'M', 2, [](const std::tm& t) { return t.tm_min; }},
    {'S', 2, [](const std::tm& t) { return t.tm_sec; }},
    {'U', 2, [](const std::tm& t) { return (t.tm_yday + 7 - t.tm_wday) / 7; }},            // weeks begin on Sunday
    {'W', 2, [](const std::tm& t) { return (t.tm_yday + 7 - (t.tm_wday + 6) % 7) / 7; }},  // on Monday
    {'w', 1, [](const std::tm& t) { return t.tm_wday; }},
    {'y', 2, [](const std::tm& t) { return t.tm_year % 100; }},
    {'Y', 4, [](const std::tm& t) { return t.tm_year + 1900; }},
};

struct TextField {
    TCHAR letter;
    LPCTSTR text;
};

constexpr TextField kShortForms[] = {
    {'c', _T("%x %X")}, {'D', _T("%m/%d/%y")}, {'F', _T("%Y-%m-%d")}, {'T', _T("%H:%M:%S")},
    {'R', _T("%H:%M")}, {'h', _T("%b")},       {'n', _T("\n")},       {'t', _T("\t")},
};

// The system's date patterns for names.
constexpr TextField kNames[] = {{'a', _T("ddd")}, {'A', _T("dddd")}, {'b', _T("MMM")}, {'B', _T("MMMM")}};

template <class Field, std::size_t N>
const Field* FindField(const Field (&fields)[N], TCHAR letter) noexcept {
    const Field* const hit = std::find_if(fields, fields + N, [letter](const Field& field) { return field.letter == letter; });
    return hit == fields + N ? nullptr : hit;
}

constexpr int kMaxLocaleText = 256;

// What one placeholder of a CTime stands for.
class TimeFields {
public:
    TimeFields(const std::tm& parts, LONGLONG seconds, bool universal) noexcept
        : parts_(parts), time_(SystemTimeOf(parts)), seconds_(seconds), universal_(universal) {}

    CString Format(LPCTSTR format) const {
        return Expand(format, [this](CString& text, TCHAR letter, bool alternate) { return Put(text, letter, alternate); });
    }

private:
    bool Put(CString& text, TCHAR letter, bool alternate) const {
        if (const NumberField* number = FindField(kNumberFields, letter))
            text.AppendFormat(_T("%0*d"), alternate ? 1 : number->width, number->value(parts_));
        else if (const TextField* name = FindField(kNames, letter))
            text += Date(0, name->text);
        else if (letter == 'c' && alternate)
            text += Format(_T("%#x %X"));
        else if (const TextField* form = FindField(kShortForms, letter))
            text += Format(form->text);
        else
            return PutOther(text, letter, alternate);
        return true;
    }

    bool PutOther(CString& text, TCHAR letter, bool alternate) const {
        switch (letter) {
            case 'e':
                text.AppendFormat(_T("%*d"), alternate ? 1 : 2, parts_.tm_mday);
                return true;
            case 'p':
                text += Time(_T("tt"));
                return true;
            case 'x':
                text += Date(alternate ? DATE_LONGDATE : DATE_SHORTDATE, nullptr);
                return true;
            case 'X':
                text += Time(nullptr);
                return true;
            case 'z':
                PutOffset(text);
                return true;
            case 'Z':
                text += ZoneName();
                return true;
            default:
                return false;
        }
    }

    CString Date(DWORD flags, LPCTSTR pattern) const {
        TCHAR text[kMaxLocaleText] = {};
        const int units = GetDateFormatW(LOCALE_USER_DEFAULT, flags, &time_, pattern, text, kMaxLocaleText);
        return units == 0 ? CString() : CString(text);
    }

    CString Time(LPCTSTR pattern) const {
        TCHAR text[kMaxLocaleText] = {};
        const int units = GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &time_, pattern, text, kMaxLocaleText);
        return units == 0 ? CString() : CString(text);
    }

    void PutOffset(CString& text) const {
        FILETIME shown = {};
        SystemTimeToFileTime(&time_, &shown);
        const int minutes = static_cast<int>((SecondsOf(shown) - seconds_) / 60);
        const int size = std::max(minutes, -minutes);
        text.AppendFormat(_T("%c%02d%02d"), minutes < 0 ? '-' : '+', size / 60, size % 60);
    }

    CString ZoneName() const {
        if (universal_)
            return _T("UTC");
        TIME_ZONE_INFORMATION zone = {};
        GetTimeZoneInformation(&zone);
        return parts_.tm_isdst > 0 ? zone.DaylightName : zone.StandardName;
    }

    std::tm parts_;
    SYSTEMTIME time_;
    LONGLONG seconds_;
    bool universal_;
};

// One part of the local form, 0 without one; `first` is what the run-time counts from.
int LocalPart(const CTime& time, int std::tm::*part, int first) noexcept {
    std::tm parts = {};
    return time.GetLocalTm(&parts) == nullptr ? 0 : parts.*part + first;
}

}  // namespace

CString CTimeSpan::Format(LPCTSTR format) const {
    return Expand(format, [this](CString& text, TCHAR letter, bool) {
        if (letter == 'D')
            text.AppendFormat(_T("%I64d"), GetDays());
        else if (letter == 'H' || letter == 'M' || letter == 'S')
            text.AppendFormat(_T("%02d"), letter == 'H' ? GetHours() : letter == 'M' ? GetMinutes() : GetSeconds());
        else
            return false;
        return true;
    });
}

CString CTimeSpan::Format(UINT formatId) const {
    return Format(CString::FromResource(formatId));
}

CTime CTime::GetCurrentTime() {
    return CTime(_time64(nullptr));
}

CTime::CTime(int year, int month, int day, int hour, int minute, int second, int dst) {
    Require(IsIn(year, 1970, 3000) && IsIn(month, 1, 12) && IsIn(day, 1, 31));
    Require(IsIn(hour, 0, 23) && IsIn(minute, 0, 59) && IsIn(second, 0, 59));
    std::tm parts = {};
    parts.tm_year = year - 1900;
    parts.tm_mon = month - 1;
    parts.tm_mday = day;
    parts.tm_hour = hour;
    parts.tm_min = minute;
    parts.tm_sec = second;
    parts.tm_isdst = dst;
    seconds_ = _mktime64(&parts);
    Require(seconds_ >= 0);
}

CTime::CTime(const SYSTEMTIME& local, int dst) {
    if (local.wYear >= kFirstYearTaken)
        *this = CTime(local.wYear, local.wMonth, local.wDay, local.wHour, local.wMinute, local.wSecond, dst);
}

CTime::CTime(const FILETIME& utc, int) {
    const LONGLONG seconds = SecondsOf(utc);
    if (seconds < kYear1900)
        return;
    std::tm parts = {};
    Require(_localtime64_s(&parts, &seconds) == 0);
    seconds_ = seconds;
}

std::tm* CTime::GetLocalTm(std::tm* parts) const noexcept {
    return parts != nullptr && _localtime64_s(parts, &seconds_) == 0 ? parts : nullptr;
}

std::tm* CTime::GetGmtTm(std::tm* parts) const noexcept {
    return parts != nullptr && _gmtime64_s(parts, &seconds_) == 0 ? parts : nullptr;
}

bool CTime::GetAsSystemTime(SYSTEMTIME& local) const noexcept {
    std::tm parts = {};
    if (GetLocalTm(&parts) == nullptr)
        return false;
    local = SystemTimeOf(parts);
    return true;
}

int CTime::GetYear() const noexcept {
    return LocalPart(*this, &std::tm::tm_year, 1900);
}

int CTime::GetMonth() const noexcept {
    return LocalPart(*this, &std::tm::tm_mon, 1);
}

int CTime::GetDay() const noexcept {
    return LocalPart(*this, &std::tm::tm_mday, 0);
}

int CTime::GetHour() const noexcept {
    return LocalPart(*this, &std::tm::tm_hour, 0);
}

int CTime::GetMinute() const noexcept {
    return LocalPart(*this, &std::tm::tm_min, 0);
}

int CTime::GetSecond() const noexcept {
    return LocalPart(*this, &std::tm::tm_sec, 0);
}

int CTime::GetDayOfWeek() const noexcept {
    return LocalPart(*this, &std::tm::tm_wday, 1);
}

CString CTime::Format(LPCTSTR format) const {
    std::tm parts = {};
    Require(GetLocalTm(&parts) != nullptr);
    return TimeFields(parts, seconds_, false).Format(format);
}

CString CTime::Format(UINT formatId) const {
    return Format(CString::FromResource(formatId));
}

CString CTime::FormatGmt(LPCTSTR format) const {
    std::tm parts = {};
    Require(GetGmtTm(&parts) != nullptr);
    return TimeFields(parts, seconds_, true).Format(format);
}

CString CTime::FormatGmt(UINT formatId) const {
    return FormatGmt(CString::FromResource(formatId));
}
