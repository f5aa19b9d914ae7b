#pragma once

// Bitmaps of a skin, from the resources of the host.

#include <afxwin.h>
#include <gdiplus.h>

#include <memory>

namespace kadata {

// Null when there is none of that number, or when it is damaged.
std::unique_ptr<Gdiplus::Bitmap> LoadSkinBitmap(UINT id);

// The bitmap with all pixels of the key's colour transparent; `key` as SkinCaptionBitmapInfo has it. The bitmap itself where
// there is no key, or no memory for another bitmap.
std::unique_ptr<Gdiplus::Bitmap> WithColorKey(std::unique_ptr<Gdiplus::Bitmap> bitmap, COLORREF key);

}  // namespace kadata
