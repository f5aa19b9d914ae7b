#include "copies.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "bitmap_object.h"
#include "contexts.h"
#include "copy_rows.h"
#include "drawing_call.h"
#include "paint.h"
#include "shapes.h"

namespace {

using kawin::BitmapObject;
using kawin::Block;
using kawin::BlockOn;
using kawin::DrawingContext;
using kawin::DrawOn;
using kawin::Paint;
using kawin::Pixel;
using kawin::Shrinking;
using kawin::Surface;
using kawin::TableOf;

BOOL Refuse() noexcept {
    SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
}

Shrinking ShrinkingOf(const DrawingContext& target) noexcept {
    switch (target.state.stretch_mode) {
        case BLACKONWHITE:
            return Shrinking::And;
        case WHITEONBLACK:
            return Shrinking::Or;
        case HALFTONE:
            return Shrinking::Average;
        default:
            return Shrinking::Last;
    }
}

// The pattern of the target's brush where the table needs it: one row at a time.
class PatternRows {
public:
    PatternRows(const DrawingContext& target, BYTE table, LONG width) {
        if (kawin::NeedsPattern(table)) {
            paint_.emplace(target, *target.state.brush);
            row_.resize(static_cast<std::size_t>(width));
        }
    }

    // A null brush has no pattern: nothing is drawn by it.
    bool IsMissing() const noexcept { return paint_ && paint_->IsNull(); }

    const Pixel* Read(int x, int y, std::size_t count) noexcept {
        if (!paint_) {
            return nullptr;
        }
        paint_->Read(x, y, std::span(row_).first(count));
        return row_.data();
    }

private:
    std::optional<Paint> paint_;
    std::vector<Pixel> row_;
};

void Combine(DrawingContext& target, const kawin::SourcePixels& source, BYTE table) {
    PatternRows pattern(target, table, source.area.right - source.area.left);
    if (pattern.IsMissing()) {
        return;
    }
    ForEachRow(target, source, [&](int x, int y, std::span<Pixel> row, const Pixel* from) {
        kawin::CombineRow(table, row, from, pattern.Read(x, y, row.size()));
    });
}

// MaskBlt once everything is found and the mask covers the target; `corner` is the mask's pixel for the first of the target.
void CombineMasked(DrawingContext& target, const kawin::SourcePixels& source, const Surface& mask, POINT corner,
                   DWORD operation) {
    const BYTE where_set = TableOf(operation);
    const BYTE elsewhere = static_cast<BYTE>(operation >> 24);
    const LONG width = source.area.right - source.area.left;
    PatternRows pattern(target, where_set, width);
    PatternRows other_pattern(target, elsewhere, width);
    if (pattern.IsMissing() || other_pattern.IsMissing()) {
        return;
    }
    std::vector<Pixel> other(static_cast<std::size_t>(width));
    ForEachRow(target, source, [&](int x, int y, std::span<Pixel> row, const Pixel* from) {
        const std::span<Pixel> unset = std::span(other).first(row.size());
        std::copy(row.begin(), row.end(), unset.begin());
        kawin::CombineRow(elsewhere, unset, from, other_pattern.Read(x, y, row.size()));
        kawin::CombineRow(where_set, row, from, pattern.Read(x, y, row.size()));
        const Pixel* const set = mask.Row(y - corner.y) + (x - corner.x);
        for (std::size_t at = 0; at < row.size(); ++at) {
            row[at] = set[at] != 0 ? row[at] : unset[at];
        }
    });
}

struct Place {
    int x;
    int y;
    int width;
    int height;
};

// Finds both contexts and calls draw(target, transfer) when both have something to draw on or from.
template <class Draw>
BOOL Copy(HDC target, const Place& to, HDC source, const Place& from, Draw&& draw) noexcept {
    const auto found = kawin::FindContext(source);
    return found && DrawOn(target, [&](DrawingContext& context) {
               if (context.surface && found->surface && context.state.brush) {
                   draw(context, kawin::Transfer{context, *found, BlockOn(context, {to.x, to.y}, {to.width, to.height}),
                                                 BlockOn(*found, {from.x, from.y}, {from.width, from.height})});
               }
           });
}

}  // namespace

BOOL BitBlt(HDC target, int x, int y, int width, int height, HDC source, int source_x, int source_y, DWORD operation) noexcept {
    return StretchBlt(target, x, y, width, height, source, source_x, source_y, width, height, operation);
}

BOOL StretchBlt(HDC target, int x, int y, int width, int height, HDC source, int source_x, int source_y, int source_width,
                int source_height, DWORD operation) noexcept {
    const BYTE table = TableOf(operation);
    if (!kawin::NeedsSource(table)) {
        return PatBlt(target, x, y, width, height, operation);
    }
    return Copy(target, {x, y, width, height}, source, {source_x, source_y, source_width, source_height},
                [table](DrawingContext& context, const kawin::Transfer& transfer) {
                    Combine(context, ReadSource(transfer, ShrinkingOf(context), context.Drawable().Bounds()), table);
                });
}

BOOL MaskBlt(HDC target, int x, int y, int width, int height, HDC source, int source_x, int source_y, HBITMAP mask, int mask_x,
             int mask_y, DWORD operation) noexcept {
    if (mask == nullptr) {
        return BitBlt(target, x, y, width, height, source, source_x, source_y, operation & 0x00FFFFFF);
    }
    const auto found = kawin::FindGdi<BitmapObject>(mask);
    if (!found) {
        SetLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    const Surface& bits = *found->surface;
    if (!bits.IsMono() || width < 0 || height < 0 || mask_x < 0 || mask_y < 0 || width > bits.Width() - mask_x ||
        height > bits.Height() - mask_y) {
        return Refuse();
    }
    return Copy(target, {x, y, width, height}, source, {source_x, source_y, width, height},
                [&](DrawingContext& context, const kawin::Transfer& transfer) {
                    CombineMasked(context, ReadSource(transfer, Shrinking::Last, context.Drawable().Bounds()), bits,
                                  {transfer.to.x.start - mask_x, transfer.to.y.start - mask_y}, operation);
                });
}

BOOL TransparentBlt(HDC target, int x, int y, int width, int height, HDC source, int source_x, int source_y, int source_width,
                    int source_height, UINT transparent) noexcept {
    if (width < 0 || height < 0 || source_width < 0 || source_height < 0) {
        return Refuse();
    }
    return Copy(target, {x, y, width, height}, source, {source_x, source_y, source_width, source_height},
                [transparent](DrawingContext& context, const kawin::Transfer& transfer) {
                    constexpr Pixel kColor = 0xFFFFFF;
                    const Pixel key = kawin::PixelOn(*context.surface, transparent & kColor);
                    const auto pixels = ReadSource(transfer, Shrinking::Last, context.Drawable().Bounds());
                    ForEachRow(context, pixels, [key](int, int, std::span<Pixel> row, const Pixel* from) {
                        std::transform(row.begin(), row.end(), from, row.begin(),
                                       [key](Pixel d, Pixel s) { return (s & kColor) == key ? d : s; });
                    });
                });
}
