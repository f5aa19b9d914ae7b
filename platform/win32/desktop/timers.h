#pragma once

// Timers: WM_TIMER in the queue of the thread that set them, when nothing else is there.
//
// A timer that is due several times before its message is retrieved gives one message. Times are milliseconds; below
// USER_TIMER_MINIMUM and above USER_TIMER_MAXIMUM they become these.

#include "message_queue.h"

constexpr UINT USER_TIMER_MINIMUM = 0x0000000A;
constexpr UINT USER_TIMER_MAXIMUM = 0x7FFFFFFF;

// Called by DispatchMessageW in place of the window's procedure. `time` is GetTickCount's.
using TIMERPROC = void(CALLBACK*)(HWND window, UINT message, UINT_PTR id, DWORD time);

// Sets timer `id` of a window, anew when it is set already; for a null window makes a new one, or sets `id` anew when that is
// one. The window must belong to the calling thread, else ERROR_INVALID_WINDOW_HANDLE (or ERROR_ACCESS_DENIED). The timer's
// number (never 0), 0 on failure.
KADATA_API UINT_PTR SetTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC procedure) noexcept;

// Its messages that are not retrieved yet go too. FALSE with ERROR_INVALID_PARAMETER when there is no such timer.
KADATA_API BOOL KillTimer(HWND window, UINT_PTR id) noexcept;
