#pragma once

// Placing windows. Without the lock held.

#include "window_tree.h"

namespace kawin {

// Further flags of WINDOWPOS, as the system itself tells them in WM_WINDOWPOSCHANGED.
constexpr UINT kNoClientSize = 0x0800;
constexpr UINT kNoClientMove = 0x1000;
constexpr UINT kStateChanged = 0x8000;  // minimised, maximised or restored

// SetWindowPos.
BOOL SetPosition(WINDOWPOS position);

// The screen's rectangle, and the part of it for windows.
RECT ScreenRect() noexcept;
RECT WorkArea() noexcept;

// The sizes that WM_GETMINMAXINFO answers with, for a window of this size and style now.
MINMAXINFO AskMinMax(HWND window);

}  // namespace kawin
