#pragma once

// Drawing on contexts and pictures.
//
// A target rectangle covers the pixels from its edges rounded to the nearest whole ones, halves upwards. Size 0 draws nothing and
// is no error; a negative size draws the picture mirrored, to the left of or above the place. There are no transformations, and
// pages are measured in pixels.
//
// How DrawImage scales. The pixel at x of a target that begins at `tx` shows the source at sx + (x - tx) * sw / tw: with
// InterpolationModeNearestNeighbor the pixel nearest to that, or, with PixelOffsetModeHalf or PixelOffsetModeHighQuality, the one
// that it lies in. Every other mode is bilinear, whatever the offset mode: the average of that pixel and the next ones, weighed
// by the fraction and by their alpha. Pixels of the source beside the rectangle, inside the bitmap, do take part, and beyond the
// bitmap everything is transparent: a whole bitmap that is enlarged fades at its right and lower edge. An axis along which
// nothing is scaled, at whole pixels, is not filtered. When neither axis is scaled, the pixels are copied, from whole source
// pixels.
//
// Pieces that are scaled a second time from the same bitmap in the same way are kept, 32 MiB in all, until the bitmap changes or
// ends or others have been used more recently; not so for bitmaps over the caller's pixels.

#include <memory>

#include "gdiplus_image.h"

namespace Gdiplus {

enum Unit { UnitWorld = 0, UnitDisplay = 1, UnitPixel = 2, UnitPoint = 3, UnitInch = 4, UnitDocument = 5, UnitMillimeter = 6 };

enum QualityMode { QualityModeInvalid = -1, QualityModeDefault = 0, QualityModeLow = 1, QualityModeHigh = 2 };

enum SmoothingMode {
    SmoothingModeInvalid = QualityModeInvalid,
    SmoothingModeDefault = QualityModeDefault,
    SmoothingModeHighSpeed = QualityModeLow,
    SmoothingModeHighQuality = QualityModeHigh,
    SmoothingModeNone = 3,
    SmoothingModeAntiAlias = 4,
    SmoothingModeAntiAlias8x4 = SmoothingModeAntiAlias,
    SmoothingModeAntiAlias8x8 = 5
};

enum InterpolationMode {
    InterpolationModeInvalid = QualityModeInvalid,
    InterpolationModeDefault = QualityModeDefault,
    InterpolationModeLowQuality = QualityModeLow,
    InterpolationModeHighQuality = QualityModeHigh,
    InterpolationModeBilinear = 3,
    InterpolationModeBicubic = 4,
    InterpolationModeNearestNeighbor = 5,
    InterpolationModeHighQualityBilinear = 6,
    InterpolationModeHighQualityBicubic = 7
};

enum PixelOffsetMode {
    PixelOffsetModeInvalid = QualityModeInvalid,
    PixelOffsetModeDefault = QualityModeDefault,
    PixelOffsetModeHighSpeed = QualityModeLow,
    PixelOffsetModeHighQuality = QualityModeHigh,
    PixelOffsetModeNone = 3,
    PixelOffsetModeHalf = 4
};

enum CompositingMode { CompositingModeSourceOver = 0, CompositingModeSourceCopy = 1 };

enum CompositingQuality {
    CompositingQualityInvalid = QualityModeInvalid,
    CompositingQualityDefault = QualityModeDefault,
    CompositingQualityHighSpeed = QualityModeLow,
    CompositingQualityHighQuality = QualityModeHigh,
    CompositingQualityGammaCorrected = 3,
    CompositingQualityAssumeLinear = 4
};

// How a new clip is joined to the one there is; Complement is the new one without the old.
enum CombineMode {
    CombineModeReplace = 0,
    CombineModeIntersect = 1,
    CombineModeUnion = 2,
    CombineModeXor = 3,
    CombineModeExclude = 4,
    CombineModeComplement = 5
};

enum FlushIntention { FlushIntentionFlush = 0, FlushIntentionSync = 1 };

enum BrushType { BrushTypeSolidColor = 0 };

class ImageAttributes;  // there are none: null only
using DrawImageAbort = BOOL(CALLBACK*)(void* data);
using GraphicsState = UINT;

class KADATA_API Brush : public GdiplusBase {
public:
    virtual ~Brush() = default;
    virtual Brush* Clone() const = 0;
    BrushType GetType() const { return BrushTypeSolidColor; }
    Status GetLastStatus() const { return TakeLastStatus(); }

protected:
    friend class Graphics;
    explicit Brush(const Color& color) : color_(color) {}
    Color color_;
};

class KADATA_API SolidBrush : public Brush {
public:
    explicit SolidBrush(const Color& color);
    Brush* Clone() const override;
    // InvalidParameter for null.
    Status GetColor(Color* color) const;
    Status SetColor(const Color& color);
};

class KADATA_API Graphics : public GdiplusBase {
public:
    // The context's origins and its selected clip count as they are now; a window's visible part as it is when something is
    // drawn. OutOfMemory for what is no context. The context outlives the Graphics.
    explicit Graphics(HDC context);
    // The image outlives it, too. InvalidParameter for null and an image that failed.
    explicit Graphics(Image* image);
    static Graphics* FromHDC(HDC context);
    static Graphics* FromImage(Image* image);
    ~Graphics();

    // The mode has to be one that is named. All but interpolation, pixel offset and compositing mode are kept only: rectangles
    // have no slanted edges to smooth. InterpolationModeLowQuality is set as Bilinear, as is Default, and HighQuality as
    // HighQualityBicubic.
    Status SetSmoothingMode(SmoothingMode mode);
    Status SetInterpolationMode(InterpolationMode mode);
    Status SetPixelOffsetMode(PixelOffsetMode mode);
    Status SetCompositingMode(CompositingMode mode);
    Status SetCompositingQuality(CompositingQuality quality);
    SmoothingMode GetSmoothingMode() const;          // at first Default
    InterpolationMode GetInterpolationMode() const;  // Bilinear
    PixelOffsetMode GetPixelOffsetMode() const;      // Default, which is None
    CompositingMode GetCompositingMode() const;      // SourceOver
    CompositingQuality GetCompositingQuality() const;

    // A part of the image in a rectangle. The unit of the source is pixels, whatever `unit` says among the named ones; attributes
    // and callback have to be null (NotImplemented). InvalidParameter for a null image, one without picture, and numbers that are
    // not finite.
    Status DrawImage(Image* image, const RectF& target, REAL x, REAL y, REAL width, REAL height, Unit unit,
                     const ImageAttributes* attributes = nullptr, DrawImageAbort callback = nullptr, void* data = nullptr);
    Status DrawImage(Image* image, const Rect& target, INT x, INT y, INT width, INT height, Unit unit,
                     const ImageAttributes* attributes = nullptr, DrawImageAbort callback = nullptr, void* data = nullptr);
    // Unscaled.
    Status DrawImage(Image* image, REAL x, REAL y);
    Status DrawImage(Image* image, INT x, INT y);
    Status DrawImage(Image* image, const PointF& place);
    Status DrawImage(Image* image, const Point& place);
    Status DrawImage(Image* image, REAL x, REAL y, REAL source_x, REAL source_y, REAL width, REAL height, Unit unit);
    Status DrawImage(Image* image, INT x, INT y, INT source_x, INT source_y, INT width, INT height, Unit unit);
    // The whole image, scaled.
    Status DrawImage(Image* image, REAL x, REAL y, REAL width, REAL height);
    Status DrawImage(Image* image, INT x, INT y, INT width, INT height);
    Status DrawImage(Image* image, const RectF& target);
    Status DrawImage(Image* image, const Rect& target);

    // A size of 0 or below fills nothing.
    Status FillRectangle(const Brush* brush, const RectF& rect);
    Status FillRectangle(const Brush* brush, const Rect& rect);
    Status FillRectangle(const Brush* brush, REAL x, REAL y, REAL width, REAL height);
    Status FillRectangle(const Brush* brush, INT x, INT y, INT width, INT height);

    // Everything inside the clip becomes the colour, alpha too; on a context premultiplied.
    Status Clear(const Color& color);

    Status SetClip(const RectF& rect, CombineMode mode = CombineModeReplace);
    Status SetClip(const Rect& rect, CombineMode mode = CombineModeReplace);
    Status IntersectClip(const RectF& rect);
    Status IntersectClip(const Rect& rect);
    Status ExcludeClip(const RectF& rect);
    Status ExcludeClip(const Rect& rect);
    // What the context had selected remains.
    Status ResetClip();

    // Modes and clip. Restore goes back to a state and forgets it and what was saved since; one that is forgotten is ignored.
    Gdiplus::GraphicsState Save() const;
    Status Restore(Gdiplus::GraphicsState state);

    // Of a Graphics on a context that context; null for one on an image. Until ReleaseHDC, other calls return ObjectBusy.
    HDC GetHDC();
    void ReleaseHDC(HDC context);

    // Nothing waits: what was drawn is there.
    void Flush(FlushIntention intention = FlushIntentionFlush);

    // The most recent failure since it was asked last.
    Status GetLastStatus() const;

private:
    struct Inside;
    template <class Opening>
    void Open(Status target, Opening&& opening);
    Status Draw(Image* image, const RectF& target, const RectF& source);
    Status Fill(const RectF& rect, ARGB color, CompositingMode mode);
    Status Clip(const RectF& rect, CombineMode mode);
    Status Ready() const;  // whether something can be drawn: Ok

    std::unique_ptr<Inside> inside_;  // null when there is nothing to draw on
};

}  // namespace Gdiplus
