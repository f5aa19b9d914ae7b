#pragma once

// The frame of windows: what DefWindowProcW does about it.

#include "window_messages.h"

namespace kawin {

// True when the message is one of the frame's: WM_NCCALCSIZE, WM_NCHITTEST, WM_NCPAINT, WM_NCACTIVATE, WM_NC*BUTTON*,
// WM_SYSCOMMAND, WM_GETMINMAXINFO ... Then *result is what DefWindowProcW returns. In the window's thread, without a lock.
// WM_SETTEXT and WM_SETICON draw the caption anew once their work is done.
bool DefaultFrame(HWND window, UINT message, WPARAM wparam, LPARAM lparam, LRESULT* result);

// The widths of the frame around a client area, for styles: what AdjustWindowRectEx adds at each side, all 0 or more.
struct FrameWidths {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};
FrameWidths FrameOf(DWORD style, DWORD extended_style) noexcept;

}  // namespace kawin
