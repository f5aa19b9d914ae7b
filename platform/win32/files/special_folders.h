#pragma once

// The user's folders, as the desktop's own settings (XDG base directories and user-dirs.dirs) name them.

#include "../base/error.h"

struct HWND__;
using HWND = HWND__*;

constexpr int CSIDL_DESKTOP = 0x0000;
constexpr int CSIDL_PERSONAL = 0x0005;
constexpr int CSIDL_MYMUSIC = 0x000D;
constexpr int CSIDL_MYVIDEO = 0x000E;
constexpr int CSIDL_DESKTOPDIRECTORY = 0x0010;
constexpr int CSIDL_TEMPLATES = 0x0015;
constexpr int CSIDL_APPDATA = 0x001A;         // ${XDG_CONFIG_HOME:-~/.config}
constexpr int CSIDL_LOCAL_APPDATA = 0x001C;   // ${XDG_DATA_HOME:-~/.local/share}
constexpr int CSIDL_COMMON_APPDATA = 0x0023;  // /var/lib
constexpr int CSIDL_MYPICTURES = 0x0027;
constexpr int CSIDL_PROFILE = 0x0028;
constexpr int CSIDL_FLAG_CREATE = 0x8000;  // or-ed to a folder: made when missing

constexpr DWORD SHGFP_TYPE_CURRENT = 0;
constexpr DWORD SHGFP_TYPE_DEFAULT = 1;

// Writes the folder's system path without trailing backslash into `path`, which has room for MAX_PATH characters.
// S_OK; S_FALSE with the path when the folder is known but does not exist; E_INVALIDARG for a folder that has no counterpart
// here, for another user's (`token`) and for an unknown type; E_FAIL when it cannot be found out or made. On failure `path` is
// empty.
KADATA_API HRESULT SHGetFolderPathW(HWND owner, int folder, HANDLE token, DWORD type, LPWSTR path) noexcept;

// The same as BOOL: TRUE for S_OK only.
KADATA_API BOOL SHGetSpecialFolderPathW(HWND owner, LPWSTR path, int folder, BOOL create) noexcept;
