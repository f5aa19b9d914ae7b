// Records of the database library as they come, and both records made of what was read.

#include <kadata/patient.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iterator>

namespace {

void Check(bool holds) {
    if (!holds) {
        std::abort();
    }
}

template <std::size_t Size>
bool IsEnded(const char (&field)[Size]) {
    return std::find(std::begin(field), std::end(field), '\0') != std::end(field);
}

tagTPATIENT DatabaseRecordOf(const CPatient& patient) {
    tagTPATIENT record;
    patient.ConvertToTPatient(&record);
    Check(IsEnded(record.name) && IsEnded(record.firstName) && IsEnded(record.extID) && record.recordFlag == 1);
    return record;
}

void CheckImagingRecord(const CPatient& patient) {
    tagPATIENT record;
    patient.ConvertToPatient(&record, CTime(2024, 2, 29, 12, 0, 0));
    Check(IsEnded(record.name) && IsEnded(record.firstName) && IsEnded(record.extID) && record.reserved == 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tagTPATIENT given = {};
    std::memcpy(&given, data, std::min(size, sizeof(given)));
    const CPatient patient(given);
    CheckImagingRecord(patient);
    // What has been written once is written the same again.
    const tagTPATIENT written = DatabaseRecordOf(patient);
    const tagTPATIENT again = DatabaseRecordOf(CPatient(written));
    Check(std::memcmp(&written, &again, sizeof(written)) == 0);
    return 0;
}
