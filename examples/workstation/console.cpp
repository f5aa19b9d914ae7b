#include "console.h"

#include <kadata/directory.h>
#include <kadata/utils.h>

#include <algorithm>
#include <cstdio>
#include <string>

namespace {

// Left-aligned in `width` places; what is longer is cut and ends in "...".
CString Column(const CString& text, int width) {
    CString cell = text.GetLength() > width ? text.Left(width - 3) + _T("...") : text;
    return cell + CString(_T(' '), width - cell.GetLength());
}

CString Joined(const std::vector<CString>& remarks) {
    CString all;
    for (const CString& remark : remarks) {
        all += all.IsEmpty() ? remark : _T("; ") + remark;
    }
    return all;
}

}  // namespace

void OpenConsole() {
    SetConsoleOutputCP(CP_UTF8);
}

void PrintLine(const CString& text) {
    std::printf("%s\n", CKalidoUtils::WC2MB(text).c_str());
}

void PrintError(const CString& text) {
    std::fflush(stdout);
    std::fprintf(stderr, "workstation: %s\n", CKalidoUtils::WC2MB(text).c_str());
}

void PrintFiles(const SImport& import) {
    PrintLine(_T("File                      Patients  Remarks  Damaged"));
    PrintLine(_T("------------------------  --------  -------  -------"));
    for (const SImportedFile& file : import.files) {
        CString line;
        line.Format(_T("%s  %8d  %7d  %7d%s"), Column(file.name, 24), file.patients, file.corrected, file.damaged,
                    file.readable ? _T("") : _T("  not readable"));
        PrintLine(line);
    }
    PrintLine(_T(""));
}

void PrintPatients(const SImport& import, bool all) {
    PrintLine(_T("Number    Surname             First name          Birthday    Remarks"));
    PrintLine(
        _T("--------  ------------------  ------------------  ----------  ------------------------------------------------"));
    for (const SImported& imported : import.patients) {
        if (all || !imported.remarks.empty()) {
            const CPatient& patient = imported.patient;
            const CString line = Column(patient.GetExtID(), 8) + _T("  ") + Column(patient.GetName(), 18) + _T("  ") +
                                 Column(patient.GetFirstName(), 18) + _T("  ") + Column(patient.GetBirthDayString(), 10) +
                                 _T("  ") + Joined(imported.remarks);
            PrintLine(CString(line).TrimRight());
        }
    }
    PrintLine(_T(""));
}

void PrintSummary(const SImport& import, int different, const CString& archivePath, const CString& recordsPath) {
    int damaged = 0;
    for (const SImportedFile& file : import.files) {
        damaged += file.damaged;
    }
    const auto clean =
        std::count_if(import.patients.begin(), import.patients.end(), [](const SImported& i) { return i.remarks.empty(); });
    CString line;
    line.Format(_T("%d patients from %d files: %d as they came, %d with remarks; %d damaged records left out."),
                static_cast<int>(import.patients.size()), static_cast<int>(import.files.size()), static_cast<int>(clean),
                static_cast<int>(import.patients.size()) - static_cast<int>(clean), damaged);
    PrintLine(line);
    PrintLine(_T("One of them as a folder name: ") + import.patients.front().patient.GetDirectoryName());
    PrintLine(_T("Written:  ") + CDirectory::FullPath(archivePath));
    PrintLine(_T("          ") + CDirectory::FullPath(recordsPath));
    PrintLine(different == 0 ? CString(_T("Read back: every patient is the same."))
                             : CString(_T("Read back: NOT the same, see the log.")));
    PrintLine(_T("Log:      ") + CDirectory::Concat(CDirectory::GetExePath(), _T("SERVICE\\LOG-FILES")));
    PrintLine(_T("Tooth library: ") + CDirectory::GetToothLibPath());
}

void PrintLastPatient(const CPatient& patient) {
    if (!patient.GetName().IsEmpty() || !patient.GetFirstName().IsEmpty()) {
        PrintLine(_T("Last time: ") + patient.GetFullName(0) + _T(", born ") + patient.GetBirthDayString() + _T("\n"));
    }
}

void PrintPictures(const CPatient& patient, const CImageInfoArray& pictures) {
    PrintLine(_T("\nPictures of ") + patient.GetFullName(0) + (pictures.IsEmpty() ? _T(": none") : _T(":")));
    for (INT_PTR i = 0; i < pictures.GetSize(); ++i) {
        const CImageInfo& picture = *pictures[i];
        PrintLine(_T("  ") + Column(picture.GetImageName(), 20) + _T("  ") + Column(picture.GetRegion(), 4) +
                  Column(picture.GetImageTypeString(), 14) + Column(picture.GetTakeDateTimeString(), 12) + picture.GetFileName());
    }
}

void PrintValues(const std::vector<SConfigValue>& values) {
    for (const SConfigValue& value : values) {
        PrintLine(value.path + _T(" = ") + value.value);
    }
}
