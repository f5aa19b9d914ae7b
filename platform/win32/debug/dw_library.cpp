#include "dw_library.h"

#include "../modules/modules.h"

namespace kawin {
namespace {

constexpr LPCWSTR kLibrary = u"libdw.so.1";

template <class Function>
bool Find(HMODULE module, const char* name, Function& function) noexcept {
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
    return function != nullptr;
}

struct Loaded {
    Dw functions;
    bool complete = false;
};

Loaded Load() noexcept {
    Loaded loaded;
    const DWORD error = GetLastError();
    const HMODULE module = LoadLibraryW(kLibrary);  // kept until the process ends
    loaded.complete = module != nullptr;
#define KADATA_DW_FIND(name) loaded.complete = loaded.complete && Find(module, #name, loaded.functions.name);
    KADATA_DW_FUNCTIONS(KADATA_DW_FIND)
#undef KADATA_DW_FIND
    SetLastError(error);
    return loaded;
}

}  // namespace

const Dw* TheDw() noexcept {
    static const Loaded loaded = Load();
    return loaded.complete ? &loaded.functions : nullptr;
}

}  // namespace kawin
