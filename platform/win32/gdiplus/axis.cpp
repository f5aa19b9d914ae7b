#include "axis.h"

#include <algorithm>
#include <cmath>

namespace kawin {
namespace {

// A pixel's source: nothing where the place shows nothing.
struct Tap {
    int first = 0;
    int second = 0;
    int weight = 0;
    int cover = 0;
};

bool IsInside(int index, int extent) noexcept {
    return index >= 0 && index < extent;
}

Tap WholeTap(double place, int extent) noexcept {
    if (place < 0 || place >= extent) {
        return {};
    }
    const int index = static_cast<int>(place);
    return {index, index, 0, 255};
}

Tap BilinearTap(double place, int extent) noexcept {
    if (place <= -1 || place >= extent) {
        return {};
    }
    const int first = static_cast<int>(std::floor(place));
    const int second = first + 1;
    const int weight = static_cast<int>((place - first) * 255 + 0.5);
    if (!IsInside(first, extent)) {
        return {second, second, 0, weight};
    }
    if (!IsInside(second, extent)) {
        return {first, first, 0, 255 - weight};
    }
    return {first, second, weight, 255};
}

Tap TapAt(const AxisMap& map, int pixel, int extent) noexcept {
    const double place = map.start + pixel * map.step;
    if (map.sampling != Sampling::Copy && (place < map.low || place >= map.high)) {
        return {};
    }
    switch (map.sampling) {
        case Sampling::Nearest:
            return WholeTap(std::floor(place + 0.5), extent);
        case Sampling::Bilinear:
            return BilinearTap(place, extent);
        default:
            return WholeTap(std::floor(place), extent);
    }
}

}  // namespace

PlacedAxis MapAxis(const AxisSpan& span, Sampling sampling, int bounds) noexcept {
    const double near_edge = std::min(span.target, span.target + span.target_size);
    const double far_edge = std::max(span.target, span.target + span.target_size);
    const double begin = std::clamp(std::floor(near_edge + 0.5), 0.0, static_cast<double>(bounds));
    const double end = std::clamp(std::floor(far_edge + 0.5), 0.0, static_cast<double>(bounds));
    if (begin >= end || span.source_size == 0) {
        return {};
    }
    PlacedAxis placed;
    placed.begin = static_cast<int>(begin);
    AxisMap& map = placed.map;
    map.sampling = sampling;
    map.count = static_cast<int>(end - begin);
    if (sampling == Sampling::Copy) {
        map.step = 1;
        map.start = std::floor(span.source) + begin - std::floor(span.target + 0.5);
        return placed;
    }
    map.step = span.source_size / span.target_size;
    map.start = span.source + (begin - span.target) * map.step;
    map.low = std::min(span.source, span.source + span.source_size);
    map.high = std::max(span.source, span.source + span.source_size);
    return placed;
}

AxisTaps MakeTaps(const AxisMap& map, int extent) {
    AxisTaps taps;
    const std::size_t count = static_cast<std::size_t>(map.count);
    taps.first.resize(count);
    taps.second.resize(count);
    taps.weight.resize(count);
    taps.cover.resize(count);
    taps.is_run = true;
    for (std::size_t i = 0; i < count; ++i) {
        const Tap tap = TapAt(map, static_cast<int>(i), extent);
        taps.first[i] = tap.first;
        taps.second[i] = tap.second;
        taps.weight[i] = static_cast<std::uint32_t>(tap.weight) * 0x00010001U;
        taps.cover[i] = static_cast<std::uint8_t>(tap.cover);
        taps.filters = taps.filters || tap.weight != 0;
        taps.is_run = taps.is_run && tap.weight == 0 && tap.first == taps.first[0] + static_cast<int>(i);
    }
    const auto is_whole = [](std::uint8_t cover) { return cover == 255; };
    const auto whole = std::find_if(taps.cover.begin(), taps.cover.end(), is_whole);
    taps.covered_begin = static_cast<int>(whole - taps.cover.begin());
    taps.covered_end = static_cast<int>(std::find_if_not(whole, taps.cover.end(), is_whole) - taps.cover.begin());
    return taps;
}

}  // namespace kawin
