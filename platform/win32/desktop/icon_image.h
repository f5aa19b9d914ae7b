#pragma once

// What is behind an HICON.

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "../gdi/surface.h"
#include "icons.h"

namespace kawin {

// Never changed once it has a handle.
struct IconImage {
    int width = 0;
    int height = 0;
    bool is_icon = true;  // else a cursor
    POINT hot_spot = {};
    bool has_color = true;           // else made of two masks
    bool has_alpha = false;          // drawn by the top byte of `color`, else by the mask
    std::vector<Pixel> color;        // 0xAARRGGBB, alpha not multiplied in; rows from the top
    std::vector<std::uint8_t> mask;  // 1: what is behind stays, then the colour is exclusive-ored to it
    WORD system_shape = 0;           // number of a cursor of the system's own, else 0

    std::size_t Count() const noexcept { return static_cast<std::size_t>(width) * static_cast<std::size_t>(height); }
};
using IconRef = std::shared_ptr<const IconImage>;

// The same picture at another size, both at least 1. Smooth where alpha tells the edges, else each pixel is one of the picture's.
IconRef Scaled(const IconRef& image, int width, int height);

// Makes the mask and `has_alpha` of pixels that came with alpha.
IconImage FromAlpha(int width, int height, std::vector<Pixel> color);

// Pixels whose alpha is multiplied in (Cairo's), and back.
Pixel Multiplied(Pixel straight) noexcept;
Pixel Straight(Pixel multiplied) noexcept;

// The bytes of an RT_ICON or RT_CURSOR; null when they are damaged.
IconRef ReadIcon(std::span<const std::byte> bytes, bool is_icon);

// The number of the best picture of a directory as RT_GROUP_ICON has it; 0: none.
WORD ChooseIcon(std::span<const std::byte> directory, bool is_icon, int width, int height) noexcept;

// The system's own, drawn at a size. Null for an unknown number.
IconRef DrawSystemIcon(WORD number, int side);
IconRef DrawSystemCursor(WORD number);

// The table of handles. Safe from every thread. Null without memory or for a null image.
HICON AddIcon(IconRef image, bool shared = false);
IconRef FindIcon(HICON icon) noexcept;  // null; the last error stays
bool IsSharedIcon(HICON icon) noexcept;
bool RemoveIcon(HICON icon) noexcept;  // false when there is none

// How many there are, shared ones left out: for tests that look for leaks.
KADATA_API std::size_t CountIcons() noexcept;

}  // namespace kawin
