#pragma once

// Opening and creating: what CreateFileW and the native calls have in common. Internal to the layer.

#include <string>

#include "file_object.h"

namespace kawin {

enum class WantedKind { any, folder, no_folder };

struct OpenRequest {
    DWORD access = 0;  // specific rights
    DWORD share = 0;
    DWORD disposition = OPEN_EXISTING;
    bool follow_links = true;
    WantedKind wanted = WantedKind::any;
    bool write_through = false;
    mode_t mode = 0666;      // of a file that is created, as far as the process's mask allows
    bool read_only = false;  // the attribute, for a file that is created or cut to nothing
};

struct OpenResult {
    ObjectRef<FileObject> file;  // empty on failure
    DWORD error = 0;             // the error number on failure; a folder where none is wanted is ERROR_ACCESS_DENIED
    bool existed = false;
    bool refused_folder = false;  // with an error: it is a folder (or a link to one), and none was wanted
};

// Specific rights for generic ones.
DWORD SpecificAccess(DWORD access) noexcept;

// Opens `name` in the folder with the descriptor `folder`; with AT_FDCWD the name is a native path. Does not set the last error.
OpenResult OpenNative(int folder, const std::string& name, const OpenRequest& request);

}  // namespace kawin
