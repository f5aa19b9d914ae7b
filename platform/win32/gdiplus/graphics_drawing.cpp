// What a Graphics draws, and where.

#include <algorithm>
#include <cmath>
#include <new>

#include "graphics_inside.h"
#include "piece_cache.h"
#include "store_copy.h"

namespace Gdiplus {
namespace {

using kawin::AxisMap;
using kawin::PixelStore;
using kawin::PlacedAxis;
using kawin::Sampling;

// Looking up a smaller piece takes as long as making it.
constexpr std::int64_t kSmallestKeptPiece = 256;

// Far enough for every surface, near enough to be counted with.
constexpr double kFarthest = 1 << 26;

RectF ToReal(const Rect& rect) {
    return {static_cast<REAL>(rect.X), static_cast<REAL>(rect.Y), static_cast<REAL>(rect.Width), static_cast<REAL>(rect.Height)};
}

bool IsFinite(const RectF& rect) noexcept {
    return std::isfinite(rect.X) && std::isfinite(rect.Y) && std::isfinite(rect.Width) && std::isfinite(rect.Height);
}

LONG RoundedEdge(double edge) noexcept {
    return static_cast<LONG>(std::clamp(std::floor(edge + 0.5), -kFarthest, kFarthest));
}

// A size below 0 gives an empty rectangle.
RECT Rounded(const RectF& rect, POINT origin) noexcept {
    const double left = double{rect.X} + origin.x;
    const double top = double{rect.Y} + origin.y;
    return {RoundedEdge(left), RoundedEdge(top), RoundedEdge(left + double{rect.Width}), RoundedEdge(top + double{rect.Height})};
}

Sampling SamplingFor(InterpolationMode mode, PixelOffsetMode offset) noexcept {
    if (mode != InterpolationModeNearestNeighbor) {
        return Sampling::Bilinear;
    }
    const bool half = offset == PixelOffsetModeHalf || offset == PixelOffsetModeHighQuality;
    return half ? Sampling::Inside : Sampling::Nearest;
}

// A piece of a picture on its way to a canvas.
struct Order {
    const PixelStore& store;
    PlacedAxis x;
    PlacedAxis y;

    RECT Place() const noexcept { return {x.begin, y.begin, x.begin + x.map.count, y.begin + y.map.count}; }
    std::int64_t Size() const noexcept { return std::int64_t{x.map.count} * y.map.count; }
    // Pixel by pixel, and nothing of it lies outside of the picture.
    bool IsPlainCopy() const noexcept {
        return x.map.sampling == Sampling::Copy && x.map.start >= 0 && y.map.start >= 0 &&
               x.map.start + x.map.count <= store.Width() && y.map.start + y.map.count <= store.Height();
    }
    bool IsKept() const noexcept {
        return x.map.sampling != Sampling::Copy && !store.IsForeign() && Size() >= kSmallestKeptPiece &&
               Size() * static_cast<std::int64_t>(sizeof(kawin::Argb)) <= std::int64_t{kawin::kMostPieceBytes};
    }
};

kawin::ScaledRows MakeRows(const Order& order) {
    return {order.store, kawin::MakeTaps(order.x.map, order.store.Width()), kawin::MakeTaps(order.y.map, order.store.Height())};
}

// The kept piece, made now if this is not the first time that it is drawn; null the first time.
std::shared_ptr<const kawin::Piece> KeptPiece(const Order& order) {
    const kawin::PieceKey key = {order.store.Id(), order.x.map, order.y.map};
    const kawin::PieceMemory memory = RecallPiece(key, order.store.Version());
    if (memory.piece || !memory.was_drawn) {
        return memory.piece;
    }
    kawin::ScaledRows rows = MakeRows(order);
    auto piece = std::make_shared<const kawin::Piece>(rows, order.x.map.count, order.y.map.count);
    KeepPiece(key, order.store.Version(), piece);
    return piece;
}

void DrawOrder(const Order& order, kawin::Canvas& canvas, const kawin::RegionShape& clip, bool replaces) {
    if (order.IsPlainCopy()) {
        kawin::CopiedRows rows(order.store, static_cast<int>(order.x.map.start), static_cast<int>(order.y.map.start),
                               order.x.map.count);
        return canvas.Draw(order.Place(), clip, rows, replaces);
    }
    auto piece = order.IsKept() ? KeptPiece(order) : nullptr;
    if (piece) {
        kawin::KeptRows rows(std::move(piece));
        canvas.Draw(order.Place(), clip, rows, replaces);
    } else {
        kawin::ScaledRows rows = MakeRows(order);
        canvas.Draw(order.Place(), clip, rows, replaces);
    }
}

}  // namespace

Status Graphics::Draw(Image* image, const RectF& target, const RectF& source) try {
    const Status ready = Ready();
    if (ready != Ok) {
        return Told(ready);
    }
    if (image == nullptr || image->store_ == nullptr || !IsFinite(target) || !IsFinite(source)) {
        return Told(InvalidParameter);
    }
    inside_->FollowContext();
    std::shared_ptr<PixelStore> picture = image->store_;
    if (picture->locked || (inside_->store && inside_->store->locked)) {
        return Told(WrongState);
    }
    if (inside_->IsMono()) {
        return Told(NotImplemented);
    }
    if (!inside_->canvas) {
        return Ok;
    }
    if (picture == inside_->store) {  // what is drawn is not read again
        picture = kawin::CopyWhole(*picture);
        if (!picture) {
            return Told(OutOfMemory);
        }
    }
    const bool unscaled = target.Width == source.Width && target.Height == source.Height && target.Width > 0 && target.Height > 0;
    const Inside::State& state = inside_->state;
    const Sampling sampling = unscaled ? Sampling::Copy : SamplingFor(state.interpolation, state.offset);
    kawin::Canvas& canvas = *inside_->canvas;
    const POINT origin = inside_->origin;
    const Order order = {
        *picture, MapAxis({double{target.X} + origin.x, target.Width, source.X, source.Width}, sampling, canvas.Width()),
        MapAxis({double{target.Y} + origin.y, target.Height, source.Y, source.Height}, sampling, canvas.Height())};
    if (order.Size() > 0) {
        DrawOrder(order, canvas, inside_->clipped, state.compositing == CompositingModeSourceCopy);
    }
    return Ok;
} catch (const std::bad_alloc&) {
    return Told(OutOfMemory);
}

Status Graphics::DrawImage(Image* image, const RectF& target, REAL x, REAL y, REAL width, REAL height, Unit unit,
                           const ImageAttributes* attributes, DrawImageAbort callback, void* /*data*/) {
    if (attributes != nullptr || callback != nullptr) {
        return Told(NotImplemented);
    }
    if (unit < UnitWorld || unit > UnitMillimeter) {
        return Told(InvalidParameter);
    }
    return Draw(image, target, {x, y, width, height});
}

Status Graphics::DrawImage(Image* image, const Rect& target, INT x, INT y, INT width, INT height, Unit unit,
                           const ImageAttributes* attributes, DrawImageAbort callback, void* data) {
    const RectF source = ToReal({x, y, width, height});
    return DrawImage(image, ToReal(target), source.X, source.Y, source.Width, source.Height, unit, attributes, callback, data);
}

Status Graphics::DrawImage(Image* image, REAL x, REAL y) {
    if (image == nullptr || image->store_ == nullptr) {
        const Status ready = Ready();
        return Told(ready == Ok ? InvalidParameter : ready);
    }
    const REAL width = static_cast<REAL>(image->store_->Width());
    const REAL height = static_cast<REAL>(image->store_->Height());
    return Draw(image, {x, y, width, height}, {0, 0, width, height});
}

Status Graphics::DrawImage(Image* image, INT x, INT y) {
    return DrawImage(image, static_cast<REAL>(x), static_cast<REAL>(y));
}

Status Graphics::DrawImage(Image* image, const PointF& place) {
    return DrawImage(image, place.X, place.Y);
}

Status Graphics::DrawImage(Image* image, const Point& place) {
    return DrawImage(image, place.X, place.Y);
}

Status Graphics::DrawImage(Image* image, REAL x, REAL y, REAL source_x, REAL source_y, REAL width, REAL height, Unit unit) {
    return DrawImage(image, RectF(x, y, width, height), source_x, source_y, width, height, unit);
}

Status Graphics::DrawImage(Image* image, INT x, INT y, INT source_x, INT source_y, INT width, INT height, Unit unit) {
    return DrawImage(image, Rect(x, y, width, height), source_x, source_y, width, height, unit);
}

Status Graphics::DrawImage(Image* image, const RectF& target) {
    if (image == nullptr || image->store_ == nullptr) {
        const Status ready = Ready();
        return Told(ready == Ok ? InvalidParameter : ready);
    }
    return Draw(image, target, {0, 0, static_cast<REAL>(image->store_->Width()), static_cast<REAL>(image->store_->Height())});
}

Status Graphics::DrawImage(Image* image, const Rect& target) {
    return DrawImage(image, ToReal(target));
}

Status Graphics::DrawImage(Image* image, REAL x, REAL y, REAL width, REAL height) {
    return DrawImage(image, RectF(x, y, width, height));
}

Status Graphics::DrawImage(Image* image, INT x, INT y, INT width, INT height) {
    return DrawImage(image, Rect(x, y, width, height));
}

Status Graphics::Fill(const RectF& rect, ARGB color, CompositingMode mode) try {
    const Status ready = Ready();
    if (ready != Ok || !IsFinite(rect)) {
        return Told(ready != Ok ? ready : InvalidParameter);
    }
    inside_->FollowContext();
    if (inside_->IsMono() || (inside_->store && inside_->store->locked)) {
        return Told(inside_->IsMono() ? NotImplemented : WrongState);
    }
    if (!inside_->canvas) {
        return Ok;
    }
    const RECT asked = Rounded(rect, inside_->origin);
    const RECT place = {std::max<LONG>(asked.left, 0), std::max<LONG>(asked.top, 0),
                        std::min<LONG>(asked.right, inside_->canvas->Width()),
                        std::min<LONG>(asked.bottom, inside_->canvas->Height())};
    if (place.left < place.right && place.top < place.bottom) {
        kawin::ColorRows rows(color, place.right - place.left);
        inside_->canvas->Draw(place, inside_->clipped, rows, mode == CompositingModeSourceCopy);
    }
    return Ok;
} catch (const std::bad_alloc&) {
    return Told(OutOfMemory);
}

Status Graphics::FillRectangle(const Brush* brush, const RectF& rect) {
    if (brush == nullptr) {
        return Told(InvalidParameter);
    }
    return Fill(rect, brush->color_.GetValue(), GetCompositingMode());
}

Status Graphics::FillRectangle(const Brush* brush, const Rect& rect) {
    return FillRectangle(brush, ToReal(rect));
}

Status Graphics::FillRectangle(const Brush* brush, REAL x, REAL y, REAL width, REAL height) {
    return FillRectangle(brush, RectF(x, y, width, height));
}

Status Graphics::FillRectangle(const Brush* brush, INT x, INT y, INT width, INT height) {
    return FillRectangle(brush, Rect(x, y, width, height));
}

Status Graphics::Clear(const Color& color) {
    constexpr REAL far = static_cast<REAL>(kFarthest);
    return Fill({-far, -far, 2 * far, 2 * far}, color.GetValue(), CompositingModeSourceCopy);
}

Status Graphics::Clip(const RectF& rect, CombineMode mode) {
    const Status ready = Ready();
    if (ready != Ok) {
        return Told(ready);
    }
    if (!IsFinite(rect) || mode < CombineModeReplace || mode > CombineModeComplement) {
        return Told(InvalidParameter);
    }
    constexpr LONG far = static_cast<LONG>(kFarthest);
    const kawin::RegionShape everything(RECT{-far, -far, far, far});
    const kawin::RegionShape before = inside_->state.clip.value_or(everything);
    kawin::RegionShape after(Rounded(rect, inside_->origin));
    switch (mode) {
        case CombineModeReplace:
            break;
        case CombineModeIntersect:
            after.Intersect(before);
            break;
        case CombineModeUnion:
            after.Unite(before);
            break;
        case CombineModeXor:
            after.ExclusiveOr(before);
            break;
        case CombineModeComplement:
            after.Subtract(before);
            break;
        case CombineModeExclude: {
            kawin::RegionShape rest = before;
            rest.Subtract(after);
            after = std::move(rest);
            break;
        }
    }
    inside_->state.clip = std::move(after);
    inside_->ApplyClip();
    return Ok;
}

Status Graphics::SetClip(const RectF& rect, CombineMode mode) {
    return Clip(rect, mode);
}

Status Graphics::SetClip(const Rect& rect, CombineMode mode) {
    return Clip(ToReal(rect), mode);
}

Status Graphics::IntersectClip(const RectF& rect) {
    return Clip(rect, CombineModeIntersect);
}

Status Graphics::IntersectClip(const Rect& rect) {
    return Clip(ToReal(rect), CombineModeIntersect);
}

Status Graphics::ExcludeClip(const RectF& rect) {
    return Clip(rect, CombineModeExclude);
}

Status Graphics::ExcludeClip(const Rect& rect) {
    return Clip(ToReal(rect), CombineModeExclude);
}

Status Graphics::ResetClip() {
    const Status ready = Ready();
    if (ready == Ok) {
        inside_->state.clip.reset();
        inside_->ApplyClip();
    }
    return Told(ready);
}

}  // namespace Gdiplus
