#pragma once

// Blocks of the global heap, in which data goes to the clipboard. Any thread.

#include <cstddef>

#include "../base/error.h"
#include "../base/types.h"

constexpr UINT GMEM_FIXED = 0x0000;     // the handle is the address
constexpr UINT GMEM_MOVEABLE = 0x0002;  // the address is what GlobalLock gives
constexpr UINT GMEM_ZEROINIT = 0x0040;
constexpr UINT GHND = GMEM_MOVEABLE | GMEM_ZEROINIT;
constexpr UINT GPTR = GMEM_FIXED | GMEM_ZEROINIT;

// Null with ERROR_NOT_ENOUGH_MEMORY. Other flags are ignored. To be freed by GlobalFree, but for what the clipboard was given.
KADATA_API HGLOBAL GlobalAlloc(UINT flags, std::size_t size) noexcept;

// Null when it was freed; the handle itself, with ERROR_INVALID_HANDLE, when it is none. Locks do not keep a block.
KADATA_API HGLOBAL GlobalFree(HGLOBAL block) noexcept;

// The address, which stays valid until the block is freed, and one lock more. Null with ERROR_INVALID_HANDLE, and with
// ERROR_DISCARDED for a moveable block of no size.
KADATA_API LPVOID GlobalLock(HGLOBAL block) noexcept;

// One lock less: TRUE while there are further ones; FALSE with NO_ERROR for the last one, with ERROR_NOT_LOCKED where there was
// none. Always TRUE for fixed blocks. FALSE with ERROR_INVALID_HANDLE.
KADATA_API BOOL GlobalUnlock(HGLOBAL block) noexcept;

// In bytes; 0 with ERROR_INVALID_HANDLE, and for a moveable block of no size.
KADATA_API std::size_t GlobalSize(HGLOBAL block) noexcept;
