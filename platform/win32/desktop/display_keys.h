#pragma once

// Keys of a display as the desktop names them.

#include "sdl_library.h"

namespace kawin {

struct DesktopKey {
    int key = 0;   // VK_*; 0: none
    int scan = 0;  // as a PC keyboard sends it, 0x100 set: extended
};

// By what is printed on it where that is a letter, else by its place.
DesktopKey KeyOf(const SDL_Keysym& symbol) noexcept;

// Whether the key types something on its own, so that typing nothing means that it waits for another one.
bool IsPrinting(int key) noexcept;

}  // namespace kawin
