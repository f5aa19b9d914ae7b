#pragma once

// Bitmaps and device-independent pixels (DIBs).
//
// Here a bitmap has one bit or 32 bits a pixel; deeper or paletted pixels are for DIBs in memory. Who makes a bitmap deletes it
// with DeleteObject. A null or foreign handle fails with ERROR_INVALID_HANDLE, other wrong arguments with
// ERROR_INVALID_PARAMETER, a size beyond 65,535 on a side or 2^28 pixels, or no memory, with ERROR_NOT_ENOUGH_MEMORY.

#include "gdi_types.h"

struct BITMAP {
    LONG bmType;  // 0
    LONG bmWidth;
    LONG bmHeight;
    LONG bmWidthBytes;  // of a row, even
    WORD bmPlanes;
    WORD bmBitsPixel;
    LPVOID bmBits;  // null unless the bitmap is of CreateDIBSection
};

struct RGBQUAD {
    BYTE rgbBlue;
    BYTE rgbGreen;
    BYTE rgbRed;
    BYTE rgbReserved;
};

constexpr DWORD BI_RGB = 0;
constexpr DWORD BI_RLE8 = 1;
constexpr DWORD BI_RLE4 = 2;
constexpr DWORD BI_BITFIELDS = 3;

struct BITMAPCOREHEADER {
    DWORD bcSize;
    WORD bcWidth;
    WORD bcHeight;
    WORD bcPlanes;
    WORD bcBitCount;
};

struct BITMAPINFOHEADER {
    DWORD biSize;  // 40
    LONG biWidth;
    LONG biHeight;  // above 0: the rows go upwards in memory; below 0: downwards
    WORD biPlanes;  // 1
    WORD biBitCount;
    DWORD biCompression;
    DWORD biSizeImage;
    LONG biXPelsPerMeter;
    LONG biYPelsPerMeter;
    DWORD biClrUsed;
    DWORD biClrImportant;
};
using LPBITMAPINFOHEADER = BITMAPINFOHEADER*;

struct BITMAPINFO {
    BITMAPINFOHEADER bmiHeader;
    RGBQUAD bmiColors[1];
};
using LPBITMAPINFO = BITMAPINFO*;

struct DIBSECTION {
    BITMAP dsBm;
    BITMAPINFOHEADER dsBmih;
    DWORD dsBitfields[3];
    HANDLE dshSection;
    DWORD dsOffset;
};

constexpr UINT DIB_RGB_COLORS = 0;
constexpr UINT DIB_PAL_COLORS = 1;  // refused: there are no palettes

constexpr DWORD CBM_INIT = 4;

constexpr UINT IMAGE_BITMAP = 0;
constexpr UINT IMAGE_ICON = 1;
constexpr UINT IMAGE_CURSOR = 2;

constexpr UINT LR_DEFAULTCOLOR = 0x0000;
constexpr UINT LR_MONOCHROME = 0x0001;
constexpr UINT LR_COLOR = 0x0002;
constexpr UINT LR_LOADFROMFILE = 0x0010;
constexpr UINT LR_LOADTRANSPARENT = 0x0020;
constexpr UINT LR_DEFAULTSIZE = 0x0040;
constexpr UINT LR_VGACOLOR = 0x0080;
constexpr UINT LR_LOADMAP3DCOLORS = 0x1000;
constexpr UINT LR_CREATEDIBSECTION = 0x2000;
constexpr UINT LR_SHARED = 0x8000;

// Of the depth of what is drawn on through the context: 32 bits, but one bit for a memory context in which a monochrome bitmap is
// selected, as a new one's is; where one of CreateDIBSection is, it is such a one, too. Black. A width or height of 0 gives a
// monochrome bitmap of one pixel. ERROR_INVALID_PARAMETER for negative ones.
KADATA_API HBITMAP CreateCompatibleBitmap(HDC context, int width, int height) noexcept;

// One plane of 1 or 32 bits; `bits` are rows from the top, each of an even number of bytes, the leftmost pixel in the highest bit
// of a byte; null: undefined on Windows, black here. Other depths are refused.
KADATA_API HBITMAP CreateBitmap(int width, int height, UINT planes, UINT depth, const void* bits) noexcept;
KADATA_API HBITMAP CreateBitmapIndirect(const BITMAP* bitmap) noexcept;

// A bitmap whose pixels the caller reads and writes, too: through *bits, until the bitmap is deleted. 32 bits a pixel, BI_RGB, or
// BI_BITFIELDS with red, green and blue as BI_RGB has them; other depths are refused (null with ERROR_INVALID_PARAMETER, *bits
// null), as are a section and DIB_PAL_COLORS. The top byte of a pixel: the caller's own, but drawing may change it.
KADATA_API HBITMAP CreateDIBSection(HDC context, const BITMAPINFO* info, UINT usage, void** bits, HANDLE section,
                                    DWORD offset) noexcept;

// A 32-bit bitmap of the header's size, with CBM_INIT filled from the DIB.
KADATA_API HBITMAP CreateDIBitmap(HDC context, const BITMAPINFOHEADER* header, DWORD flags, const void* bits,
                                  const BITMAPINFO* info, UINT usage) noexcept;

// Copies `lines` rows from row `first` on between a bitmap and a DIB, whose rows are multiples of four bytes; they are counted
// from the lowest of the DIB, also where they go downwards in memory, and `bits` has just these. The upper left corners are the
// same pixel; what only one of the two has is left out. BI_RGB of 1, 24 or 32 bits a pixel, SetDIBits also of 4 and 8. Returns
// the rows that both have, 0 on failure. GetDIBits with null `bits` fills the header only: biBitCount 0 asks for the bitmap's own
// format, another one is kept and gets biSizeImage. One bit a pixel gets a palette of black and white.
KADATA_API int GetDIBits(HDC context, HBITMAP bitmap, UINT first, UINT lines, LPVOID bits, LPBITMAPINFO info,
                         UINT usage) noexcept;
KADATA_API int SetDIBits(HDC context, HBITMAP bitmap, UINT first, UINT lines, const void* bits, const BITMAPINFO* info,
                         UINT usage) noexcept;

// Rows from the top as CreateBitmap takes them. Bytes copied, 0 on failure; GetBitmapBits with a null buffer: bytes there are.
KADATA_API LONG GetBitmapBits(HBITMAP bitmap, LONG capacity, LPVOID bits) noexcept;
KADATA_API LONG SetBitmapBits(HBITMAP bitmap, DWORD size, const void* bits) noexcept;

// Outside the clip and without a bitmap: CLR_INVALID, and FALSE of SetPixelV. SetPixel returns the colour that was drawn.
KADATA_API COLORREF GetPixel(HDC context, int x, int y) noexcept;
KADATA_API COLORREF SetPixel(HDC context, int x, int y, COLORREF color) noexcept;
KADATA_API BOOL SetPixelV(HDC context, int x, int y, COLORREF color) noexcept;

// A bitmap of the module's resources (null: the executable's), by name or MAKEINTRESOURCEW: one bit a pixel where its palette is
// black and white, else 32. A top byte that is not alpha is 0. Null with the last error as FindResourceW sets it, or
// ERROR_INVALID_DATA for one that is damaged.
KADATA_API HBITMAP LoadBitmapW(HINSTANCE module, LPCWSTR name) noexcept;
