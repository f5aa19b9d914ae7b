#include "error_map.h"

#include <algorithm>
#include <cerrno>
#include <iterator>

namespace kawin {
namespace {

struct Row {
    int from;
    DWORD to;
};

constexpr Row kRows[] = {
    {0, ERROR_SUCCESS},
    {EPERM, ERROR_ACCESS_DENIED},
    {ENOENT, ERROR_FILE_NOT_FOUND},
    {EINTR, ERROR_OPERATION_ABORTED},
    {EIO, ERROR_IO_DEVICE},
    {ENXIO, ERROR_NOT_READY},
    {EBADF, ERROR_INVALID_HANDLE},
    {EAGAIN, ERROR_LOCK_VIOLATION},
    {ENOMEM, ERROR_NOT_ENOUGH_MEMORY},
    {EACCES, ERROR_ACCESS_DENIED},
    {EFAULT, ERROR_NOACCESS},
    {EBUSY, ERROR_BUSY},
    {EEXIST, ERROR_ALREADY_EXISTS},
    {EXDEV, ERROR_NOT_SAME_DEVICE},
    {ENODEV, ERROR_NOT_READY},
    {ENOTDIR, ERROR_PATH_NOT_FOUND},
    {EISDIR, ERROR_ACCESS_DENIED},
    {EINVAL, ERROR_INVALID_PARAMETER},
    {ENFILE, ERROR_NO_SYSTEM_RESOURCES},
    {EMFILE, ERROR_TOO_MANY_OPEN_FILES},
    {ETXTBSY, ERROR_SHARING_VIOLATION},
    {EFBIG, ERROR_FILE_TOO_LARGE},
    {ENOSPC, ERROR_DISK_FULL},
    {ESPIPE, ERROR_SEEK},
    {EROFS, ERROR_WRITE_PROTECT},
    {EMLINK, ERROR_TOO_MANY_LINKS},
    {EPIPE, ERROR_BROKEN_PIPE},
    {ENAMETOOLONG, ERROR_FILENAME_EXCED_RANGE},
    {ENOSYS, ERROR_CALL_NOT_IMPLEMENTED},
    {ENOTEMPTY, ERROR_DIR_NOT_EMPTY},
    {ELOOP, ERROR_CANT_RESOLVE_FILENAME},
    {EOVERFLOW, ERROR_FILE_TOO_LARGE},
    {EOPNOTSUPP, ERROR_NOT_SUPPORTED},
    {EDQUOT, ERROR_DISK_FULL},
    {ENOMEDIUM, ERROR_NOT_READY},
    {ESTALE, ERROR_INVALID_HANDLE},
};

}  // namespace

DWORD ErrorFromErrno(int error) noexcept {
    const auto row = std::find_if(std::begin(kRows), std::end(kRows), [error](const Row& r) { return r.from == error; });
    return row == std::end(kRows) ? ERROR_GEN_FAILURE : row->to;
}

BOOL FailFromErrno() noexcept {
    return FailFromErrno(errno);
}

BOOL FailFromErrno(int error) noexcept {
    return Fail(ErrorFromErrno(error));
}

BOOL Fail(DWORD error) noexcept {
    SetLastError(error);
    return FALSE;
}

}  // namespace kawin
