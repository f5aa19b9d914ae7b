// The line that the last patient is kept in, from UTF-16 units as they come.

#include <cstdint>
#include <cstdlib>
#include <string>

#include "../config/last_patient.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::basic_string<TCHAR> line;
    for (std::size_t i = 0; i + 1 < size; i += 2) {
        line += static_cast<TCHAR>(data[i] | data[i + 1] << 8);
    }
    using namespace kadata::settings;
    const CString written = PatientToText(PatientFromText(line));
    // Whoever is read from a line that was written is written as that line again.
    if (PatientToText(PatientFromText(written.View())) != written) {
        std::abort();
    }
    return 0;
}
