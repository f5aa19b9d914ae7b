// The system's own cursors, drawn: white shapes with a dark rim, on 32 pixels. A display that has cursors of its own shows these.

#include <cairo/cairo.h>

#include <algorithm>
#include <numbers>

#include "icon_image.h"

namespace kawin {
namespace {

constexpr int kSide = 32;
constexpr double kMiddle = 16;

struct Shape {
    WORD number;
    POINT hot_spot;
    void (*trace)(cairo_t* cairo);
};

void Polygon(cairo_t* cairo, std::initializer_list<std::pair<double, double>> points) noexcept {
    cairo_new_sub_path(cairo);
    for (const auto& [x, y] : points) {
        cairo_line_to(cairo, x, y);
    }
    cairo_close_path(cairo);
}

void Arrow(cairo_t* cairo) noexcept {
    Polygon(cairo, {{1, 1}, {1, 18}, {5, 14}, {8, 21}, {11, 20}, {8, 13}, {13, 13}});
}

void Beam(cairo_t* cairo) noexcept {
    cairo_rectangle(cairo, 15, 7, 2, 18);
    cairo_rectangle(cairo, 12, 6, 8, 2);
    cairo_rectangle(cairo, 12, 24, 8, 2);
}

void Cross(cairo_t* cairo) noexcept {
    cairo_rectangle(cairo, 15, 4, 2, 24);
    cairo_rectangle(cairo, 4, 15, 24, 2);
}

void Ring(cairo_t* cairo) noexcept {
    cairo_arc(cairo, kMiddle, kMiddle, 10, 0, 2 * std::numbers::pi);
    cairo_new_sub_path(cairo);
    cairo_arc_negative(cairo, kMiddle, kMiddle, 6, 2 * std::numbers::pi, 0);
}

void Forbidden(cairo_t* cairo) noexcept {
    Ring(cairo);
    Polygon(cairo, {{10, 12}, {12, 10}, {22, 20}, {20, 22}});
}

void UpArrow(cairo_t* cairo) noexcept {
    Polygon(cairo, {{16, 2}, {22, 9}, {17.5, 9}, {17.5, 28}, {14.5, 28}, {14.5, 9}, {10, 9}});
}

// An arrow with two heads, turned by a part of a whole turn.
void DoubleArrow(cairo_t* cairo, double turn) noexcept {
    cairo_save(cairo);
    cairo_translate(cairo, kMiddle, kMiddle);
    cairo_rotate(cairo, turn * 2 * std::numbers::pi);
    Polygon(cairo, {{-11, 0}, {-6, -5}, {-6, -1.5}, {6, -1.5}, {6, -5}, {11, 0}, {6, 5}, {6, 1.5}, {-6, 1.5}, {-6, 5}});
    cairo_restore(cairo);
}

void Hand(cairo_t* cairo) noexcept {
    Polygon(cairo, {{12, 2},
                    {15, 2},
                    {15, 12},
                    {18, 12},
                    {18, 13},
                    {21, 13},
                    {21, 14},
                    {24, 15},
                    {24, 22},
                    {22, 28},
                    {12, 28},
                    {6, 18},
                    {6, 16},
                    {9, 16},
                    {12, 19}});
}

constexpr Shape kShapes[] = {
    {32512, {1, 1}, Arrow},
    {32513, {16, 16}, Beam},
    {32514, {16, 16}, Ring},
    {32515, {16, 16}, Cross},
    {32516, {16, 2}, UpArrow},
    {32642, {16, 16}, [](cairo_t* cairo) { DoubleArrow(cairo, 0.125); }},
    {32643, {16, 16}, [](cairo_t* cairo) { DoubleArrow(cairo, -0.125); }},
    {32644, {16, 16}, [](cairo_t* cairo) { DoubleArrow(cairo, 0); }},
    {32645, {16, 16}, [](cairo_t* cairo) { DoubleArrow(cairo, 0.25); }},
    {32646,
     {16, 16},
     [](cairo_t* cairo) {
         DoubleArrow(cairo, 0);
         DoubleArrow(cairo, 0.25);
     }},
    {32648, {16, 16}, Forbidden},
    {32649, {13, 2}, Hand},
    {32650, {1, 1}, Arrow},
};

}  // namespace

IconRef DrawSystemCursor(WORD number) {
    const Shape* const shape = std::ranges::find(kShapes, number, &Shape::number);
    if (shape == std::end(kShapes)) {
        return nullptr;
    }
    std::vector<Pixel> pixels(std::size_t{kSide} * kSide);
    cairo_surface_t* const surface =
        cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(pixels.data()), CAIRO_FORMAT_ARGB32, kSide, kSide,
                                            kSide * static_cast<int>(sizeof(Pixel)));
    cairo_t* const cairo = cairo_create(surface);
    shape->trace(cairo);
    cairo_set_source_rgb(cairo, 0, 0, 0);
    cairo_set_line_width(cairo, 2);
    cairo_stroke_preserve(cairo);
    cairo_set_source_rgb(cairo, 1, 1, 1);
    cairo_fill(cairo);
    const bool drawn = cairo_status(cairo) == CAIRO_STATUS_SUCCESS;
    cairo_destroy(cairo);
    cairo_surface_destroy(surface);
    if (!drawn) {
        return nullptr;
    }
    std::ranges::transform(pixels, pixels.begin(), Straight);
    IconImage image = FromAlpha(kSide, kSide, std::move(pixels));
    image.is_icon = false;
    image.hot_spot = shape->hot_spot;
    image.system_shape = number;
    return std::make_shared<const IconImage>(std::move(image));
}

}  // namespace kawin
