#pragma once

// Libraries that are loaded at the first use of their functions, so that programs which need none of them start without.

#include "modules.h"

namespace kawin {

// One of them, while its functions are looked up. It stays loaded until the process ends. The last error stays as it was.
class LateLibrary {
public:
    explicit LateLibrary(LPCWSTR name) noexcept : error_(GetLastError()), module_(LoadLibraryW(name)) {}
    LateLibrary(const LateLibrary&) = delete;
    LateLibrary& operator=(const LateLibrary&) = delete;
    ~LateLibrary() { SetLastError(error_); }

    // False, and a null pointer, when the library or the function is missing.
    template <class Function>
    bool Find(const char* name, Function& function) const noexcept {
        const FARPROC found = module_ != nullptr ? GetProcAddress(module_, name) : nullptr;
        function = reinterpret_cast<Function>(reinterpret_cast<void*>(found));
        return function != nullptr;
    }

private:
    const DWORD error_;
    const HMODULE module_;
};

}  // namespace kawin
