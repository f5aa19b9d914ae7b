#include "registry_values.h"

#include <algorithm>

namespace kadata::settings {
namespace {

constexpr TCHAR kSeparator = _T('\\');
constexpr std::size_t kUsualText = 256;  // characters, on the stack
constexpr DWORD kTextTypes = RRF_RT_REG_SZ | RRF_RT_REG_EXPAND_SZ;

// What the system may lack: null then, or a function that says ERROR_CALL_NOT_IMPLEMENTED.
struct TransactedFunctions {
    using Create = LSTATUS WINAPI(HKEY, LPCWSTR, DWORD, LPWSTR, DWORD, REGSAM, const SECURITY_ATTRIBUTES*, PHKEY, LPDWORD, HANDLE,
                                  PVOID);
    using Open = LSTATUS WINAPI(HKEY, LPCWSTR, DWORD, REGSAM, PHKEY, HANDLE, PVOID);
    using Delete = LSTATUS WINAPI(HKEY, LPCWSTR, REGSAM, DWORD, HANDLE, PVOID);

    Create* create = nullptr;
    Open* open = nullptr;
    Delete* remove = nullptr;
};

template <class Function>
void Find(HMODULE module, const char* name, Function*& function) {
    function = reinterpret_cast<Function*>(reinterpret_cast<void (*)()>(GetProcAddress(module, name)));
}

TransactedFunctions FindTransacted() {
    TransactedFunctions functions;
    if (const HMODULE module = LoadLibraryW(_T("Advapi32.dll"))) {  // stays, as it does in every program
        Find(module, "RegCreateKeyTransactedW", functions.create);
        Find(module, "RegOpenKeyTransactedW", functions.open);
        Find(module, "RegDeleteKeyTransactedW", functions.remove);
    }
    return functions;
}

const TransactedFunctions& Transacted() {
    static const TransactedFunctions functions = FindTransacted();
    return functions;
}

// A key, open while this lives.
class Key {
public:
    Key() = default;
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;
    ~Key() {
        if (m_key != nullptr)
            RegCloseKey(m_key);
    }

    LSTATUS Open(const Place& place, REGSAM access);
    LSTATUS Create(const Place& place, REGSAM access);
    HKEY Get() const { return m_key; }

private:
    HKEY m_key = nullptr;
};

LSTATUS Key::Open(const Place& place, REGSAM access) {
    if (place.transaction != nullptr && Transacted().open != nullptr) {
        const LSTATUS status =
            Transacted().open(place.hive, place.path, 0, access | place.view, &m_key, place.transaction, nullptr);
        if (status != ERROR_CALL_NOT_IMPLEMENTED)
            return status;
    }
    return RegOpenKeyExW(place.hive, place.path, 0, access | place.view, &m_key);
}

LSTATUS Key::Create(const Place& place, REGSAM access) {
    if (place.transaction != nullptr && Transacted().create != nullptr) {
        const LSTATUS status = Transacted().create(place.hive, place.path, 0, nullptr, REG_OPTION_NON_VOLATILE,
                                                   access | place.view, nullptr, &m_key, nullptr, place.transaction, nullptr);
        if (status != ERROR_CALL_NOT_IMPLEMENTED)
            return status;
    }
    return RegCreateKeyExW(place.hive, place.path, 0, nullptr, REG_OPTION_NON_VOLATILE, access | place.view, nullptr, &m_key,
                           nullptr);
}

// `types` are RRF_RT_ flags for the quick way; `size` counts bytes, in and out. ERROR_MORE_DATA with the needed size when the
// value does not fit.
LSTATUS ReadValue(const Place& place, LPCTSTR name, DWORD types, DWORD& type, void* data, DWORD& size) {
    if (place.transaction == nullptr && place.view == 0)
        return RegGetValueW(place.hive, place.path, name, types | RRF_NOEXPAND, &type, data, &size);
    Key key;
    const LSTATUS status = key.Open(place, KEY_QUERY_VALUE);
    return status != ERROR_SUCCESS ? status : RegQueryValueExW(key.Get(), name, nullptr, &type, static_cast<LPBYTE>(data), &size);
}

bool WriteValue(const Place& place, LPCTSTR name, DWORD type, const void* data, std::size_t size) {
    Key key;
    return size <= MAXDWORD && key.Create(place, KEY_SET_VALUE) == ERROR_SUCCESS &&
           RegSetValueExW(key.Get(), name, 0, type, static_cast<const BYTE*>(data), static_cast<DWORD>(size)) == ERROR_SUCCESS;
}

bool IsGone(LSTATUS status) {
    return status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND;
}

// Up to the first zero; half a character at the end does not count.
CString ToText(const TCHAR* text, DWORD size) {
    const TextView all(text, size / sizeof(TCHAR));
    return CString(all.substr(0, all.find(_T('\0'))));
}

}  // namespace

KeyPath::KeyPath(TextView root, TextView section) {
    const bool joined = !root.empty() && !section.empty() && !root.ends_with(kSeparator);
    const std::size_t length = root.size() + joined + section.size();
    if (length > kShortLength)
        m_long.resize(length);
    TCHAR* at = length > kShortLength ? m_long.data() : m_short;
    at = std::copy(root.begin(), root.end(), at);
    if (joined)
        *at++ = kSeparator;
    *std::copy(section.begin(), section.end(), at) = 0;
}

std::optional<DWORD> ReadNumber(const Place& place, LPCTSTR name) {
    DWORD type = 0, number = 0, size = sizeof number;
    const LSTATUS status = ReadValue(place, name, RRF_RT_REG_DWORD, type, &number, size);
    return status == ERROR_SUCCESS && type == REG_DWORD && size == sizeof number ? std::optional(number) : std::nullopt;
}

std::optional<CString> ReadText(const Place& place, LPCTSTR name) {
    TCHAR usual[kUsualText];
    std::basic_string<TCHAR> large;
    TCHAR* text = usual;
    DWORD type = 0, size = sizeof usual;
    LSTATUS status = ReadValue(place, name, kTextTypes, type, text, size);
    while (status == ERROR_MORE_DATA) {  // again when it has grown meanwhile
        large.resize(size / sizeof(TCHAR) + 1);
        text = large.data();
        size = static_cast<DWORD>(large.size() * sizeof(TCHAR));
        status = ReadValue(place, name, kTextTypes, type, text, size);
    }
    const bool isText = status == ERROR_SUCCESS && (type == REG_SZ || type == REG_EXPAND_SZ);
    return isText ? std::optional(ToText(text, size)) : std::nullopt;
}

bool WriteNumber(const Place& place, LPCTSTR name, DWORD number) {
    return WriteValue(place, name, REG_DWORD, &number, sizeof number);
}

bool WriteText(const Place& place, LPCTSTR name, TextView text) {
    const std::basic_string<TCHAR> terminated(text);
    return WriteValue(place, name, REG_SZ, terminated.c_str(), (terminated.size() + 1) * sizeof(TCHAR));
}

bool RemoveValue(const Place& place, LPCTSTR name) {
    Key key;
    const LSTATUS status = key.Open(place, KEY_SET_VALUE);
    return IsGone(status != ERROR_SUCCESS ? status : RegDeleteValueW(key.Get(), name));
}

bool RemoveKey(const Place& place) {
    if (place.transaction != nullptr && Transacted().remove != nullptr) {
        const LSTATUS status = Transacted().remove(place.hive, place.path, place.view, 0, place.transaction, nullptr);
        if (status != ERROR_CALL_NOT_IMPLEMENTED)
            return IsGone(status);
    }
    return IsGone(place.view != 0 ? RegDeleteKeyExW(place.hive, place.path, place.view, 0)
                                  : RegDeleteKeyW(place.hive, place.path));
}

}  // namespace kadata::settings
