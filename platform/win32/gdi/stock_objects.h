#pragma once

#include <memory>

#include "contexts.h"
#include "gdi_objects.h"

namespace kawin {

// What is selected into a memory context that has no bitmap of its own: one monochrome pixel, which nobody draws on.
HBITMAP StockBitmap() noexcept;

// GetStockObject's object, by its class.
template <class T>
std::shared_ptr<T> StockObject(int index) noexcept {
    return FindGdi<T>(GetStockObject(index));
}

}  // namespace kawin
