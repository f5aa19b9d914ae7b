#pragma once

#include <memory>

#include "../gdi/gdi_types.h"
#include "pixel_store.h"

namespace kawin {

// A part (which lies inside) in any of the formats; null without memory.
std::shared_ptr<PixelStore> CopyPart(const PixelStore& store, const RECT& part, Gdiplus::PixelFormat format) noexcept;

std::shared_ptr<PixelStore> CopyWhole(const PixelStore& store) noexcept;

}  // namespace kawin
