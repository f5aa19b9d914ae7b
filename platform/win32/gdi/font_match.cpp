#include "font_match.h"

#include <cairo/cairo-ft.h>
#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_TRUETYPE_TABLES_H

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>
#include <span>
#include <string_view>

#include "../base/utf.h"

namespace kawin {
namespace {

constexpr int kDefaultCell = 16;
constexpr int kLargestEm = 1000;

// Which installed faces stand for one that is missing, the first that is there; the last is Fontconfig's own choice.
constexpr const char* kSans[] = {"Liberation Sans", "Arimo", "DejaVu Sans", "Sans"};
constexpr const char* kSerif[] = {"Liberation Serif", "Tinos", "DejaVu Serif", "Serif"};
constexpr const char* kFixed[] = {"Liberation Mono", "Cousine", "DejaVu Sans Mono", "Monospace"};

struct KnownFace {
    const char* name;
    std::span<const char* const> substitutes;
};
constexpr KnownFace kKnownFaces[] = {
    {"Courier New", kFixed},
    {"Courier", kFixed},
    {"Consolas", kFixed},
    {"Lucida Console", kFixed},
    {"Terminal", kFixed},
    {"Fixedsys", kFixed},
    {"Times New Roman", kSerif},
    {"Times", kSerif},
    {"MS Serif", kSerif},
    {"Georgia", kSerif},
    {"Cambria", kSerif},
    {"MS Shell Dlg", kSans},
    {"MS Shell Dlg 2", kSans},
    {"Tahoma", kSans},
    {"Segoe UI", kSans},
    {"MS Sans Serif", kSans},
    {"Microsoft Sans Serif", kSans},
    {"Arial", kSans},
    {"Verdana", kSans},
    {"Helv", kSans},
    {"System", kSans},
};

// A face's measures in units of its design; y grows upwards.
struct Design {
    double units = 1000;
    double ascent = 900;
    double descent = 250;
    double line_gap = 0;
    double mean_width = 500;
    double most_width = 1000;
    double underline_center = -100;
    double underline_thickness = 50;
    double strikeout_top = 300;
    double strikeout_thickness = 50;
    WCHAR first_char = 0x20;
    WCHAR last_char = 0xFFFF;
    WCHAR default_char = 0;
    WCHAR break_char = 0x20;
    BYTE pitch_and_family = TMPF_FIXED_PITCH | FF_DONTCARE;

    int Pixels(double value, int em) const noexcept { return static_cast<int>(std::lround(value * em / units)); }
    int Cell(int em) const noexcept { return Pixels(ascent, em) + Pixels(descent, em); }
};

BYTE FamilyOf(const TT_OS2& table, bool fixed) noexcept {
    constexpr BYTE kLatinText = 2;  // PANOSE family kind; the second digit is the serif style, from 11 on sans
    constexpr BYTE kFirstSansStyle = 11;
    if (fixed) {
        return FF_MODERN;
    }
    if (table.panose[0] != kLatinText || table.panose[1] < 2) {
        return FF_DONTCARE;
    }
    return table.panose[1] >= kFirstSansStyle ? FF_SWISS : FF_ROMAN;
}

// The table "OS/2" of the OpenType specification; a line's height is that of its Windows measures.
void ReadTable(const TT_OS2& table, double hhea_height, Design& design) noexcept {
    if (table.usWinAscent + table.usWinDescent > 0) {
        design.ascent = table.usWinAscent;
        design.descent = table.usWinDescent;
        design.line_gap = std::max(0.0, hhea_height - design.ascent - design.descent);
    }
    design.mean_width = table.xAvgCharWidth;
    design.strikeout_top = table.yStrikeoutPosition;
    design.strikeout_thickness = table.yStrikeoutSize;
    design.first_char = table.usFirstCharIndex;
    design.last_char = table.usLastCharIndex;
    if (table.version >= 2) {
        design.default_char = table.usDefaultChar;
        design.break_char = table.usBreakChar;
    }
}

Design ReadDesign(cairo_scaled_font_t* font) noexcept {
    Design design;
    const FT_Face face = cairo_ft_scaled_font_lock_face(font);
    if (face == nullptr) {
        return design;
    }
    if (FT_IS_SCALABLE(face) && face->units_per_EM > 0) {
        design.units = face->units_per_EM;
        design.ascent = face->ascender;
        design.descent = -face->descender;
        design.line_gap = std::max(0, face->height - face->ascender + face->descender);
        design.mean_width = design.units / 2;
        design.most_width = face->max_advance_width;
        design.underline_center = face->underline_position;
        design.underline_thickness = face->underline_thickness;
        const bool fixed = FT_IS_FIXED_WIDTH(face);
        design.pitch_and_family =
            static_cast<BYTE>((fixed ? 0 : TMPF_FIXED_PITCH) | TMPF_VECTOR | (FT_IS_SFNT(face) ? TMPF_TRUETYPE : 0));
        if (const auto* const table = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(face, FT_SFNT_OS2))) {
            ReadTable(*table, face->height, design);
            design.pitch_and_family = static_cast<BYTE>(design.pitch_and_family | FamilyOf(*table, fixed));
        }
    }
    cairo_ft_scaled_font_unlock_face(font);
    return design;
}

int EmOf(const Design& design, LONG height) noexcept {
    if (height < 0) {
        return static_cast<int>(std::min<std::int64_t>(-std::int64_t{height}, kLargestEm));
    }
    const double cell = height == 0 ? kDefaultCell : height;
    int em = static_cast<int>(std::min<double>(kLargestEm, cell * design.units / (design.ascent + design.descent) + 1));
    while (em > 1 && design.Cell(em) > cell) {
        --em;
    }
    return std::max(em, 1);
}

std::span<const char* const> SubstitutesOf(const LOGFONTW& asked, const std::string& name) noexcept {
    for (const KnownFace& known : kKnownFaces) {
        if (g_ascii_strcasecmp(known.name, name.c_str()) == 0) {
            return known.substitutes;
        }
    }
    const int family = asked.lfPitchAndFamily & 0xF0;
    const bool fixed = (asked.lfPitchAndFamily & 3) == FIXED_PITCH || family == FF_MODERN;
    return fixed ? std::span<const char* const>(kFixed) : family == FF_ROMAN ? std::span<const char* const>(kSerif) : kSans;
}

std::u16string_view NameOf(const LOGFONTW& asked) noexcept {
    const auto end = std::find(std::begin(asked.lfFaceName), std::end(asked.lfFaceName), u'\0');
    return {asked.lfFaceName, static_cast<std::size_t>(end - asked.lfFaceName)};
}

std::string FamilyFor(PangoFontMap* map, const LOGFONTW& asked) {
    const std::string name = ToUtf8(NameOf(asked));
    if (!name.empty() && pango_font_map_get_family(map, name.c_str()) != nullptr) {
        return name;
    }
    const auto substitutes = SubstitutesOf(asked, name);
    const auto installed = std::find_if(substitutes.begin(), substitutes.end(), [&](const char* candidate) {
        return pango_font_map_get_family(map, candidate) != nullptr;
    });
    return installed != substitutes.end() ? *installed : substitutes.back();
}

// Pango takes it ill when it finds none at all.
bool AnyFontInstalled() noexcept {
    for (const FcSetName set : {FcSetSystem, FcSetApplication}) {
        const FcFontSet* const fonts = FcConfigGetFonts(nullptr, set);
        if (fonts != nullptr && fonts->nfont > 0) {
            return true;
        }
    }
    return false;
}

FontDescription Describe(PangoFontMap* map, const LOGFONTW& asked) {
    FontDescription description(pango_font_description_new());
    pango_font_description_set_family(description.get(), FamilyFor(map, asked).c_str());
    const int weight = asked.lfWeight == FW_DONTCARE ? FW_NORMAL : static_cast<int>(std::clamp<LONG>(asked.lfWeight, 100, 1000));
    pango_font_description_set_weight(description.get(), static_cast<PangoWeight>(weight));
    pango_font_description_set_style(description.get(), asked.lfItalic != 0 ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);
    return description;
}

PangoFontOwner LoadAt(PangoContext* context, PangoFontDescription* description, int em) noexcept {
    pango_font_description_set_absolute_size(description, em * PANGO_SCALE);
    return PangoFontOwner(pango_font_map_load_font(pango_context_get_font_map(context), context, description));
}

TextRule Underline(const Design& design, int em, int descent) noexcept {
    const int thickness = std::max(1, design.Pixels(design.underline_thickness, em));
    const int top = design.Pixels(-design.underline_center - design.underline_thickness / 2, em);
    return {std::max(0, std::min(std::max(top, 1), descent - thickness)), thickness};
}

void Measure(const Design& design, int em, RealizedFont& font) noexcept {
    TEXTMETRICW& metrics = font.metrics;
    metrics.tmAscent = design.Pixels(design.ascent, em);
    metrics.tmDescent = design.Pixels(design.descent, em);
    metrics.tmHeight = metrics.tmAscent + metrics.tmDescent;
    metrics.tmInternalLeading = std::max(0, metrics.tmHeight - em);
    metrics.tmExternalLeading = design.Pixels(design.line_gap, em);
    const int mean_width = std::max(1, design.Pixels(design.mean_width, em));
    if (font.asked.lfWidth != 0) {
        font.stretch = std::min(std::abs(static_cast<double>(font.asked.lfWidth)), double{kLargestEm}) / mean_width;
    }
    metrics.tmAveCharWidth = static_cast<LONG>(std::lround(mean_width * font.stretch));
    metrics.tmMaxCharWidth = static_cast<LONG>(std::lround(design.Pixels(design.most_width, em) * font.stretch));
    metrics.tmWeight = font.asked.lfWeight == FW_DONTCARE ? FW_NORMAL : font.asked.lfWeight;
    metrics.tmDigitizedAspectX = 96;
    metrics.tmDigitizedAspectY = 96;
    metrics.tmFirstChar = design.first_char;
    metrics.tmLastChar = design.last_char;
    metrics.tmDefaultChar = design.default_char;
    metrics.tmBreakChar = design.break_char;
    metrics.tmItalic = font.asked.lfItalic;
    metrics.tmUnderlined = font.asked.lfUnderline;
    metrics.tmStruckOut = font.asked.lfStrikeOut;
    metrics.tmPitchAndFamily = design.pitch_and_family;
    metrics.tmCharSet = font.asked.lfCharSet == DEFAULT_CHARSET ? ANSI_CHARSET : font.asked.lfCharSet;
    font.underline = Underline(design, em, metrics.tmDescent);
    font.strikeout = {-design.Pixels(design.strikeout_top, em), std::max(1, design.Pixels(design.strikeout_thickness, em))};
}

// What Pango has chosen, which may be another weight and, by Fontconfig's rules, another family than was asked for.
void DescribeChosen(PangoFont* chosen, RealizedFont& font) {
    const FontDescription description(pango_font_describe(chosen));
    font.metrics.tmWeight = pango_font_description_get_weight(description.get());
    const char* const family = pango_font_description_get_family(description.get());
    font.face = FromUtf8(family != nullptr ? family : "");
}

}  // namespace

cairo_scaled_font_t* ScaledOf(PangoFont* font) noexcept {
    cairo_scaled_font_t* const scaled =
        font != nullptr && PANGO_IS_CAIRO_FONT(font) ? pango_cairo_font_get_scaled_font(PANGO_CAIRO_FONT(font)) : nullptr;
    return scaled != nullptr && cairo_scaled_font_status(scaled) == CAIRO_STATUS_SUCCESS ? scaled : nullptr;
}

std::shared_ptr<const RealizedFont> MatchFont(PangoContext* context, const LOGFONTW& asked) {
    auto font = std::make_shared<RealizedFont>();
    font->asked = asked;
    font->angle = asked.lfEscapement % 3600 * std::numbers::pi / 1800;
    font->face = NameOf(asked);
    FontDescription description = AnyFontInstalled() ? Describe(pango_context_get_font_map(context), asked) : nullptr;
    const PangoFontOwner any_size = description ? LoadAt(context, description.get(), kDefaultCell) : nullptr;
    cairo_scaled_font_t* const scaled = ScaledOf(any_size.get());
    const Design design = scaled != nullptr ? ReadDesign(scaled) : Design();
    const int em = EmOf(design, asked.lfHeight);
    Measure(design, em, *font);
    if (scaled == nullptr) {
        return font;
    }
    const PangoFontOwner chosen = LoadAt(context, description.get(), em);
    if (cairo_scaled_font_t* const at_size = ScaledOf(chosen.get())) {
        DescribeChosen(chosen.get(), *font);
        font->scaled.reset(cairo_scaled_font_reference(at_size));
        font->description = std::move(description);
    }
    return font;
}

}  // namespace kawin
