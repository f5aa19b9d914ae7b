#pragma once

// Whether GDI+ has been started.

namespace kawin {

bool IsGdiplusStarted() noexcept;

}  // namespace kawin
