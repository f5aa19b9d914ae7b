#pragma once

// Menus: a window's system menu, and lists of commands as it is one. Menu bars do not exist.
//
// A handle that is no menu's fails with ERROR_INVALID_MENU_HANDLE. Any thread may use a menu.

#include "../base/error.h"

constexpr UINT MF_BYCOMMAND = 0x0000;
constexpr UINT MF_BYPOSITION = 0x0400;
constexpr UINT MF_STRING = 0x0000;
constexpr UINT MF_SEPARATOR = 0x0800;
constexpr UINT MF_ENABLED = 0x0000;
constexpr UINT MF_GRAYED = 0x0001;
constexpr UINT MF_DISABLED = 0x0002;
constexpr UINT MF_UNCHECKED = 0x0000;
constexpr UINT MF_CHECKED = 0x0008;

KADATA_API HMENU CreatePopupMenu() noexcept;
KADATA_API BOOL DestroyMenu(HMENU menu) noexcept;
KADATA_API BOOL IsMenu(HMENU menu) noexcept;

// The window's own copy of the system menu, for changes; null for a window without WS_SYSMENU. With `revert` the copy is thrown
// away, and the result is null. Greying SC_CLOSE there greys the close box. The window destroys it.
KADATA_API HMENU GetSystemMenu(HWND window, BOOL revert) noexcept;

// `flags` are MF_STRING or MF_SEPARATOR with MF_GRAYED, MF_DISABLED and MF_CHECKED; anything else is ERROR_INVALID_PARAMETER.
// InsertMenuW puts the item before the one that `position` names (MF_BYCOMMAND or MF_BYPOSITION), at the end when there is none
// at that position.
KADATA_API BOOL AppendMenuW(HMENU menu, UINT flags, UINT_PTR id, LPCWSTR text) noexcept;
KADATA_API BOOL InsertMenuW(HMENU menu, UINT position, UINT flags, UINT_PTR id, LPCWSTR text) noexcept;

// Of an item by command or position. FALSE with ERROR_MENU_ITEM_NOT_FOUND when there is none.
KADATA_API BOOL DeleteMenu(HMENU menu, UINT item, UINT flags) noexcept;
KADATA_API BOOL RemoveMenu(HMENU menu, UINT item, UINT flags) noexcept;

// The state before (MF_*), or -1 when there is no such item or menu.
KADATA_API BOOL EnableMenuItem(HMENU menu, UINT item, UINT flags) noexcept;
KADATA_API DWORD CheckMenuItem(HMENU menu, UINT item, UINT flags) noexcept;
KADATA_API UINT GetMenuState(HMENU menu, UINT item, UINT flags) noexcept;

// -1 for what is no menu.
KADATA_API int GetMenuItemCount(HMENU menu) noexcept;
// The command, 0 for a separator; -1 when there is none at that position.
KADATA_API UINT GetMenuItemID(HMENU menu, int position) noexcept;
// Copies at most `capacity` - 1 characters and a terminator; with a null target, the characters there are. 0 on failure.
KADATA_API int GetMenuStringW(HMENU menu, UINT item, LPWSTR target, int capacity, UINT flags) noexcept;
