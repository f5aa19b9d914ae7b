#include "rectangles.h"

#include <algorithm>

namespace {

bool IsEmpty(const RECT& rect) noexcept {
    return rect.left >= rect.right || rect.top >= rect.bottom;
}

// Rectangles may reach beyond the numbers' range when they are moved: then they wrap, as on Windows.
LONG Sum(LONG a, int b) noexcept {
    return static_cast<LONG>(static_cast<DWORD>(a) + static_cast<DWORD>(b));
}

LONG Difference(LONG a, int b) noexcept {
    return static_cast<LONG>(static_cast<DWORD>(a) - static_cast<DWORD>(b));
}

BOOL Store(LPRECT target, const RECT& result) noexcept {
    *target = IsEmpty(result) ? RECT{} : result;
    return !IsEmpty(result);
}

}  // namespace

BOOL SetRect(LPRECT rect, int left, int top, int right, int bottom) noexcept {
    if (rect == nullptr) {
        return FALSE;
    }
    *rect = {left, top, right, bottom};
    return TRUE;
}

BOOL SetRectEmpty(LPRECT rect) noexcept {
    return SetRect(rect, 0, 0, 0, 0);
}

BOOL CopyRect(LPRECT target, const RECT* source) noexcept {
    if (target == nullptr || source == nullptr) {
        return FALSE;
    }
    *target = *source;
    return TRUE;
}

BOOL IsRectEmpty(const RECT* rect) noexcept {
    return rect == nullptr || IsEmpty(*rect);
}

BOOL EqualRect(const RECT* first, const RECT* second) noexcept {
    return first != nullptr && second != nullptr && first->left == second->left && first->top == second->top &&
           first->right == second->right && first->bottom == second->bottom;
}

BOOL PtInRect(const RECT* rect, POINT point) noexcept {
    return rect != nullptr && point.x >= rect->left && point.x < rect->right && point.y >= rect->top && point.y < rect->bottom;
}

BOOL OffsetRect(LPRECT rect, int dx, int dy) noexcept {
    if (rect == nullptr) {
        return FALSE;
    }
    *rect = {Sum(rect->left, dx), Sum(rect->top, dy), Sum(rect->right, dx), Sum(rect->bottom, dy)};
    return TRUE;
}

BOOL InflateRect(LPRECT rect, int dx, int dy) noexcept {
    if (rect == nullptr) {
        return FALSE;
    }
    *rect = {Difference(rect->left, dx), Difference(rect->top, dy), Sum(rect->right, dx), Sum(rect->bottom, dy)};
    return TRUE;
}

BOOL IntersectRect(LPRECT target, const RECT* first, const RECT* second) noexcept {
    if (target == nullptr || first == nullptr || second == nullptr) {
        return FALSE;
    }
    return Store(target, {std::max(first->left, second->left), std::max(first->top, second->top),
                          std::min(first->right, second->right), std::min(first->bottom, second->bottom)});
}

BOOL UnionRect(LPRECT target, const RECT* first, const RECT* second) noexcept {
    if (target == nullptr || first == nullptr || second == nullptr) {
        return FALSE;
    }
    if (IsEmpty(*first) || IsEmpty(*second)) {
        return Store(target, IsEmpty(*first) ? *second : *first);
    }
    return Store(target, {std::min(first->left, second->left), std::min(first->top, second->top),
                          std::max(first->right, second->right), std::max(first->bottom, second->bottom)});
}

BOOL SubtractRect(LPRECT target, const RECT* first, const RECT* second) noexcept {
    if (target == nullptr || first == nullptr || second == nullptr) {
        return FALSE;
    }
    RECT rest = *first;
    RECT common;
    if (IntersectRect(&common, first, second)) {
        const bool whole_height = common.top == rest.top && common.bottom == rest.bottom;
        const bool whole_width = common.left == rest.left && common.right == rest.right;
        if (whole_height && common.left == rest.left) {
            rest.left = common.right;
        } else if (whole_height && common.right == rest.right) {
            rest.right = common.left;
        } else if (whole_width && common.top == rest.top) {
            rest.top = common.bottom;
        } else if (whole_width && common.bottom == rest.bottom) {
            rest.bottom = common.top;
        }
    }
    return Store(target, rest);
}
