#include "caption_boxes.h"

#include <algorithm>

#include "../gdi/brushes.h"
#include "../gdi/contexts.h"
#include "../gdi/shapes.h"
#include "cairo_painter.h"
#include "colors.h"

namespace kawin {
namespace {

constexpr COLORREF kCloseHot = RGB(232, 17, 35);
constexpr COLORREF kClosePressed = RGB(181, 20, 34);
constexpr COLORREF kLightGlyph = RGB(255, 255, 255);
constexpr COLORREF kGlyph = RGB(32, 32, 32);
constexpr int kDarkerHot = 24;  // of 255
constexpr int kDarkerPressed = 48;
constexpr int kLargestGlyph = 10;

COLORREF Darker(COLORREF color, int by) noexcept {
    const auto less = [by](BYTE part) { return static_cast<unsigned>(std::max(0, part - by)); };
    return RGB(less(GetRValue(color)), less(GetGValue(color)), less(GetBValue(color)));
}

COLORREF BackOf(CaptionBox kind, BoxState state, COLORREF back) noexcept {
    if (state != BoxState::Hot && state != BoxState::Pressed) {
        return back;
    }
    if (kind == CaptionBox::Close) {
        return state == BoxState::Hot ? kCloseHot : kClosePressed;
    }
    return Darker(back, state == BoxState::Hot ? kDarkerHot : kDarkerPressed);
}

COLORREF GlyphOf(CaptionBox kind, BoxState state) noexcept {
    if (state == BoxState::Disabled) {
        return GetSysColor(COLOR_BTNSHADOW);
    }
    const bool on_red = kind == CaptionBox::Close && (state == BoxState::Hot || state == BoxState::Pressed);
    return on_red ? kLightGlyph : kGlyph;
}

// Lines of one pixel lie on the middles of pixels: the square's first pixel is 0.
void TraceGlyph(cairo_t* cairo, CaptionBox kind, double side) noexcept {
    const double last = side - 0.5;
    switch (kind) {
        case CaptionBox::Close:
            cairo_move_to(cairo, 0.5, 0.5);
            cairo_line_to(cairo, last, last);
            cairo_move_to(cairo, last, 0.5);
            cairo_line_to(cairo, 0.5, last);
            break;
        case CaptionBox::Minimise:
            cairo_move_to(cairo, 0, side / 2 - 0.5);
            cairo_line_to(cairo, side, side / 2 - 0.5);
            break;
        case CaptionBox::Maximise:
            cairo_rectangle(cairo, 0.5, 0.5, side - 1, side - 1);
            break;
        case CaptionBox::Restore:
            cairo_rectangle(cairo, 0.5, 2.5, side - 3, side - 3);
            cairo_move_to(cairo, 2.5, 2.5);
            cairo_line_to(cairo, 2.5, 0.5);
            cairo_line_to(cairo, last, 0.5);
            cairo_line_to(cairo, last, side - 2.5);
            cairo_line_to(cairo, side - 2.5, side - 2.5);
            break;
        case CaptionBox::Help:
            cairo_arc(cairo, side / 2, side * 0.3, side * 0.25, 3.14159, 1.2);
            cairo_line_to(cairo, side / 2, side * 0.7);
            cairo_rectangle(cairo, side / 2 - 0.25, side - 1, 0.5, 0.5);
            break;
    }
}

}  // namespace

void DrawCaptionBox(HDC context, const RECT& box, CaptionBox kind, BoxState state, COLORREF back) noexcept {
    const HBRUSH brush = CreateSolidBrush(BackOf(kind, state, back));
    FillRect(context, &box, brush);
    DeleteObject(brush);
    const int width = box.right - box.left;
    const int height = box.bottom - box.top;
    const int side = std::min(kLargestGlyph, std::min(width, height) - 4);
    CairoPainter painter(context, box);
    cairo_t* const cairo = painter.Get();
    if (cairo == nullptr || side < 4) {
        return;
    }
    cairo_translate(cairo, box.left + (width - side) / 2, box.top + (height - side) / 2);
    painter.SetColor(GlyphOf(kind, state));
    cairo_set_line_width(cairo, 1);
    TraceGlyph(cairo, kind, side);
    cairo_stroke(cairo);
}

}  // namespace kawin
