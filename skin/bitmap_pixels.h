#pragma once

#include <atltypes.h>

#include <vector>

namespace kadata {

// Red, green and blue of each pixel (0x00RRGGBB), rows from the top.
struct BitmapPixels {
    CSize size;
    std::vector<DWORD> colors;
};

// Without pixels when there is no such bitmap, or it is selected into a context.
BitmapPixels ReadPixels(HBITMAP bitmap);
// The bitmap has the same size. False on failure.
bool WritePixels(HBITMAP bitmap, const BitmapPixels& pixels);
// A bitmap as the screen has them; null on failure.
HBITMAP MakeBitmap(const BitmapPixels& pixels);

}  // namespace kadata
