#pragma once

// The clipboard.
//
// It holds one block of the global heap for each format. Text (CF_UNICODETEXT) is shared with other programs while a display is
// open and the thread that serves it, that of the user interface, uses the clipboard; other formats stay in the process, and all
// do off screen. Nothing is converted from one format into another, and nothing rendered late.

#include "../base/error.h"
#include "../base/types.h"
#include "../process/global_memory.h"

constexpr UINT CF_TEXT = 1;
constexpr UINT CF_BITMAP = 2;
constexpr UINT CF_UNICODETEXT = 13;  // with CR and LF at the end of lines, and a terminator

// The clipboard is opened for a window or for none (null), used, and closed by the same thread. FALSE with ERROR_ACCESS_DENIED
// while another window or thread has it open, with ERROR_INVALID_WINDOW_HANDLE for what is no window.
KADATA_API BOOL OpenClipboard(HWND window) noexcept;
// FALSE with ERROR_CLIPBOARD_NOT_OPEN when the thread has not opened it, as all of the following.
KADATA_API BOOL CloseClipboard() noexcept;

// Frees what the clipboard holds; the window that opened it is its owner from now on. The owner before gets
// WM_DESTROYCLIPBOARD.
KADATA_API BOOL EmptyClipboard() noexcept;

// The block is the clipboard's from now on; it must not be locked. Its handle, or null: ERROR_INVALID_HANDLE for null, with
// which other systems promise to render late.
KADATA_API HANDLE SetClipboardData(UINT format, HANDLE data) noexcept;

// The clipboard's block, to be read while the clipboard is open; never to be freed. Null when there is none of the format.
KADATA_API HANDLE GetClipboardData(UINT format) noexcept;

// Does not need the clipboard open.
KADATA_API BOOL IsClipboardFormatAvailable(UINT format) noexcept;

// Null when the clipboard has no owner, or it is gone.
KADATA_API HWND GetClipboardOwner() noexcept;
