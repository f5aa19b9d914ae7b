#include "error.h"

#include <atomic>

namespace {

thread_local DWORD last_error = ERROR_SUCCESS;
std::atomic<UINT> error_mode{0};

}  // namespace

DWORD GetLastError() noexcept {
    return last_error;
}

void SetLastError(DWORD error) noexcept {
    last_error = error;
}

UINT SetErrorMode(UINT mode) noexcept {
    return error_mode.exchange(mode);
}

UINT GetErrorMode() noexcept {
    return error_mode.load();
}
