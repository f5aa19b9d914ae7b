#include "store.h"

#include <kadata/log.h>

#include <cstring>

void WriteArchive(const CString& path, const std::vector<SImported>& patients) {
    CFile file(path, CFile::modeCreate | CFile::modeWrite | CFile::shareExclusive);
    CArchive archive(&file, CArchive::store);
    archive << static_cast<DWORD>(patients.size());
    for (const SImported& imported : patients) {
        archive << imported.patient;
    }
    archive.Close();
    file.Close();
}

std::vector<CPatient> ReadArchive(const CString& path) {
    CFile file(path, CFile::modeRead | CFile::shareDenyWrite);
    CArchive archive(&file, CArchive::load);
    DWORD count = 0;
    archive >> count;
    std::vector<CPatient> patients;
    for (DWORD i = 0; i < count; ++i) {
        CPatient patient;
        archive >> patient;
        patients.push_back(patient);
    }
    return patients;
}

void WriteRecords(const CString& path, const std::vector<SImported>& patients) {
    CFile file(path, CFile::modeCreate | CFile::modeWrite | CFile::shareExclusive);
    for (const SImported& imported : patients) {
        tagTPATIENT record;
        imported.patient.ConvertToTPatient(&record);
        file.Write(&record, sizeof(record));
    }
    file.Close();
}

std::vector<tagTPATIENT> ReadRecords(const CString& path) {
    CFile file(path, CFile::modeRead | CFile::shareDenyWrite);
    std::vector<tagTPATIENT> records;
    tagTPATIENT record;
    while (file.Read(&record, sizeof(record)) == sizeof(record)) {
        records.push_back(record);
    }
    return records;
}

int CompareStored(const std::vector<SImported>& patients, const std::vector<CPatient>& archived,
                  const std::vector<tagTPATIENT>& records) {
    int different = 0;
    for (std::size_t i = 0; i < patients.size(); ++i) {
        tagTPATIENT expected;
        patients[i].patient.ConvertToTPatient(&expected);
        const bool inArchive = i < archived.size() && archived[i] == patients[i].patient;
        const bool inRecords = i < records.size() && std::memcmp(&records[i], &expected, sizeof(expected)) == 0;
        if (!inArchive || !inRecords) {
            ++different;
            CLog::Print(CLogError(CLogError::INFO), _T("%s(%d): stored otherwise than imported"), patients[i].file,
                        patients[i].line);
        }
    }
    return different + (archived.size() != patients.size() ? 1 : 0) + (records.size() != patients.size() ? 1 : 0);
}
