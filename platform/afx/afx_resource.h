#pragma once

// Where resources are looked for: first in the resource module (a language module that the host has chosen, for example), then in
// the executable. Any thread may call any of these; the resource module is one for the process.

#include <windows.h>

#include "../kadata_export.h"

// The executable. Never null.
KADATA_API HINSTANCE AfxGetInstanceHandle();

// The resource module; the executable until another one is set. Null sets the executable again. The module must stay loaded while
// it is the resource module, and as long as anything found in it is used.
KADATA_API HINSTANCE AfxGetResourceHandle();
KADATA_API void AfxSetResourceHandle(HINSTANCE module);

// The first module that has the resource; the resource module when none has it. `type` is RT_BITMAP and the like; both are a name
// or MAKEINTRESOURCE of a number.
KADATA_API HINSTANCE AfxFindResourceHandle(LPCTSTR name, LPCTSTR type);
// The same for a string of a string table; null when no module has it, or it is empty.
KADATA_API HINSTANCE AfxFindStringResourceHandle(UINT id);

// Copies the string and a terminator, cut to `capacity` units with it. The units without terminator; 0, and an empty text, when
// there is none.
KADATA_API int AfxLoadString(UINT id, LPTSTR text, UINT capacity = 256);

// LoadLibrary and FreeLibrary, under the names that hosts use.
KADATA_API HINSTANCE AfxLoadLibrary(LPCTSTR name);
KADATA_API BOOL AfxFreeLibrary(HINSTANCE module);
