#pragma once

// A set of pixels, as rectangles that do not overlap. A value; copies are cheap to make and independent.
//
// Operations that find no memory leave an empty region; drawing clipped by it draws nothing. Coordinates beyond kFarthest are cut
// to it, so that sizes of regions and sums of a few coordinates never overflow.

#include <span>

#include "gdi_types.h"

struct _cairo_region;

namespace kawin {

constexpr LONG kFarthest = LONG{1} << 27;

constexpr LONG CutCoordinate(std::int64_t value) noexcept {
    return static_cast<LONG>(value < -kFarthest ? -kFarthest : value > kFarthest ? kFarthest : value);
}

class RegionShape {
public:
    RegionShape() noexcept;
    explicit RegionShape(const RECT& rect) noexcept;             // empty when the rectangle is
    explicit RegionShape(std::span<const RECT> rects) noexcept;  // all of them together
    RegionShape(const RegionShape& other) noexcept;
    RegionShape(RegionShape&& other) noexcept;
    RegionShape& operator=(RegionShape other) noexcept;
    ~RegionShape();

    bool IsEmpty() const noexcept;
    RECT Bounds() const noexcept;  // all 0 when empty
    int CountRects() const noexcept;
    RECT Rect(int index) const noexcept;  // from top to bottom, from left to right
    bool Contains(POINT point) const noexcept;
    bool Touches(const RECT& rect) const noexcept;  // has a pixel in it

    void Unite(const RegionShape& other) noexcept;
    void Unite(const RECT& rect) noexcept;
    void Intersect(const RegionShape& other) noexcept;
    void Intersect(const RECT& rect) noexcept;
    void Subtract(const RegionShape& other) noexcept;
    void Subtract(const RECT& rect) noexcept;
    void ExclusiveOr(const RegionShape& other) noexcept;
    void Offset(int dx, int dy) noexcept;

    friend bool operator==(const RegionShape& a, const RegionShape& b) noexcept;

    // Calls `each(const RECT&)` for every rectangle of the region that lies in `area`, cut to it.
    template <class Each>
    void ForEachIn(const RECT& area, Each&& each) const {
        for (int index = 0, count = CountRects(); index < count; ++index) {
            const RECT whole = Rect(index);
            const RECT cut = {whole.left > area.left ? whole.left : area.left, whole.top > area.top ? whole.top : area.top,
                              whole.right < area.right ? whole.right : area.right,
                              whole.bottom < area.bottom ? whole.bottom : area.bottom};
            if (cut.left < cut.right && cut.top < cut.bottom) {
                each(cut);
            }
        }
    }

private:
    _cairo_region* region_;  // null only when moved from: good for assignment and destruction
};

}  // namespace kawin
