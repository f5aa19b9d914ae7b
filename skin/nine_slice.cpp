#include "nine_slice.h"

#include <algorithm>
#include <limits>

namespace kadata {
namespace {

struct Span {
    LONGLONG begin, end;
};
using Spans = std::array<Span, 3>;  // corner, what is stretched, corner

Spans SourceSpans(LONGLONG begin, LONGLONG size, LONGLONG corner, int trimNear, int trimFar) {
    const LONGLONG end = begin + size;
    return {{{begin + trimNear, begin + corner}, {begin + corner, end - corner - 1}, {end - corner, end - trimFar}}};
}

Spans TargetSpans(LONGLONG begin, LONGLONG end, LONGLONG corner) {
    return {{{begin, begin + corner}, {begin + corner, end - corner}, {end - corner, end}}};
}

int Limited(LONGLONG value) {
    return static_cast<int>(std::clamp<LONGLONG>(value, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

CRect Rect(const Span& x, const Span& y) {
    return LimitedRect(x.begin, y.begin, x.end, y.end);
}

}  // namespace

CRect LimitedRect(LONGLONG left, LONGLONG top, LONGLONG right, LONGLONG bottom) {
    return {Limited(left), Limited(top), Limited(right), Limited(bottom)};
}

std::array<SlicePiece, SLICE_PIECES> CutNineSlice(const NineSlice& cell, const CRect& target) {
    static constexpr struct {
        std::size_t column, row;
    } PLACES[SLICE_PIECES] = {{0, 0}, {2, 0}, {0, 2}, {2, 2}, {0, 1}, {2, 1}, {1, 0}, {1, 2}, {1, 1}};
    const Spans fromX = SourceSpans(cell.left, cell.width, cell.corner, cell.trim.left, cell.trim.right);
    const Spans fromY = SourceSpans(cell.top, cell.height, cell.corner, cell.trim.top, cell.trim.bottom);
    const Spans toX = TargetSpans(target.left, target.right, cell.corner);
    const Spans toY = TargetSpans(target.top, target.bottom, cell.corner);

    std::array<SlicePiece, SLICE_PIECES> pieces;
    for (std::size_t i = 0; i < SLICE_PIECES; ++i) {
        const auto [column, row] = PLACES[i];
        pieces[i] = {Rect(fromX[column], fromY[row]), Rect(toX[column], toY[row])};
    }
    const auto inside = [](const Span& span) { return Span{span.begin + 1, span.end}; };
    pieces[CENTRE].source = Rect(inside(fromX[1]), inside(fromY[1]));
    return pieces;
}

}  // namespace kadata
