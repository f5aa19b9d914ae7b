#pragma once

// What is behind an HFONT.

#include <memory>

#include "gdi_objects.h"

namespace kawin {

class FontObject : public GdiObject {
public:
    explicit FontObject(const LOGFONTW& logical) noexcept : description(logical) {}

    DWORD Type() const noexcept override { return OBJ_FONT; }
    int Describe(int capacity, void* target) const noexcept override;

    const LOGFONTW description;
};

// The font of a stock number; null for a number that is not a font's, and without memory.
std::shared_ptr<FontObject> MakeStockFont(int index) noexcept;

}  // namespace kawin
