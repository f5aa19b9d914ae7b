#pragma once

// Sleeping until a value in memory changes, for the threads of one process: what a host builds locks of its own on.

#include "../base/error.h"

// Returns TRUE when the value at `address` differs from the one at `compare`, at once or after a wake-up; it also returns TRUE
// for no reason at all: look again. `size` is 1, 2, 4 or 8 bytes, else FALSE with ERROR_INVALID_PARAMETER. FALSE with
// ERROR_TIMEOUT after `milliseconds`; INFINITE waits for ever.
KADATA_API BOOL WaitOnAddress(volatile void* address, PVOID compare, SIZE_T size, DWORD milliseconds) noexcept;

// Wake one, or all, of the threads that wait on the address. To be called after the value was changed.
KADATA_API void WakeByAddressSingle(PVOID address) noexcept;
KADATA_API void WakeByAddressAll(PVOID address) noexcept;
