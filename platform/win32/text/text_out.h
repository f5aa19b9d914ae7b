#pragma once

// The way in which functions of this room hand out a text: into a buffer, or its size for a capacity of 0.

#include <string_view>

#include "../base/error_map.h"

namespace kawin {

inline bool IsTarget(LPCWSTR target, int capacity) noexcept {
    return capacity >= 0 && (capacity == 0 || target != nullptr);
}

// The characters written or needed, terminator included; 0 with ERROR_INSUFFICIENT_BUFFER.
inline int PutText(std::u16string_view text, LPWSTR target, int capacity) noexcept {
    const int needed = static_cast<int>(text.size()) + 1;
    if (capacity == 0) {
        return needed;
    }
    if (capacity < needed) {
        return Fail(ERROR_INSUFFICIENT_BUFFER);
    }
    target[text.copy(target, text.size())] = 0;
    return needed;
}

}  // namespace kawin
