#include "source_pixels.h"

#include <algorithm>
#include <new>
#include <span>
#include <utility>
#include <vector>

#include "dib_format.h"

namespace kawin {
namespace {

RECT Common(const RECT& a, const RECT& b) noexcept {
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right), std::min(a.bottom, b.bottom)};
}

bool IsEmpty(const RECT& rect) noexcept {
    return rect.left >= rect.right || rect.top >= rect.bottom;
}

RECT Moved(const RECT& rect, POINT by) noexcept {
    return {rect.left + by.x, rect.top + by.y, rect.right + by.x, rect.bottom + by.y};
}

bool IsScaled(const Extent& to, const Extent& from) noexcept {
    return to.size != from.size || to.mirrored != from.mirrored;
}

// Source pixels become the target's: monochrome ones its text and background colour; on a monochrome target colours are 1 where
// they are the source's background.
void Convert(const Transfer& transfer, std::span<Pixel> row) noexcept {
    const bool from_mono = transfer.source.surface->IsMono();
    if (from_mono == transfer.target.surface->IsMono()) {
        return;
    }
    const Pixel text = PixelOf(transfer.target.state.text_color);
    const Pixel back = PixelOf(from_mono ? transfer.target.state.back_color : transfer.source.state.back_color);
    for (Pixel& pixel : row) {
        if (from_mono) {
            pixel = pixel != 0 ? back : text;
        } else {
            pixel = (pixel & 0xFFFFFF) == back ? 1 : 0;
        }
    }
}

// A surface for the pixels of `area`, each row of it filled by fill(y, row) and then converted.
template <class Fill>
SourcePixels Made(const Transfer& transfer, const RECT& area, Fill&& fill) {
    const auto made = Surface::Make(area.right - area.left, area.bottom - area.top, transfer.target.surface->IsMono());
    if (!made) {
        throw std::bad_alloc();
    }
    for (LONG y = area.top; y < area.bottom; ++y) {
        const std::span<Pixel> row(made->Row(y - area.top), static_cast<std::size_t>(made->Width()));
        fill(y, row);
        Convert(transfer, row);
    }
    return {made, {area.left, area.top}, area};
}

SourcePixels ReadUnscaled(const Transfer& transfer, const RECT& wanted) {
    const std::shared_ptr<Surface>& source = transfer.source.surface;
    const std::shared_ptr<Surface>& target = transfer.target.surface;
    const POINT origin = {transfer.to.x.start - transfer.from.x.start, transfer.to.y.start - transfer.from.y.start};
    const RECT area = Common(wanted, Moved(source->Bounds(), origin));
    if (IsEmpty(area)) {
        return {};
    }
    const bool in_the_way = source == target && !IsEmpty(Common(area, Moved(area, {-origin.x, -origin.y})));
    if (!in_the_way && source->IsMono() == target->IsMono()) {
        return {source, origin, area};
    }
    return Made(transfer, area, [&](LONG y, std::span<Pixel> row) {
        std::copy_n(source->Row(y - origin.y) + (area.left - origin.x), row.size(), row.begin());
    });
}

bool Has(const SourceRun& run) noexcept {
    return run.first < run.end;
}

// The runs that are not empty: one piece, as the source is. `start`..`end` become what they are for.
std::span<const SourceRun> Filled(const std::vector<SourceRun>& runs, LONG& start, LONG& end) noexcept {
    const auto first = std::find_if(runs.begin(), runs.end(), Has);
    const auto behind = std::find_if_not(first, runs.end(), Has);
    end = start + static_cast<LONG>(behind - runs.begin());
    start += static_cast<LONG>(first - runs.begin());
    return {first, behind};
}

SourcePixels ReadScaled(const Transfer& transfer, Shrinking shrinking, RECT wanted) {
    const Surface& source = *transfer.source.surface;
    const std::vector<SourceRun> all_columns =
        RunsFor(transfer.to.x, transfer.from.x, shrinking, {wanted.left, wanted.right, source.Width()});
    const std::vector<SourceRun> all_rows =
        RunsFor(transfer.to.y, transfer.from.y, shrinking, {wanted.top, wanted.bottom, source.Height()});
    const std::span<const SourceRun> columns = Filled(all_columns, wanted.left, wanted.right);
    const std::span<const SourceRun> rows = Filled(all_rows, wanted.top, wanted.bottom);
    if (columns.empty() || rows.empty()) {
        return {};
    }
    return Made(transfer, wanted, [&](LONG y, std::span<Pixel> row) {
        ScaleRow(source, columns, rows[static_cast<std::size_t>(y - wanted.top)], shrinking, row);
    });
}

}  // namespace

SourcePixels ReadSource(const Transfer& transfer, Shrinking shrinking, const RECT& wanted) {
    const RECT asked = Common(wanted, transfer.to.Area());
    if (IsEmpty(asked) || transfer.from.IsEmpty()) {
        return {};
    }
    if (IsScaled(transfer.to.x, transfer.from.x) || IsScaled(transfer.to.y, transfer.from.y)) {
        return ReadScaled(transfer, shrinking, asked);
    }
    return ReadUnscaled(transfer, asked);
}

}  // namespace kawin
