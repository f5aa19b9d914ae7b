#pragma once

// System functions do not throw: running out of memory is one of their failures.

#include <new>
#include <utility>

#include "../base/error.h"

namespace kawin {

// The result of `work`; a value-initialised one (0, FALSE, null) with ERROR_NOT_ENOUGH_MEMORY when memory runs out in it.
template <class Work>
auto NoThrow(Work&& work) noexcept -> decltype(work()) {
    try {
        return std::forward<Work>(work)();
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return {};
    }
}

}  // namespace kawin
