#pragma once

// Raster operations on rows of pixels. An operation is its truth table: bit 4 P + 2 S + D of it is the result for the bits P of
// the pattern, S of the source and D of the target.

#include <span>

#include "copies.h"
#include "surface.h"

namespace kawin {

constexpr BYTE TableOf(DWORD operation) noexcept {
    return static_cast<BYTE>(operation >> 16);
}

// Of R2_*, which stand for the tables of P and D in order.
constexpr BYTE TableOfMix(int mix) noexcept {
    const unsigned table = static_cast<unsigned>(mix - 1);
    const unsigned without = table & 3;
    const unsigned with = table >> 2;
    return static_cast<BYTE>(without | without << 2 | with << 4 | with << 6);
}

constexpr bool NeedsSource(BYTE table) noexcept {
    return ((table ^ (table >> 2)) & 0x33) != 0;
}
constexpr bool NeedsPattern(BYTE table) noexcept {
    return ((table ^ (table >> 4)) & 0x0F) != 0;
}

// Each pixel of `target` becomes what the table says. `source` and `pattern` are as many pixels, or null where the table does not
// need them; neither may overlap the target, but the source may be the target itself. On monochrome pixels the upper bits of the
// result are to be cut.
void CombineRow(BYTE table, std::span<Pixel> target, const Pixel* source, const Pixel* pattern) noexcept;

// Keeps pixels monochrome.
void CutToMono(std::span<Pixel> row) noexcept;

}  // namespace kawin
