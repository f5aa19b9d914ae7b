#pragma once

// Functions looked up by name.

#include <windows.h>

namespace test {

// Null when the module does not have it.
template <class Signature>
Signature* Function(HMODULE module, const char* name) {
    return reinterpret_cast<Signature*>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

}  // namespace test
