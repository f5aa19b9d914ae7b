#pragma once

// Which module is which, and where modules are looked for.

#include "modules.h"

// For LoadLibraryExW: a bare name is looked for beside the executable and where the system keeps libraries, as LoadLibraryW does
// it here anyway; Windows' LoadLibraryW has more places, the current folder among them.
constexpr DWORD LOAD_LIBRARY_SEARCH_DEFAULT_DIRS = 0x00001000;

constexpr DWORD GET_MODULE_HANDLE_EX_FLAG_PIN = 0x00000001;
constexpr DWORD GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT = 0x00000002;
constexpr DWORD GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS = 0x00000004;

// The handle of a loaded module by name as GetModuleHandleW finds it, or with GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS of the one
// that `name` points into. It is counted: it wants one FreeLibrary. Not so with GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
// with GET_MODULE_HANDLE_EX_FLAG_PIN the module stays until the process ends. A shared object that the dynamic linker has brought
// stays too, once it was asked for uncounted. FALSE with ERROR_INVALID_PARAMETER for a null target, unknown flags and PIN
// together with UNCHANGED_REFCOUNT; with ERROR_MOD_NOT_FOUND, and null in *module, when there is no such module.
KADATA_API BOOL GetModuleHandleExW(DWORD flags, LPCWSTR name, HMODULE* module) noexcept;
