#pragma once

// The Windows build is run by Wine here. Where Wine does not yet answer as the system's documentation says, a test names both
// answers, and docs/platforms.md has a line about it:
//     EXPECT_EQ(error, test::UnlessWine(ERROR_INVALID_PARAMETER, ERROR_SUCCESS));

#include <tchar.h>
#include <windows.h>

namespace test {

inline bool RunsOnWine() {
    const HMODULE system = GetModuleHandleW(_T("ntdll.dll"));
    return system != nullptr && GetProcAddress(system, "wine_get_version") != nullptr;
}

// Both answers of one type, so that a wrong one does not go unseen.
template <class T>
T UnlessWine(T documented, T wine) {
    return RunsOnWine() ? wine : documented;
}

}  // namespace test
