#pragma once

// Focus, activation, capture, keys and the pointer.
//
// Focus, active window and capture belong to a thread; the functions that set them take a window of the calling thread. The
// active window of one thread is the foreground window.

#include "window_messages.h"

// The window that gets key messages; null for none. Set returns the one before, null also on failure. A disabled or minimised
// window, or one with such a parent, is not taken.
KADATA_API HWND SetFocus(HWND window) noexcept;
KADATA_API HWND GetFocus() noexcept;
KADATA_API HWND SetActiveWindow(HWND window) noexcept;
KADATA_API HWND GetActiveWindow() noexcept;
KADATA_API BOOL SetForegroundWindow(HWND window) noexcept;
KADATA_API HWND GetForegroundWindow() noexcept;

// The window that gets mouse messages wherever the pointer is. WM_CAPTURECHANGED (0; the new window) tells it of the end.
KADATA_API HWND SetCapture(HWND window) noexcept;
KADATA_API HWND GetCapture() noexcept;
KADATA_API BOOL ReleaseCapture() noexcept;

// The pointer, in screen coordinates.
KADATA_API BOOL GetCursorPos(LPPOINT position) noexcept;
KADATA_API BOOL SetCursorPos(int x, int y) noexcept;

// Keys (VK_*): 0x8000 down, 0x0001 toggled. GetKeyState is as of the message last retrieved; GetAsyncKeyState is now, 0x0001
// pressed since it was last asked. 256 bytes with 0x80 and 0x01.
KADATA_API SHORT GetKeyState(int key) noexcept;
KADATA_API SHORT GetAsyncKeyState(int key) noexcept;
KADATA_API BOOL GetKeyboardState(BYTE* state) noexcept;
KADATA_API BOOL SetKeyboardState(BYTE* state) noexcept;

// Asks for WM_MOUSELEAVE (TME_LEAVE) once, or WM_MOUSEHOVER (TME_HOVER) after dwHoverTime milliseconds of rest. TME_NONCLIENT: of
// the frame. TME_CANCEL takes it back; TME_QUERY tells.
constexpr DWORD TME_HOVER = 0x00000001;
constexpr DWORD TME_LEAVE = 0x00000002;
constexpr DWORD TME_NONCLIENT = 0x00000010;
constexpr DWORD TME_QUERY = 0x40000000;
constexpr DWORD TME_CANCEL = 0x80000000;
constexpr DWORD HOVER_DEFAULT = 0xFFFFFFFF;
struct TRACKMOUSEEVENT {
    DWORD cbSize;
    DWORD dwFlags;
    HWND hwndTrack;
    DWORD dwHoverTime;
};
using LPTRACKMOUSEEVENT = TRACKMOUSEEVENT*;
KADATA_API BOOL TrackMouseEvent(LPTRACKMOUSEEVENT track) noexcept;

// Input made by a program, as if the user had.
constexpr DWORD INPUT_MOUSE = 0;
constexpr DWORD INPUT_KEYBOARD = 1;
constexpr DWORD MOUSEEVENTF_MOVE = 0x0001;
constexpr DWORD MOUSEEVENTF_LEFTDOWN = 0x0002;
constexpr DWORD MOUSEEVENTF_LEFTUP = 0x0004;
constexpr DWORD MOUSEEVENTF_RIGHTDOWN = 0x0008;
constexpr DWORD MOUSEEVENTF_RIGHTUP = 0x0010;
constexpr DWORD MOUSEEVENTF_MIDDLEDOWN = 0x0020;
constexpr DWORD MOUSEEVENTF_MIDDLEUP = 0x0040;
constexpr DWORD MOUSEEVENTF_XDOWN = 0x0080;
constexpr DWORD MOUSEEVENTF_XUP = 0x0100;
constexpr DWORD MOUSEEVENTF_WHEEL = 0x0800;
constexpr DWORD MOUSEEVENTF_ABSOLUTE = 0x8000;  // dx, dy: 0 to 65,535 across the screen, else pixels from where the pointer is
constexpr DWORD KEYEVENTF_EXTENDEDKEY = 0x0001;
constexpr DWORD KEYEVENTF_KEYUP = 0x0002;
constexpr DWORD KEYEVENTF_UNICODE = 0x0004;  // wScan is a character: VK_PACKET
constexpr DWORD KEYEVENTF_SCANCODE = 0x0008;
struct MOUSEINPUT {
    LONG dx;
    LONG dy;
    DWORD mouseData;  // wheel: its way; X buttons: XBUTTON1 or XBUTTON2
    DWORD dwFlags;
    DWORD time;  // 0: now
    ULONG_PTR dwExtraInfo;
};
struct KEYBDINPUT {
    WORD wVk;
    WORD wScan;
    DWORD dwFlags;
    DWORD time;
    ULONG_PTR dwExtraInfo;
};
struct HARDWAREINPUT {
    DWORD uMsg;
    WORD wParamL;
    WORD wParamH;
};
struct INPUT {
    DWORD type;
    union {
        MOUSEINPUT mi;
        KEYBDINPUT ki;
        HARDWAREINPUT hi;
    };
};
using LPINPUT = INPUT*;

// The number taken. 0 with ERROR_INVALID_PARAMETER for a wrong size, count 0 or null.
KADATA_API UINT SendInput(UINT count, INPUT* inputs, int size) noexcept;
KADATA_API void mouse_event(DWORD flags, DWORD dx, DWORD dy, DWORD data, ULONG_PTR extra) noexcept;
KADATA_API void keybd_event(BYTE key, BYTE scan, DWORD flags, ULONG_PTR extra) noexcept;

// Whether the left and right buttons are swapped: FALSE.
KADATA_API BOOL SwapMouseButton(BOOL swap) noexcept;
