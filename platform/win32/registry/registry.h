#pragma once

// Persistent settings: keys with values, in one database per hive.
//
// The user's hive is ${XDG_CONFIG_HOME:-~/.config}/kadata/user.registry, the machine's /var/lib/kadata/machine.registry;
// KADATA_REGISTRY_DIR (a native path, or one with a drive) moves both. A hive that is missing or cannot be read is empty; reading
// creates nothing. Names are looked up without regard to case and kept as first written. Every function returns its error number
// and leaves the last error alone. Safe from every thread; what one process has set, another one reads.

#include "../base/error.h"

struct HKEY__;
using HKEY = HKEY__*;
using PHKEY = HKEY*;
using REGSAM = DWORD;
using LSTATUS = LONG;

inline const HKEY HKEY_CURRENT_USER = reinterpret_cast<HKEY>(static_cast<LONG_PTR>(static_cast<LONG>(0x80000001)));
inline const HKEY HKEY_LOCAL_MACHINE = reinterpret_cast<HKEY>(static_cast<LONG_PTR>(static_cast<LONG>(0x80000002)));

constexpr REGSAM KEY_QUERY_VALUE = 0x0001;
constexpr REGSAM KEY_SET_VALUE = 0x0002;
constexpr REGSAM KEY_CREATE_SUB_KEY = 0x0004;
constexpr REGSAM KEY_ENUMERATE_SUB_KEYS = 0x0008;
constexpr REGSAM KEY_NOTIFY = 0x0010;
constexpr REGSAM KEY_WOW64_64KEY = 0x0100;  // accepted: there is one view only
constexpr REGSAM KEY_WOW64_32KEY = 0x0200;
constexpr REGSAM KEY_READ = 0x20019;
constexpr REGSAM KEY_WRITE = 0x20006;
constexpr REGSAM KEY_ALL_ACCESS = 0xF003F;

constexpr DWORD REG_NONE = 0;
constexpr DWORD REG_SZ = 1;
constexpr DWORD REG_EXPAND_SZ = 2;
constexpr DWORD REG_BINARY = 3;
constexpr DWORD REG_DWORD = 4;
constexpr DWORD REG_MULTI_SZ = 7;
constexpr DWORD REG_QWORD = 11;

constexpr DWORD REG_OPTION_NON_VOLATILE = 0;
constexpr DWORD REG_CREATED_NEW_KEY = 1;
constexpr DWORD REG_OPENED_EXISTING_KEY = 2;

// Opens `path` ("Software\\Maker\\Product") below `key`; empty or null is the key itself. ERROR_FILE_NOT_FOUND when it does not
// exist, ERROR_ACCESS_DENIED when `access` asks to write a hive that this user cannot write, ERROR_BAD_PATHNAME for a
// path that begins with a backslash, ERROR_INVALID_HANDLE. `opened` is null after a failure; RegCloseKey closes it.
KADATA_API LSTATUS RegOpenKeyExW(HKEY key, LPCWSTR path, DWORD options, REGSAM access, PHKEY opened) noexcept;

// The same, but creates every key of the path that is missing. `disposition`, when given, says whether the last one was.
// `key_class` and `security` are not kept; only REG_OPTION_NON_VOLATILE is offered (ERROR_INVALID_PARAMETER).
KADATA_API LSTATUS RegCreateKeyExW(HKEY key, LPCWSTR path, DWORD reserved, LPWSTR key_class, DWORD options, REGSAM access,
                                   const SECURITY_ATTRIBUTES* security, PHKEY opened, LPDWORD disposition) noexcept;

// Reads a value; a null or empty name is the key's default value. `size` counts bytes, in and out; a text has the terminator it
// was written with, none is added. `data` null asks for size and type; ERROR_MORE_DATA with the needed size when it does not fit;
// ERROR_FILE_NOT_FOUND; ERROR_ACCESS_DENIED when the key was opened without KEY_QUERY_VALUE.
KADATA_API LSTATUS RegQueryValueExW(HKEY key, LPCWSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD size) noexcept;

// Writes `size` bytes as they are; a terminator behind them is not looked for. On disk after a crash of the process; after a
// power failure the latest ones may be missing, never half of one. ERROR_ACCESS_DENIED; ERROR_BUSY when another process held the
// hive for five seconds; ERROR_KEY_DELETED.
KADATA_API LSTATUS RegSetValueExW(HKEY key, LPCWSTR name, DWORD reserved, DWORD type, const BYTE* data, DWORD size) noexcept;

KADATA_API LSTATUS RegDeleteValueW(HKEY key, LPCWSTR name) noexcept;

// Removes the key `path` with all below it, at once or not at all; with a null or empty path what `key` holds, but not `key`.
KADATA_API LSTATUS RegDeleteTreeW(HKEY key, LPCWSTR path) noexcept;

// HKEY_CURRENT_USER and HKEY_LOCAL_MACHINE are accepted and stay open.
KADATA_API LSTATUS RegCloseKey(HKEY key) noexcept;
