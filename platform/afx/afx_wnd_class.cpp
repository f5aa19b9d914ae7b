#include <tchar.h>

#include <mutex>
#include <set>
#include <string>

#include "afx_resource.h"
#include "afx_wnd.h"

namespace {

using Text = std::basic_string<TCHAR>;

// Keeps the names of classes for the rest of the process: windows and callers have pointers to them.
LPCTSTR Keep(const CString& name) {
    static std::mutex& mutex = *new std::mutex;  // guards names
    static std::set<Text>& names = *new std::set<Text>;
    const std::scoped_lock lock(mutex);
    return names.emplace(name.View()).first->c_str();
}

template <class Handle>
unsigned long long NumberOf(Handle handle) {
    return reinterpret_cast<std::uintptr_t>(handle);
}

}  // namespace

BOOL AfxRegisterClass(WNDCLASSW* description) {
    WNDCLASSEXW known = {};
    known.cbSize = sizeof(known);
    return ::GetClassInfoExW(description->hInstance, description->lpszClassName, &known) || ::RegisterClassW(description) != 0 ||
           ::GetLastError() == ERROR_CLASS_ALREADY_EXISTS;  // another thread was quicker
}

LPCTSTR AfxRegisterWndClass(UINT style, HCURSOR cursor, HBRUSH background, HICON icon) {
    CString name;
    name.Format(_T("Afx:%x:%llx:%llx:%llx"), style, NumberOf(cursor), NumberOf(background), NumberOf(icon));
    WNDCLASSW description = {};
    description.style = style;
    description.lpfnWndProc = &AfxWndProc;
    description.hInstance = AfxGetInstanceHandle();
    description.hIcon = icon;
    description.hCursor = cursor;
    description.hbrBackground = background;
    description.lpszClassName = Keep(name);
    if (!AfxRegisterClass(&description)) {
        AfxThrowResourceException();
    }
    return description.lpszClassName;
}
