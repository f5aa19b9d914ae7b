#pragma once

// What is drawn, row by row: a scaled part of a picture, one that was kept, or a colour.

#include <array>
#include <vector>

#include "axis.h"
#include "pixel_store.h"

namespace kawin {

class PieceRows {
public:
    struct Row {
        const Argb* pixels = nullptr;  // straight; until the next row is asked for
        int whole_begin = 0;           // from here to whole_end, all are opaque
        int whole_end = 0;
    };

    virtual ~PieceRows() = default;
    virtual Row At(int y) = 0;
};

// Part of a picture, which has to stay and may not change meanwhile. Rows are made when they are asked for; the cheapest order is
// one after another.
class ScaledRows : public PieceRows {
public:
    // May throw std::bad_alloc.
    ScaledRows(const PixelStore& store, AxisTaps columns, AxisTaps rows);

    Row At(int y) override;

private:
    // A row of the source, scaled along x.
    struct Slot {
        int row = -1;
        const Argb* pixels = nullptr;
        std::vector<Argb> scaled;
        std::vector<Argb> scratch;
    };

    const Argb* SourceRow(int row, int keep);
    Row Covered(const Argb* pixels, unsigned cover);

    const PixelStore& store_;
    const AxisTaps columns_;
    const AxisTaps rows_;
    const bool opaque_;
    std::array<Slot, 2> slots_;
    std::vector<Argb> out_;
};

// Part of a picture as it is, all of which lies in the picture; that has to stay and may not change meanwhile.
class CopiedRows : public PieceRows {
public:
    // May throw std::bad_alloc.
    CopiedRows(const PixelStore& store, int x, int y, int width);
    Row At(int y) override;

private:
    const PixelStore& store_;
    const int x_;
    const int y_;
    const int whole_;  // of a row's pixels, so many are opaque for certain
    std::vector<Argb> scratch_;
};

class ColorRows : public PieceRows {
public:
    // May throw std::bad_alloc.
    ColorRows(Argb color, int width);
    Row At(int y) override;

private:
    std::vector<Argb> row_;
};

}  // namespace kawin
