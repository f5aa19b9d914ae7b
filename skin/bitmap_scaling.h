#pragma once

#include "bitmap_pixels.h"

namespace kadata {

struct ScaleFactors {
    double x = 1;  // never less
    double y = 1;
};

// By how much pictures are enlarged for a window, or for the screen when it is null or lies in no dialog.
ScaleFactors ScaleFor(HWND window);

// The picture enlarged. Pixels of the top left one's colour are transparent: the edge between them and the others stays sharp.
// Without pixels on failure.
BitmapPixels Enlarged(const BitmapPixels& picture, ScaleFactors factors);

}  // namespace kadata
