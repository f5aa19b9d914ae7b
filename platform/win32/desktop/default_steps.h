#pragma once

// Parts of the default procedure that have a file of their own. Without the lock held.

#include "window_messages.h"

namespace kawin {

// WM_SETCURSOR: the class's cursor over the client area, an arrow or a sizing cursor over the frame.
LRESULT ShowCursorOf(HWND window, int hit);

// WM_PRINT, `parts` being PRF_*.
void PrintTree(HWND window, HDC context, LPARAM parts);

// WM_WINDOWPOSCHANGING: a sizing window stays within WM_GETMINMAXINFO's limits.
void LimitPosition(HWND window, WINDOWPOS& position);

// WM_SYSKEYDOWN, WM_SYSKEYUP, WM_SYSCHAR, WM_KEYUP: Alt+F4, F10, Alt, Alt+Space, Shift+F10. False: it means nothing.
bool SystemKey(HWND window, UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result);

}  // namespace kawin
