#pragma once

// The tables behind the code pages: made once per code page, never freed, read without a lock. They are ICU's, mended where the
// system reads a byte otherwise: for the ANSI pages by the "best fit" tables that the Unicode Consortium publishes
// (MAPPINGS/VENDORS/MICSFT/WindowsBestFit), for the OEM, ISO and seven-bit pages, which have none, as MultiByteToWideChar
// answers.

#include <array>
#include <string_view>
#include <vector>

#include "../base/types.h"

namespace kawin {

constexpr char16_t kReplacementUnit = 0xFFFD;

struct CodePage {
    UINT number = 0;
    char16_t unreadable = kReplacementUnit;  // what is read in place of bytes that stand for nothing
    std::array<char16_t, 256> single{};      // kReplacementUnit for a byte that stands for nothing alone
    std::array<bool, 256> lead{};            // all false in a single-byte code page
    std::vector<char16_t> pairs;             // of a double-byte code page, by first byte * 256 + second
    std::vector<std::uint16_t> encode;  // by unit: the byte or the two bytes, the first one high; 0 for none (and for U+0000)

    bool IsDoubleByte() const noexcept { return !pairs.empty(); }
    bool Has(char16_t unit) const noexcept { return unit == 0 || encode[unit] != 0; }
};

// The code page of a number; null when it is not valid, or is UTF-8, which has no table. Throws std::bad_alloc.
const CodePage* FindCodePage(UINT number);

// The nearest character that `page` has, for one that it lacks; 0 when there is none.
char16_t BestFit(const CodePage& page, char16_t unit) noexcept;

}  // namespace kawin
