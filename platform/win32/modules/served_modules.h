#pragma once

// Modules that the platform itself serves: rooms of this layer whose functions hosts look up by name.

#include <span>
#include <string_view>

#include "modules.h"

namespace kawin {

struct ServedFunction {
    std::string_view name;
    FARPROC function;
};

template <class Function>
FARPROC AddressOf(Function* function) {
    return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(function));
}

// One module, for example "Advapi32.dll", and what GetProcAddress finds in it.
struct ServedModule {
    std::u16string_view name;
    std::span<const ServedFunction> (*functions)();
};

// By its name without regard to case; null when no module of that name is served.
const ServedModule* FindServedModule(std::u16string_view name) noexcept;

}  // namespace kawin
