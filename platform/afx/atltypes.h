#pragma once

// CSize, CPoint and CRect: sizes, points and rectangles as values. The right and bottom edges of a rectangle lie just outside of
// it; units are those of whoever made it. Arithmetic that leaves the range of LONG is undefined, as in the structures below them.

#include <windows.h>

class CSize : public SIZE {
public:
    constexpr CSize() noexcept : SIZE{0, 0} {}
    constexpr CSize(int x, int y) noexcept : SIZE{x, y} {}
    constexpr CSize(const SIZE& size) noexcept : SIZE(size) {}
    constexpr explicit CSize(const POINT& point) noexcept : SIZE{point.x, point.y} {}

    constexpr void SetSize(int x, int y) noexcept { *this = CSize(x, y); }
    constexpr CSize& operator+=(const SIZE& other) noexcept { return *this = CSize(cx + other.cx, cy + other.cy); }
    constexpr CSize& operator-=(const SIZE& other) noexcept { return *this = CSize(cx - other.cx, cy - other.cy); }
    constexpr CSize operator-() const noexcept { return {-cx, -cy}; }

    friend constexpr CSize operator+(CSize a, const SIZE& b) noexcept { return a += b; }
    friend constexpr CSize operator-(CSize a, const SIZE& b) noexcept { return a -= b; }
    friend constexpr bool operator==(const CSize& a, const CSize& b) noexcept { return a.cx == b.cx && a.cy == b.cy; }
};

class CPoint : public POINT {
public:
    constexpr CPoint() noexcept : POINT{0, 0} {}
    constexpr CPoint(int left, int top) noexcept : POINT{left, top} {}
    constexpr CPoint(const POINT& point) noexcept : POINT(point) {}
    constexpr explicit CPoint(const SIZE& size) noexcept : POINT{size.cx, size.cy} {}
    // The two signed 16-bit halves of a mouse message's lParam, the lower one x.
    constexpr explicit CPoint(LPARAM packed) noexcept
        : POINT{static_cast<SHORT>(static_cast<WORD>(packed)), static_cast<SHORT>(static_cast<WORD>(packed >> 16))} {}

    constexpr void SetPoint(int left, int top) noexcept { *this = CPoint(left, top); }
    constexpr void Offset(int dx, int dy) noexcept { *this = CPoint(x + dx, y + dy); }
    constexpr void Offset(const POINT& by) noexcept { Offset(by.x, by.y); }
    constexpr void Offset(const SIZE& by) noexcept { Offset(by.cx, by.cy); }
    constexpr CPoint& operator+=(const SIZE& by) noexcept { return *this = CPoint(x + by.cx, y + by.cy); }
    constexpr CPoint& operator+=(const POINT& by) noexcept { return *this = CPoint(x + by.x, y + by.y); }
    constexpr CPoint& operator-=(const SIZE& by) noexcept { return *this = CPoint(x - by.cx, y - by.cy); }
    constexpr CPoint& operator-=(const POINT& by) noexcept { return *this = CPoint(x - by.x, y - by.y); }
    constexpr CPoint operator-() const noexcept { return {-x, -y}; }

    friend constexpr CPoint operator+(CPoint a, const SIZE& b) noexcept { return a += b; }
    friend constexpr CPoint operator+(CPoint a, const POINT& b) noexcept { return a += b; }
    friend constexpr CPoint operator-(CPoint a, const SIZE& b) noexcept { return a -= b; }
    friend constexpr CSize operator-(const CPoint& a, const POINT& b) noexcept { return {a.x - b.x, a.y - b.y}; }
    friend constexpr bool operator==(const CPoint& a, const CPoint& b) noexcept { return a.x == b.x && a.y == b.y; }
};

class CRect : public RECT {
public:
    // Empty, at 0, 0.
    constexpr CRect() noexcept : RECT{0, 0, 0, 0} {}
    constexpr CRect(int l, int t, int r, int b) noexcept : RECT{l, t, r, b} {}
    constexpr CRect(const RECT& rect) noexcept : RECT(rect) {}
    // `rect` must not be null.
    constexpr CRect(LPCRECT rect) noexcept : RECT(*rect) {}
    constexpr CRect(POINT point, SIZE size) noexcept : RECT{point.x, point.y, point.x + size.cx, point.y + size.cy} {}
    constexpr CRect(POINT topLeft, POINT bottomRight) noexcept : RECT{topLeft.x, topLeft.y, bottomRight.x, bottomRight.y} {}

    // Negative for a rectangle whose edges stand in the wrong order.
    constexpr int Width() const noexcept { return right - left; }
    constexpr int Height() const noexcept { return bottom - top; }
    constexpr CSize Size() const noexcept { return {Width(), Height()}; }

    constexpr CPoint TopLeft() const noexcept { return {left, top}; }
    constexpr CPoint BottomRight() const noexcept { return {right, bottom}; }
    constexpr CPoint CenterPoint() const noexcept { return {(left + right) / 2, (top + bottom) / 2}; }

    // Without area, those with edges in the wrong order included.
    constexpr BOOL IsRectEmpty() const noexcept { return left >= right || top >= bottom; }
    // All four edges at 0.
    constexpr BOOL IsRectNull() const noexcept { return *this == CRect(); }
    // FALSE for a point on the right or bottom edge. Edges in the wrong order hold no point.
    constexpr BOOL PtInRect(POINT point) const noexcept {
        return point.x >= left && point.x < right && point.y >= top && point.y < bottom;
    }
    constexpr BOOL EqualRect(LPCRECT other) const noexcept { return *this == CRect(*other); }

    constexpr void SetRect(int l, int t, int r, int b) noexcept { *this = CRect(l, t, r, b); }
    constexpr void SetRect(POINT topLeft, POINT bottomRight) noexcept { *this = CRect(topLeft, bottomRight); }
    constexpr void SetRectEmpty() noexcept { *this = CRect(); }
    constexpr void CopyRect(LPCRECT other) noexcept { *this = CRect(*other); }

    // Outwards by x and y on both sides; inwards when negative.
    constexpr void InflateRect(int x, int y) noexcept { InflateRect(x, y, x, y); }
    constexpr void InflateRect(SIZE by) noexcept { InflateRect(by.cx, by.cy); }
    constexpr void InflateRect(LPCRECT by) noexcept { InflateRect(by->left, by->top, by->right, by->bottom); }
    constexpr void InflateRect(int l, int t, int r, int b) noexcept { *this = CRect(left - l, top - t, right + r, bottom + b); }
    // Inwards.
    constexpr void DeflateRect(int x, int y) noexcept { InflateRect(-x, -y); }
    constexpr void DeflateRect(SIZE by) noexcept { InflateRect(-by.cx, -by.cy); }
    constexpr void DeflateRect(LPCRECT by) noexcept { DeflateRect(by->left, by->top, by->right, by->bottom); }
    constexpr void DeflateRect(int l, int t, int r, int b) noexcept { InflateRect(-l, -t, -r, -b); }

    constexpr void OffsetRect(int x, int y) noexcept { *this = CRect(left + x, top + y, right + x, bottom + y); }
    constexpr void OffsetRect(POINT by) noexcept { OffsetRect(by.x, by.y); }
    constexpr void OffsetRect(SIZE by) noexcept { OffsetRect(by.cx, by.cy); }
    constexpr void MoveToX(int x) noexcept { OffsetRect(x - left, 0); }
    constexpr void MoveToY(int y) noexcept { OffsetRect(0, y - top); }
    constexpr void MoveToXY(int x, int y) noexcept { OffsetRect(x - left, y - top); }
    constexpr void MoveToXY(POINT point) noexcept { MoveToXY(point.x, point.y); }
    // Exchanges edges that stand in the wrong order.
    constexpr void NormalizeRect() noexcept {
        *this = CRect(left < right ? left : right, top < bottom ? top : bottom, left < right ? right : left,
                      top < bottom ? bottom : top);
    }

    // Become the common part, the smallest rectangle around both, and what of `a` lies outside of `b` where that is a rectangle,
    // else `a`. FALSE when the result is empty. The arguments may be this rectangle.
    BOOL IntersectRect(LPCRECT a, LPCRECT b) noexcept { return ::IntersectRect(this, a, b); }
    BOOL UnionRect(LPCRECT a, LPCRECT b) noexcept { return ::UnionRect(this, a, b); }
    BOOL SubtractRect(LPCRECT a, LPCRECT b) noexcept { return ::SubtractRect(this, a, b); }

    operator LPRECT() noexcept { return this; }
    operator LPCRECT() const noexcept { return this; }

    constexpr CRect& operator+=(POINT by) noexcept { return *this = *this + by; }
    constexpr CRect& operator+=(SIZE by) noexcept { return *this = *this + by; }
    constexpr CRect& operator-=(POINT by) noexcept { return *this = *this - by; }
    constexpr CRect& operator-=(SIZE by) noexcept { return *this = *this - by; }
    CRect& operator&=(const RECT& other) noexcept {
        IntersectRect(this, &other);
        return *this;
    }
    CRect& operator|=(const RECT& other) noexcept {
        UnionRect(this, &other);
        return *this;
    }

    friend constexpr CRect operator+(const CRect& rect, POINT by) noexcept {
        return {rect.left + by.x, rect.top + by.y, rect.right + by.x, rect.bottom + by.y};
    }
    friend constexpr CRect operator+(const CRect& rect, SIZE by) noexcept { return rect + CPoint(by); }
    friend constexpr CRect operator-(const CRect& rect, POINT by) noexcept { return rect + -CPoint(by); }
    friend constexpr CRect operator-(const CRect& rect, SIZE by) noexcept { return rect + -CPoint(by); }
    friend CRect operator&(CRect a, const RECT& b) noexcept { return a &= b; }
    friend CRect operator|(CRect a, const RECT& b) noexcept { return a |= b; }
    friend constexpr bool operator==(const CRect& a, const CRect& b) noexcept {
        return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
    }
};
