#include "text_length.h"

#include <emmintrin.h>

#include <bit>
#include <cstdint>

namespace kawin {
namespace {

constexpr std::uintptr_t kBlock = sizeof(__m128i);

// A bit for each byte of a unit that is 0.
__attribute__((no_sanitize("address", "thread"))) unsigned ZerosIn(const __m128i* block) noexcept {
    return static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi16(*block, _mm_setzero_si128())));
}

}  // namespace

// Reads whole aligned blocks, so some bytes around the text too, but never from a page that the text does not touch.
__attribute__((no_sanitize("address", "thread"))) std::size_t TextLength(const char16_t* text) noexcept {
    const auto address = reinterpret_cast<std::uintptr_t>(text);
    if (address % sizeof(char16_t) != 0) {
        std::size_t length = 0;
        while (text[length] != 0) {
            ++length;
        }
        return length;
    }
    const auto* block = reinterpret_cast<const __m128i*>(address - address % kBlock);
    unsigned zeros = ZerosIn(block) >> address % kBlock;
    std::uintptr_t start = address;
    while (zeros == 0) {
        ++block;
        start = reinterpret_cast<std::uintptr_t>(block);
        zeros = ZerosIn(block);
    }
    return (start - address + static_cast<unsigned>(std::countr_zero(zeros))) / sizeof(char16_t);
}

}  // namespace kawin
