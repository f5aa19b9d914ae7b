// Places: the program's directory, temporary files, the shell's folders, the tooth library.

#include <kadata/directory.h>
#include <shlobj.h>

#include <algorithm>
#include <optional>
#include <string>

#include "directory_support.h"

using namespace kadata::directory;

namespace {

constexpr int kExtensionLength = 4;  // ".exe"
constexpr UINT kToothLibraryFolderId = 20559;
constexpr UINT kExternBlockGeometryId = 20557;
constexpr LPCTSTR kSettingsKey = _T("Software\\Kalido Dental Systems\\Tarvo\\Settings");
constexpr LPCTSTR kCentralStorageValue = _T("TLibCentralStorage");
constexpr LPCTSTR kDataPathValue = _T("TLibDataPath");
constexpr std::size_t kDataPathRoom = 520 / sizeof(TCHAR);

// Cut to `room` characters, the terminator included.
CString ProgramPath(DWORD room) {
    std::basic_string<TCHAR> path(room, 0);
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), room);
    return CString(path.data(), static_cast<int>(std::min(length, room - 1)));
}

CString ResourceText(UINT id) {
    CString text;
    text.LoadString(id);
    return text;
}

// A key of the current user, open for reading while it lives.
class SettingsKey {
public:
    explicit SettingsKey(LPCTSTR path) {
        if (RegOpenKeyExW(HKEY_CURRENT_USER, path, 0, KEY_READ, &m_key) != ERROR_SUCCESS)
            m_key = nullptr;
    }
    SettingsKey(const SettingsKey&) = delete;
    SettingsKey& operator=(const SettingsKey&) = delete;
    ~SettingsKey() {
        if (m_key != nullptr)
            RegCloseKey(m_key);
    }

    // 0 when there is no number of that name.
    DWORD Number(LPCTSTR name) const;
    // Nothing when there is no text of that name, it is too long, or is not properly terminated.
    std::optional<CString> Path(LPCTSTR name) const;

private:
    HKEY m_key = nullptr;
};

DWORD SettingsKey::Number(LPCTSTR name) const {
    DWORD type = 0, value = 0, size = sizeof value;
    const bool read = m_key != nullptr &&
                      RegQueryValueExW(m_key, name, nullptr, &type, reinterpret_cast<LPBYTE>(&value), &size) == ERROR_SUCCESS;
    return read && type == REG_DWORD && size == sizeof value ? value : 0;
}

std::optional<CString> SettingsKey::Path(LPCTSTR name) const {
    TCHAR text[kDataPathRoom];
    DWORD type = 0, size = sizeof text;
    const bool read =
        m_key != nullptr && RegQueryValueExW(m_key, name, nullptr, &type, reinterpret_cast<LPBYTE>(text), &size) == ERROR_SUCCESS;
    if (!read || (type != REG_SZ && type != REG_EXPAND_SZ))
        return std::nullopt;
    const bool terminated = size > 0 && size % sizeof(TCHAR) == 0 && text[size / sizeof(TCHAR) - 1] == 0;
    return terminated ? std::optional<CString>(text) : std::nullopt;
}

// Where the settings put the library; nothing when they leave it beside the program.
std::optional<CString> CentralStorage() {
    const SettingsKey settings(kSettingsKey);
    return settings.Number(kCentralStorageValue) != 0 ? settings.Path(kDataPathValue) : std::nullopt;
}

// With the backslash at its end.
CString ParentOfProgramDirectory() {
    return DirectoryPart(WithoutSeparator(CDirectory::GetExePath()));
}

}  // namespace

CString CDirectory::GetExePath() {
    return DirectoryPart(ProgramPath(kLongestText));
}

CString CDirectory::GetExeNameWithoutPath(int withExtension) {
    const CString name = NamePart(ProgramPath(MAX_PATH));
    return withExtension ? name : name.Left(std::max(name.GetLength() - kExtensionLength, 0));
}

CString CDirectory::GetTempPathW() {
    TCHAR path[MAX_PATH + 1] = {};
    const DWORD length = ::GetTempPathW(MAX_PATH + 1, path);
    return length <= MAX_PATH ? CString(path, static_cast<int>(length)) : CString();
}

CString CDirectory::GetTempFileNameW(const CString& dir, const CString& extension) {
    for (unsigned int number = 1;; ++number) {
        CString name;
        name.Format(_T("~TMPKA%u.%s"), number, extension.GetString());
        const CString path = Concat(dir, name);
        if (!FileExist(path, CString()))
            return path;
    }
}

CString CDirectory::GetSpecialDirectory(int folderId) {
    TCHAR path[MAX_PATH] = {};
    const HRESULT result = SHGetFolderPathW(nullptr, folderId, nullptr, SHGFP_TYPE_CURRENT, path);
    return result == S_OK ? WithSeparator(path) : CString();
}

CString CDirectory::GetToothLibPath() {
    const std::optional<CString> central = CentralStorage();
    return (central ? *central : ParentOfProgramDirectory()) + ResourceText(kToothLibraryFolderId);
}

CString CDirectory::GetExternBlockGeometryPath() {
    return Concat(GetToothLibPath(), ResourceText(kExternBlockGeometryId));
}
