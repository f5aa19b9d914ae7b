#pragma once

// One axis of a scaled copy: which pixels of the source each pixel of the target is made of.

#include <compare>
#include <cstdint>
#include <vector>

namespace kawin {

enum class Sampling {
    Copy,      // unscaled: pixel by pixel, from the whole one that the source begins in
    Nearest,   // the pixel whose number is nearest to the place
    Inside,    // the pixel that the place lies in
    Bilinear,  // the pixel that the place lies in and the next one, by the fraction
};

// From where to where, in pixels. Sizes may be negative.
struct AxisSpan {
    double target = 0;
    double target_size = 0;
    double source = 0;
    double source_size = 0;
};

// The pixels of the target that lie inside its bounds, and where in the source they begin. Equal maps take the same from the same
// source, wherever `begin` is.
struct AxisMap {
    Sampling sampling = Sampling::Copy;
    int count = 0;     // none: nothing to draw
    double start = 0;  // the place of the first pixel in the source
    double step = 0;
    double low = 0;  // places from `low` to below `high` show something
    double high = 0;

    auto operator<=>(const AxisMap&) const = default;
};

struct PlacedAxis {
    int begin = 0;  // in the target
    AxisMap map;
};

// The numbers are finite. `bounds` pixels are all that the target has.
PlacedAxis MapAxis(const AxisSpan& span, Sampling sampling, int bounds) noexcept;

// Per pixel of the target. What would lie beyond the source's ends is held at its last pixel; `cover` tells how much of the
// pixel the source gives, 255 for all.
struct AxisTaps {
    std::vector<std::int32_t> first;
    std::vector<std::int32_t> second;
    std::vector<std::uint32_t> weight;  // of `second`, 0 to 255; in both halves of the number
    std::vector<std::uint8_t> cover;
    int covered_begin = 0;  // from here to covered_end, every cover is 255
    int covered_end = 0;
    bool filters = false;  // some weight is not 0
    bool is_run = false;   // filters nothing, and takes pixel after pixel
};

AxisTaps MakeTaps(const AxisMap& map, int extent);

}  // namespace kawin
