#pragma once

// Smooth drawing on a device context, for small pictures that are made of shapes.

#include <cairo/cairo.h>

#include "../gdi/drawing_context.h"

namespace kawin {

// A Cairo context in the device context's logical coordinates, clipped as the device context is. Whatever is drawn has to lie in
// `area`.
class CairoPainter {
public:
    CairoPainter(HDC context, const RECT& area) noexcept;
    CairoPainter(const CairoPainter&) = delete;
    CairoPainter& operator=(const CairoPainter&) = delete;
    ~CairoPainter();

    // Null where there is nothing to draw on: of a context without a surface, a monochrome one, or without memory.
    cairo_t* Get() const noexcept { return cairo_; }

    void SetColor(COLORREF color) noexcept;

private:
    std::shared_ptr<DrawingContext> context_;
    RECT touched_ = {};  // surface coordinates
    cairo_t* cairo_ = nullptr;
};

}  // namespace kawin
