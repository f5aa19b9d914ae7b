#include <kadata/patient.h>

#include <algorithm>
#include <cstddef>
#include <cstring>

static_assert(offsetof(tagTPATIENT, patientID) == 0 && offsetof(tagTPATIENT, recordFlag) == 4);
static_assert(offsetof(tagTPATIENT, extID) == 8 && offsetof(tagTPATIENT, reserved1) == 41 &&
              offsetof(tagTPATIENT, klidaID) == 106);
static_assert(offsetof(tagTPATIENT, name) == 144 && offsetof(tagTPATIENT, firstName) == 177);
static_assert(offsetof(tagTPATIENT, birthDay) == 210 && offsetof(tagTPATIENT, reserved2) == 226);
static_assert(offsetof(tagPATIENT, name) == 0 && offsetof(tagPATIENT, firstName) == 33);
static_assert(offsetof(tagPATIENT, birthDay) == 66 && offsetof(tagPATIENT, recordDay) == 70 && offsetof(tagPATIENT, text) == 74);
static_assert(offsetof(tagPATIENT, patientID) == 87 && offsetof(tagPATIENT, extID) == 89 &&
              offsetof(tagPATIENT, reserved) == 110);
static_assert(offsetof(TIMESTAMP_STRUCT, month) == 2 && offsetof(TIMESTAMP_STRUCT, fraction) == 12);

namespace {

constexpr TIMESTAMP_STRUCT NO_BIRTHDAY_IN_DATABASE = {1900, 1, 1, 0, 0, 0, 0};
constexpr tagKADATE FIRST_DAY = {1880, 1, 1};
constexpr LPCTSTR RECORD_TEXT = _T("-");
constexpr int MAX_CHARACTER_BYTES = 8;  // more than any code page takes for one

template <std::size_t Size>
CString TextOf(const char (&field)[Size]) {
    const int length = static_cast<int>(std::find(field, field + Size, '\0') - field);
    TCHAR text[Size];  // no code page makes more units than bytes
    return CString(text, length == 0 ? 0 : MultiByteToWideChar(CP_ACP, 0, field, length, text, static_cast<int>(Size)));
}

template <std::size_t Size>
void SetText(char (&field)[Size], const CString& text) {
    CPatient::CopyAsciiString(field, text, static_cast<int>(Size));
}

bool IsSurrogatePair(LPCTSTR text) {
    return (text[0] & 0xFC00) == 0xD800 && (text[1] & 0xFC00) == 0xDC00;
}

// As many whole characters as fit with the terminator.
void CopyCharacters(char* target, LPCTSTR source, int size) {
    int used = 0;
    while (*source != 0) {
        const int units = IsSurrogatePair(source) ? 2 : 1;
        char character[MAX_CHARACTER_BYTES];
        const int bytes = WideCharToMultiByte(CP_ACP, 0, source, units, character, MAX_CHARACTER_BYTES, nullptr, nullptr);
        if (used + bytes >= size) {
            break;
        }
        std::copy_n(character, bytes, target + used);
        used += bytes;
        source += units;
    }
    target[used] = '\0';
}

}  // namespace

CPatient& CPatient::operator=(const tagTPATIENT& record) {
    m_PatientID = record.patientID;
    m_RecordFlag = record.recordFlag;
    m_ExtID = TextOf(record.extID);
    m_HasKlidaID = record.klidaID[0] != '\0';
    m_Name = TextOf(record.name);
    m_FirstName = TextOf(record.firstName);
    std::memcpy(&m_BirthDay, record.birthDay, sizeof(m_BirthDay));
    return *this;
}

void CPatient::ConvertToTPatient(tagTPATIENT* record) const {
    if (record == nullptr) {
        return;
    }
    *record = {};
    record->patientID = HasQuintarID() ? m_PatientID : 0;
    record->recordFlag = DEFAULT_RECORD_FLAG;
    SetText(record->extID, m_ExtID);
    SetText(record->name, m_Name);
    SetText(record->firstName, m_FirstName);
    const TIMESTAMP_STRUCT& birthDay = IsBirthDayValid() ? m_BirthDay : NO_BIRTHDAY_IN_DATABASE;
    std::memcpy(record->birthDay, &birthDay, sizeof(birthDay));
}

void CPatient::ConvertToPatient(tagPATIENT* record) const {
    ConvertToPatient(record, CTime::GetCurrentTime());
}

void CPatient::ConvertToPatient(tagPATIENT* record, const CTime& now) const {
    if (record == nullptr) {
        return;
    }
    *record = {};
    SetText(record->name, m_Name);
    SetText(record->firstName, m_FirstName);
    record->birthDay = Timestamp2KaDate(m_BirthDay);
    record->recordDay = CTime2KaDate(now);
    SetText(record->text, RECORD_TEXT);
    record->patientID = HasQuintarID() ? LOWORD(static_cast<DWORD>(m_PatientID)) : WORD{0};
    SetText(record->extID, m_ExtID);
}

void CPatient::CopyAsciiString(char* target, const CString& source, int size) {
    if (target == nullptr || size <= 0) {
        return;
    }
    const int needed = WideCharToMultiByte(CP_ACP, 0, source, -1, nullptr, 0, nullptr, nullptr);
    if (needed > 0 && needed <= size) {
        WideCharToMultiByte(CP_ACP, 0, source, -1, target, size, nullptr, nullptr);
    } else {
        CopyCharacters(target, source, size);
    }
}

tagKADATE CPatient::CTime2KaDate(const CTime& time) {
    const int year = time.GetYear();  // 0 when there is no local form
    if (year < FIRST_DAY.year) {
        return FIRST_DAY;
    }
    return {static_cast<WORD>(year), static_cast<BYTE>(time.GetMonth()), static_cast<BYTE>(time.GetDay())};
}

tagKADATE CPatient::Timestamp2KaDate(const TIMESTAMP_STRUCT& time) {
    return {static_cast<WORD>(time.year), static_cast<BYTE>(time.month), static_cast<BYTE>(time.day)};
}
