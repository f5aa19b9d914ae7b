#include "cairo_painter.h"

namespace kawin {

CairoPainter::CairoPainter(HDC context, const RECT& area) noexcept : context_(FindGdi<DrawingContext>(context)) {
    if (context_ == nullptr || context_->surface == nullptr || context_->surface->IsMono()) {
        return;
    }
    cairo_surface_t* const target = context_->surface->NewCairo();
    if (target == nullptr) {
        return;
    }
    cairo_ = cairo_create(target);
    cairo_surface_destroy(target);
    const POINT corner = context_->ToSurface(POINT{area.left, area.top});
    touched_ = {corner.x, corner.y, corner.x + area.right - area.left, corner.y + area.bottom - area.top};
    context_->Drawable().ForEachIn(touched_, [this](const RECT& part) {
        cairo_rectangle(cairo_, part.left, part.top, part.right - part.left, part.bottom - part.top);
    });
    cairo_clip(cairo_);
    cairo_translate(cairo_, corner.x - area.left, corner.y - area.top);
}

CairoPainter::~CairoPainter() {
    if (cairo_ != nullptr) {
        cairo_destroy(cairo_);
        context_->surface->Touch(touched_);
    }
}

void CairoPainter::SetColor(COLORREF color) noexcept {
    cairo_set_source_rgb(cairo_, GetRValue(color) / 255.0, GetGValue(color) / 255.0, GetBValue(color) / 255.0);
}

}  // namespace kawin
