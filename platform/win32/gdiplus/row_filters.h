#pragma once

// Rows of pixels made of rows of pixels, 8 bits a weight.

#include "axis.h"
#include "pixel_math.h"

namespace kawin {

// (first * (255 - weight) + second * weight) / 255 of every byte, for opaque pixels. `weight` as AxisTaps has it.
void MixColumns(const Argb* row, const AxisTaps& taps, Argb* out) noexcept;
void MixRows(const Argb* first, const Argb* second, std::uint32_t weight, int count, Argb* out) noexcept;

// The same for straight pixels with alpha, colours weighed by it.
void MixAlphaColumns(const Argb* row, const AxisTaps& taps, Argb* out) noexcept;
void MixAlphaRows(const Argb* first, const Argb* second, std::uint32_t weight, int count, Argb* out) noexcept;

// Without weights.
void TakeColumns(const Argb* row, const AxisTaps& taps, Argb* out) noexcept;

}  // namespace kawin
