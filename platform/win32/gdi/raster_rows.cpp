#include "raster_rows.h"

#include <algorithm>
#include <array>

namespace kawin {
namespace {

// Rows are combined in pieces of this many pixels, so that what lies between needs no memory of its own.
constexpr std::size_t kPiece = 256;

using Piece = std::array<Pixel, kPiece>;

// One row of the truth table: all ones where the three bits are as `index` has them.
void AddMinterm(unsigned index, std::size_t count, const Pixel* d, const Pixel* s, const Pixel* p, Pixel* sum) noexcept {
    const Pixel flip_d = (index & 1) != 0 ? 0 : ~Pixel{0};
    const Pixel flip_s = (index & 2) != 0 ? 0 : ~Pixel{0};
    const Pixel flip_p = (index & 4) != 0 ? 0 : ~Pixel{0};
    for (std::size_t x = 0; x < count; ++x) {
        sum[x] |= (d[x] ^ flip_d) & (s[x] ^ flip_s) & (p[x] ^ flip_p);
    }
}

void CombinePiece(BYTE table, std::span<Pixel> target, const Pixel* source, const Pixel* pattern) noexcept {
    Piece sum = {};
    for (unsigned index = 0; index < 8; ++index) {
        if ((table >> index & 1) != 0) {
            AddMinterm(index, target.size(), target.data(), source, pattern, sum.data());
        }
    }
    std::copy_n(sum.begin(), target.size(), target.begin());
}

template <class Mix>
void MixRow(std::span<Pixel> target, const Pixel* with, Mix mix) noexcept {
    std::transform(target.begin(), target.end(), with, target.begin(), mix);
}

// The operations that everybody uses; false for any other.
bool CombineUsual(BYTE table, std::span<Pixel> target, const Pixel* source, const Pixel* pattern) noexcept {
    switch (table) {
        case TableOf(SRCCOPY):
            std::copy_n(source, target.size(), target.begin());
            return true;
        case TableOf(PATCOPY):
            std::copy_n(pattern, target.size(), target.begin());
            return true;
        case TableOf(SRCAND):
            MixRow(target, source, [](Pixel d, Pixel s) { return d & s; });
            return true;
        case TableOf(SRCPAINT):
            MixRow(target, source, [](Pixel d, Pixel s) { return d | s; });
            return true;
        case TableOf(SRCINVERT):
            MixRow(target, source, [](Pixel d, Pixel s) { return d ^ s; });
            return true;
        default:
            return false;
    }
}

}  // namespace

void CombineRow(BYTE table, std::span<Pixel> target, const Pixel* source, const Pixel* pattern) noexcept {
    if (CombineUsual(table, target, source, pattern)) {
        return;
    }
    for (std::size_t at = 0; at < target.size(); at += kPiece) {
        const std::span<Pixel> piece = target.subspan(at, std::min(kPiece, target.size() - at));
        // Where the table does not ask for one of the two, any pixels will do.
        CombinePiece(table, piece, source != nullptr ? source + at : piece.data(),
                     pattern != nullptr ? pattern + at : piece.data());
    }
}

void CutToMono(std::span<Pixel> row) noexcept {
    for (Pixel& pixel : row) {
        pixel &= 1;
    }
}

}  // namespace kawin
