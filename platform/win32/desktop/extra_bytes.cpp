#include "extra_bytes.h"

#include <cstring>

#include "../base/error_map.h"

namespace kawin {
namespace {

template <class T>
ULONG_PTR Swap(BYTE* at, const LONG_PTR* replacement) noexcept {
    T value;
    std::memcpy(&value, at, sizeof value);
    if (replacement != nullptr) {
        const T next = static_cast<T>(*replacement);
        std::memcpy(at, &next, sizeof next);
    }
    return static_cast<ULONG_PTR>(static_cast<LONG_PTR>(value));
}

}  // namespace

ULONG_PTR ExtraValue(std::vector<BYTE>& bytes, int offset, std::size_t width, const LONG_PTR* replacement) noexcept {
    if (offset < 0 || static_cast<std::size_t>(offset) + width > bytes.size()) {
        return static_cast<ULONG_PTR>(Fail(ERROR_INVALID_INDEX));
    }
    BYTE* const at = bytes.data() + offset;
    switch (width) {
        case sizeof(WORD):
            return Swap<WORD>(at, replacement);
        case sizeof(LONG):
            return Swap<LONG>(at, replacement);
        default:
            return Swap<LONG_PTR>(at, replacement);
    }
}

}  // namespace kawin
