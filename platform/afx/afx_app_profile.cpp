#include <algorithm>
#include <string>
#include <vector>

#include "afx_app.h"

namespace {

using Bytes = std::vector<BYTE>;
using Text = std::basic_string<TCHAR>;

// Closes the key at the end.
class Key {
public:
    explicit Key(HKEY key) : m_key(key) {}
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;
    ~Key() {
        if (m_key != nullptr) {
            ::RegCloseKey(m_key);
        }
    }
    HKEY Get() const { return m_key; }

    // False when there is no value of that type.
    bool Read(LPCTSTR name, DWORD type, Bytes& value) const {
        DWORD found = 0;
        DWORD size = 0;
        LONG error = ::RegQueryValueExW(m_key, name, nullptr, &found, nullptr, &size);
        while (error == ERROR_SUCCESS) {
            value.resize(size + 1);  // never without an address, which asks for the size alone
            size = static_cast<DWORD>(value.size());
            error = ::RegQueryValueExW(m_key, name, nullptr, &found, value.data(), &size);
            if (error != ERROR_MORE_DATA) {
                break;
            }
            error = ERROR_SUCCESS;  // somebody has made it longer meanwhile
        }
        value.resize(error == ERROR_SUCCESS ? size : 0);
        return error == ERROR_SUCCESS && found == type;
    }
    bool Write(LPCTSTR name, DWORD type, const void* value, std::size_t size) const {
        const auto* const bytes = static_cast<const BYTE*>(value);
        return ::RegSetValueExW(m_key, name, 0, type, bytes, static_cast<DWORD>(size)) == ERROR_SUCCESS;
    }

private:
    const HKEY m_key;
};

HKEY OpenBelow(HKEY parent, LPCTSTR name) {
    HKEY key = nullptr;
    const LONG error =
        ::RegCreateKeyExW(parent, name, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_READ | KEY_WRITE, nullptr, &key, nullptr);
    return error == ERROR_SUCCESS ? key : nullptr;
}

LONG DoneOrMissing(LONG error) {
    return error == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : error;
}

CString ReadFileText(LPCTSTR section, LPCTSTR entry, LPCTSTR defaultValue, LPCTSTR file) {
    Text text(256, TCHAR());
    for (;;) {
        const auto capacity = static_cast<DWORD>(text.size());
        const DWORD length = ::GetPrivateProfileStringW(section, entry, defaultValue, text.data(), capacity, file);
        if (length + 1 < capacity) {
            return CString(text.data(), static_cast<int>(length));
        }
        text.resize(text.size() * 2);  // it was cut
    }
}

// A byte is two letters from 'A' to 'P', its lower half first.
CString LettersOf(const BYTE* data, UINT size) {
    CString letters;
    for (const BYTE* byte = data; byte != data + size; ++byte) {
        letters += static_cast<TCHAR>('A' + (*byte & 0x0F));
        letters += static_cast<TCHAR>('A' + (*byte >> 4));
    }
    return letters;
}

bool BytesOf(const CString& letters, Bytes& bytes) {
    const auto half = [&](int index) { return static_cast<unsigned>(letters.GetAt(index)) - 'A'; };
    for (int i = 0; i + 1 < letters.GetLength(); i += 2) {
        if (half(i) > 0x0F || half(i + 1) > 0x0F) {
            return false;
        }
        bytes.push_back(static_cast<BYTE>(half(i) | half(i + 1) << 4));
    }
    return !letters.IsEmpty() && letters.GetLength() % 2 == 0;
}

}  // namespace

HKEY CWinApp::GetAppRegistryKey() const {
    if (m_pszRegistryKey == nullptr) {
        return nullptr;
    }
    return OpenBelow(HKEY_CURRENT_USER, CString(_T("Software\\")) + m_pszRegistryKey + _T("\\") + m_pszProfileName);
}

HKEY CWinApp::GetSectionKey(LPCTSTR section) const {
    const Key app(GetAppRegistryKey());
    return app.Get() != nullptr && section != nullptr ? OpenBelow(app.Get(), section) : nullptr;
}

UINT CWinApp::GetProfileInt(LPCTSTR section, LPCTSTR entry, int defaultValue) {
    if (m_pszRegistryKey == nullptr) {
        return ::GetPrivateProfileIntW(section, entry, defaultValue, m_pszProfileName);
    }
    const Key key(GetSectionKey(section));
    Bytes bytes;
    DWORD value = 0;
    if (key.Get() == nullptr || !key.Read(entry, REG_DWORD, bytes) || bytes.size() != sizeof(value)) {
        return static_cast<UINT>(defaultValue);
    }
    std::copy(bytes.begin(), bytes.end(), reinterpret_cast<BYTE*>(&value));
    return value;
}

BOOL CWinApp::WriteProfileInt(LPCTSTR section, LPCTSTR entry, int value) {
    if (m_pszRegistryKey == nullptr) {
        CString text;
        text.Format(_T("%d"), value);
        return ::WritePrivateProfileStringW(section, entry, text, m_pszProfileName);
    }
    const Key key(GetSectionKey(section));
    return key.Get() != nullptr && key.Write(entry, REG_DWORD, &value, sizeof(value));
}

CString CWinApp::GetProfileString(LPCTSTR section, LPCTSTR entry, LPCTSTR defaultValue) {
    if (m_pszRegistryKey == nullptr) {
        return ReadFileText(section, entry, defaultValue != nullptr ? defaultValue : _T(""), m_pszProfileName);
    }
    const Key key(GetSectionKey(section));
    Bytes bytes;
    if (key.Get() == nullptr || !key.Read(entry, REG_SZ, bytes)) {
        return defaultValue;
    }
    Text text(bytes.size() / sizeof(TCHAR), TCHAR());  // with or without a terminator
    std::copy_n(bytes.begin(), text.size() * sizeof(TCHAR), reinterpret_cast<BYTE*>(text.data()));
    return CString(text.c_str());
}

BOOL CWinApp::WriteProfileString(LPCTSTR section, LPCTSTR entry, LPCTSTR value) {
    if (m_pszRegistryKey == nullptr) {
        return ::WritePrivateProfileStringW(section, entry, value, m_pszProfileName);
    }
    if (entry == nullptr) {
        const Key app(GetAppRegistryKey());
        return app.Get() != nullptr && DoneOrMissing(DelRegTree(app.Get(), section)) == ERROR_SUCCESS;
    }
    const Key key(GetSectionKey(section));
    if (key.Get() == nullptr) {
        return FALSE;
    }
    if (value == nullptr) {
        return DoneOrMissing(::RegDeleteValueW(key.Get(), entry)) == ERROR_SUCCESS;
    }
    return key.Write(entry, REG_SZ, value, (std::char_traits<TCHAR>::length(value) + 1) * sizeof(TCHAR));
}

BOOL CWinApp::GetProfileBinary(LPCTSTR section, LPCTSTR entry, LPBYTE* data, UINT* size) {
    *data = nullptr;
    *size = 0;
    Bytes bytes;
    if (m_pszRegistryKey == nullptr) {
        if (!BytesOf(GetProfileString(section, entry), bytes)) {
            return FALSE;
        }
    } else {
        const Key key(GetSectionKey(section));
        if (key.Get() == nullptr || !key.Read(entry, REG_BINARY, bytes)) {
            return FALSE;
        }
    }
    *data = new BYTE[bytes.size()];
    *size = static_cast<UINT>(bytes.size());
    std::copy(bytes.begin(), bytes.end(), *data);
    return TRUE;
}

BOOL CWinApp::WriteProfileBinary(LPCTSTR section, LPCTSTR entry, LPBYTE data, UINT size) {
    if (m_pszRegistryKey == nullptr) {
        return WriteProfileString(section, entry, LettersOf(data, size));
    }
    const Key key(GetSectionKey(section));
    return key.Get() != nullptr && key.Write(entry, REG_BINARY, data, size);
}

LONG CWinApp::DelRegTree(HKEY parent, const CString& key) {
    return key.IsEmpty() ? static_cast<LONG>(ERROR_INVALID_PARAMETER) : ::RegDeleteTreeW(parent, key);
}
