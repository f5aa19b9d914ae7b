#pragma once

// What is behind an HRGN.

#include <memory>
#include <utility>

#include "gdi_objects.h"
#include "region_shape.h"
#include "regions.h"

namespace kawin {

class RegionObject : public GdiObject {
public:
    explicit RegionObject(RegionShape pixels) noexcept : shape(std::move(pixels)) {}

    DWORD Type() const noexcept override { return OBJ_REGION; }

    RegionShape shape;
};

// The region behind a handle; null with ERROR_INVALID_HANDLE.
std::shared_ptr<RegionObject> FindRegion(HRGN region) noexcept;

// A handle for a new region; null with ERROR_NOT_ENOUGH_MEMORY.
HRGN AddRegion(RegionShape shape) noexcept;

// As CombineRgn combines by RGN_*; RGN_COPY is the first.
RegionShape Combined(RegionShape first, const RegionShape& second, int mode) noexcept;

// NULLREGION, SIMPLEREGION or COMPLEXREGION.
int RegionKind(const RegionShape& shape) noexcept;

}  // namespace kawin
