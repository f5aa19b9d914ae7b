#pragma once

// Handles: what CloseHandle closes.

#include "error.h"

// Closes a file, event, mutex, mapping or process handle. FALSE with ERROR_INVALID_HANDLE for anything else, a handle already
// closed included; the pseudo handle of the current process is accepted and stays.
KADATA_API BOOL CloseHandle(HANDLE handle) noexcept;

KADATA_API HANDLE GetCurrentProcess() noexcept;
