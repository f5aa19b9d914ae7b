#include "import.h"

#include <kadata/directory.h>
#include <kadata/log.h>

#include <algorithm>
#include <string>

namespace {

constexpr ULONGLONG kLargestFile = 64 << 20;  // a practice has thousands of patients, not millions

bool ReadFileBytes(const CString& path, std::string& bytes) {
    CFile file;
    CFileException reason;
    if (!file.Open(path, CFile::modeRead | CFile::shareDenyWrite, &reason)) {
        CLog::Print(CLogError(CLogError::HANDLED), _T("%s: cannot be opened, error %d"), path, reason.m_lOsError);
        return false;
    }
    const ULONGLONG length = file.GetLength();
    if (length > kLargestFile) {
        CLog::Print(CLogError(CLogError::HANDLED), _T("%s: %I64u bytes are more than a patient file has"), path, length);
        return false;
    }
    bytes.resize(static_cast<std::size_t>(length));
    bytes.resize(file.Read(bytes.data(), static_cast<UINT>(length)));
    return true;
}

// DDMMYYYY to the record's YYYYMMDD; 0 when it is not a date of that form or no such day exists.
DWORD BirthdayValue(const CString& text) {
    static constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (text.GetLength() != 8 || text.SpanIncluding(_T("0123456789")) != text) {
        return 0;
    }
    const int day = _wtoi(text.Left(2));
    const int month = _wtoi(text.Mid(2, 2));
    const int year = _wtoi(text.Right(4));
    if (month < 1 || month > 12) {
        return 0;
    }
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    const bool exists = day >= 1 && day <= kDays[month - 1] + (month == 2 && leap ? 1 : 0);
    return exists ? static_cast<DWORD>(year * 10000 + month * 100 + day) : 0;
}

void TakeBirthday(const CString& text, SImported& imported) {
    const DWORD value = BirthdayValue(text);
    imported.patient.SetBirthDay(value);
    if (!imported.patient.IsBirthDayValid()) {
        CString remark;
        remark.Format(_T("birthday \"%s\" is not possible"), text);
        imported.remarks.push_back(text.IsEmpty() ? CString(_T("no birthday")) : remark);
    }
}

void RemarkLoss(const CString& text, const CString& stored, LPCTSTR field, SImported& imported) {
    if (text != stored) {
        const bool cut = stored.GetLength() < text.GetLength();
        CString remark;
        remark.Format(_T("%s %s"), field,
                      cut ? _T("is cut in the exchange record") : _T("has signs that the exchange record cannot hold"));
        imported.remarks.push_back(remark);
    }
}

void CompareWithRecord(SImported& imported) {
    tagTPATIENT record;
    imported.patient.ConvertToTPatient(&record);
    const CPatient stored(record);
    RemarkLoss(imported.patient.GetName(), stored.GetName(), _T("surname"), imported);
    RemarkLoss(imported.patient.GetFirstName(), stored.GetFirstName(), _T("first name"), imported);
    RemarkLoss(imported.patient.GetExtID(), stored.GetExtID(), _T("external id"), imported);
}

SImportedFile ImportFile(const CString& folder, const CString& name, std::vector<SImported>& patients) {
    SImportedFile result;
    result.name = name;
    std::string bytes;
    result.readable = ReadFileBytes(CDirectory::Concat(folder, name), bytes);
    const SGdtFile file = ReadGdt(bytes);
    for (const SGdtProblem& problem : file.problems) {
        CLog::Print(CLogWarning(), _T("%s(%d): %s"), name, problem.line, problem.text);
    }
    for (const SGdtPatient& source : file.patients) {
        SImported imported = ImportPatient(source);
        imported.file = name;
        for (const CString& remark : imported.remarks) {
            CLog::Print(CLogWarning(), _T("%s(%d): patient %s: %s"), name, source.line, source.number, remark);
        }
        result.corrected += imported.remarks.empty() ? 0 : 1;
        patients.push_back(std::move(imported));
    }
    result.patients = static_cast<int>(file.patients.size());
    result.damaged = file.damaged;
    return result;
}

}  // namespace

SImported ImportPatient(const SGdtPatient& source) {
    SImported imported;
    imported.line = source.line;
    imported.patient = CPatient(source.firstName, source.surname, TIMESTAMP_STRUCT{}, source.number);
    imported.patient.TrimName();
    if (imported.patient.GetName().IsEmpty()) {
        imported.remarks.push_back(_T("no surname"));
    }
    if (imported.patient.GetFirstName().IsEmpty()) {
        imported.remarks.push_back(_T("no first name"));
    }
    TakeBirthday(source.birthday, imported);
    imported.patient.CheckNameForDB();
    CompareWithRecord(imported);
    return imported;
}

SImport ImportFolder(const CString& folder) {
    CStringArray names;
    CDirectory::ListFiles(folder, names, _T("*.gdt"), ~static_cast<DWORD>(FILE_ATTRIBUTE_DIRECTORY));
    std::vector<CString> sorted;
    for (INT_PTR i = 0; i < names.GetSize(); ++i) {
        sorted.push_back(names[i]);
    }
    std::sort(sorted.begin(), sorted.end());
    SImport import;
    for (const CString& name : sorted) {
        import.files.push_back(ImportFile(folder, name, import.patients));
    }
    return import;
}
