#include "versions.h"

#include "../base/error_map.h"

BOOL GetVersionExW(LPOSVERSIONINFOW version) noexcept {
    const bool asked = version != nullptr && version->dwOSVersionInfoSize == sizeof(*version);
    return kawin::Fail(asked ? ERROR_CALL_NOT_IMPLEMENTED : ERROR_INSUFFICIENT_BUFFER);
}
