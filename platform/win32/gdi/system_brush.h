#pragma once

#include "../desktop/colors.h"

namespace kawin {

// Where a brush is asked for, a system colour's number plus 1 may be given: its brush; any other handle as it is.
inline HBRUSH SystemBrushOr(HBRUSH brush) noexcept {
    constexpr ULONG_PTR kMostColors = 31;
    const ULONG_PTR value = reinterpret_cast<ULONG_PTR>(brush);
    return value >= 1 && value <= kMostColors ? GetSysColorBrush(static_cast<int>(value) - 1) : brush;
}

}  // namespace kawin
