#pragma once

// Which source pixels a scaled copy takes, and what it makes of them.

#include <span>
#include <vector>

#include "block.h"
#include "surface.h"

namespace kawin {

// How source pixels that share a target pixel become one.
enum class Shrinking { And, Or, Last, Average };

// The source pixels of one target pixel, along one axis. The weights are for averaging only.
struct SourceRun {
    LONG first;
    LONG end;
    // Parts of the first and of the last pixel that count, of kWholeWeight; those between count wholly.
    std::uint32_t first_weight;
    std::uint32_t last_weight;
};

constexpr std::uint32_t kWholeWeight = 256;

// The target pixels that are wanted, inside of the target's extent, and how many pixels the source has.
struct Wanted {
    LONG first;
    LONG end;
    LONG source_size;
};

// Runs are cut to what the source has, and may be empty then. Throws std::bad_alloc.
std::vector<SourceRun> RunsFor(const Extent& to, const Extent& from, Shrinking shrinking, const Wanted& wanted);

// One target row, out of the crossings of `rows` with each of `columns`. No run is empty.
void ScaleRow(const Surface& source, std::span<const SourceRun> columns, const SourceRun& rows, Shrinking shrinking,
              std::span<Pixel> row) noexcept;

}  // namespace kawin
