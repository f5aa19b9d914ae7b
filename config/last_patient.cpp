#include "last_patient.h"

#include <algorithm>

namespace kadata::settings {
namespace {

constexpr int kNameForm = 0;
constexpr TCHAR kSeparator = _T('@');
constexpr TCHAR kExternalIdMark = _T('#');
constexpr TextView kNameSeparator = _T(", ");
constexpr LONGLONG kHighestNumber = 0x7FFFFFFF;

// A number as it is written: 1 to 2147483647, without leading zeros. 0 for another text.
DWORD NumberIn(TextView text) {
    LONGLONG number = 0;
    const bool isNumber = !text.empty() && text.front() != _T('0') && std::all_of(text.begin(), text.end(), [&](TCHAR c) {
        number = number * 10 + (c - _T('0'));
        return c >= _T('0') && c <= _T('9') && number <= kHighestNumber;
    });
    return isNumber ? static_cast<DWORD>(number) : 0;
}

// Everything behind the names' separator. False, and the patient in an undefined state, when `rest` is not of the form.
bool TakeRest(TextView rest, CPatient& patient) {
    const std::size_t end = std::min(rest.find_first_not_of(_T("0123456789")), rest.size());
    const TextView birthDay = rest.substr(0, end), behind = rest.substr(end);
    patient.SetBirthDay(NumberIn(birthDay));
    if (!birthDay.empty() && !patient.IsBirthDayValid())
        return false;
    if (behind.starts_with(kExternalIdMark)) {
        patient.SetExtID(CString(behind.substr(1)));
        return behind.size() > 1;
    }
    if (behind.starts_with(kSeparator)) {
        patient.SetPatientID(static_cast<LONG>(NumberIn(behind.substr(1))));
        return patient.HasQuintarID();
    }
    return behind.empty();
}

// Not by CPatient::SetFullName, which would look for a birthday behind a second comma and an external id behind "#".
void TakeNames(TextView names, CPatient& patient) {
    const std::size_t comma = names.find(kNameSeparator);
    if (comma != names.npos)
        patient.SetName(CString(names.substr(0, comma)), CString(names.substr(comma + kNameSeparator.size())));
    else if (patient.IsBirthDayValid() && names.ends_with(kNameSeparator.front()))
        patient.SetName(CString(names.substr(0, names.size() - 1)), CString());
    else
        patient.SetName(CString(names), CString());
}

}  // namespace

CString PatientToText(const CPatient& patient) {
    CString line = patient.GetFullName(kNameForm) + kSeparator;
    if (patient.IsBirthDayValid())
        line.AppendFormat(_T("%u"), patient.GetBirthDayVal());
    if (patient.HasQuintarID())
        line.AppendFormat(_T("@%d"), patient.GetPatientID());
    else if (patient.HasExternalID())
        line += kExternalIdMark + patient.GetExtID();
    return line;
}

CPatient PatientFromText(TextView line) {
    for (std::size_t at = line.find(kSeparator); at != line.npos; at = line.find(kSeparator, at + 1)) {
        CPatient patient;
        if (TakeRest(line.substr(at + 1), patient)) {
            TakeNames(line.substr(0, at), patient);
            return patient;
        }
    }
    CPatient patient;
    TakeNames(line.substr(0, line.find(kSeparator)), patient);
    return patient;
}

}  // namespace kadata::settings
