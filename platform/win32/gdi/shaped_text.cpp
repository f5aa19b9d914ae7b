#include "shaped_text.h"

#include <unicode/uchar.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

namespace kawin {
namespace {

using GlyphString = std::unique_ptr<PangoGlyphString, FreeWith<pango_glyph_string_free>>;
using AttributeList = std::unique_ptr<PangoAttrList, FreeWith<pango_attr_list_unref>>;

// Pango's text is UTF-8.
struct PangoText {
    std::string bytes;
    std::vector<int> units;  // by byte, and the end: where its character begins
};

// What shows nothing, or would end Pango's line, is a blank.
UChar32 Drawable(UChar32 character) noexcept {
    constexpr UChar32 kReplacement = 0xFFFD;
    if (U_IS_SURROGATE(character)) {
        return kReplacement;
    }
    const int8_t type = u_charType(character);
    const bool blank = type == U_CONTROL_CHAR || type == U_LINE_SEPARATOR || type == U_PARAGRAPH_SEPARATOR;
    return blank ? ' ' : character;
}

PangoText ToPango(std::u16string_view text) {
    PangoText result;
    result.bytes.reserve(text.size() * 3);
    result.units.reserve(text.size() * 3 + 1);
    for (std::size_t at = 0; at < text.size();) {
        const int begin = static_cast<int>(at);
        UChar32 character = 0;
        U16_NEXT(text.data(), at, text.size(), character);
        char bytes[U8_MAX_LENGTH];
        int length = 0;
        U8_APPEND_UNSAFE(bytes, length, Drawable(character));
        result.bytes.append(bytes, static_cast<std::size_t>(length));
        result.units.insert(result.units.end(), static_cast<std::size_t>(length), begin);
    }
    result.units.push_back(static_cast<int>(text.size()));
    return result;
}

// GDI neither kerns nor joins letters where the script does not need it; so do widths add up.
PangoAttrList* PlainLetters() {
    PangoAttrList* const attributes = pango_attr_list_new();
    pango_attr_list_insert(attributes, pango_attr_font_features_new("kern=0,liga=0,clig=0,calt=0"));
    return attributes;
}

class Shaper {
public:
    Shaper(const RealizedFont& font, std::u16string_view text, ShapedText& result)
        : font_(font), text_(ToPango(text)), result_(result) {
        result_.advances.assign(text.size(), 0);
    }

    void Run(PangoContext* context, bool right_to_left) {
        pango_context_set_font_description(context, font_.description.get());
        const AttributeList attributes(PlainLetters());
        GList* const logical =
            pango_itemize_with_base_dir(context, right_to_left ? PANGO_DIRECTION_RTL : PANGO_DIRECTION_LTR, text_.bytes.c_str(),
                                        0, static_cast<int>(text_.bytes.size()), attributes.get(), nullptr);
        GList* const visual = pango_reorder_items(logical);
        try {
            for (const GList* link = visual; link != nullptr; link = link->next) {
                AddItem(*static_cast<PangoItem*>(link->data));
            }
        } catch (...) {
            Free(logical, visual);
            throw;
        }
        Free(logical, visual);
        FinishLine();
    }

private:
    static void Free(GList* logical, GList* visual) noexcept {
        g_list_free(visual);
        g_list_free_full(logical, [](gpointer item) { pango_item_free(static_cast<PangoItem*>(item)); });
    }

    // The font of an item; the main one when Pango has none for it.
    cairo_scaled_font_t* FontOf(const PangoItem& item) {
        cairo_scaled_font_t* const chosen = ScaledOf(item.analysis.font);
        result_.fonts.emplace_back(cairo_scaled_font_reference(chosen != nullptr ? chosen : font_.scaled.get()));
        return result_.fonts.back().get();
    }

    void AddItem(PangoItem& item) {
        cairo_scaled_font_t* const font = FontOf(item);
        const GlyphString glyphs(pango_glyph_string_new());
        pango_shape_with_flags(text_.bytes.c_str() + item.offset, item.length, text_.bytes.c_str(),
                               static_cast<int>(text_.bytes.size()), &item.analysis, glyphs.get(), PANGO_SHAPE_ROUND_POSITIONS);
        // Glyphs are in visual order already; those of one cluster stand together and have one index.
        const bool reversed = item.analysis.level % 2 != 0;
        const int count = glyphs->num_glyphs;
        for (int begin = 0, end = 0; begin < count; begin = end) {
            while (end < count && glyphs->log_clusters[end] == glyphs->log_clusters[begin]) {
                ++end;
            }
            const int neighbour = reversed ? begin - 1 : end;
            const int end_byte = neighbour >= 0 && neighbour < count ? glyphs->log_clusters[neighbour] : item.length;
            AddCluster(*glyphs, begin, end, font, item.offset + glyphs->log_clusters[begin], item.offset + end_byte);
        }
    }

    void AddCluster(const PangoGlyphString& glyphs, int begin, int end, cairo_scaled_font_t* font, int begin_byte, int end_byte) {
        const int first_unit = text_.units[static_cast<std::size_t>(begin_byte)];
        const int end_unit = text_.units[static_cast<std::size_t>(end_byte)];
        TextCluster cluster = {first_unit, end_unit - first_unit, result_.width, 0, result_.glyphs.size(), 0};
        double x = 0;
        for (int index = begin; index < end; ++index) {
            x += AddGlyph(glyphs.glyphs[index], font, x);
        }
        cluster.glyphs = result_.glyphs.size() - cluster.first_glyph;
        cluster.width = std::max(0, static_cast<int>(std::lround(x * font_.stretch)));
        result_.width += cluster.width;
        result_.advances[static_cast<std::size_t>(first_unit)] = cluster.width;
        result_.clusters.push_back(cluster);
    }

    // Returns how far it moves on.
    double AddGlyph(const PangoGlyphInfo& info, cairo_scaled_font_t* font, double x) {
        const double advance = std::round(pango_units_to_double(info.geometry.width));
        if (info.glyph == PANGO_GLYPH_EMPTY) {
            return advance;
        }
        if ((info.glyph & PANGO_GLYPH_UNKNOWN_FLAG) != 0) {  // no font has it: the box of the main one
            result_.glyphs.push_back({font_.scaled.get(), 0, x, 0});
            cairo_glyph_t missing = {0, 0, 0};
            cairo_text_extents_t extents;
            cairo_scaled_font_glyph_extents(font_.scaled.get(), &missing, 1, &extents);
            return std::round(extents.x_advance);
        }
        result_.glyphs.push_back({font, info.glyph, x + std::round(pango_units_to_double(info.geometry.x_offset)),
                                  std::round(pango_units_to_double(info.geometry.y_offset))});
        return advance;
    }

    void FinishLine() {
        double top = 0;
        double bottom = 0;
        double overhang = 0;
        for (const TextGlyph& glyph : result_.glyphs) {
            cairo_glyph_t at = {glyph.index, 0, 0};
            cairo_text_extents_t ink;
            cairo_scaled_font_glyph_extents(glyph.font, &at, 1, &ink);
            top = std::min(top, glyph.y + ink.y_bearing);
            bottom = std::max(bottom, glyph.y + ink.y_bearing + ink.height);
            overhang = std::max({overhang, -(glyph.x + ink.x_bearing), glyph.x + ink.x_bearing + ink.width - ink.x_advance});
        }
        result_.ink_top = static_cast<int>(std::floor(top)) - 1;
        result_.ink_bottom = static_cast<int>(std::ceil(bottom)) + 1;
        result_.ink_overhang = static_cast<int>(std::ceil(std::max(overhang, overhang * font_.stretch))) + 1;
    }

    const RealizedFont& font_;
    const PangoText text_;
    ShapedText& result_;
};

// Without a font each character is as wide as the mean.
void ShapeWithoutFont(const RealizedFont& font, std::u16string_view text, ShapedText& result) {
    result.advances.assign(text.size(), 0);
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t begin = at;
        U16_FWD_1(text.data(), at, text.size());
        const int width = font.metrics.tmAveCharWidth;
        result.advances[begin] = width;
        result.clusters.push_back({static_cast<int>(begin), static_cast<int>(at - begin), result.width, width, 0, 0});
        result.width += width;
    }
}

}  // namespace

ShapedText Shape(PangoContext* context, const RealizedFont& font, std::u16string_view text, bool right_to_left) {
    ShapedText result;
    if (text.empty()) {
        return result;
    }
    if (!font.description) {
        ShapeWithoutFont(font, text, result);
        return result;
    }
    Shaper(font, text, result).Run(context, right_to_left);
    return result;
}

}  // namespace kawin
