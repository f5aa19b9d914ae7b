// The one-line text of a patient, from UTF-16 units as they come: read, printed in every form, and read again.

#include <kadata/patient.h>

#include <cstdint>
#include <cstdlib>

namespace {

constexpr int MAX_UNITS = 1000;

CString TextOf(const std::uint8_t* data, std::size_t size) {
    CString text;
    for (std::size_t i = 0; i + 1 < size && text.GetLength() < MAX_UNITS; i += 2) {
        text += static_cast<TCHAR>(data[i] | data[i + 1] << 8);
    }
    return text;
}

void Print(const CPatient& patient) {
    for (int form = -1; form <= 7; ++form) {
        patient.GetFullName(form);
    }
    patient.GetBirthDayString();
    CString dir;
    CString path;
    CString fileName;
    patient.GetThumbnailFileInfo(patient.GetName(), dir, path, fileName);
}

// What has been read once comes back from its own line.
void CheckSettled(const CPatient& read) {
    CPatient again(read.GetDirectoryName());
    const bool named = again.GetName() == read.GetName() && again.GetFirstName() == read.GetFirstName();
    CString extID = read.GetExtID();
    if (!named || again.GetBirthDayVal() != read.GetBirthDayVal() || again.GetExtID() != extID.TrimRight()) {
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    CPatient patient(TextOf(data, size));
    CheckSettled(patient);
    Print(patient);
    patient.CheckNameForDB();
    Print(patient);
    return 0;
}
