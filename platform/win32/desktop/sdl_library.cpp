#include "sdl_library.h"

#include "../modules/late_library.h"

namespace kawin {
namespace {

constexpr LPCWSTR kLibrary = u"libSDL2-2.0.so.0";

struct Loaded {
    Sdl functions;
    bool complete = false;
};

Loaded Load() noexcept {
    Loaded loaded;
    const LateLibrary library(kLibrary);
    loaded.complete = true;
#define KADATA_SDL_FIND(name) loaded.complete = loaded.complete && library.Find("SDL_" #name, loaded.functions.name);
    KADATA_SDL_FUNCTIONS(KADATA_SDL_FIND)
#undef KADATA_SDL_FIND
    return loaded;
}

}  // namespace

const Sdl* TheSdl() noexcept {
    static const Loaded loaded = Load();
    return loaded.complete ? &loaded.functions : nullptr;
}

}  // namespace kawin
