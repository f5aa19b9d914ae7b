#include "piece_rows.h"

#include <algorithm>
#include <utility>

#include "row_filters.h"

namespace kawin {
namespace {

// Pixels of a row that is converted before it is used.
std::size_t ScratchFor(const PixelStore& store) noexcept {
    const bool converts = store.IsForeign() || store.Kind() == PixelKind::Premultiplied;
    return converts ? static_cast<std::size_t>(store.Width()) : 0;
}

}  // namespace

ScaledRows::ScaledRows(const PixelStore& store, AxisTaps columns, AxisTaps rows)
    : store_(store), columns_(std::move(columns)), rows_(std::move(rows)), opaque_(store.Kind() == PixelKind::Opaque) {
    for (Slot& slot : slots_) {
        slot.scaled.resize(columns_.is_run ? 0 : columns_.first.size());
        slot.scratch.resize(ScratchFor(store));
    }
    out_.resize(columns_.first.size());
}

// The row stays while the next one that differs from it is made; `keep` is not overwritten.
const Argb* ScaledRows::SourceRow(int row, int keep) {
    for (const Slot& slot : slots_) {
        if (slot.row == row) {
            return slot.pixels;
        }
    }
    Slot& slot = slots_[slots_[0].row == keep ? 1 : 0];
    const Argb* const source = store_.StraightRow(row, slot.scratch.data());
    slot.row = row;
    slot.pixels = slot.scaled.data();
    if (columns_.is_run) {
        slot.pixels = source + columns_.first[0];
    } else if (!columns_.filters) {
        TakeColumns(source, columns_, slot.scaled.data());
    } else if (opaque_) {
        MixColumns(source, columns_, slot.scaled.data());
    } else {
        MixAlphaColumns(source, columns_, slot.scaled.data());
    }
    return slot.pixels;
}

PieceRows::Row ScaledRows::Covered(const Argb* pixels, unsigned cover) {
    const int count = static_cast<int>(out_.size());
    // Where nothing is taken away: the middle of a row, or of a row that is not covered itself, nothing.
    const int begin = cover == 255 ? columns_.covered_begin : count;
    const int end = cover == 255 ? columns_.covered_end : count;
    if (begin > 0 || end < count) {
        const auto fade = [&](int from, int to) {
            for (std::size_t x = static_cast<std::size_t>(from); x < static_cast<std::size_t>(to); ++x) {
                const Argb alpha = AlphaOf(pixels[x]) * (columns_.cover[x] * cover / 255) / 255;
                out_[x] = alpha == 0 ? 0 : (pixels[x] & ~kOpaque) | alpha << 24;
            }
        };
        fade(0, begin);
        if (pixels != out_.data()) {
            std::copy(pixels + begin, pixels + end, out_.begin() + begin);
        }
        fade(end, count);
        pixels = out_.data();
    }
    return {pixels, opaque_ ? begin : 0, opaque_ ? end : 0};
}

PieceRows::Row ScaledRows::At(int y) {
    const std::size_t row = static_cast<std::size_t>(y);
    const int first = rows_.first[row];
    const int second = rows_.second[row];
    const Argb* pixels = SourceRow(first, second);
    if (rows_.weight[row] != 0) {
        const Argb* const below = SourceRow(second, first);
        const auto mix = opaque_ ? MixRows : MixAlphaRows;
        mix(pixels, below, rows_.weight[row], static_cast<int>(out_.size()), out_.data());
        pixels = out_.data();
    }
    return Covered(pixels, rows_.cover[row]);
}

CopiedRows::CopiedRows(const PixelStore& store, int x, int y, int width)
    : store_(store), x_(x), y_(y), whole_(store.Kind() == PixelKind::Opaque ? width : 0), scratch_(ScratchFor(store)) {}

PieceRows::Row CopiedRows::At(int y) {
    return {store_.StraightRow(y_ + y, scratch_.data()) + x_, 0, whole_};
}

ColorRows::ColorRows(Argb color, int width) : row_(static_cast<std::size_t>(width), color) {}

PieceRows::Row ColorRows::At(int /*y*/) {
    const bool opaque = AlphaOf(row_.front()) == 255;
    return {row_.data(), 0, opaque ? static_cast<int>(row_.size()) : 0};
}

}  // namespace kawin
