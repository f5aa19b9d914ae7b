#pragma once

// Command lines and the arguments in them.

#include "../base/types.h"

// Splits a command line as CreateProcessW does (see process.h). The texts and the list, which ends with null, are one block of
// memory that LocalFree frees. Null on failure. An empty line gives this program's path.
KADATA_API LPWSTR* CommandLineToArgvW(LPCWSTR command_line, int* count) noexcept;
