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

// A text that many are compared with, case included. Numbers that were given in a row differ in their last digits, so those are
// looked at before the call.
class WantedText {
public:
    explicit WantedText(TextView text) : m_text(text), m_end(EndOf(text)) {}

    bool IsSame(TextView other) const {
        return other.size() == m_text.size() && EndOf(other) == m_end &&
               std::memcmp(other.data(), m_text.data(), m_text.size() * sizeof(TCHAR)) == 0;
    }

private:
    using End = ULONGLONG;

    // The last four units in one number; 0 of a shorter text.
    static End EndOf(TextView text) {
        constexpr std::size_t units = sizeof(End) / sizeof(TCHAR);
        End end = 0;
        if (text.size() >= units) {
            std::memcpy(&end, text.data() + text.size() - units, sizeof(end));
        }
        return end;
    }

    TextView m_text;
    End m_end;
};

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
    const WantedText wanted(extId.View());
    return FindFirst(*this, found, [wanted](const CPatient& patient) { return wanted.IsSame(patient.GetExtID().View()); });
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
