#pragma once

// Puts glyphs, rules and cells of text onto a context's surface. Coordinates of text are pixels along the line from its origin
// and down from it; a font may turn them.

#include <functional>
#include <memory>
#include <span>

#include "drawing_context.h"
#include "text_engine.h"

namespace kawin {

class TextPainter {
public:
    // Everything is cut to what `context` may draw on, and to `clip` (surface coordinates) unless null. `context` has to outlive
    // it.
    TextPainter(DrawingContext& context, std::shared_ptr<const RealizedFont> font, const RECT* clip = nullptr);

    // Where a line begins; logical. First at 0, 0.
    void MoveTo(POINT origin) noexcept;

    // In surface coordinates. May throw std::bad_alloc, as all that follow.
    void FillSurface(const RECT& area, COLORREF color);

    void Fill(const RECT& area, COLORREF color);

    // Glyphs in the text colour, from `x` on. `widths` by unit instead of those of the text, unless empty. Returns where the next
    // glyphs go.
    int Glyphs(const ShapedText& text, int x, int baseline, std::span<const INT> widths = {});

    // The line under and through the text, as far as the font has them.
    void Rules(int x, int baseline, int width);
    void Underline(int x, int baseline, int width);

    // Whether something between these would be seen.
    bool Sees(int left, int right, int baseline) const noexcept;

private:
    RECT OnSurface(const RECT& area) const noexcept;
    void ThroughMask(const RECT& bounds, COLORREF color, const std::function<void(_cairo*)>& draw);
    void DrawGlyphs(_cairo* cairo, const ShapedText& text, std::span<const int> lefts, int baseline) const;
    void Turn(_cairo* cairo) const noexcept;

    DrawingContext& context_;
    std::shared_ptr<const RealizedFont> font_;
    RegionShape region_;
    POINT origin_;  // surface
};

}  // namespace kawin
