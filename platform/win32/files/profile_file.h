#pragma once

// The file of a profile. Internal to the layer.

#include <optional>
#include <string>

#include "../base/types.h"
#include "descriptor.h"

namespace kawin {

// Open, and locked against the profile functions of every other process, while this lives.
class ProfileFile {
public:
    enum class Use { read, change };

    // Nothing with the last error set. To be changed, a file that is missing is created.
    static std::optional<ProfileFile> Open(LPCWSTR name, Use use);

    // Nothing, FALSE with the last error set.
    std::optional<std::string> Read() const;
    BOOL Replace(const std::string& bytes) const;

private:
    explicit ProfileFile(UniqueFd file) : file_(std::move(file)) {}

    UniqueFd file_;
};

}  // namespace kawin
