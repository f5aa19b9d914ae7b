#pragma once

// What is behind an HBRUSH and an HPEN.

#include <memory>

#include "brushes.h"
#include "gdi_objects.h"
#include "surface.h"

namespace kawin {

class BrushObject : public GdiObject {
public:
    explicit BrushObject(const LOGBRUSH& logical, std::shared_ptr<const Surface> pixels = nullptr) noexcept
        : description(logical), pattern(std::move(pixels)) {}

    DWORD Type() const noexcept override { return OBJ_BRUSH; }
    int Describe(int capacity, void* target) const noexcept override;

    const LOGBRUSH description;
    const std::shared_ptr<const Surface> pattern;  // of BS_PATTERN
    bool of_context = false;                       // DC_BRUSH: the colour is the context's
};

class PenObject : public GdiObject {
public:
    explicit PenObject(const LOGPEN& logical) noexcept : description(logical) {}

    DWORD Type() const noexcept override { return OBJ_PEN; }
    int Describe(int capacity, void* target) const noexcept override;

    const LOGPEN description;
    bool of_context = false;  // DC_PEN
};

}  // namespace kawin
