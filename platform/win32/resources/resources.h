#pragma once

// Resources of a module: what a resource compiler has put into a PE file or a compiled .res.
//
// A null module is the executable; its resources are in NAME.res beside the executable NAME. Types and names are numbers
// (MAKEINTRESOURCEW), "#" and a decimal number, or texts, which are compared without regard to case. Everything found stays in
// place until its module is freed. Of a damaged file, what can be read is found.

#include "../base/error.h"

inline const LPWSTR RT_CURSOR = reinterpret_cast<LPWSTR>(ULONG_PTR{1});
inline const LPWSTR RT_BITMAP = reinterpret_cast<LPWSTR>(ULONG_PTR{2});
inline const LPWSTR RT_ICON = reinterpret_cast<LPWSTR>(ULONG_PTR{3});
inline const LPWSTR RT_MENU = reinterpret_cast<LPWSTR>(ULONG_PTR{4});
inline const LPWSTR RT_DIALOG = reinterpret_cast<LPWSTR>(ULONG_PTR{5});
inline const LPWSTR RT_STRING = reinterpret_cast<LPWSTR>(ULONG_PTR{6});
inline const LPWSTR RT_RCDATA = reinterpret_cast<LPWSTR>(ULONG_PTR{10});
inline const LPWSTR RT_GROUP_CURSOR = reinterpret_cast<LPWSTR>(ULONG_PTR{12});
inline const LPWSTR RT_GROUP_ICON = reinterpret_cast<LPWSTR>(ULONG_PTR{14});
inline const LPWSTR RT_VERSION = reinterpret_cast<LPWSTR>(ULONG_PTR{16});

// The resource in the user's language, else in a neighbouring dialect of it, else neutral, else English, else the first that
// there is. Null with ERROR_RESOURCE_DATA_NOT_FOUND when the module has no resources at all, ERROR_RESOURCE_TYPE_NOT_FOUND,
// ERROR_RESOURCE_NAME_NOT_FOUND, or ERROR_MOD_NOT_FOUND when the module is not loaded.
KADATA_API HRSRC FindResourceW(HMODULE module, LPCWSTR name, LPCWSTR type) noexcept;

// The same in one language, else in its neutral form, else neutral; ERROR_RESOURCE_LANG_NOT_FOUND when there is none of these.
// Language 0 is FindResourceW.
KADATA_API HRSRC FindResourceExW(HMODULE module, LPCWSTR type, LPCWSTR name, WORD language) noexcept;

// The resource's bytes: LockResource of what LoadResource gives, SizeofResource of them. Null and 0 with ERROR_INVALID_HANDLE for
// a null resource. Nothing is to be freed; FreeResource does nothing and returns FALSE, as documented.
KADATA_API HGLOBAL LoadResource(HMODULE module, HRSRC resource) noexcept;
KADATA_API LPVOID LockResource(HGLOBAL data) noexcept;
KADATA_API DWORD SizeofResource(HMODULE module, HRSRC resource) noexcept;
KADATA_API BOOL FreeResource(HGLOBAL data) noexcept;

// Copies the string `id` and a terminator, cut to the capacity in characters; returns the characters without terminator. With a
// capacity of 0, `target` is the address of a pointer that receives the string itself, read-only and not ended. 0 with the last
// error as FindResourceW sets it; a string that is missing among existing neighbours gives 0 and leaves the last error alone.
// ERROR_INVALID_PARAMETER for a null target or negative capacity, ERROR_BAD_EXE_FORMAT when the table is damaged before the
// string.
KADATA_API int LoadStringW(HINSTANCE module, UINT id, LPWSTR target, int capacity) noexcept;
