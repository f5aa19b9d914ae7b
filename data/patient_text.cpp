#include <kadata/patient.h>

#include <iterator>

#include "short_date.h"

namespace {

constexpr int DIRECTORY_FORM = 0;

constexpr LPCTSTR DATABASE_PLACEHOLDER = _T(" ");
constexpr LPCTSTR THUMBNAIL_DIRECTORY = _T("__Patient__");
constexpr LPCTSTR THUMBNAIL_FILE = _T("Patient.jpg");

enum class Part { Never, WhenPresent, Always };

struct NameForm {
    Part firstName;
    Part extID;
    bool extIDAlone;  // when both names are empty
};

constexpr NameForm NAME_FORMS[] = {
    {Part::WhenPresent, Part::Never, false},        // 1
    {Part::Always, Part::Always, false},            // 2
    {Part::WhenPresent, Part::WhenPresent, false},  // 3
    {Part::Always, Part::Always, true},             // 4
    {Part::WhenPresent, Part::WhenPresent, true},   // 5
    {Part::WhenPresent, Part::Never, true},         // 6
};

// Deliberate: with a birthday the comma stands there for an empty first name too, so that in the directory name the birthday
// always comes behind the second comma.
NameForm FormOf(int format, bool hasBirthDay) {
    if (format >= 1 && format <= static_cast<int>(std::size(NAME_FORMS))) {
        return NAME_FORMS[format - 1];
    }
    return {hasBirthDay ? Part::Always : Part::WhenPresent, Part::Never, false};
}

CString Trimmed(CString text) {
    text.Trim();
    return text;
}

bool Shows(Part part, const CString& text) {
    return part == Part::Always || (part == Part::WhenPresent && !text.IsEmpty());
}

// Moves what stands behind the first separator to `rest`, and leaves what stands before it. False, and nothing changed, without
// one.
bool CutAt(CString& text, TCHAR separator, CString& rest) {
    const int at = text.Find(separator);
    if (at < 0) {
        return false;
    }
    rest = text.Mid(at + 1);
    text = text.Left(at);
    return true;
}

}  // namespace

CString CPatient::GetBirthDayString() const {
    if (!IsBirthDayValid()) {
        return CString();
    }
    SYSTEMTIME day = {};
    day.wYear = static_cast<WORD>(m_BirthDay.year);
    day.wMonth = m_BirthDay.month;
    day.wDay = m_BirthDay.day;
    return kadata::ShortDate(day);
}

void CPatient::TrimName() {
    m_Name.Trim();
    m_FirstName.Trim();
}

void CPatient::CheckNameForDB() {
    if (m_Name.IsEmpty()) {
        m_Name = DATABASE_PLACEHOLDER;
    }
    if (m_FirstName.IsEmpty()) {
        m_FirstName = DATABASE_PLACEHOLDER;
    }
}

CString CPatient::GetFullName(int format) const {
    const CString name = Trimmed(m_Name);
    const CString firstName = Trimmed(m_FirstName);
    const CString extID = Trimmed(m_ExtID);
    const NameForm form = FormOf(format, IsBirthDayValid());
    if (form.extIDAlone && name.IsEmpty() && firstName.IsEmpty()) {
        return extID;
    }
    CString text = name;
    if (Shows(form.firstName, firstName)) {
        text += _T(", ") + firstName;
    }
    if (Shows(form.extID, extID)) {
        text += _T(" (") + extID + _T(")");
    }
    return text.Trim();
}

CString CPatient::GetDirectoryName() const {
    if (m_FirstName == DATABASE_PLACEHOLDER && m_ExtID.IsEmpty() && !IsBirthDayValid()) {
        return m_Name;
    }
    CString text = GetFullName(DIRECTORY_FORM);
    if (IsBirthDayValid()) {
        text.AppendFormat(_T(",%u"), GetBirthDayVal());
    }
    if (HasExternalID()) {
        text += _T("#") + m_ExtID;
    }
    return text.TrimRight();
}

void CPatient::SetFullName(CString text) {
    Invalidate();
    CutAt(text, _T('#'), m_ExtID);
    CString birthDay;
    if (CutAt(text, _T(','), m_FirstName) && CutAt(m_FirstName, _T(','), birthDay)) {
        SetBirthDay(static_cast<DWORD>(_wtoi(birthDay)));
    }
    m_Name = text;
    TrimName();
}

CString CPatient::GetThumbnailDirectory() {
    return THUMBNAIL_DIRECTORY;
}

CString CPatient::GetThumbnailFileName() {
    return THUMBNAIL_FILE;
}

BOOL CPatient::GetThumbnailFileInfo(CString baseDir, CString& dir, CString& path, CString& fileName) const {
    if (GetDirectoryName().IsEmpty()) {
        return FALSE;
    }
    baseDir.Trim();
    if (!baseDir.IsEmpty() && baseDir.Right(1) != _T("\\")) {
        baseDir += _T("\\");
    }
    dir = baseDir + GetThumbnailDirectory();
    fileName = GetThumbnailFileName();
    path = dir + _T("\\") + fileName;
    return TRUE;
}
