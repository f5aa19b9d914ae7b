#include "control_marks.h"

#include <algorithm>
#include <numbers>

#include "cairo_painter.h"
#include "colors.h"

namespace kawin {
namespace {

struct MarkColors {
    COLORREF back;
    COLORREF rim;
    COLORREF sign;
};

MarkColors ColorsOf(const Mark& mark) noexcept {
    if (!mark.enabled) {
        return {GetSysColor(COLOR_BTNFACE), GetSysColor(COLOR_SCROLLBAR), GetSysColor(COLOR_BTNSHADOW)};
    }
    const COLORREF accent = GetSysColor(COLOR_HIGHLIGHT);
    const COLORREF back = mark.pressed ? RGB(204, 228, 247) : GetSysColor(COLOR_WINDOW);
    return {back, mark.hot || mark.pressed ? accent : RGB(51, 51, 51), mark.hot || mark.pressed ? accent : RGB(0, 0, 0)};
}

// The shape in a square of side 1, its line of `line` wholly inside.
void TraceShape(cairo_t* cairo, MarkShape shape, double line) noexcept {
    if (shape == MarkShape::Radio) {
        cairo_arc(cairo, 0.5, 0.5, 0.5 - line / 2, 0, 2 * std::numbers::pi);
    } else {
        cairo_rectangle(cairo, line / 2, line / 2, 1 - line, 1 - line);
    }
}

void DrawSign(cairo_t* cairo, const Mark& mark, double line) noexcept {
    if (mark.shape == MarkShape::Radio) {
        cairo_arc(cairo, 0.5, 0.5, 0.25, 0, 2 * std::numbers::pi);
        cairo_fill(cairo);
    } else if (mark.fill == MarkFill::Mixed) {
        cairo_rectangle(cairo, 0.25, 0.25, 0.5, 0.5);
        cairo_fill(cairo);
    } else {
        cairo_move_to(cairo, 0.20, 0.52);
        cairo_line_to(cairo, 0.42, 0.72);
        cairo_line_to(cairo, 0.80, 0.28);
        cairo_set_line_width(cairo, std::max(0.12, line * 1.4));
        cairo_stroke(cairo);
    }
}

}  // namespace

void DrawMark(HDC context, const RECT& rect, const Mark& mark) noexcept {
    const int side = std::min(rect.right - rect.left, rect.bottom - rect.top);
    CairoPainter painter(context, rect);
    cairo_t* const cairo = painter.Get();
    if (cairo == nullptr || side <= 2) {
        return;
    }
    cairo_translate(cairo, rect.left + (rect.right - rect.left - side) / 2, rect.top + (rect.bottom - rect.top - side) / 2);
    cairo_scale(cairo, side, side);
    const MarkColors colors = ColorsOf(mark);
    const double line = std::max(1, side / 16) / static_cast<double>(side);
    TraceShape(cairo, mark.shape, line);
    painter.SetColor(colors.back);
    cairo_fill_preserve(cairo);
    painter.SetColor(colors.rim);
    cairo_set_line_width(cairo, line);
    cairo_stroke(cairo);
    if (mark.fill != MarkFill::Empty) {
        painter.SetColor(colors.sign);
        DrawSign(cairo, mark, line);
    }
}

}  // namespace kawin
