#pragma once

// Telling a missing file from a missing folder. Internal to the layer.

#include <string>

#include "../base/error_map.h"

namespace kawin {

// The error number for a native path on which a call has failed with `error`: where something is missing, ERROR_FILE_NOT_FOUND
// when the folder is there and only the name is not, else ERROR_PATH_NOT_FOUND.
DWORD ErrorForPath(const std::string& native, int error);

inline BOOL FailForPath(const std::string& native, int error) {
    return Fail(ErrorForPath(native, error));
}

}  // namespace kawin
