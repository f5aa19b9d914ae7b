#pragma once

// How a cell of a bitmap is cut into nine pieces, and where each of them goes.

#include <atltypes.h>

#include <array>
#include <cstddef>

namespace kadata {

// A rectangle of edges that were computed in 64 bits, which hold whatever can be made of a description's 32-bit numbers. What a
// rectangle cannot say becomes its limit.
CRect LimitedRect(LONGLONG left, LONGLONG top, LONGLONG right, LONGLONG bottom);

// A cell and its corners, in pixels.
struct NineSlice {
    LONGLONG left = 0;
    LONGLONG top = 0;
    LONGLONG width = 0;
    LONGLONG height = 0;
    LONGLONG corner = 0;
    CRect trim;  // how many pixels the pieces of each side lose at their outer end
};

struct SlicePiece {
    CRect source;
    CRect target;
};

// The order in which the pieces are drawn.
enum ESlicePiece : std::size_t {
    TOP_LEFT,
    TOP_RIGHT,
    BOTTOM_LEFT,
    BOTTOM_RIGHT,
    LEFT_EDGE,
    RIGHT_EDGE,
    TOP_EDGE,
    BOTTOM_EDGE,
    CENTRE,
    SLICE_PIECES,
};

// The edges' sources end one pixel before the far corner, and the centre's source is one pixel smaller on each side, so that no
// filter reads from a neighbouring piece or the next cell.
std::array<SlicePiece, SLICE_PIECES> CutNineSlice(const NineSlice& cell, const CRect& target);

}  // namespace kadata
