// A library with some of the functions of a visual style.

#include "fake_theme.h"

namespace {

FakeTheme state;

// A failure: nobody looks at it.
HRESULT Note(HANDLE theme, int a = 0, int b = 0, int c = 0, int d = 0) {
    state.calledWith = theme;
    const int numbers[] = {a, b, c, d};
    for (int i = 0; i < 4; ++i) {
        state.numbers[i] = numbers[i];
    }
    return -1;
}

}  // namespace

extern "C" {

FakeTheme* WINAPI TheFakeTheme() {
    return &state;
}

BOOL WINAPI IsThemeActive() {
    return state.isActive;
}

HANDLE WINAPI OpenThemeData(HWND, LPCWSTR) {
    return state.theme;
}

HRESULT WINAPI CloseThemeData(HANDLE) {
    ++state.closed;
    return 0;
}

HRESULT WINAPI GetCurrentThemeName(LPWSTR file, int capacity, LPWSTR, int, LPWSTR, int) {
    lstrcpynW(file, state.file, capacity);
    return state.nameResult;
}

HRESULT WINAPI GetThemeInt(HANDLE theme, int part, int number, int property, int* value) {
    *value = 17;
    return Note(theme, part, number, property);
}

HRESULT WINAPI GetThemeMargins(HANDLE theme, HDC, int part, int number, int property, RECT*, int* margins) {
    margins[0] = 1;
    margins[3] = 4;
    return Note(theme, part, number, property);
}

HRESULT WINAPI DrawThemeBackground(HANDLE theme, HDC, int part, int number, const RECT* rect, const RECT* clip) {
    return Note(theme, part, number, rect->right, clip == nullptr);
}

DWORD WINAPI GetThemeAppProperties() {
    return 5;
}
}
