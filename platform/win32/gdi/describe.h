#pragma once

// How GetObjectW hands out a structure.

#include <cstring>

#include "../base/error.h"

namespace kawin {

template <class T>
int DescribeBy(const T& structure, int capacity, void* target) noexcept {
    constexpr int kBytes = static_cast<int>(sizeof(T));
    if (target == nullptr) {
        return kBytes;
    }
    if (capacity < kBytes) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    std::memcpy(target, &structure, sizeof(T));
    return kBytes;
}

}  // namespace kawin
