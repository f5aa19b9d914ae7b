#pragma once

// The kernel's path for a system path on C:, for what only the kernel's own calls can do to a file.

#include <algorithm>
#include <string>

#include "temp_folder.h"

namespace test {

inline std::string Native(const Text& path) {
    std::string native = Narrow(path).substr(2);
    std::replace(native.begin(), native.end(), '\\', '/');
    return native;
}

}  // namespace test
