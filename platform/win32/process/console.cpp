#include "console.h"

#include "../base/error.h"
#include "../text/code_pages.h"

BOOL SetConsoleOutputCP(UINT code_page) noexcept {
    if (code_page != CP_UTF8) {
        SetLastError(ERROR_NOT_SUPPORTED);
        return FALSE;
    }
    return TRUE;
}
