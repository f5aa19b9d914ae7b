#include "case_folding.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "case_folding_table.h"

namespace kadata {
namespace {

using TextView = std::basic_string_view<TCHAR>;

constexpr char32_t FIRST_BEYOND_ASCII = 0x80;
constexpr char32_t FIRST_BEYOND_UNIT = 0x10000;
constexpr char32_t HIGH_SURROGATES = 0xD800;
constexpr char32_t LOW_SURROGATES = 0xDC00;
constexpr char32_t SURROGATE_MASK = 0xFC00;

constexpr char32_t Shifted(char32_t point, const FoldingRun& run) {
    return static_cast<char32_t>(static_cast<std::int32_t>(point) + run.delta);
}

// The comparison below goes unit by unit: a character and its folding have the same length in units, and where they have two the
// first is the same.
constexpr bool FoldsInPlace(const FoldingRun& run) {
    for (char32_t point = run.first; point <= run.last; point += run.step) {
        const char32_t folded = Shifted(point, run);
        if (point < FIRST_BEYOND_UNIT ? folded >= FIRST_BEYOND_UNIT : point >> 10 != folded >> 10) {
            return false;
        }
    }
    return true;
}
static_assert(std::all_of(std::begin(FOLDING_RUNS), std::end(FOLDING_RUNS), FoldsInPlace));

char32_t Fold(char32_t point) {
    if (point < FIRST_BEYOND_ASCII) {
        return point >= U'A' && point <= U'Z' ? point + (U'a' - U'A') : point;
    }
    const auto run = std::lower_bound(std::begin(FOLDING_RUNS), std::end(FOLDING_RUNS), point,
                                      [](const FoldingRun& r, char32_t p) { return r.last < p; });
    if (run == std::end(FOLDING_RUNS) || point < run->first || (point - run->first) % run->step != 0) {
        return point;
    }
    return Shifted(point, *run);
}

// The character that ends with the unit at `i`; a first half is taken by itself.
char32_t CharacterEndingAt(TextView text, std::size_t i) {
    const char32_t unit = static_cast<char16_t>(text[i]);
    if ((unit & SURROGATE_MASK) != LOW_SURROGATES || i == 0) {
        return unit;
    }
    const char32_t before = static_cast<char16_t>(text[i - 1]);
    if ((before & SURROGATE_MASK) != HIGH_SURROGATES) {
        return unit;
    }
    return FIRST_BEYOND_UNIT + ((before - HIGH_SURROGATES) << 10) + (unit - LOW_SURROGATES);
}

}  // namespace

bool IsSameIgnoringCase(TextView a, TextView b) {
    if (a.size() != b.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (a[i] != b[i] && Fold(CharacterEndingAt(a, i)) != Fold(CharacterEndingAt(b, i))) {
            return false;
        }
    }
    return true;
}

}  // namespace kadata
