#pragma once

#include "bitmaps.h"

namespace kawin {

// LoadImageW of an IMAGE_BITMAP: as LoadBitmapW; scaled where width or height are not 0 (one that is stays as it is). Flags:
// LR_CREATEDIBSECTION gives 32 bits and the pixels in memory, LR_MONOCHROME one bit, black and white by what is nearer;
// LR_SHARED,
// LR_DEFAULTSIZE, LR_COLOR and LR_VGACOLOR change nothing. Null with ERROR_INVALID_PARAMETER for others.
HBITMAP LoadBitmapImage(HINSTANCE module, LPCWSTR name, int width, int height, UINT flags) noexcept;

}  // namespace kawin
