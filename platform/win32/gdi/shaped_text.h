#pragma once

// A line of text as glyphs.

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

#include "font_match.h"

namespace kawin {

constexpr std::size_t kLongestPiece = 512;  // units that are arranged at once

// Characters that belong together, and their glyphs.
struct TextCluster {
    int first_unit;
    int units;
    int left;   // pixels from the line's begin
    int width;  // pixels
    std::size_t first_glyph;
    std::size_t glyphs;
};

struct TextGlyph {
    cairo_scaled_font_t* font;
    unsigned long index;
    double x;  // from the cluster's left and the baseline
    double y;
};

// Does not change once it is made. Widths are stretched already, the places of glyphs in a cluster are not.
struct ShapedText {
    std::vector<TextCluster> clusters;  // from left to right
    std::vector<TextGlyph> glyphs;
    std::vector<ScaledFont> fonts;  // keeps the glyphs' fonts
    std::vector<int> advances;      // by unit: a cluster's width at its first one, 0 at the others
    int width = 0;
    int ink_top = 0;  // rows from the baseline down that may have ink
    int ink_bottom = 0;
    int ink_overhang = 0;  // columns to the left and the right of it that may have ink
};

// For text_engine.h, which holds the lock. May throw std::bad_alloc.
ShapedText Shape(PangoContext* context, const RealizedFont& font, std::u16string_view text, bool right_to_left);

}  // namespace kawin
