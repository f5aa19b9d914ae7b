// The system's own icons, drawn: flat shapes with one sign each, on a square of side 1.

#include <cairo/cairo.h>

#include <algorithm>
#include <numbers>

#include "icon_image.h"

namespace kawin {
namespace {

constexpr double kTurn = 2 * std::numbers::pi;

void SetColor(cairo_t* cairo, std::uint32_t rgb) noexcept {
    cairo_set_source_rgb(cairo, ((rgb >> 16) & 0xFF) / 255.0, ((rgb >> 8) & 0xFF) / 255.0, (rgb & 0xFF) / 255.0);
}

void Disc(cairo_t* cairo, std::uint32_t color) noexcept {
    SetColor(cairo, color);
    cairo_arc(cairo, 0.5, 0.5, 0.47, 0, kTurn);
    cairo_fill(cairo);
}

// A line with round ends.
void Stroke(cairo_t* cairo, double width) noexcept {
    cairo_set_line_width(cairo, width);
    cairo_set_line_cap(cairo, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(cairo, CAIRO_LINE_JOIN_ROUND);
    cairo_stroke(cairo);
}

void Dot(cairo_t* cairo, double x, double y, double radius) noexcept {
    cairo_arc(cairo, x, y, radius, 0, kTurn);
    cairo_fill(cairo);
}

void RoundedBox(cairo_t* cairo, double left, double top, double right, double bottom, double radius) noexcept {
    constexpr double quarter = kTurn / 4;
    cairo_new_sub_path(cairo);
    cairo_arc(cairo, right - radius, top + radius, radius, -quarter, 0);
    cairo_arc(cairo, right - radius, bottom - radius, radius, 0, quarter);
    cairo_arc(cairo, left + radius, bottom - radius, radius, quarter, 2 * quarter);
    cairo_arc(cairo, left + radius, top + radius, radius, 2 * quarter, 3 * quarter);
    cairo_close_path(cairo);
}

void DrawApplication(cairo_t* cairo) noexcept {
    SetColor(cairo, 0xFFFFFF);
    RoundedBox(cairo, 0.06, 0.12, 0.94, 0.88, 0.07);
    cairo_fill(cairo);
    SetColor(cairo, 0x2B6CB0);
    cairo_save(cairo);
    RoundedBox(cairo, 0.06, 0.12, 0.94, 0.88, 0.07);
    cairo_clip(cairo);
    cairo_rectangle(cairo, 0, 0, 1, 0.32);
    cairo_fill(cairo);
    cairo_restore(cairo);
    SetColor(cairo, 0x5A6B7B);
    RoundedBox(cairo, 0.06, 0.12, 0.94, 0.88, 0.07);
    Stroke(cairo, 0.055);
}

void DrawError(cairo_t* cairo) noexcept {
    Disc(cairo, 0xD13438);
    SetColor(cairo, 0xFFFFFF);
    cairo_move_to(cairo, 0.33, 0.33);
    cairo_line_to(cairo, 0.67, 0.67);
    cairo_move_to(cairo, 0.67, 0.33);
    cairo_line_to(cairo, 0.33, 0.67);
    Stroke(cairo, 0.11);
}

void DrawQuestion(cairo_t* cairo) noexcept {
    Disc(cairo, 0x2B6CB0);
    SetColor(cairo, 0xFFFFFF);
    cairo_arc(cairo, 0.5, 0.38, 0.14, kTurn / 2, kTurn * 1.07);
    cairo_curve_to(cairo, 0.58, 0.53, 0.5, 0.52, 0.5, 0.62);
    Stroke(cairo, 0.095);
    Dot(cairo, 0.5, 0.765, 0.062);
}

void DrawWarning(cairo_t* cairo) noexcept {
    SetColor(cairo, 0xF5B700);
    cairo_move_to(cairo, 0.5, 0.12);
    cairo_line_to(cairo, 0.92, 0.86);
    cairo_line_to(cairo, 0.08, 0.86);
    cairo_close_path(cairo);
    cairo_fill_preserve(cairo);
    Stroke(cairo, 0.10);
    SetColor(cairo, 0x2D2A20);
    cairo_move_to(cairo, 0.5, 0.38);
    cairo_line_to(cairo, 0.5, 0.58);
    Stroke(cairo, 0.10);
    Dot(cairo, 0.5, 0.745, 0.06);
}

void DrawInformation(cairo_t* cairo) noexcept {
    Disc(cairo, 0x2B6CB0);
    SetColor(cairo, 0xFFFFFF);
    Dot(cairo, 0.5, 0.285, 0.068);
    cairo_move_to(cairo, 0.5, 0.46);
    cairo_line_to(cairo, 0.5, 0.73);
    Stroke(cairo, 0.11);
}

using Draw = void (*)(cairo_t* cairo);

Draw DrawerOf(WORD number) noexcept {
    switch (number) {
        case OIC_SAMPLE:
            return DrawApplication;
        case OIC_HAND:
            return DrawError;
        case OIC_QUES:
            return DrawQuestion;
        case OIC_BANG:
            return DrawWarning;
        case OIC_NOTE:
            return DrawInformation;
        default:
            return nullptr;
    }
}

}  // namespace

IconRef DrawSystemIcon(WORD number, int side) {
    const Draw draw = DrawerOf(number);
    if (draw == nullptr || side < 1 || side > 1024) {
        return nullptr;
    }
    std::vector<Pixel> pixels(static_cast<std::size_t>(side) * static_cast<std::size_t>(side));
    cairo_surface_t* const surface = cairo_image_surface_create_for_data(
        reinterpret_cast<unsigned char*>(pixels.data()), CAIRO_FORMAT_ARGB32, side, side, side * static_cast<int>(sizeof(Pixel)));
    cairo_t* const cairo = cairo_create(surface);
    cairo_scale(cairo, side, side);
    draw(cairo);
    const bool drawn = cairo_status(cairo) == CAIRO_STATUS_SUCCESS;
    cairo_destroy(cairo);
    cairo_surface_destroy(surface);
    if (!drawn) {
        return nullptr;
    }
    std::ranges::transform(pixels, pixels.begin(), Straight);
    IconImage image = FromAlpha(side, side, std::move(pixels));
    image.hot_spot = {side / 2, side / 2};
    return std::make_shared<const IconImage>(std::move(image));
}

}  // namespace kawin
