#pragma once

// What a window does with messages that its procedure leaves alone.

#include "window_messages.h"

// To be called in the window's thread. 0 with ERROR_INVALID_WINDOW_HANDLE. In particular:
// - WM_NCCREATE keeps the title; WM_GETTEXT, WM_SETTEXT and WM_GETTEXTLENGTH serve it.
// - WM_WINDOWPOSCHANGED sends WM_SIZE and WM_MOVE.
// - WM_ERASEBKGND fills with the class's brush: 1; 0 without one. WM_PAINT validates everything.
// - WM_CTLCOLOR* gives colours and the brush of the system's face colour.
// - WM_CLOSE destroys the window. WM_PRINT draws the window; WM_SETREDRAW stops and starts its painting.
// - WM_NC* messages and WM_SYSCOMMAND serve a frame that is drawn here.
// - Alt+F4, F10 and Alt with a letter become WM_SYSCOMMAND; the wheel, WM_CONTEXTMENU and WM_HELP go to the parent.
KADATA_API LRESULT DefWindowProcW(HWND window, UINT message, WPARAM wparam, LPARAM lparam) noexcept;
