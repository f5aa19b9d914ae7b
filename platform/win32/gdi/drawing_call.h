#pragma once

// What the functions that draw have in common: the handle, and that a lack of memory is an error like any other.

#include <new>

#include "../base/error.h"
#include "drawing_context.h"

namespace kawin {

// Calls draw(context); TRUE. FALSE with ERROR_INVALID_HANDLE for what is no context, ERROR_NOT_ENOUGH_MEMORY without memory.
template <class Draw>
BOOL DrawOn(HDC handle, Draw&& draw) noexcept try {
    const auto context = FindContext(handle);
    if (!context) {
        return FALSE;
    }
    draw(*context);
    return TRUE;
} catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return FALSE;
}

}  // namespace kawin
