// What other software keeps in the registry: the imaging software's folder, the browser's version, a sound of the user's scheme.

#include <kadata/directory.h>
#include <kadata/registry.h>

#include "registry_values.h"

using namespace kadata::settings;

namespace {

// By which the imaging software registers itself for automation.
constexpr LPCTSTR kImagingClassId = _T("{6B7C1B52-3F0E-4C8A-9E57-5D2A4F61C0B3}");
constexpr LPCTSTR kImagingDefaultRoot = _T("C:\\Quintar");
constexpr LPCTSTR kClasses = _T("CLSID\\");
constexpr LPCTSTR kDefaultValue = _T("");
constexpr TextView kProgramExtension = _T(".exe");
constexpr LPCTSTR kMyComputer = _T("::{20D04FE0-3AEA-1069-A2D8-08002B30309D}");
constexpr TCHAR kQuote = _T('"');

// Position behind the first ".exe" that ends a word, else the length: a path that is not quoted may hold blanks.
std::size_t ProgramLength(const CString& command) {
    CString lower = command;
    lower.MakeLower();
    const TextView text = View(lower);
    for (std::size_t at = text.find(kProgramExtension); at != text.npos; at = text.find(kProgramExtension, at + 1)) {
        const std::size_t end = at + kProgramExtension.size();
        if (end == text.size() || text[end] == _T(' '))
            return end;
    }
    return text.size();
}

// The program of a command line, without quotation marks and arguments.
TextView ProgramOf(const CString& command) {
    const TextView text = View(command);
    if (!text.starts_with(kQuote))
        return text.substr(0, ProgramLength(command));
    return text.substr(1, text.find(kQuote, 1) - 1);
}

// Without a backslash at its end but for the root of a drive; empty for a bare name.
CString FolderOf(TextView program) {
    const std::size_t end = program.rfind(_T('\\'));
    if (end == program.npos)
        return CString();
    const bool isRoot = end > 0 && program[end - 1] == _T(':');
    return CString(program.substr(0, isRoot ? end + 1 : end));
}

}  // namespace

CString CKalidoRegistry::GetQuintarRootDirectory() {
    const CString path = kClasses + (kImagingClassId + CString(_T("\\LocalServer32")));
    std::optional<CString> command = ReadText({HKEY_CLASSES_ROOT, path}, kDefaultValue);
    const CString folder = command ? FolderOf(ProgramOf(command->Trim())) : CString();
    return folder.IsEmpty() ? CString(kImagingDefaultRoot) : folder;
}

CString CKalidoRegistry::GetQuintarFileDbIni() {
    return CDirectory::Concat(GetQuintarRootDirectory(), _T("KaFileDB.ini"));
}

CString CKalidoRegistry::GetIEVersion() {
    return ReadText({HKEY_LOCAL_MACHINE, _T("SOFTWARE\\Microsoft\\Internet Explorer")}, _T("Version")).value_or(CString());
}

CString CKalidoRegistry::GetMyComputerDirectory() {
    return kMyComputer;
}

BOOL CKalidoRegistry::ResetVistaCCSelectNotifySound() {
    return RemoveValue({HKEY_CURRENT_USER, _T("AppEvents\\Schemes\\Apps\\.Default\\CCSelect\\.Current")}, kDefaultValue);
}
