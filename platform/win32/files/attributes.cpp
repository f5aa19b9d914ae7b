#include "attributes.h"

#include <errno.h>
#include <fcntl.h>

#include <optional>

#include "../base/path_map.h"
#include "../text/no_throw.h"
#include "descriptor.h"
#include "file_status.h"
#include "path_error.h"

namespace kawin {
namespace {

bool StatusOf(LPCWSTR path, FileStatus& status) {
    const std::optional<std::string> native = ToNativePath(path);
    return native && (StatAt(AT_FDCWD, native->c_str(), status) || FailForPath(*native, errno));
}

BOOL SetAttributes(const std::string& native, DWORD attributes) {
    const UniqueFd file(open(native.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
    FileStatus status;
    if (!file || !StatAt(file.get(), "", status)) {
        return FailForPath(native, errno);
    }
    const bool read_only = (attributes & FILE_ATTRIBUTE_READONLY) != 0;
    if (S_ISLNK(status.mode)) {
        return !read_only || Fail(ERROR_NOT_SUPPORTED);
    }
    return ApplyReadOnly(file.get(), status.mode, read_only) || FailFromErrno();
}

}  // namespace
}  // namespace kawin

DWORD GetFileAttributesW(LPCWSTR path) noexcept {
    kawin::FileStatus status;
    const bool known = kawin::NoThrow([&] { return kawin::StatusOf(path, status); });
    return known ? status.attributes : INVALID_FILE_ATTRIBUTES;
}

BOOL GetFileAttributesExW(LPCWSTR path, GET_FILEEX_INFO_LEVELS level, LPVOID data) noexcept {
    if (level != GetFileExInfoStandard || data == nullptr) {
        return kawin::Fail(ERROR_INVALID_PARAMETER);
    }
    kawin::FileStatus status;
    if (!kawin::NoThrow([&] { return kawin::StatusOf(path, status); })) {
        return FALSE;
    }
    *static_cast<LPWIN32_FILE_ATTRIBUTE_DATA>(data) = {
        status.attributes,
        status.created,
        status.accessed,
        status.written,
        static_cast<DWORD>(status.size >> 32),
        static_cast<DWORD>(status.size & MAXDWORD),
    };
    return TRUE;
}

BOOL SetFileAttributesW(LPCWSTR path, DWORD attributes) noexcept {
    return kawin::NoThrow([=]() -> BOOL {
        const std::optional<std::string> native = kawin::ToNativePath(path);
        return native && kawin::SetAttributes(*native, attributes);
    });
}
