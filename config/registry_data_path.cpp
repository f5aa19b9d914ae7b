// The data folder of the running program.

#include <kadata/directory.h>
#include <kadata/registry.h>

#include <algorithm>

#include "registry_values.h"

using namespace kadata::settings;

namespace {

constexpr TCHAR kSeparator = _T('\\');
constexpr LPCTSTR kDataPath = _T("DataPath");
constexpr std::size_t kDriveLength = 2;  // "C:"

// Every program of the workstation has a folder of its own.
CString ProgramRoot() {
    return kMakerRoot + (_T("CADCAM\\") + CDirectory::GetExeNameWithoutPath(0));
}

bool IsLetter(TCHAR c) {
    return (c >= _T('A') && c <= _T('Z')) || (c >= _T('a') && c <= _T('z'));
}

bool IsAbsolute(TextView path) {
    return path.size() > kDriveLength && ((IsLetter(path[0]) && path[1] == _T(':')) || path.starts_with(_T("\\\\")));
}

// Length of the part of a folder's path that ".." cannot leave, without a backslash: "C:", "\\server\share".
std::size_t RootLength(TextView folder) {
    if (!folder.starts_with(_T("\\\\")))
        return std::min(kDriveLength, folder.size());
    const std::size_t server = folder.find(kSeparator, kDriveLength);
    return std::min(server == folder.npos ? server : folder.find(kSeparator, server + 1), folder.size());
}

void AppendComponent(std::basic_string<TCHAR>& folder, std::size_t root, TextView component) {
    if (component.empty() || component == TextView(_T(".")))
        return;
    if (component == TextView(_T("..")))
        folder.resize(folder.size() > root ? folder.rfind(kSeparator) : root);
    else
        folder.append(1, kSeparator).append(component);
}

// `programFolder` ends with a backslash.
CString Resolve(TextView path, TextView programFolder) {
    const std::size_t root = RootLength(programFolder);
    std::basic_string<TCHAR> folder(programFolder.substr(0, path.starts_with(kSeparator) ? root : programFolder.size() - 1));
    if (path.starts_with(kSeparator)) {
        folder += path;
    } else {
        for (std::size_t begin = 0, end = 0; begin < path.size(); begin = end + 1) {
            end = std::min(path.find(kSeparator, begin), path.size());
            AppendComponent(folder, root, path.substr(begin, end - begin));
        }
    }
    if (!folder.ends_with(kSeparator))
        folder += kSeparator;
    return CString(folder);
}

}  // namespace

CString CKalidoRegistry::GetDataPath(BOOL resolve) const {
    const CString path = GetProfileStringW(ProgramRoot(), kSettings, kDataPath, _T("..\\Data\\"), HKEY_LOCAL_MACHINE);
    if (!resolve || IsAbsolute(View(path)))
        return path;
    const CString programFolder = CDirectory::GetExePath();
    return programFolder.IsEmpty() ? path : Resolve(View(path), View(programFolder));
}

BOOL CKalidoRegistry::WriteDataPath(const CString& path) {
    return WriteProfileStringW(ProgramRoot(), kSettings, kDataPath, path, HKEY_LOCAL_MACHINE);
}
