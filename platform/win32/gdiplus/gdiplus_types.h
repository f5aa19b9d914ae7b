#pragma once

// What the GDI+ headers share: results, rectangles and colours. Units are pixels unless said otherwise.

#include "../base/guid.h"

namespace Gdiplus {

using REAL = float;
using ARGB = DWORD;  // 0xAARRGGBB, alpha not multiplied in

enum Status {
    Ok = 0,
    GenericError = 1,
    InvalidParameter = 2,
    OutOfMemory = 3,
    ObjectBusy = 4,
    InsufficientBuffer = 5,
    NotImplemented = 6,
    Win32Error = 7,
    WrongState = 8,
    Aborted = 9,
    FileNotFound = 10,
    ValueOverflow = 11,
    AccessDenied = 12,
    UnknownImageFormat = 13,
    FontFamilyNotFound = 14,
    FontStyleNotFound = 15,
    NotTrueTypeFont = 16,
    UnsupportedGdiplusVersion = 17,
    GdiplusNotInitialized = 18,
    PropertyNotFound = 19,
    PropertyNotSupported = 20,
    ProfileNotFound = 21
};
using GpStatus = Status;

template <class T>
struct BasicSize {
    T Width = 0;
    T Height = 0;

    BasicSize() = default;
    BasicSize(T width, T height) : Width(width), Height(height) {}
    BOOL Equals(const BasicSize& other) const { return Width == other.Width && Height == other.Height; }
    BOOL Empty() const { return Width == 0 && Height == 0; }
};
using Size = BasicSize<INT>;
using SizeF = BasicSize<REAL>;

template <class T>
struct BasicPoint {
    T X = 0;
    T Y = 0;

    BasicPoint() = default;
    BasicPoint(T x, T y) : X(x), Y(y) {}
    BOOL Equals(const BasicPoint& other) const { return X == other.X && Y == other.Y; }
    BasicPoint operator+(const BasicPoint& other) const { return {X + other.X, Y + other.Y}; }
    BasicPoint operator-(const BasicPoint& other) const { return {X - other.X, Y - other.Y}; }
};
using Point = BasicPoint<INT>;
using PointF = BasicPoint<REAL>;

// Right and bottom lie just outside. A size below 0 is no error here; functions say what they make of it.
template <class T>
struct BasicRect {
    T X = 0;
    T Y = 0;
    T Width = 0;
    T Height = 0;

    BasicRect() = default;
    BasicRect(T x, T y, T width, T height) : X(x), Y(y), Width(width), Height(height) {}
    BasicRect(const BasicPoint<T>& place, const BasicSize<T>& size)
        : X(place.X), Y(place.Y), Width(size.Width), Height(size.Height) {}

    T GetLeft() const { return X; }
    T GetTop() const { return Y; }
    T GetRight() const { return X + Width; }
    T GetBottom() const { return Y + Height; }
    void GetLocation(BasicPoint<T>* point) const { *point = {X, Y}; }
    void GetSize(BasicSize<T>* size) const { *size = {Width, Height}; }
    void GetBounds(BasicRect* rect) const { *rect = *this; }
    BOOL Equals(const BasicRect& other) const {
        return X == other.X && Y == other.Y && Width == other.Width && Height == other.Height;
    }
    BOOL IsEmptyArea() const { return Width <= 0 || Height <= 0; }
    BOOL Contains(T x, T y) const { return x >= X && x < GetRight() && y >= Y && y < GetBottom(); }
    BOOL Contains(const BasicPoint<T>& point) const { return Contains(point.X, point.Y); }
    BOOL IntersectsWith(const BasicRect& other) const {
        return X < other.GetRight() && other.X < GetRight() && Y < other.GetBottom() && other.Y < GetBottom();
    }
    void Offset(T dx, T dy) {
        X += dx;
        Y += dy;
    }
    void Inflate(T dx, T dy) {
        X -= dx;
        Y -= dy;
        Width += 2 * dx;
        Height += 2 * dy;
    }
};
using Rect = BasicRect<INT>;
using RectF = BasicRect<REAL>;

class Color {
public:
    enum : ARGB {
        Black = 0xFF000000,
        Blue = 0xFF0000FF,
        Cyan = 0xFF00FFFF,
        DarkGray = 0xFFA9A9A9,
        DimGray = 0xFF696969,
        Gray = 0xFF808080,
        Green = 0xFF008000,
        LightGray = 0xFFD3D3D3,
        Lime = 0xFF00FF00,
        Magenta = 0xFFFF00FF,
        Navy = 0xFF000080,
        Orange = 0xFFFFA500,
        Red = 0xFFFF0000,
        Silver = 0xFFC0C0C0,
        Transparent = 0x00FFFFFF,
        White = 0xFFFFFFFF,
        Yellow = 0xFFFFFF00
    };
    enum { BlueShift = 0, GreenShift = 8, RedShift = 16, AlphaShift = 24 };
    enum : ARGB { BlueMask = 0x000000FF, GreenMask = 0x0000FF00, RedMask = 0x00FF0000, AlphaMask = 0xFF000000 };

    Color() = default;  // opaque black
    Color(ARGB argb) : value_(argb) {}
    Color(BYTE red, BYTE green, BYTE blue) : value_(MakeARGB(255, red, green, blue)) {}
    Color(BYTE alpha, BYTE red, BYTE green, BYTE blue) : value_(MakeARGB(alpha, red, green, blue)) {}

    static ARGB MakeARGB(BYTE alpha, BYTE red, BYTE green, BYTE blue) {
        return ARGB{alpha} << AlphaShift | ARGB{red} << RedShift | ARGB{green} << GreenShift | ARGB{blue} << BlueShift;
    }

    BYTE GetA() const { return static_cast<BYTE>(value_ >> AlphaShift); }
    BYTE GetR() const { return static_cast<BYTE>(value_ >> RedShift); }
    BYTE GetG() const { return static_cast<BYTE>(value_ >> GreenShift); }
    BYTE GetB() const { return static_cast<BYTE>(value_ >> BlueShift); }
    BYTE GetAlpha() const { return GetA(); }
    BYTE GetRed() const { return GetR(); }
    BYTE GetGreen() const { return GetG(); }
    BYTE GetBlue() const { return GetB(); }
    ARGB GetValue() const { return value_; }
    void SetValue(ARGB argb) { value_ = argb; }

    // Opaque. COLORREF is 0x00BBGGRR.
    void SetFromCOLORREF(COLORREF rgb) {
        *this = Color(static_cast<BYTE>(rgb), static_cast<BYTE>(rgb >> 8), static_cast<BYTE>(rgb >> 16));
    }
    COLORREF ToCOLORREF() const { return COLORREF{GetR()} | COLORREF{GetG()} << 8 | COLORREF{GetB()} << 16; }

private:
    ARGB value_ = Black;
};

// Every class of GDI+ has it as its base. Objects belong to one thread at a time and are not copied.
class KADATA_API GdiplusBase {
public:
    GdiplusBase(const GdiplusBase&) = delete;
    GdiplusBase& operator=(const GdiplusBase&) = delete;

protected:
    GdiplusBase() = default;
    ~GdiplusBase() = default;

    // Keeps a failure for GetLastStatus; returns what it is given.
    Status Told(Status status) const {
        if (status != Ok) {
            last_status_ = status;
        }
        return status;
    }
    Status TakeLastStatus() const {
        const Status last = last_status_;
        last_status_ = Ok;
        return last;
    }

private:
    mutable Status last_status_ = Ok;
};

}  // namespace Gdiplus
