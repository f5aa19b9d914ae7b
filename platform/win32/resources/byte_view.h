#pragma once

// Bounded little-endian reads from bytes that nobody has checked.

#include <cstddef>
#include <optional>
#include <span>

#include "../base/types.h"

namespace kawin {

// `count` bytes at `offset`; nothing when the file ends before.
inline std::optional<std::span<const std::byte>> Slice(std::span<const std::byte> file, std::size_t offset,
                                                       std::size_t count) noexcept {
    if (offset > file.size() || count > file.size() - offset) {
        return std::nullopt;
    }
    return file.subspan(offset, count);
}

inline std::optional<WORD> Word(std::span<const std::byte> file, std::size_t offset) noexcept {
    const auto bytes = Slice(file, offset, 2);
    return bytes ? std::optional<WORD>(
                       static_cast<WORD>(std::to_integer<unsigned>((*bytes)[0]) | (std::to_integer<unsigned>((*bytes)[1]) << 8)))
                 : std::nullopt;
}

inline std::optional<DWORD> Dword(std::span<const std::byte> file, std::size_t offset) noexcept {
    const auto low = Word(file, offset);
    const auto high = low ? Word(file, offset + 2) : std::nullopt;
    return high ? std::optional<DWORD>(*low | (DWORD{*high} << 16)) : std::nullopt;
}

}  // namespace kawin
