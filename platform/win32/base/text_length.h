#pragma once

// The length of a terminated UTF-16 text, eight units at a time.

#include <cstddef>

namespace kawin {

// In units, the terminator not counted.
std::size_t TextLength(const char16_t* text) noexcept;

}  // namespace kawin
