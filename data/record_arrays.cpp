#include <kadata/record_arrays.h>

#include <cstring>
#include <span>

#include "case_folding.h"

namespace {

using TextView = std::basic_string_view<TCHAR>;

template <class Array>
auto Elements(Array& array) {
    return std::span(array.GetData(), static_cast<std::size_t>(array.GetSize()));
}

// Numbers that were given in a row differ at their end, so that is looked at before the call.
bool IsSame(TextView a, TextView b) {
    return a.size() == b.size() &&
           (a.empty() || (a.back() == b.back() && std::memcmp(a.data(), b.data(), a.size() * sizeof(TCHAR)) == 0));
}

template <class Predicate>
BOOL FindFirst(const CPatientArray& patients, CPatient& found, Predicate matches) {
    for (const CPatient& patient : Elements(patients)) {
        if (matches(patient)) {
            found = patient;
            return TRUE;
        }
    }
    return FALSE;
}

}  // namespace

CPatientArray::CPatientArray() = default;

CPatientArray::~CPatientArray() = default;

BOOL CPatientArray::FindPatientByExtID(const CString& extId, CPatient& found) const {
    const TextView wanted = extId.View();
    return FindFirst(*this, found, [wanted](const CPatient& patient) { return IsSame(patient.GetExtID().View(), wanted); });
}

// The birthday goes first: comparing it is cheapest, and few patients share one.
BOOL CPatientArray::FindPatientByNameAndBirth(const CString& firstName, const CString& name, const TIMESTAMP_STRUCT& birthday,
                                              CPatient& found) const {
    const TIMESTAMP_STRUCT wanted = birthday;  // may be the birthday of `found`
    return FindFirst(*this, found, [&](const CPatient& patient) {
        return std::memcmp(&patient.GetBirthDay(), &wanted, sizeof(wanted)) == 0 &&
               kadata::IsSameIgnoringCase(patient.GetName().View(), name.View()) &&
               kadata::IsSameIgnoringCase(patient.GetFirstName().View(), firstName.View());
    });
}

CImageInfoArray::CImageInfoArray() = default;

CImageInfoArray::~CImageInfoArray() {
    for (CImageInfo* const image : Elements(*this)) {
        delete image;
    }
}
