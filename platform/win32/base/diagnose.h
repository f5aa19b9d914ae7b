#pragma once

// For the layer's own files: a line for the technician (diagnostics.h, one folder up, says where it goes).

#include <string_view>

namespace kawin {

// Any thread; nothing happens when there is no memory for it.
void Diagnose(std::u16string_view line) noexcept;

}  // namespace kawin
