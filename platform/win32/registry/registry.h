#pragma once

// Persistent settings: keys with values, in one database per hive. HKEY_CLASSES_ROOT is "Software\\Classes" of both, a key of the
// user's before the machine's of the same path; new keys there are the machine's, and enumerating the root itself shows those
// only.
//
// The user's hive is ${XDG_CONFIG_HOME:-~/.config}/kadata/user.registry, the machine's /var/lib/kadata/machine.registry;
// KADATA_REGISTRY_DIR (a native path, or one with a drive) moves both; a change of the environment is followed when it is made
// with SetEnvironmentVariableW. A hive that is missing or cannot be read is empty; reading creates nothing. One that is damaged
// is kept under another name, with the time in it, and is empty from then on. Names are looked up without regard to case and kept
// as first written. Every function returns its error number and leaves the last error alone (but a handle that is none sets it,
// too).
//
// Safe from every thread and process. What a call has written when it returns, every other process reads from then on. Readers
// answer from memory, without a system call, until somebody writes to the hive.

#include "../base/error.h"

struct HKEY__;
using HKEY = HKEY__*;
using PHKEY = HKEY*;
using REGSAM = DWORD;
using LSTATUS = LONG;

inline const HKEY HKEY_CLASSES_ROOT = reinterpret_cast<HKEY>(static_cast<LONG_PTR>(static_cast<LONG>(0x80000000)));
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

constexpr DWORD RRF_RT_REG_NONE = 0x0001;
constexpr DWORD RRF_RT_REG_SZ = 0x0002;
constexpr DWORD RRF_RT_REG_EXPAND_SZ = 0x0004;
constexpr DWORD RRF_RT_REG_BINARY = 0x0008;
constexpr DWORD RRF_RT_REG_DWORD = 0x0010;
constexpr DWORD RRF_RT_REG_MULTI_SZ = 0x0020;
constexpr DWORD RRF_RT_REG_QWORD = 0x0040;
constexpr DWORD RRF_RT_DWORD = RRF_RT_REG_BINARY | RRF_RT_REG_DWORD;
constexpr DWORD RRF_RT_QWORD = RRF_RT_REG_BINARY | RRF_RT_REG_QWORD;
constexpr DWORD RRF_RT_ANY = 0xFFFF;
constexpr DWORD RRF_NOEXPAND = 0x10000000;
constexpr DWORD RRF_ZEROONFAILURE = 0x20000000;

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

// Opens the key `path` below `key`, reads the value and closes it again, in one call. ERROR_UNSUPPORTED_TYPE when the value's
// type is not among the RRF_RT_… flags; a text always ends with a terminator; a REG_EXPAND_SZ comes expanded, as REG_SZ, unless
// RRF_NOEXPAND is given. Otherwise as RegOpenKeyExW and RegQueryValueExW.
KADATA_API LSTATUS RegGetValueW(HKEY key, LPCWSTR path, LPCWSTR name, DWORD flags, LPDWORD type, PVOID data,
                                LPDWORD size) noexcept;

// Writes `size` bytes as they are; a terminator behind them is not looked for. On disk after a crash of the process; after a
// power failure the latest ones may be missing, never half of one. ERROR_ACCESS_DENIED; ERROR_BUSY when another process held the
// hive for five seconds; ERROR_KEY_DELETED.
KADATA_API LSTATUS RegSetValueExW(HKEY key, LPCWSTR name, DWORD reserved, DWORD type, const BYTE* data, DWORD size) noexcept;

KADATA_API LSTATUS RegDeleteValueW(HKEY key, LPCWSTR name) noexcept;

// Removes the key `path` with all below it, at once or not at all; with a null or empty path what `key` holds, but not `key`.
KADATA_API LSTATUS RegDeleteTreeW(HKEY key, LPCWSTR path) noexcept;

// Removes the key `path` with its values; ERROR_ACCESS_DENIED when there are keys below it. There is one view only.
KADATA_API LSTATUS RegDeleteKeyW(HKEY key, LPCWSTR path) noexcept;
KADATA_API LSTATUS RegDeleteKeyExW(HKEY key, LPCWSTR path, REGSAM view, DWORD reserved) noexcept;

// The keys and values of `key` by number, from 0 on, in no promised order; the numbers shift when somebody adds or removes.
// ERROR_NO_MORE_ITEMS behind the last. `length` is the room in characters with the terminator, then the length without it;
// ERROR_MORE_DATA when name or data do not fit, with the sizes they have. Classes and times of writing are not kept: empty and 0.
KADATA_API LSTATUS RegEnumKeyExW(HKEY key, DWORD index, LPWSTR name, LPDWORD length, LPDWORD reserved, LPWSTR key_class,
                                 LPDWORD class_length, PFILETIME written) noexcept;
KADATA_API LSTATUS RegEnumValueW(HKEY key, DWORD index, LPWSTR name, LPDWORD length, LPDWORD reserved, LPDWORD type, LPBYTE data,
                                 LPDWORD size) noexcept;

// How many there are and the longest of each: names in characters without terminator, data in bytes. Every pointer may be null.
KADATA_API LSTATUS RegQueryInfoKeyW(HKEY key, LPWSTR key_class, LPDWORD class_length, LPDWORD reserved, LPDWORD keys,
                                    LPDWORD longest_key, LPDWORD longest_class, LPDWORD values, LPDWORD longest_name,
                                    LPDWORD longest_value, LPDWORD security, PFILETIME written) noexcept;

// The same inside a transaction (ktmw32.h); `transaction` null is none. "Advapi32.dll" has these three by name, too. A key opened
// below a transacted one is in the transaction as well.
KADATA_API LSTATUS RegOpenKeyTransactedW(HKEY key, LPCWSTR path, DWORD options, REGSAM access, PHKEY opened, HANDLE transaction,
                                         PVOID reserved) noexcept;
KADATA_API LSTATUS RegCreateKeyTransactedW(HKEY key, LPCWSTR path, DWORD reserved, LPWSTR key_class, DWORD options, REGSAM access,
                                           const SECURITY_ATTRIBUTES* security, PHKEY opened, LPDWORD disposition,
                                           HANDLE transaction, PVOID extended) noexcept;
KADATA_API LSTATUS RegDeleteKeyTransactedW(HKEY key, LPCWSTR path, REGSAM view, DWORD reserved, HANDLE transaction,
                                           PVOID extended) noexcept;

// The predefined keys are accepted and stay open.
KADATA_API LSTATUS RegCloseKey(HKEY key) noexcept;
