#pragma once

// Sizes of the desktop, in pixels.
//
// The desktop is drawn off screen here. It has 1920x1080 pixels, or what the environment variable KADATA_SCREEN="1280x1024" says
// at the moment of the call (each side 1 to 32767; anything else is ignored). Where there is a display, it will answer.

#include "../base/types.h"

constexpr int SM_CXSCREEN = 0;
constexpr int SM_CYSCREEN = 1;

// Width or height of the primary screen; 0, the last error as before, for any other index.
KADATA_API int GetSystemMetrics(int index) noexcept;
