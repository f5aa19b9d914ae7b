#include "texts.h"

// Strings stand in blocks of sixteen, each behind its length.
CString LoadText(UINT id, LANGID language) {
    constexpr UINT BLOCK = 16;
    const HRSRC resource = FindResourceExW(nullptr, RT_STRING, MAKEINTRESOURCEW(static_cast<WORD>(id / BLOCK + 1)), language);
    const auto* text = static_cast<const TCHAR*>(LockResource(LoadResource(nullptr, resource)));
    if (text == nullptr) {
        return {};
    }
    for (UINT before = id % BLOCK; before > 0; --before) {
        text += 1 + *text;
    }
    return {text + 1, static_cast<int>(*text)};
}

LANGID UserLanguage() {
    TCHAR name[9] = {};
    GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SISO639LANGNAME, name, 9);
    return CString(name) == _T("de") ? GERMAN : ENGLISH;
}
