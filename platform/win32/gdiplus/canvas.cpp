#include "canvas.h"

#include <algorithm>
#include <cstring>

namespace kawin {
namespace {

template <class Operation>
void Apply(Argb* target, const Argb* straight, int count, Operation&& operation) {
    std::transform(straight, straight + count, target, target, operation);
}

// What cannot be seen has no colour either.
constexpr Argb Visible(Argb straight) noexcept {
    return AlphaOf(straight) == 0 ? 0 : straight;
}

void Replace(PixelKind kind, Argb* target, const Argb* straight, int count) {
    switch (kind) {
        case PixelKind::Opaque:
            return Apply(target, straight, count, [](Argb pixel, Argb) { return Visible(pixel) | kOpaque; });
        case PixelKind::Straight:
            return Apply(target, straight, count, [](Argb pixel, Argb) { return Visible(pixel); });
        default:
            return Apply(target, straight, count, [](Argb pixel, Argb) { return Premultiplied(pixel); });
    }
}

void Blend(PixelKind kind, Argb* target, const Argb* straight, int count) {
    if (kind == PixelKind::Opaque || kind == PixelKind::Straight) {
        return Apply(target, straight, count, OverStraight);
    }
    Apply(target, straight, count, OverPremultiplied);
}

}  // namespace

Argb* Canvas::BeginRow(int y) noexcept {
    return surface_ ? surface_->Row(y) : store_->BeginRow(y, scratch_.data());
}

void Canvas::Touch(const RECT& area) noexcept {
    if (surface_) {
        surface_->Touch(area);
    } else {
        store_->Touch();
    }
}

// A row has up to three parts: opaque pixels in the middle are copied, whatever the target is.
void Canvas::DrawSpan(int y, const RECT& cut, int left, const PieceRows::Row& row, bool replaces) {
    Argb* const target = BeginRow(y);
    const int begin = cut.left;
    const int end = cut.right;
    const int whole_begin = std::clamp(row.whole_begin + left, begin, end);
    const int whole_end = std::clamp(row.whole_end + left, whole_begin, end);
    const auto other = [&](int from, int to) {
        if (from < to) {
            (replaces ? Replace : Blend)(Kind(), target + from, row.pixels + (from - left), to - from);
        }
    };
    other(begin, whole_begin);
    std::memcpy(target + whole_begin, row.pixels + (whole_begin - left),
                static_cast<std::size_t>(whole_end - whole_begin) * sizeof(Argb));
    other(whole_end, end);
    if (store_) {
        store_->EndRow(y, begin, end - begin, target);
    }
}

void Canvas::Draw(const RECT& place, const RegionShape& clip, PieceRows& rows, bool replaces) {
    if (store_ && store_->IsForeign()) {
        scratch_.resize(static_cast<std::size_t>(store_->Width()));
    }
    // Rectangles of a region lie in bands: those of one band share their rows, which are made once.
    std::vector<RECT> band;
    const auto draw_band = [&] {
        for (LONG y = band.empty() ? 0 : band[0].top; !band.empty() && y < band[0].bottom; ++y) {
            const PieceRows::Row row = rows.At(y - place.top);
            for (const RECT& cut : band) {
                DrawSpan(y, cut, place.left, row, replaces);
            }
        }
    };
    RECT touched = {};
    clip.ForEachIn(place, [&](const RECT& cut) {
        if (!band.empty() && band[0].top != cut.top) {
            draw_band();
            band.clear();
        }
        band.push_back(cut);
        touched = touched.left == touched.right
                      ? cut
                      : RECT{std::min(touched.left, cut.left), touched.top, std::max(touched.right, cut.right), cut.bottom};
    });
    draw_band();
    if (touched.left < touched.right) {
        Touch(touched);
    }
}

}  // namespace kawin
