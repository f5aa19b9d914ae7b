#pragma once

#include "dib_layout.h"

namespace kawin {

// The run-length coded pixels of 4 or 8 bits (the platform's "Bitmap Compression"): numbers in the palette, rows from the top,
// for a picture that begins as colour 0. False when they are cut.
bool DecodeDibRuns(const DibLayout& layout, std::span<const std::byte> stored, std::span<std::uint8_t> indices) noexcept;

}  // namespace kawin
