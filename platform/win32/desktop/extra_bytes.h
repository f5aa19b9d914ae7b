#pragma once

// The bytes that a class and each of its windows have for their owner.

#include <vector>

#include "../base/types.h"

namespace kawin {

// The value of `width` bytes (2, 4 or 8) at an offset, sign-extended; where `replacement` is not null it is changed. 0 with
// ERROR_INVALID_INDEX for an offset outside.
ULONG_PTR ExtraValue(std::vector<BYTE>& bytes, int offset, std::size_t width, const LONG_PTR* replacement) noexcept;

}  // namespace kawin
