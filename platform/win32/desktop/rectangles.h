#pragma once

// Arithmetic with rectangles. Right and bottom edges lie just outside; a rectangle without pixels is empty.
//
// All return FALSE for a null pointer. The target may be one of the sources.

#include "../gdi/gdi_types.h"

KADATA_API BOOL SetRect(LPRECT rect, int left, int top, int right, int bottom) noexcept;
KADATA_API BOOL SetRectEmpty(LPRECT rect) noexcept;  // all edges 0
KADATA_API BOOL CopyRect(LPRECT target, const RECT* source) noexcept;
KADATA_API BOOL IsRectEmpty(const RECT* rect) noexcept;  // TRUE for a null pointer
KADATA_API BOOL EqualRect(const RECT* first, const RECT* second) noexcept;
KADATA_API BOOL PtInRect(const RECT* rect, POINT point) noexcept;  // the right and bottom edges are outside
KADATA_API BOOL OffsetRect(LPRECT rect, int dx, int dy) noexcept;
KADATA_API BOOL InflateRect(LPRECT rect, int dx, int dy) noexcept;  // negative: smaller, even inside out

// These three return FALSE when the result is empty; it is all 0 then. UnionRect is the smallest rectangle around both, an empty
// one left out. SubtractRect takes `second` off `first` where it covers a whole side of it, and else changes nothing.
KADATA_API BOOL IntersectRect(LPRECT target, const RECT* first, const RECT* second) noexcept;
KADATA_API BOOL UnionRect(LPRECT target, const RECT* first, const RECT* second) noexcept;
KADATA_API BOOL SubtractRect(LPRECT target, const RECT* first, const RECT* second) noexcept;
