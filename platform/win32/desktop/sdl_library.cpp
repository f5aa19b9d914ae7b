#include "sdl_library.h"

#include "../modules/modules.h"

namespace kawin {
namespace {

constexpr LPCWSTR kLibrary = u"libSDL2-2.0.so.0";

template <class Function>
bool Find(HMODULE module, const char* name, Function& function) noexcept {
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
    return function != nullptr;
}

struct Loaded {
    Sdl functions;
    bool complete = false;
};

Loaded Load() noexcept {
    Loaded loaded;
    const DWORD error = GetLastError();
    const HMODULE module = LoadLibraryW(kLibrary);  // kept until the process ends
    loaded.complete = module != nullptr;
#define KADATA_SDL_FIND(name) loaded.complete = loaded.complete && Find(module, "SDL_" #name, loaded.functions.name);
    KADATA_SDL_FUNCTIONS(KADATA_SDL_FIND)
#undef KADATA_SDL_FIND
    SetLastError(error);
    return loaded;
}

}  // namespace

const Sdl* TheSdl() noexcept {
    static const Loaded loaded = Load();
    return loaded.complete ? &loaded.functions : nullptr;
}

}  // namespace kawin
