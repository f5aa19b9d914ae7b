#pragma once

// Pango's headers, in which GLib defines names that are constants here.

#include <pango/pangocairo.h>

#undef FALSE
#undef TRUE

#include <memory>

namespace kawin {

template <auto Free>
struct FreeWith {
    template <class T>
    void operator()(T* what) const noexcept {
        Free(what);
    }
};
using ScaledFont = std::unique_ptr<cairo_scaled_font_t, FreeWith<cairo_scaled_font_destroy>>;
using FontDescription = std::unique_ptr<PangoFontDescription, FreeWith<pango_font_description_free>>;
using PangoFontOwner = std::unique_ptr<PangoFont, FreeWith<g_object_unref>>;

// What draws a font's glyphs; it belongs to the font. Null when there is none that works.
cairo_scaled_font_t* ScaledOf(PangoFont* font) noexcept;

}  // namespace kawin
