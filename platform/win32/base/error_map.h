#pragma once

// From errno to the system's error numbers: the one table of the layer.

#include "error.h"

namespace kawin {

// The error number that the system gives where this kernel gives `error`. Unknown values become ERROR_GEN_FAILURE.
// ENOENT maps to ERROR_FILE_NOT_FOUND; whoever knows that a folder on the way is missing says ERROR_PATH_NOT_FOUND itself.
DWORD ErrorFromErrno(int error) noexcept;

// Sets the last error from `errno` (or from `error`) and returns FALSE, so that a failing function ends in one line.
BOOL FailFromErrno() noexcept;
BOOL FailFromErrno(int error) noexcept;
BOOL Fail(DWORD error) noexcept;

}  // namespace kawin
