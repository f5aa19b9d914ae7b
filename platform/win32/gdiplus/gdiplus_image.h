#pragma once

// Pictures in memory.
//
// Bitmaps have one of the four formats of gdiplus_pixel_formats.h; what is read from elsewhere with fewer than 24 bits a pixel
// becomes 24. An object whose constructor failed has no picture: its functions return InvalidParameter, its sizes are 0.
// Different threads may use different pictures; several may draw from one at once while nobody changes it.

#include <memory>

#include "../gdi/gdi_types.h"
#include "gdiplus_pixel_formats.h"

namespace kawin {
class PixelStore;
}

namespace Gdiplus {

enum ImageType { ImageTypeUnknown = 0, ImageTypeBitmap = 1, ImageTypeMetafile = 2 };

enum ImageLockMode { ImageLockModeRead = 1, ImageLockModeWrite = 2, ImageLockModeUserInputBuf = 4 };

struct BitmapData {
    UINT Width;
    UINT Height;
    INT Stride;  // bytes from a row to the one below
    INT PixelFormat;
    void* Scan0;  // the uppermost row
    UINT_PTR Reserved;
};

struct EncoderParameters;  // there are none: null only

class KADATA_API Image : public GdiplusBase {
public:
    // A BMP or PNG file; its kind is told by its content. Reads it whole and closes it. FileNotFound when it cannot be opened
    // (GetLastError has more), UnknownImageFormat when it is neither or damaged, OutOfMemory. FromFile is never null either: the
    // last status says how it went.
    explicit Image(const WCHAR* filename, BOOL use_color_management = FALSE);
    static Image* FromFile(const WCHAR* filename, BOOL use_color_management = FALSE);
    virtual ~Image();

    // To be deleted by the caller; null on failure.
    virtual Image* Clone() const;

    // Writes a new file with an encoder of GetImageEncoders; PNG keeps alpha, BMP is 24 bits without. UnknownImageFormat for an
    // encoder that there is not, GenericError (GetLastError has more) when the file cannot be written; it may be damaged then.
    Status Save(const WCHAR* filename, const CLSID* encoder, const EncoderParameters* parameters = nullptr);

    UINT GetWidth() const;
    UINT GetHeight() const;
    PixelFormat GetPixelFormat() const;
    ImageType GetType() const;

    // The most recent failure since it was asked last.
    Status GetLastStatus() const;

protected:
    friend class Graphics;
    Image() = default;
    Image(std::shared_ptr<kawin::PixelStore> store, Status otherwise);

    // Takes `store`, or with none keeps `otherwise` as the last status.
    void Take(std::shared_ptr<kawin::PixelStore> store, Status otherwise);

    std::shared_ptr<kawin::PixelStore> store_;
};

class KADATA_API Bitmap : public Image {
public:
    // Transparent black where the format has alpha, else black. InvalidParameter for a format that is none of the four, a side
    // below 1 or above 65,535, or more than 2^26 pixels.
    Bitmap(INT width, INT height, PixelFormat format = PixelFormat32bppARGB);

    // Over pixels of the caller's, who keeps them until the bitmap is deleted, and may change them. `scan0` is the uppermost row;
    // the stride is a multiple of 4, negative when rows go upwards, and at least as long as a row.
    Bitmap(INT width, INT height, INT stride, PixelFormat format, BYTE* scan0);

    // A copy: 32 bits RGB, of a monochrome bitmap too. The palette is ignored, as the system has none.
    Bitmap(HBITMAP bitmap, HPALETTE palette);
    // A bitmap resource by name or MAKEINTRESOURCEW. Its alpha, if it has any, is not looked at: 24 bits or 32 bits RGB.
    // InvalidParameter when it is not there or damaged.
    Bitmap(HINSTANCE module, const WCHAR* name);
    explicit Bitmap(const WCHAR* filename, BOOL use_color_management = FALSE);

    // These are never null; the last status says how it went.
    static Bitmap* FromFile(const WCHAR* filename, BOOL use_color_management = FALSE);
    static Bitmap* FromHBITMAP(HBITMAP bitmap, HPALETTE palette);
    static Bitmap* FromResource(HINSTANCE module, const WCHAR* name);

    // A part, in the same or, with `format` not PixelFormatDontCare, another format. Null with InvalidParameter when the
    // rectangle is empty or not wholly inside. Fractions are rounded.
    Bitmap* Clone(INT x, INT y, INT width, INT height, PixelFormat format);
    Bitmap* Clone(const Rect& part, PixelFormat format);
    Bitmap* Clone(REAL x, REAL y, REAL width, REAL height, PixelFormat format);
    Bitmap* Clone(const RectF& part, PixelFormat format);
    Bitmap* Clone() const override;

    // InvalidParameter outside and for a null pointer.
    Status GetPixel(INT x, INT y, Color* color);
    Status SetPixel(INT x, INT y, const Color& color);

    // The pixels of a part (null: all of it), in one of the four formats, in memory of the bitmap's or, with
    // ImageLockModeUserInputBuf, at data->Scan0 with data->Stride. ImageLockModeRead fills it, ImageLockModeWrite takes it over
    // when it is unlocked. One lock at a time: WrongState. InvalidParameter for a part that is not inside. While a bitmap is
    // locked, a Graphics neither draws from nor on it (WrongState).
    Status LockBits(const Rect* part, UINT mode, PixelFormat format, BitmapData* data);
    Status UnlockBits(BitmapData* data);

    // A new 32-bit bitmap that the caller deletes with DeleteObject: the picture over an opaque `background`; with a background
    // of alpha 0, premultiplied with its alpha in the top byte.
    Status GetHBITMAP(const Color& background, HBITMAP* bitmap);

private:
    explicit Bitmap(std::shared_ptr<kawin::PixelStore> store);
    struct Lock;
    std::shared_ptr<Lock> lock_;  // null: not locked
};

}  // namespace Gdiplus
