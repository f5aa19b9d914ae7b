#pragma once

// Values of the registry, read and written one by one. Internal to the library.

#include <afx.h>

#include <optional>
#include <string>
#include <string_view>

namespace kadata::settings {

using TextView = std::basic_string_view<TCHAR>;

inline constexpr LPCTSTR kMakerRoot = _T("Software\\Kalido Dental Systems\\");
inline constexpr LPCTSTR kSettings = _T("Settings");

inline TextView View(LPCTSTR text) {
    return text == nullptr ? TextView() : TextView(text);
}

// Root and section joined by one backslash, with a terminator. The usual ones cost no memory of their own.
class KeyPath {
public:
    KeyPath(TextView root, TextView section);
    KeyPath(const KeyPath&) = delete;
    KeyPath& operator=(const KeyPath&) = delete;

    operator LPCTSTR() const { return m_long.empty() ? m_short : m_long.c_str(); }

private:
    static constexpr std::size_t kShortLength = 259;

    TCHAR m_short[kShortLength + 1];
    std::basic_string<TCHAR> m_long;
};

// Where values lie. A null transaction is none.
struct Place {
    HKEY hive;
    LPCTSTR path;
    REGSAM view = 0;  // KEY_WOW64_32KEY, KEY_WOW64_64KEY or 0
    HANDLE transaction = nullptr;
};

// Nothing for what is missing or has another type.
std::optional<DWORD> ReadNumber(const Place& place, LPCTSTR name);
std::optional<CString> ReadText(const Place& place, LPCTSTR name);

// These create the key when it is missing. False when that or the writing fails.
bool WriteNumber(const Place& place, LPCTSTR name, DWORD number);
bool WriteText(const Place& place, LPCTSTR name, TextView text);

// True when there is none now. A key that has others below it stays.
bool RemoveValue(const Place& place, LPCTSTR name);
bool RemoveKey(const Place& place);

}  // namespace kadata::settings
