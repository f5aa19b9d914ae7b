#include "descriptor.h"

#include <errno.h>
#include <stdio.h>

namespace kawin {

DescriptorName::DescriptorName(int fd) noexcept {
    snprintf(text, sizeof text, "/proc/self/fd/%d", fd);
}

std::string PathOfDescriptor(int fd) {
    std::string path(256, '\0');
    for (;;) {
        const ssize_t length = readlink(DescriptorName(fd).text, path.data(), path.size());
        if (length < 0) {
            return {};
        }
        if (static_cast<std::size_t>(length) < path.size()) {
            path.resize(static_cast<std::size_t>(length));
            return path;
        }
        path.resize(path.size() * 2);
    }
}

}  // namespace kawin
