#pragma once

// Owner of a file descriptor, and the kernel's names for one. Internal to the layer.

#include <unistd.h>

#include <string>
#include <utility>

namespace kawin {

class UniqueFd {
public:
    UniqueFd() = default;
    explicit UniqueFd(int adopted) noexcept : fd_(adopted) {}
    UniqueFd(UniqueFd&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    UniqueFd& operator=(UniqueFd&& other) noexcept {
        std::swap(fd_, other.fd_);
        return *this;
    }
    ~UniqueFd() {
        if (fd_ >= 0) {
            close(fd_);
        }
    }
    int get() const noexcept { return fd_; }
    explicit operator bool() const noexcept { return fd_ >= 0; }

private:
    int fd_ = -1;
};

// "/proc/self/fd/N": a name for the very file that a descriptor is open on, for calls that take no O_PATH descriptor.
struct DescriptorName {
    explicit DescriptorName(int fd) noexcept;
    char text[32];
};

// The native path by which the kernel knows the file of a descriptor now. Empty with errno set when it cannot tell.
std::string PathOfDescriptor(int fd);

}  // namespace kawin
