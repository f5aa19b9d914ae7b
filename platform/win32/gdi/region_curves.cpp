#include "region_curves.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <utility>
#include <vector>

namespace kawin {
namespace {

struct Edge {
    POINT top;
    POINT bottom;
    int direction;  // 1 downwards, -1 upwards
};

struct Crossing {
    LONG x;
    int direction;
};

POINT Cut(POINT point) noexcept {
    return {CutCoordinate(point.x), CutCoordinate(point.y)};
}

std::vector<Edge> EdgesOf(std::span<const POINT> points) {
    std::vector<Edge> edges;
    for (std::size_t index = 0; index < points.size(); ++index) {
        const POINT from = Cut(points[index]);
        const POINT to = Cut(points[(index + 1) % points.size()]);
        if (from.y < to.y) {
            edges.push_back({from, to, 1});
        } else if (to.y < from.y) {
            edges.push_back({to, from, -1});
        }
    }
    std::sort(edges.begin(), edges.end(), [](const Edge& a, const Edge& b) { return a.top.y < b.top.y; });
    return edges;
}

std::int64_t DivideUp(std::int64_t value, std::int64_t by) noexcept {
    return value / by + (value % by > 0);
}

// The first pixel column at or to the right of the edge on the scan line y.
LONG ColumnAt(const Edge& edge, LONG y) noexcept {
    const std::int64_t dx = std::int64_t{edge.bottom.x} - edge.top.x;
    const std::int64_t dy = std::int64_t{edge.bottom.y} - edge.top.y;
    return static_cast<LONG>(edge.top.x + DivideUp(dx * (y - edge.top.y), dy));
}

// What the crossings of one scan line, in order, enclose.
void AddSpans(std::span<const Crossing> crossings, bool winding, LONG y, std::vector<RECT>& spans) {
    int inside = 0;
    for (std::size_t index = 0; index + 1 < crossings.size(); ++index) {
        inside = winding ? inside + crossings[index].direction : 1 - inside;
        if (inside != 0 && crossings[index].x < crossings[index + 1].x) {
            spans.push_back({crossings[index].x, y, crossings[index + 1].x, y + 1});
        }
    }
}

// The scan lines that are both in a shape and wanted.
struct Lines {
    LONG first;
    LONG end;
};

std::optional<Lines> LinesOf(LONG top, LONG bottom, const RECT& rows) noexcept {
    const Lines lines = {std::max(CutCoordinate(top), rows.top), std::min(CutCoordinate(bottom), rows.bottom)};
    if (lines.end > lines.first && lines.end - lines.first > kMostScanLines) {
        return {};
    }
    return lines;
}

// The pixels that have the shape up to `reach` away on both sides of them, along one axis.
RegionShape ErodedAlong(RegionShape shape, LONG reach, bool sideways) noexcept {
    // Whatever is wider than the whole leaves nothing; so the distance doubles a few times at most.
    const LONG most = CutCoordinate(std::int64_t{reach} < 0 ? 0 : reach);
    for (LONG done = 0; done < most && !shape.IsEmpty();) {
        const LONG step = std::min(2 * done + 1, most - done);
        RegionShape before = shape;
        RegionShape behind = shape;
        before.Offset(sideways ? -step : 0, sideways ? 0 : -step);
        behind.Offset(sideways ? step : 0, sideways ? 0 : step);
        shape.Intersect(before);
        shape.Intersect(behind);
        done += step;
    }
    return shape;
}

// Half the width of an ellipse with these diameters, `from_middle` of its axis away.
double HalfWidth(double width, double height, double from_middle) noexcept {
    const double part = 2 * from_middle / height;
    return width / 2 * std::sqrt(std::max(0.0, 1 - part * part));
}

}  // namespace

RegionShape OrThrow(std::optional<RegionShape> shape) {
    if (!shape) {
        throw std::bad_alloc();
    }
    return std::move(*shape);
}

RegionShape Eroded(const RegionShape& shape, LONG width, LONG height) noexcept {
    RegionShape left = ErodedAlong(shape, width, true);
    left.Intersect(ErodedAlong(shape, height, false));
    return left;
}

std::optional<RegionShape> PolygonShape(std::span<const POINT> points, bool winding, const RECT& rows) noexcept try {
    const std::vector<Edge> edges = EdgesOf(points);
    if (edges.empty()) {
        return RegionShape();
    }
    LONG bottom = edges.front().bottom.y;
    for (const Edge& edge : edges) {
        bottom = std::max(bottom, edge.bottom.y);
    }
    const std::optional<Lines> lines = LinesOf(edges.front().top.y, bottom, rows);
    if (!lines) {
        return {};
    }
    std::vector<const Edge*> active;
    std::vector<Crossing> crossings;
    std::vector<RECT> spans;
    auto next = edges.begin();
    for (LONG y = lines->first; y < lines->end; ++y) {
        for (; next != edges.end() && next->top.y <= y; ++next) {
            active.push_back(&*next);
        }
        std::erase_if(active, [y](const Edge* edge) { return edge->bottom.y <= y; });
        crossings.clear();
        for (const Edge* const edge : active) {
            crossings.push_back({ColumnAt(*edge, y), edge->direction});
        }
        std::sort(crossings.begin(), crossings.end(), [](const Crossing& a, const Crossing& b) { return a.x < b.x; });
        AddSpans(crossings, winding, y, spans);
    }
    return RegionShape(spans);
} catch (const std::bad_alloc&) {
    return {};
}

std::optional<RegionShape> RoundRectShape(const RECT& bounds, SIZE corner, const RECT& rows) noexcept try {
    const RECT box = Ordered(
        {CutCoordinate(bounds.left), CutCoordinate(bounds.top), CutCoordinate(bounds.right), CutCoordinate(bounds.bottom)});
    const std::optional<Lines> lines = LinesOf(box.top, box.bottom, rows);
    if (!lines) {
        return {};
    }
    const double width = std::min(std::abs(static_cast<double>(corner.cx)), static_cast<double>(box.right - box.left));
    const double height = std::min(std::abs(static_cast<double>(corner.cy)), static_cast<double>(box.bottom - box.top));
    std::vector<RECT> spans;
    for (LONG y = lines->first; y < lines->end; ++y) {
        const double from_edge = std::min(y - box.top, box.bottom - 1 - y) + 0.5;
        const bool in_corner = from_edge < height / 2;
        const double cut = in_corner ? width / 2 - HalfWidth(width, height, height / 2 - from_edge) : 0;
        const LONG left = box.left + static_cast<LONG>(std::lround(cut));
        const LONG right = box.right - static_cast<LONG>(std::lround(cut));
        if (left < right) {
            spans.push_back({left, y, right, y + 1});
        }
    }
    return RegionShape(spans);
} catch (const std::bad_alloc&) {
    return {};
}

std::optional<RegionShape> EllipseShape(const RECT& bounds, const RECT& rows) noexcept {
    return RoundRectShape(bounds, {2 * kFarthest, 2 * kFarthest}, rows);
}

}  // namespace kawin
