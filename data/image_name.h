#pragma once

// The name of a picture that tells none of its own. Internal to the library.

#include <kadata/directory.h>

namespace kadata {

inline CString ImageNameOf(const CString& path) {
    return CDirectory::CreateFileNameForDisplay(CDirectory::SplitFileNameWithoutExtensionFromPath(path));
}

}  // namespace kadata
