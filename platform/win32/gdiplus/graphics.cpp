#include <algorithm>
#include <new>

#include "graphics_inside.h"
#include "startup.h"

namespace Gdiplus {

void Graphics::Inside::OpenPicture(std::shared_ptr<kawin::PixelStore> picture) {
    store = std::move(picture);
    canvas.emplace(store);
    drawable = kawin::RegionShape(RECT{0, 0, store->Width(), store->Height()});
    ApplyClip();
}

void Graphics::Inside::OpenContext(HDC of, std::shared_ptr<kawin::DrawingContext> found) {
    handle = of;
    context = std::move(found);
    origin = context->ToSurface(POINT{0, 0});
    surface = context->surface;
    drawable = context->Drawable();
    if (surface) {
        canvas.emplace(surface);
    }
    ApplyClip();
}

void Graphics::Inside::FollowContext() {
    if (!context || context->surface == surface) {
        return;
    }
    surface = context->surface;
    canvas.reset();
    drawable = kawin::RegionShape();
    if (surface) {
        canvas.emplace(surface);
        drawable = context->Drawable();
    }
    ApplyClip();
}

void Graphics::Inside::ApplyClip() {
    clipped = drawable;
    if (state.clip) {
        clipped.Intersect(*state.clip);
    }
}

Graphics::Graphics(HDC context) {
    auto found = kawin::FindGdi<kawin::DrawingContext>(context);
    Open(found ? Ok : OutOfMemory, [&] { inside_->OpenContext(context, std::move(found)); });
}

Graphics::Graphics(Image* image) {
    const auto picture = image != nullptr ? image->store_ : nullptr;
    Open(picture ? Ok : InvalidParameter, [&] { inside_->OpenPicture(picture); });
}

template <class Opening>
void Graphics::Open(Status target, Opening&& opening) {
    const Status status = kawin::IsGdiplusStarted() ? target : GdiplusNotInitialized;
    if (Told(status) != Ok) {
        return;
    }
    try {
        inside_ = std::make_unique<Inside>();
        opening();
    } catch (const std::bad_alloc&) {
        inside_.reset();
        Told(OutOfMemory);
    }
}

Graphics::~Graphics() = default;

Graphics* Graphics::FromHDC(HDC context) {
    return new (std::nothrow) Graphics(context);
}

Graphics* Graphics::FromImage(Image* image) {
    return new (std::nothrow) Graphics(image);
}

Status Graphics::Ready() const {
    if (!kawin::IsGdiplusStarted()) {
        return GdiplusNotInitialized;
    }
    if (!inside_) {
        return InvalidParameter;
    }
    return inside_->handed_out ? ObjectBusy : Ok;
}

// `member` becomes `mode`, which is one from 0 to `last`.
template <class Mode>
static Status SetMode(Status ready, Mode* member, Mode mode, int last) {
    if (ready != Ok || static_cast<int>(mode) < 0 || static_cast<int>(mode) > last) {
        return ready != Ok ? ready : InvalidParameter;
    }
    *member = mode;
    return Ok;
}

Status Graphics::SetSmoothingMode(SmoothingMode mode) {
    return Told(SetMode(Ready(), inside_ ? &inside_->state.smoothing : nullptr, mode, SmoothingModeAntiAlias8x8));
}

Status Graphics::SetInterpolationMode(InterpolationMode mode) {
    InterpolationMode kept = mode;
    if (mode == InterpolationModeDefault || mode == InterpolationModeLowQuality) {
        kept = InterpolationModeBilinear;
    } else if (mode == InterpolationModeHighQuality) {
        kept = InterpolationModeHighQualityBicubic;
    }
    return Told(SetMode(Ready(), inside_ ? &inside_->state.interpolation : nullptr, kept, InterpolationModeHighQualityBicubic));
}

Status Graphics::SetPixelOffsetMode(PixelOffsetMode mode) {
    return Told(SetMode(Ready(), inside_ ? &inside_->state.offset : nullptr, mode, PixelOffsetModeHalf));
}

Status Graphics::SetCompositingMode(CompositingMode mode) {
    return Told(SetMode(Ready(), inside_ ? &inside_->state.compositing : nullptr, mode, CompositingModeSourceCopy));
}

Status Graphics::SetCompositingQuality(CompositingQuality quality) {
    return Told(SetMode(Ready(), inside_ ? &inside_->state.quality : nullptr, quality, CompositingQualityAssumeLinear));
}

SmoothingMode Graphics::GetSmoothingMode() const {
    return Told(Ready()) == Ok ? inside_->state.smoothing : SmoothingModeInvalid;
}

InterpolationMode Graphics::GetInterpolationMode() const {
    return Told(Ready()) == Ok ? inside_->state.interpolation : InterpolationModeInvalid;
}

PixelOffsetMode Graphics::GetPixelOffsetMode() const {
    return Told(Ready()) == Ok ? inside_->state.offset : PixelOffsetModeInvalid;
}

CompositingMode Graphics::GetCompositingMode() const {
    return Told(Ready()) == Ok ? inside_->state.compositing : CompositingModeSourceOver;
}

CompositingQuality Graphics::GetCompositingQuality() const {
    return Told(Ready()) == Ok ? inside_->state.quality : CompositingQualityInvalid;
}

GraphicsState Graphics::Save() const try {
    if (Told(Ready()) != Ok) {
        return 0;
    }
    inside_->saved.emplace_back(inside_->last_saved + 1, inside_->state);
    return ++inside_->last_saved;
} catch (const std::bad_alloc&) {
    Told(OutOfMemory);
    return 0;
}

Status Graphics::Restore(Gdiplus::GraphicsState state) {
    if (Told(Ready()) != Ok) {
        return Ready();
    }
    auto& saved = inside_->saved;
    const auto found = std::find_if(saved.begin(), saved.end(), [state](const auto& one) { return one.first == state; });
    if (found != saved.end()) {
        inside_->state = std::move(found->second);
        saved.erase(found, saved.end());
        inside_->ApplyClip();
    }
    return Ok;
}

HDC Graphics::GetHDC() {
    const Status ready = Ready();
    if (Told(ready == Ok && !inside_->context ? NotImplemented : ready) != Ok) {
        return nullptr;
    }
    inside_->handed_out = true;
    return inside_->handle;
}

void Graphics::ReleaseHDC(HDC context) {
    if (!inside_ || !inside_->handed_out || inside_->handle != context) {
        Told(InvalidParameter);
        return;
    }
    inside_->handed_out = false;
}

void Graphics::Flush(FlushIntention /*intention*/) {
    Told(Ready());
}

Status Graphics::GetLastStatus() const {
    return TakeLastStatus();
}

SolidBrush::SolidBrush(const Color& color) : Brush(color) {
    Told(kawin::IsGdiplusStarted() ? Ok : GdiplusNotInitialized);
}

Brush* SolidBrush::Clone() const {
    return new (std::nothrow) SolidBrush(color_);
}

Status SolidBrush::GetColor(Color* color) const {
    if (color == nullptr) {
        return Told(InvalidParameter);
    }
    *color = color_;
    return Ok;
}

Status SolidBrush::SetColor(const Color& color) {
    color_ = color;
    return Ok;
}

}  // namespace Gdiplus
