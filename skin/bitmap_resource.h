#pragma once

#include <windows.h>

namespace kadata {

// Whether the module has a bitmap resource of that name which is as long as its header says: palette and pixels lie within it.
// What else may be wrong with it, the system's decoder tells.
bool IsWholeBitmap(HMODULE module, LPCTSTR name);

}  // namespace kadata
