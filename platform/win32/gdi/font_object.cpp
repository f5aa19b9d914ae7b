#include "font_object.h"

#include <algorithm>
#include <cstring>

namespace kawin {

int FontObject::Describe(int capacity, void* target) const noexcept {
    constexpr int kBytes = static_cast<int>(sizeof(LOGFONTW));
    if (target == nullptr) {
        return kBytes;
    }
    const int bytes = std::clamp(capacity, 0, kBytes);
    std::memcpy(target, &description, static_cast<std::size_t>(bytes));
    return bytes;
}

}  // namespace kawin
