#pragma once

// CRect: a rectangle as a value. The right and bottom edges lie just outside of it; units are those of whoever made it.

#include <windows.h>

class CRect : public RECT {
public:
    // Empty, at 0, 0.
    constexpr CRect() noexcept : RECT{0, 0, 0, 0} {}
    constexpr CRect(int l, int t, int r, int b) noexcept : RECT{l, t, r, b} {}
    constexpr CRect(const RECT& rect) noexcept : RECT(rect) {}

    // Negative for a rectangle whose edges stand in the wrong order.
    constexpr int Width() const noexcept { return right - left; }
    constexpr int Height() const noexcept { return bottom - top; }

    // Without area, those with edges in the wrong order included.
    constexpr BOOL IsRectEmpty() const noexcept { return left >= right || top >= bottom; }
    // All four edges at 0.
    constexpr BOOL IsRectNull() const noexcept { return *this == CRect(); }

    constexpr void SetRect(int l, int t, int r, int b) noexcept { *this = CRect(l, t, r, b); }
    constexpr void SetRectEmpty() noexcept { *this = CRect(); }

    operator LPRECT() noexcept { return this; }
    operator LPCRECT() const noexcept { return this; }

    friend constexpr bool operator==(const CRect& a, const CRect& b) noexcept {
        return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
    }
};
