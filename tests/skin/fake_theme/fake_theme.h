#pragma once

#include <windows.h>

// What the fake visual style answers, and what was called last.
struct FakeTheme {
    BOOL isActive = TRUE;
    HANDLE theme = nullptr;  // of OpenThemeData
    HRESULT nameResult = 0;
    WCHAR file[260] = {};

    HANDLE calledWith = nullptr;
    int numbers[4] = {};
    int closed = 0;  // themes, in all
};

// Exported as "TheFakeTheme".
using TheFakeThemeFunction = FakeTheme* WINAPI();
