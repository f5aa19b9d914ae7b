#include "special_folders.h"

#include <filesystem>
#include <new>
#include <optional>
#include <string>

#include "../base/path_map.h"
#include "xdg.h"

namespace kawin {
namespace {

namespace fs = std::filesystem;

// Native path of a folder; empty when it cannot be found out, nothing when it has no counterpart.
std::optional<std::string> NativeFolder(int folder) {
    switch (folder) {
        case CSIDL_DESKTOP:
        case CSIDL_DESKTOPDIRECTORY:
            return XdgUserFolder("DESKTOP");
        case CSIDL_PERSONAL:
            return XdgUserFolder("DOCUMENTS");
        case CSIDL_MYMUSIC:
            return XdgUserFolder("MUSIC");
        case CSIDL_MYVIDEO:
            return XdgUserFolder("VIDEOS");
        case CSIDL_MYPICTURES:
            return XdgUserFolder("PICTURES");
        case CSIDL_TEMPLATES:
            return XdgUserFolder("TEMPLATES");
        case CSIDL_APPDATA:
            return XdgFolder("XDG_CONFIG_HOME", ".config");
        case CSIDL_LOCAL_APPDATA:
            return XdgFolder("XDG_DATA_HOME", ".local/share");
        case CSIDL_COMMON_APPDATA:
            return "/var/lib";
        case CSIDL_PROFILE:
            return HomeFolder();
        default:
            return std::nullopt;
    }
}

constexpr mode_t kOwnerOnly = 0700;

HRESULT FolderPath(int folder, LPWSTR path) {
    const std::optional<std::string> native = NativeFolder(folder & ~CSIDL_FLAG_CREATE);
    if (!native) {
        return E_INVALIDARG;
    }
    const std::u16string system = native->empty() ? std::u16string() : ToSystemPath(*native);
    if (system.empty() || system.size() >= MAX_PATH) {
        return E_FAIL;
    }
    if ((folder & CSIDL_FLAG_CREATE) != 0 && !MakeFolders(*native, kOwnerOnly)) {
        return E_FAIL;
    }
    path[system.copy(path, system.size())] = u'\0';
    std::error_code error;
    return fs::is_directory(*native, error) ? S_OK : S_FALSE;
}

}  // namespace
}  // namespace kawin

HRESULT SHGetFolderPathW(HWND /*owner*/, int folder, HANDLE token, DWORD type, LPWSTR path) noexcept {
    if (path == nullptr) {
        return E_INVALIDARG;
    }
    *path = u'\0';
    if (token != nullptr || (type != SHGFP_TYPE_CURRENT && type != SHGFP_TYPE_DEFAULT)) {
        return E_INVALIDARG;
    }
    try {
        return kawin::FolderPath(folder, path);
    } catch (const std::bad_alloc&) {
        return E_FAIL;
    }
}

BOOL SHGetSpecialFolderPathW(HWND owner, LPWSTR path, int folder, BOOL create) noexcept {
    const int wanted = create != FALSE ? folder | CSIDL_FLAG_CREATE : folder;
    return SHGetFolderPathW(owner, wanted, nullptr, SHGFP_TYPE_CURRENT, path) == S_OK;
}
