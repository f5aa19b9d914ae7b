#include "text_painter.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <new>
#include <utility>
#include <vector>

#include "paint.h"
#include "raster_rows.h"

namespace kawin {
namespace {

using CairoSurface = std::unique_ptr<cairo_surface_t, FreeWith<cairo_surface_destroy>>;
using Cairo = std::unique_ptr<cairo_t, FreeWith<cairo_destroy>>;
using FontOptions = std::unique_ptr<cairo_font_options_t, FreeWith<cairo_font_options_destroy>>;

constexpr unsigned kSolid = 255;
constexpr BYTE kCopyPattern = TableOf(PATCOPY);

RECT Intersection(const RECT& a, const RECT& b) noexcept {
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right), std::min(a.bottom, b.bottom)};
}

bool IsEmpty(const RECT& rect) noexcept {
    return rect.left >= rect.right || rect.top >= rect.bottom;
}

Pixel Mixed(Pixel below, Pixel ink, unsigned coverage) noexcept {
    Pixel mixed = 0;
    for (const unsigned shift : {0U, 8U, 16U}) {
        const unsigned from = (below >> shift) & 0xFF;
        const unsigned to = (ink >> shift) & 0xFF;
        mixed |= (from * (kSolid - coverage) + to * coverage + kSolid / 2) / kSolid << shift;
    }
    return mixed;
}

// Where the clusters begin from left to right, and behind them where the text ends.
std::vector<int> Lefts(const ShapedText& text, std::span<const INT> widths) {
    std::vector<int> lefts;
    lefts.reserve(text.clusters.size() + 1);
    int x = 0;
    for (const TextCluster& cluster : text.clusters) {
        lefts.push_back(x);
        if (widths.empty()) {
            x += cluster.width;
            continue;
        }
        for (const INT width :
             widths.subspan(static_cast<std::size_t>(cluster.first_unit), static_cast<std::size_t>(cluster.units))) {
            x = CutCoordinate(std::int64_t{x} + width);
        }
    }
    lefts.push_back(x);
    return lefts;
}

}  // namespace

TextPainter::TextPainter(DrawingContext& context, std::shared_ptr<const RealizedFont> font, const RECT* clip)
    : context_(context), font_(std::move(font)), origin_(context.ToSurface(POINT{0, 0})) {
    if (context_.surface) {
        region_ = context_.Drawable();
    }
    if (clip != nullptr) {
        region_.Intersect(*clip);
    }
}

void TextPainter::MoveTo(POINT origin) noexcept {
    origin_ = context_.ToSurface(origin);
}

void TextPainter::FillSurface(const RECT& area, COLORREF color) {
    if (region_.IsEmpty()) {
        return;
    }
    RegionShape filled(area);
    filled.Intersect(region_);
    FillArea(context_, filled, Paint(PixelOn(*context_.surface, color)), kCopyPattern);
}

RECT TextPainter::OnSurface(const RECT& area) const noexcept {
    const double cosine = std::cos(font_->angle);
    const double sine = std::sin(font_->angle);
    double left = kFarthest, top = kFarthest, right = -kFarthest, bottom = -kFarthest;
    for (const POINT corner :
         {POINT{area.left, area.top}, {area.right, area.top}, {area.left, area.bottom}, {area.right, area.bottom}}) {
        const double x = corner.x * cosine + corner.y * sine;
        const double y = corner.y * cosine - corner.x * sine;
        left = std::min(left, x);
        right = std::max(right, x);
        top = std::min(top, y);
        bottom = std::max(bottom, y);
    }
    const auto down = [](double at) { return static_cast<std::int64_t>(std::floor(at + 1e-6)); };
    const auto up = [](double at) { return static_cast<std::int64_t>(std::ceil(at - 1e-6)); };
    return {CutCoordinate(origin_.x + down(left)), CutCoordinate(origin_.y + down(top)), CutCoordinate(origin_.x + up(right)),
            CutCoordinate(origin_.y + up(bottom))};
}

bool TextPainter::Sees(int left, int right, int baseline) const noexcept {
    const int reach = static_cast<int>(2 * font_->metrics.tmHeight);  // of what hangs over
    return region_.Touches(OnSurface({left - reach, baseline - reach, right + reach, baseline + reach}));
}

void TextPainter::Fill(const RECT& area, COLORREF color) {
    if (IsEmpty(area)) {
        return;
    }
    const RECT bounds = OnSurface(area);
    if (font_->asked.lfEscapement % 900 == 0) {
        FillSurface(bounds, color);
        return;
    }
    ThroughMask(bounds, color, [&](cairo_t* cairo) {
        Turn(cairo);
        cairo_set_antialias(cairo, CAIRO_ANTIALIAS_NONE);
        cairo_rectangle(cairo, area.left, area.top, area.right - area.left, area.bottom - area.top);
        cairo_fill(cairo);
    });
}

void TextPainter::Turn(cairo_t* cairo) const noexcept {
    cairo_translate(cairo, origin_.x, origin_.y);
    cairo_rotate(cairo, -font_->angle);
}

// The mask is of surface coordinates. It makes one way of a surface's depth and row order.
void TextPainter::ThroughMask(const RECT& bounds, COLORREF color, const std::function<void(cairo_t*)>& draw) {
    const RECT area = Intersection(bounds, region_.Bounds());
    if (IsEmpty(area) || !region_.Touches(area)) {
        return;
    }
    const CairoSurface mask(cairo_image_surface_create(CAIRO_FORMAT_A8, area.right - area.left, area.bottom - area.top));
    const Cairo cairo(cairo_create(mask.get()));
    if (cairo_status(cairo.get()) != CAIRO_STATUS_SUCCESS) {
        throw std::bad_alloc();
    }
    cairo_translate(cairo.get(), -area.left, -area.top);
    draw(cairo.get());
    cairo_surface_flush(mask.get());

    const unsigned char* const coverage = cairo_image_surface_get_data(mask.get());
    const std::ptrdiff_t stride = cairo_image_surface_get_stride(mask.get());
    const Pixel ink = PixelOn(*context_.surface, color);
    region_.ForEachIn(area, [&](const RECT& part) {
        for (LONG y = part.top; y < part.bottom; ++y) {
            Pixel* const row = context_.surface->Row(y);
            const unsigned char* const line = coverage + (y - area.top) * stride - area.left;
            for (LONG x = part.left; x < part.right; ++x) {
                if (line[x] != 0) {
                    row[x] = line[x] == kSolid ? ink : Mixed(row[x], ink, line[x]);
                }
            }
        }
    });
    context_.surface->Touch(area);
}

void TextPainter::DrawGlyphs(cairo_t* cairo, const ShapedText& text, std::span<const int> lefts, int baseline) const {
    const bool smooth = !context_.surface->IsMono() && font_->asked.lfQuality != NONANTIALIASED_QUALITY;
    const FontOptions options(cairo_font_options_create());
    cairo_scaled_font_t* font = nullptr;
    std::vector<cairo_glyph_t> together;  // of one font
    const auto show = [&] {
        if (font == nullptr || together.empty()) {
            return;
        }
        cairo_matrix_t matrix;
        cairo_scaled_font_get_font_matrix(font, &matrix);
        cairo_scaled_font_get_font_options(font, options.get());
        cairo_font_options_set_antialias(options.get(), smooth ? CAIRO_ANTIALIAS_GRAY : CAIRO_ANTIALIAS_NONE);
        cairo_set_font_face(cairo, cairo_scaled_font_get_font_face(font));
        cairo_set_font_matrix(cairo, &matrix);
        cairo_set_font_options(cairo, options.get());
        cairo_show_glyphs(cairo, together.data(), static_cast<int>(together.size()));
        together.clear();
    };
    for (std::size_t index = 0; index < text.clusters.size(); ++index) {
        const TextCluster& cluster = text.clusters[index];
        for (const TextGlyph& glyph : std::span(text.glyphs).subspan(cluster.first_glyph, cluster.glyphs)) {
            if (glyph.font != font) {
                show();
                font = glyph.font;
            }
            together.push_back({glyph.index, lefts[index] / font_->stretch + glyph.x, baseline + glyph.y});
        }
    }
    show();
}

int TextPainter::Glyphs(const ShapedText& text, int x, int baseline, std::span<const INT> widths) {
    const std::vector<int> lefts = Lefts(text, widths);
    const auto [least, most] = std::minmax_element(lefts.begin(), lefts.end());
    const int reach = text.ink_overhang + (text.clusters.empty() ? 0 : static_cast<int>(font_->metrics.tmMaxCharWidth));
    const RECT ink = {CutCoordinate(std::int64_t{x} + *least - reach), baseline + text.ink_top,
                      CutCoordinate(std::int64_t{x} + *most + reach), baseline + text.ink_bottom};
    if (!text.glyphs.empty()) {
        ThroughMask(OnSurface(ink), context_.state.text_color, [&](cairo_t* cairo) {
            Turn(cairo);
            cairo_translate(cairo, x, 0);
            cairo_scale(cairo, font_->stretch, 1);
            DrawGlyphs(cairo, text, lefts, baseline);
        });
    }
    return CutCoordinate(std::int64_t{x} + lefts.back());
}

void TextPainter::Underline(int x, int baseline, int width) {
    const LONG top = baseline + font_->underline.top;
    Fill({x, top, CutCoordinate(std::int64_t{x} + width), top + font_->underline.thickness}, context_.state.text_color);
}

void TextPainter::Rules(int x, int baseline, int width) {
    if (font_->asked.lfUnderline != 0) {
        Underline(x, baseline, width);
    }
    if (font_->asked.lfStrikeOut != 0) {
        const LONG top = baseline + font_->strikeout.top;
        Fill({x, top, CutCoordinate(std::int64_t{x} + width), top + font_->strikeout.thickness}, context_.state.text_color);
    }
}

}  // namespace kawin
