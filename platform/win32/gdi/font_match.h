#pragma once

// From a font's description to the installed face, at its size.

#include <memory>
#include <string>

#include "fonts.h"
#include "pango_types.h"

namespace kawin {

// A line across text: `top` from the baseline down.
struct TextRule {
    int top = 0;
    int thickness = 1;
};

// A font at work; does not change once it is made.
struct RealizedFont {
    LOGFONTW asked = {};
    FontDescription description;  // null: no font is installed
    ScaledFont scaled;            // of the face itself, without those that help out; null likewise
    std::u16string face;
    TEXTMETRICW metrics = {};
    double stretch = 1;  // of characters' widths, by lfWidth
    double angle = 0;    // of the line, radians counter-clockwise
    TextRule underline;
    TextRule strikeout;
};

// The caller holds the lock of text_engine.h, as for all of Pango. May throw std::bad_alloc.
std::shared_ptr<const RealizedFont> MatchFont(PangoContext* context, const LOGFONTW& asked);

}  // namespace kawin
