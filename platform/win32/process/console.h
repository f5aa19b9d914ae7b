#pragma once

// The character set of the terminal; only what programs need that print UTF-8.

#include <kadata_export.h>

#include "../base/types.h"

// Printed bytes are shown as UTF-8, always: TRUE for CP_UTF8. Every other code page is FALSE, ERROR_NOT_SUPPORTED.
KADATA_API BOOL SetConsoleOutputCP(UINT code_page) noexcept;
