#pragma once

// Steps of painting that others take, too. Without the lock held.

#include "../gdi/gdi_types.h"

namespace kawin {

void PaintFrameIfDue(HWND window);  // WM_NCPAINT
void EraseIfDue(HWND window);       // WM_ERASEBKGND, for the update region

}  // namespace kawin
