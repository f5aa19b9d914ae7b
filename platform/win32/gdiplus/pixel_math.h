#pragma once

// Pixels as numbers: straight 0xAARRGGBB, premultiplied the same with colours multiplied by alpha.

#include <cstdint>

namespace kawin {

using Argb = std::uint32_t;

constexpr Argb kOpaque = 0xFF000000;

constexpr Argb AlphaOf(Argb pixel) noexcept {
    return pixel >> 24;
}

constexpr Argb DivideBy255(Argb value) noexcept {  // rounded, up to 255 * 255
    const Argb half = value + 128;
    return (half + (half >> 8)) >> 8;
}

// All four bytes times 0 to 255, over 255, rounded; two at a time.
constexpr Argb ScaleBytes(Argb pixel, Argb factor) noexcept {
    Argb low = (pixel & 0x00FF00FF) * factor + 0x00800080;
    Argb high = (pixel >> 8 & 0x00FF00FF) * factor + 0x00800080;
    low = (low + (low >> 8 & 0x00FF00FF)) >> 8 & 0x00FF00FF;
    high = (high + (high >> 8 & 0x00FF00FF)) & 0xFF00FF00;
    return low | high;
}

constexpr Argb Premultiplied(Argb straight) noexcept {
    const Argb alpha = AlphaOf(straight);
    return alpha == 255 ? straight : ScaleBytes(straight | kOpaque, alpha);
}

constexpr Argb Straight(Argb premultiplied) noexcept {
    const Argb alpha = AlphaOf(premultiplied);
    if (alpha == 255 || alpha == 0) {
        return alpha == 0 ? 0 : premultiplied;
    }
    Argb pixel = alpha << 24;
    for (int shift = 0; shift < 24; shift += 8) {
        const Argb color = (premultiplied >> shift & 0xFF) * 255 / alpha;
        pixel |= (color > 255 ? 255 : color) << shift;
    }
    return pixel;
}

// A straight pixel over what is there, as contexts blend: premultiplied and rounded, the top byte like the others.
constexpr Argb OverPremultiplied(Argb straight, Argb there) noexcept {
    return Premultiplied(straight) + ScaleBytes(there, 255 - AlphaOf(straight));
}

// A straight pixel over a straight one, as bitmaps blend.
constexpr Argb OverStraight(Argb straight, Argb there) noexcept {
    const Argb alpha = AlphaOf(straight);
    const Argb behind = AlphaOf(there) * (255 - alpha) / 255;
    const Argb all = alpha + behind;
    if (alpha == 0 || all == 0) {
        return there;
    }
    Argb pixel = all << 24;
    for (int shift = 0; shift < 24; shift += 8) {
        pixel |= ((straight >> shift & 0xFF) * alpha + (there >> shift & 0xFF) * behind) / all << shift;
    }
    return pixel;
}

}  // namespace kawin
