#pragma once

// SDL 2, which shows the windows. It is loaded when there is something to show, so that programs without a window do without it
// and what it brings along; the headers are those it was built with.

#define SDL_MAIN_HANDLED
#include <SDL.h>

namespace kawin {

// The functions that are used, each under its name without SDL_.
#define KADATA_SDL_FUNCTIONS(F)       \
    F(CreateColorCursor)              \
    F(CreateRGBSurfaceWithFormatFrom) \
    F(CreateSystemCursor)             \
    F(CreateWindow)                   \
    F(DestroyWindow)                  \
    F(FreeCursor)                     \
    F(FreeSurface)                    \
    F(GetClipboardText)               \
    F(GetCurrentVideoDriver)          \
    F(GetDisplayBounds)               \
    F(GetDisplayUsableBounds)         \
    F(GetGlobalMouseState)            \
    F(GetNumVideoDisplays)            \
    F(GetWindowFlags)                 \
    F(GetWindowFromID)                \
    F(GetWindowID)                    \
    F(GetWindowSurface)               \
    F(HideWindow)                     \
    F(InitSubSystem)                  \
    F(MinimizeWindow)                 \
    F(PollEvent)                      \
    F(PushEvent)                      \
    F(QuitSubSystem)                  \
    F(RaiseWindow)                    \
    F(RegisterEvents)                 \
    F(RestoreWindow)                  \
    F(SetClipboardText)               \
    F(SetCursor)                      \
    F(SetHint)                        \
    F(SetMainReady)                   \
    F(SetWindowAlwaysOnTop)           \
    F(SetWindowInputFocus)            \
    F(SetWindowModalFor)              \
    F(SetWindowPosition)              \
    F(SetWindowSize)                  \
    F(SetWindowTitle)                 \
    F(ShowCursor)                     \
    F(ShowWindow)                     \
    F(StartTextInput)                 \
    F(UpdateWindowSurfaceRects)       \
    F(UpperBlit)                      \
    F(WaitEventTimeout)               \
    F(WarpMouseGlobal)                \
    F(free)

struct Sdl {
#define KADATA_SDL_MEMBER(name) decltype(&::SDL_##name) name = nullptr;
    KADATA_SDL_FUNCTIONS(KADATA_SDL_MEMBER)
#undef KADATA_SDL_MEMBER
};

// Loaded at the first call and kept; null when it is not there or too old. Any thread; the last error stays.
const Sdl* TheSdl() noexcept;

}  // namespace kawin
