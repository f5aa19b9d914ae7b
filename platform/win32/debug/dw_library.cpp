#include "dw_library.h"

#include "../modules/late_library.h"

namespace kawin {
namespace {

constexpr LPCWSTR kLibrary = u"libdw.so.1";

struct Loaded {
    Dw functions;
    bool complete = false;
};

Loaded Load() noexcept {
    Loaded loaded;
    const LateLibrary library(kLibrary);
    loaded.complete = true;
#define KADATA_DW_FIND(name) loaded.complete = loaded.complete && library.Find(#name, loaded.functions.name);
    KADATA_DW_FUNCTIONS(KADATA_DW_FIND)
#undef KADATA_DW_FIND
    return loaded;
}

}  // namespace

const Dw* TheDw() noexcept {
    static const Loaded loaded = Load();
    return loaded.complete ? &loaded.functions : nullptr;
}

}  // namespace kawin
