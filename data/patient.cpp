#include <kadata/patient.h>

#include <cstring>
#include <type_traits>
#include <utility>

namespace {

constexpr int MIN_YEAR = 1880;
constexpr DWORD MAX_YEAR = 32767;  // what the year's field can hold

// Birthdays are compared as bytes.
static_assert(std::has_unique_object_representations_v<TIMESTAMP_STRUCT>);

bool IsValidDay(const TIMESTAMP_STRUCT& day) {
    return day.year >= MIN_YEAR && day.month >= 1 && day.month <= 12 && day.day >= 1 && day.day <= 31;
}

bool IsSameTime(const TIMESTAMP_STRUCT& a, const TIMESTAMP_STRUCT& b) {
    return std::memcmp(&a, &b, sizeof(a)) == 0;
}

bool IsSameBirthDay(const TIMESTAMP_STRUCT& a, const TIMESTAMP_STRUCT& b) {
    const bool valid = IsValidDay(a);
    return valid == IsValidDay(b) && (!valid || IsSameTime(a, b));
}

}  // namespace

CPatient::CPatient() = default;

CPatient::CPatient(const CPatient& other) : CKalidoObject() {
    *this = other;
}

CPatient::CPatient(const CString& firstName, const CString& name, const TIMESTAMP_STRUCT& birthDay, const CString& extID)
    : m_BirthDay(birthDay), m_Name(name), m_FirstName(firstName), m_ExtID(extID) {}

CPatient::CPatient(const tagTPATIENT& record) {
    *this = record;
}

CPatient::CPatient(const CString& text) {
    SetFullName(text);
}

CPatient::~CPatient() = default;

CPatient& CPatient::operator=(const CPatient& other) {
    m_BirthDay = other.m_BirthDay;
    m_Name = other.m_Name;
    m_FirstName = other.m_FirstName;
    m_PatientID = other.m_PatientID;
    m_ExtID = other.m_ExtID;
    m_RecordFlag = other.m_RecordFlag;
    m_HasKlidaID = other.m_HasKlidaID;
    m_SpareText = other.m_SpareText;
    return *this;
}

void CPatient::Invalidate() {
    m_BirthDay = {};
    m_RecordFlag = DEFAULT_RECORD_FLAG;
    m_PatientID = NO_PATIENT_ID;
    m_Name.Empty();
    m_FirstName.Empty();
    m_ExtID.Empty();
}

void CPatient::SetName(CString name, CString firstName) {
    m_Name = std::move(name);
    m_FirstName = std::move(firstName);
}

void CPatient::SetBirthDay(const TIMESTAMP_STRUCT& birthDay) {
    m_BirthDay = IsValidDay(birthDay) ? birthDay : TIMESTAMP_STRUCT{};
}

void CPatient::SetBirthDay(DWORD value) {
    const DWORD year = value / 10000;
    TIMESTAMP_STRUCT birthDay = m_BirthDay;
    birthDay.year = static_cast<SQLSMALLINT>(year <= MAX_YEAR ? year : 0);
    birthDay.month = static_cast<SQLUSMALLINT>(value / 100 % 100);
    birthDay.day = static_cast<SQLUSMALLINT>(value % 100);
    SetBirthDay(birthDay);
}

DWORD CPatient::GetBirthDayVal() const {
    return static_cast<DWORD>(m_BirthDay.year) * 10000 + m_BirthDay.month * 100u + m_BirthDay.day;
}

BOOL CPatient::IsBirthDayValid() const {
    return IsValidDay(m_BirthDay);
}

BOOL CPatient::IsValid() const {
    return HasExternalID() || (!m_Name.IsEmpty() && !m_FirstName.IsEmpty() && IsBirthDayValid());
}

bool CPatient::operator==(const CPatient& other) const {
    if (HasQuintarID()) {
        return m_PatientID == other.m_PatientID && IsSameTime(m_BirthDay, other.m_BirthDay) && m_Name == other.m_Name &&
               m_FirstName == other.m_FirstName;
    }
    return !other.HasQuintarID() && IsSameBirthDay(m_BirthDay, other.m_BirthDay) && m_Name == other.m_Name &&
           m_FirstName == other.m_FirstName && m_ExtID == other.m_ExtID;
}

CString CPatient::GetArchiveName() const {
    return CString();
}
