#include "dib_runs.h"

#include <algorithm>

#include "../resources/byte_view.h"

namespace kawin {
namespace {

using Bytes = std::span<const std::byte>;

// Second bytes of a pair that begins with 0; from 3 on, a count of single pixels.
constexpr unsigned kEndOfLine = 0;
constexpr unsigned kEndOfBitmap = 1;
constexpr unsigned kMove = 2;

class RunDecoder {
public:
    RunDecoder(const DibLayout& layout, Bytes stored, std::span<std::uint8_t> indices) noexcept
        : layout_(layout), stored_(stored), indices_(indices), four_bits_(layout.coding == DibCoding::Runs4) {}

    // False when the bytes end before the picture.
    bool Decode() noexcept {
        while (row_ < layout_.height) {
            const auto pair = Take(2);
            if (!pair) {
                return false;
            }
            const unsigned first = std::to_integer<unsigned>((*pair)[0]);
            const unsigned second = std::to_integer<unsigned>((*pair)[1]);
            if (first != 0) {
                PutRun(first, second);
            } else if (second == kEndOfBitmap) {
                return true;
            } else if (!Escape(second)) {
                return false;
            }
        }
        return true;
    }

private:
    std::optional<Bytes> Take(std::size_t count) noexcept {
        const auto taken = Slice(stored_, at_, count);
        at_ += taken ? count : 0;
        return taken;
    }

    // What lies right of the picture is left out.
    void Put(unsigned index) noexcept {
        if (column_ < layout_.width) {
            const std::size_t y = static_cast<std::size_t>(layout_.height - 1 - row_);
            indices_[y * static_cast<std::size_t>(layout_.width) + static_cast<std::size_t>(column_)] =
                static_cast<std::uint8_t>(index);
            ++column_;
        }
    }

    // Of 4 bits, the two halves of the byte in turn.
    void PutRun(unsigned count, unsigned value) noexcept {
        for (unsigned i = 0; i < count; ++i) {
            Put(four_bits_ ? (i % 2 == 0 ? value >> 4 : value & 15) : value);
        }
    }

    bool Escape(unsigned code) noexcept {
        if (code == kEndOfLine) {
            column_ = 0;
            ++row_;
            return true;
        }
        if (code == kMove) {
            const auto step = Take(2);
            if (step) {
                column_ = std::min(column_ + std::to_integer<int>((*step)[0]), layout_.width);
                row_ += std::to_integer<int>((*step)[1]);
            }
            return step.has_value();
        }
        return PutSingles(code);
    }

    // They are filled up to whole words.
    bool PutSingles(unsigned count) noexcept {
        const std::size_t bytes = four_bits_ ? (count + 1) / 2 : count;
        const auto singles = Take((bytes + 1) / 2 * 2);
        for (unsigned i = 0; singles && i < count; ++i) {
            const unsigned value = std::to_integer<unsigned>((*singles)[four_bits_ ? i / 2 : i]);
            Put(four_bits_ ? (i % 2 == 0 ? value >> 4 : value & 15) : value);
        }
        return singles.has_value();
    }

    const DibLayout& layout_;
    Bytes stored_;
    std::span<std::uint8_t> indices_;
    bool four_bits_;
    std::size_t at_ = 0;
    int column_ = 0;
    int row_ = 0;  // from the bottom
};

}  // namespace

bool DecodeDibRuns(const DibLayout& layout, std::span<const std::byte> stored, std::span<std::uint8_t> indices) noexcept {
    return RunDecoder(layout, stored, indices).Decode();
}

}  // namespace kawin
