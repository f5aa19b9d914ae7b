#include "scaling.h"

#include <algorithm>
#include <functional>
#include <numeric>

namespace kawin {
namespace {

std::int64_t DivideDown(std::int64_t value, std::int64_t by) noexcept {
    return value / by - (value % by < 0);
}

// Of a target pixel at `at`, counted from the start of the target, without mirroring.
SourceRun RunAt(LONG at, LONG to, LONG from, Shrinking shrinking) noexcept {
    const std::int64_t wide = 2 * std::int64_t{to};
    if (shrinking == Shrinking::Average) {
        const std::int64_t begin = std::int64_t{at} * from * kWholeWeight / to;
        const std::int64_t end = std::max(begin + 1, (std::int64_t{at} + 1) * from * kWholeWeight / to);
        const std::int64_t first = begin / kWholeWeight;
        const std::int64_t behind = (end + kWholeWeight - 1) / kWholeWeight;
        const bool one = behind - first == 1;
        return {static_cast<LONG>(first), static_cast<LONG>(behind),
                one ? kWholeWeight : static_cast<std::uint32_t>((first + 1) * kWholeWeight - begin),
                static_cast<std::uint32_t>(end - (behind - 1) * kWholeWeight)};
    }
    if (to >= from) {  // the source pixel over the middle of the target's
        const LONG middle = static_cast<LONG>((2 * std::int64_t{at} + 1) * from / wide);
        return {middle, middle + 1, kWholeWeight, kWholeWeight};
    }
    // Each source pixel belongs to the target pixel that its middle hits, the lower one where it hits an edge.
    const auto last_of = [&](std::int64_t pixel) { return DivideDown(2 * std::int64_t{from} * (pixel + 1) - to, wide); };
    const LONG first = static_cast<LONG>(last_of(std::int64_t{at} - 1) + 1);
    const LONG last = static_cast<LONG>(last_of(at));
    return {shrinking == Shrinking::Last ? last : first, last + 1, kWholeWeight, kWholeWeight};
}

SourceRun Cut(SourceRun run, LONG limit) noexcept {
    if (run.first < 0) {
        run.first = 0;
        run.first_weight = kWholeWeight;
    }
    if (run.end > limit) {
        run.end = limit;
        run.last_weight = kWholeWeight;
    }
    return run;
}

std::uint64_t WeightAt(const SourceRun& run, LONG at) noexcept {
    return at == run.first ? run.first_weight : at + 1 == run.end ? run.last_weight : kWholeWeight;
}

Pixel Averaged(const Surface& source, const SourceRun& columns, const SourceRun& rows) noexcept {
    std::uint64_t whole = 0;
    std::uint64_t sums[4] = {};
    for (LONG y = rows.first; y < rows.end; ++y) {
        const Pixel* const row = source.Row(y);
        for (LONG x = columns.first; x < columns.end; ++x) {
            const std::uint64_t weight = WeightAt(rows, y) * WeightAt(columns, x);
            whole += weight;
            for (int channel = 0; channel < 4; ++channel) {
                sums[channel] += weight * (row[x] >> (8 * channel) & 0xFF);
            }
        }
    }
    Pixel average = 0;
    for (int channel = 0; channel < 4; ++channel) {
        average |= static_cast<Pixel>((sums[channel] + whole / 2) / whole) << (8 * channel);
    }
    return average;
}

template <class Mix>
Pixel Mixed(const Surface& source, const SourceRun& columns, const SourceRun& rows, Pixel start, Mix mix) noexcept {
    for (LONG y = rows.first; y < rows.end; ++y) {
        const Pixel* const row = source.Row(y);
        start = std::accumulate(row + columns.first, row + columns.end, start, mix);
    }
    return start;
}

}  // namespace

std::vector<SourceRun> RunsFor(const Extent& to, const Extent& from, Shrinking shrinking, const Wanted& wanted) {
    std::vector<SourceRun> runs;
    runs.reserve(static_cast<std::size_t>(wanted.end - wanted.first));
    for (LONG at = wanted.first; at < wanted.end; ++at) {
        const LONG inside = to.mirrored != from.mirrored ? to.End() - 1 - at : at - to.start;
        SourceRun run = RunAt(inside, to.size, from.size, shrinking);
        run.first += from.start;
        run.end += from.start;
        runs.push_back(Cut(run, wanted.source_size));
    }
    return runs;
}

void ScaleRow(const Surface& source, std::span<const SourceRun> columns, const SourceRun& rows, Shrinking shrinking,
              std::span<Pixel> row) noexcept {
    const auto each = [&](auto&& make) { std::transform(columns.begin(), columns.end(), row.begin(), make); };
    switch (shrinking) {
        case Shrinking::And:
            each([&](const SourceRun& run) { return Mixed(source, run, rows, ~Pixel{0}, std::bit_and<Pixel>()); });
            break;
        case Shrinking::Or:
            each([&](const SourceRun& run) { return Mixed(source, run, rows, Pixel{0}, std::bit_or<Pixel>()); });
            break;
        case Shrinking::Average:
            each([&](const SourceRun& run) { return Averaged(source, run, rows); });
            break;
        case Shrinking::Last:
            each([from = source.Row(rows.first)](const SourceRun& run) { return from[run.first]; });
            break;
    }
}

}  // namespace kawin
