#pragma once

// Messages: each thread's queue, and sending from thread to thread.
//
// A thread has a queue as soon as it uses one. Retrieval looks for messages in this order: those sent by other threads (they are
// delivered inside the call and not returned), posted ones, WM_QUIT, input, WM_PAINT, WM_TIMER. A queue takes 10,000 posted
// messages. Windows belong to the thread that made them, and their procedures only ever run in it.

#include "window_classes.h"

struct MSG {
    HWND hwnd;  // null: posted to the thread
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    DWORD time;  // GetTickCount when it was posted
    POINT pt;    // the pointer then, on the screen
};
using LPMSG = MSG*;
using PMSG = MSG*;

constexpr UINT PM_NOREMOVE = 0x0000;
constexpr UINT PM_REMOVE = 0x0001;
constexpr UINT PM_NOYIELD = 0x0002;

// What a queue holds: GetQueueStatus and MsgWaitForMultipleObjectsEx.
constexpr UINT QS_KEY = 0x0001;
constexpr UINT QS_MOUSEMOVE = 0x0002;
constexpr UINT QS_MOUSEBUTTON = 0x0004;
constexpr UINT QS_POSTMESSAGE = 0x0008;
constexpr UINT QS_TIMER = 0x0010;
constexpr UINT QS_PAINT = 0x0020;
constexpr UINT QS_SENDMESSAGE = 0x0040;
constexpr UINT QS_HOTKEY = 0x0080;
constexpr UINT QS_ALLPOSTMESSAGE = 0x0100;
constexpr UINT QS_RAWINPUT = 0x0400;  // never here, as the next two
constexpr UINT QS_TOUCH = 0x0800;
constexpr UINT QS_POINTER = 0x1000;
constexpr UINT QS_MOUSE = QS_MOUSEMOVE | QS_MOUSEBUTTON;
constexpr UINT QS_INPUT = QS_MOUSE | QS_KEY | QS_RAWINPUT | QS_TOUCH | QS_POINTER;
constexpr UINT QS_ALLEVENTS = QS_INPUT | QS_POSTMESSAGE | QS_TIMER | QS_PAINT | QS_HOTKEY;
constexpr UINT QS_ALLINPUT = QS_ALLEVENTS | QS_SENDMESSAGE;

// The next message of the thread; waits for one. `window` null: of all its windows and the thread itself; (HWND)-1: only those
// without a window; else of that window and its children. `first` and `last` limit the number, both 0 for no limit. WM_QUIT comes
// whatever the limits. 0 for WM_QUIT, -1 with ERROR_INVALID_WINDOW_HANDLE or ERROR_NOACCESS (null `message`), else 1.
KADATA_API BOOL GetMessageW(LPMSG message, HWND window, UINT first, UINT last) noexcept;

// The same without waiting: FALSE when there is none. With PM_NOREMOVE it stays in the queue.
KADATA_API BOOL PeekMessageW(LPMSG message, HWND window, UINT first, UINT last, UINT remove) noexcept;

// Waits until something new has come into the queue since it was last looked at.
KADATA_API BOOL WaitMessage() noexcept;

// Calls the window's procedure, or a timer's, and returns what that returns.
KADATA_API LRESULT DispatchMessageW(const MSG* message) noexcept;

// Posts WM_CHAR or WM_SYSCHAR for a key message that has a character. TRUE for every key message.
KADATA_API BOOL TranslateMessage(const MSG* message) noexcept;

// Puts a message into the queue of the window's thread; a null window is the calling thread. FALSE with
// ERROR_INVALID_WINDOW_HANDLE, ERROR_INVALID_THREAD_ID or ERROR_NOT_ENOUGH_QUOTA (the queue is full). HWND_BROADCAST: to all
// top-level windows.
KADATA_API BOOL PostMessageW(HWND window, UINT message, WPARAM wparam, LPARAM lparam) noexcept;
KADATA_API BOOL PostThreadMessageW(DWORD thread, UINT message, WPARAM wparam, LPARAM lparam) noexcept;

// WM_QUIT with `exit_code` as wparam, once nothing else is posted.
KADATA_API void PostQuitMessage(int exit_code) noexcept;

// Calls the window's procedure and returns its result. For a window of another thread that thread does it, when it next looks
// for messages; the caller waits and meanwhile serves messages that are sent to it. 0 with ERROR_INVALID_WINDOW_HANDLE, and when
// the window or its thread goes away meanwhile.
KADATA_API LRESULT SendMessageW(HWND window, UINT message, WPARAM wparam, LPARAM lparam) noexcept;

// The same, waiting `timeout` milliseconds at most: 0 with ERROR_TIMEOUT. SMTO_BLOCK: nothing is served meanwhile.
constexpr UINT SMTO_NORMAL = 0x0000;
constexpr UINT SMTO_BLOCK = 0x0001;
constexpr UINT SMTO_ABORTIFHUNG = 0x0002;
constexpr UINT SMTO_NOTIMEOUTIFNOTHUNG = 0x0008;
constexpr UINT SMTO_ERRORONEXIT = 0x0020;
KADATA_API LRESULT SendMessageTimeoutW(HWND window, UINT message, WPARAM wparam, LPARAM lparam, UINT flags, UINT timeout,
                                       DWORD_PTR* result) noexcept;

// As SendMessageW to a window of this thread; to another thread's without waiting for the result.
KADATA_API BOOL SendNotifyMessageW(HWND window, UINT message, WPARAM wparam, LPARAM lparam) noexcept;

// Inside a procedure that another thread's message runs in. ReplyMessage gives the sender its result and lets it go on.
KADATA_API BOOL InSendMessage() noexcept;
KADATA_API BOOL ReplyMessage(LRESULT result) noexcept;

// A message number for a name (without regard to case), the same for all that ask; 0xC000 to 0xFFFF. 0 with
// ERROR_NOT_ENOUGH_MEMORY or ERROR_INVALID_PARAMETER for an empty name or one of more than 255 characters.
KADATA_API UINT RegisterWindowMessageW(LPCWSTR name) noexcept;

// Of the message that was last retrieved: GetTickCount when it was posted, and the pointer then as MAKELONG(x, y).
KADATA_API LONG GetMessageTime() noexcept;
KADATA_API DWORD GetMessagePos() noexcept;
KADATA_API LPARAM GetMessageExtraInfo() noexcept;  // always 0

// What came since the last look (low half) and what is there (high half), of the kinds asked for: QS_*.
KADATA_API DWORD GetQueueStatus(UINT kinds) noexcept;

// Waits until an object is signalled (WAIT_OBJECT_0 + index), something of `kinds` is in the queue (WAIT_OBJECT_0 + count) or the
// time is over (WAIT_TIMEOUT). Only what came since the last look counts, unless MWMO_INPUTAVAILABLE is given. At most 63
// objects; for MWMO_WAITALL all objects and the queue at once. WAIT_FAILED with ERROR_INVALID_HANDLE or ERROR_INVALID_PARAMETER.
constexpr DWORD MWMO_WAITALL = 0x0001;
constexpr DWORD MWMO_ALERTABLE = 0x0002;
constexpr DWORD MWMO_INPUTAVAILABLE = 0x0004;
KADATA_API DWORD MsgWaitForMultipleObjectsEx(DWORD count, const HANDLE* objects, DWORD milliseconds, DWORD kinds,
                                             DWORD flags) noexcept;
KADATA_API DWORD MsgWaitForMultipleObjects(DWORD count, const HANDLE* objects, BOOL all, DWORD milliseconds,
                                           DWORD kinds) noexcept;

// Calls a procedure that SetWindowLongPtrW(GWLP_WNDPROC) has returned.
KADATA_API LRESULT CallWindowProcW(WNDPROC procedure, HWND window, UINT message, WPARAM wparam, LPARAM lparam) noexcept;

// Hooks of the calling thread. A hook's procedure is called with a code and the parameters below and must call CallNextHookEx.
// WH_CBT, codes HCBT_*: activation (the window), creation (the window; CBT_CREATEWNDW), destruction, showing sizes; a result
// other than 0 refuses. WH_GETMESSAGE: each retrieved message (PM_*; MSG). WH_MSGFILTER: messages of a dialog's or menu's loop
// (through CallMsgFilterW; a result other than 0 says that it is done with).
constexpr int WH_MSGFILTER = -1;
constexpr int WH_GETMESSAGE = 3;
constexpr int WH_CBT = 5;
constexpr int HC_ACTION = 0;
constexpr int HCBT_CREATEWND = 3;
constexpr int HCBT_DESTROYWND = 4;
constexpr int HCBT_ACTIVATE = 5;
struct CBT_CREATEWNDW {
    CREATESTRUCTW* lpcs;
    HWND hwndInsertAfter;
};
struct HHOOK__;
using HHOOK = HHOOK__*;
using HOOKPROC = LRESULT(CALLBACK*)(int code, WPARAM wparam, LPARAM lparam);

// `thread` must be the calling thread, else ERROR_INVALID_PARAMETER; any other kind is ERROR_INVALID_HOOK_FILTER. Null on
// failure.
KADATA_API HHOOK SetWindowsHookExW(int kind, HOOKPROC procedure, HINSTANCE module, DWORD thread) noexcept;
KADATA_API BOOL UnhookWindowsHookEx(HHOOK hook) noexcept;  // ERROR_INVALID_HOOK_HANDLE
KADATA_API LRESULT CallNextHookEx(HHOOK hook, int code, WPARAM wparam, LPARAM lparam) noexcept;
KADATA_API BOOL CallMsgFilterW(LPMSG message, int code) noexcept;
