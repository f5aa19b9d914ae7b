#include "row_filters.h"

#include <bit>
#include <cstddef>
#include <cstring>

namespace kawin {
namespace {

// Four pixels as vectors of the compiler's: every processor that it knows has some.
using Halves = std::uint16_t __attribute__((vector_size(16)));
using Four = std::uint32_t __attribute__((vector_size(16)));
constexpr int kLanes = 4;

[[gnu::always_inline]] inline Halves Load(const Argb* pixels) noexcept {
    Halves loaded;
    std::memcpy(&loaded, pixels, sizeof(loaded));
    return loaded;
}

[[gnu::always_inline]] inline Halves Gather(const Argb* row, const std::int32_t* index) noexcept {
    const Four gathered = {row[index[0]], row[index[1]], row[index[2]], row[index[3]]};
    return std::bit_cast<Halves>(gathered);
}

// Bytes are mixed as 16-bit numbers, the even and the odd ones apart; the sums stay below 2^16, and (t + 1 + t / 256) / 256 is
// exactly t / 255 for them.
[[gnu::always_inline]] inline Halves Mix(Halves first, Halves second, Halves weight) noexcept {
    const Halves rest = 255 - weight;
    const Halves even = (first & 0xFF) * rest + (second & 0xFF) * weight;
    const Halves odd = (first >> 8) * rest + (second >> 8) * weight;
    return ((even + 1 + (even >> 8)) >> 8) | ((odd + 1 + (odd >> 8)) & 0xFF00);
}

Argb Mix(Argb first, Argb second, std::uint32_t weight) noexcept {
    const std::uint32_t share = weight & 0xFF;
    const std::uint32_t rest = 255 - share;
    const std::uint32_t even = (first & 0x00FF00FF) * rest + (second & 0x00FF00FF) * share;
    const std::uint32_t odd = (first >> 8 & 0x00FF00FF) * rest + (second >> 8 & 0x00FF00FF) * share;
    return ((even + 0x00010001 + (even >> 8 & 0x00FF00FF)) >> 8 & 0x00FF00FF) |
           ((odd + 0x00010001 + (odd >> 8 & 0x00FF00FF)) & 0xFF00FF00);
}

Argb MixAlpha(Argb first, Argb second, std::uint32_t weight) noexcept {
    const std::uint32_t share = weight & 0xFF;
    const std::uint32_t of_first = AlphaOf(first) * (255 - share);
    const std::uint32_t of_second = AlphaOf(second) * share;
    const std::uint32_t all = of_first + of_second;
    if (all == 0) {
        return 0;
    }
    Argb mixed = all / 255 << 24;
    for (int shift = 0; shift < 24; shift += 8) {
        mixed |= ((first >> shift & 0xFF) * of_first + (second >> shift & 0xFF) * of_second) / all << shift;
    }
    return mixed;
}

}  // namespace

void MixColumns(const Argb* row, const AxisTaps& taps, Argb* out) noexcept {
    const int count = static_cast<int>(taps.first.size());
    int x = 0;
    for (; x + kLanes <= count; x += kLanes) {
        const Halves mixed =
            Mix(Gather(row, &taps.first[static_cast<std::size_t>(x)]), Gather(row, &taps.second[static_cast<std::size_t>(x)]),
                Load(&taps.weight[static_cast<std::size_t>(x)]));
        std::memcpy(out + x, &mixed, sizeof(mixed));
    }
    for (std::size_t rest = static_cast<std::size_t>(x); rest < taps.first.size(); ++rest) {
        out[rest] = Mix(row[taps.first[rest]], row[taps.second[rest]], taps.weight[rest]);
    }
}

void MixRows(const Argb* first, const Argb* second, std::uint32_t weight, int count, Argb* out) noexcept {
    const auto weights = std::bit_cast<Halves>(Four{weight, weight, weight, weight});
    int x = 0;
    for (; x + kLanes <= count; x += kLanes) {
        const Halves mixed = Mix(Load(first + x), Load(second + x), weights);
        std::memcpy(out + x, &mixed, sizeof(mixed));
    }
    for (; x < count; ++x) {
        out[x] = Mix(first[x], second[x], weight);
    }
}

void MixAlphaColumns(const Argb* row, const AxisTaps& taps, Argb* out) noexcept {
    for (std::size_t x = 0; x < taps.first.size(); ++x) {
        out[x] = MixAlpha(row[taps.first[x]], row[taps.second[x]], taps.weight[x]);
    }
}

void MixAlphaRows(const Argb* first, const Argb* second, std::uint32_t weight, int count, Argb* out) noexcept {
    for (int x = 0; x < count; ++x) {
        out[x] = MixAlpha(first[x], second[x], weight);
    }
}

void TakeColumns(const Argb* row, const AxisTaps& taps, Argb* out) noexcept {
    for (std::size_t x = 0; x < taps.first.size(); ++x) {
        out[x] = row[taps.first[x]];
    }
}

}  // namespace kawin
