// The helpers: values of the object's keys.

#include <kadata/registry.h>

#include "registry_values.h"

using namespace kadata::settings;

CKalidoRegistry::CKalidoRegistry(const CString& product) : m_Root(kMakerRoot + product) {}

CKalidoRegistry::~CKalidoRegistry() = default;

int CKalidoRegistry::GetProfileIntW(LPCTSTR root, LPCTSTR section, LPCTSTR name, int defaultValue, HKEY hive) const {
    const KeyPath path(View(root), View(section));
    const std::optional<DWORD> number = ReadNumber({hive, path, m_View, m_Transaction}, name);
    return number ? static_cast<int>(*number) : defaultValue;
}

int CKalidoRegistry::GetProfileIntW(LPCTSTR section, LPCTSTR name, int defaultValue, HKEY hive) const {
    const KeyPath path(m_Root.View(), View(section));
    const std::optional<DWORD> number = ReadNumber({hive, path, m_View, m_Transaction}, name);
    return number ? static_cast<int>(*number) : defaultValue;
}

BOOL CKalidoRegistry::WriteProfileInt(LPCTSTR root, LPCTSTR section, LPCTSTR name, int value, HKEY hive) const {
    const KeyPath path(View(root), View(section));
    return WriteNumber({hive, path, m_View, m_Transaction}, name, static_cast<DWORD>(value));
}

BOOL CKalidoRegistry::WriteProfileInt(LPCTSTR section, LPCTSTR name, int value, HKEY hive) const {
    return WriteProfileInt(m_Root, section, name, value, hive);
}

CString CKalidoRegistry::GetProfileStringW(LPCTSTR root, LPCTSTR section, LPCTSTR name, LPCTSTR defaultText, HKEY hive) const {
    const KeyPath path(View(root), View(section));
    std::optional<CString> text = ReadText({hive, path, m_View, m_Transaction}, name);
    return text ? *std::move(text) : CString(defaultText);
}

CString CKalidoRegistry::GetProfileStringW(LPCTSTR section, LPCTSTR name, LPCTSTR defaultText, HKEY hive) const {
    return GetProfileStringW(m_Root, section, name, defaultText, hive);
}

BOOL CKalidoRegistry::WriteProfileStringW(LPCTSTR root, LPCTSTR section, LPCTSTR name, LPCTSTR text, HKEY hive) const {
    const KeyPath path(View(root), View(section));
    const Place place = {hive, path, m_View, m_Transaction};
    if (name == nullptr)
        return RemoveKey(place);
    return text == nullptr ? RemoveValue(place, name) : WriteText(place, name, text);
}

BOOL CKalidoRegistry::WriteProfileStringW(LPCTSTR section, LPCTSTR name, LPCTSTR text, HKEY hive) const {
    return WriteProfileStringW(m_Root, section, name, text, hive);
}

CString CKalidoRegistry::GetCommonProfileString(LPCTSTR section, LPCTSTR name, LPCTSTR defaultText) const {
    return GetProfileStringW(_T("Software\\Kalido Dental Systems\\Common\\"), section, name, defaultText, HKEY_LOCAL_MACHINE);
}
