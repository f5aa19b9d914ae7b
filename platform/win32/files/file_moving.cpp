#include <errno.h>
#include <fcntl.h>
#include <stdio.h>
#include <unistd.h>

#include <memory>
#include <optional>

#include "../base/error_map.h"
#include "../base/path_map.h"
#include "../text/no_throw.h"
#include "file_io.h"
#include "file_opening.h"
#include "path_error.h"

namespace kawin {
namespace {

constexpr DWORD kAllShareModes = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr DWORD kAllMoveFlags = MOVEFILE_REPLACE_EXISTING | MOVEFILE_COPY_ALLOWED | MOVEFILE_WRITE_THROUGH;

// A link itself, with the right to delete it: whoever has the file open without FILE_SHARE_DELETE is an error here.
OpenResult OpenToRemove(const std::string& native, WantedKind wanted) {
    OpenRequest request;
    request.access = DELETE | FILE_READ_ATTRIBUTES;
    request.share = kAllShareModes;
    request.follow_links = false;
    request.wanted = wanted;
    return OpenNative(AT_FDCWD, native, request);
}

bool IsReadOnly(const FileObject& file) {
    FileStatus status;
    return file.Status(status) && (status.attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

DWORD Delete(const std::string& native) {
    OpenResult opened = OpenToRemove(native, WantedKind::no_folder);
    if (opened.error != ERROR_SUCCESS) {
        return opened.error;
    }
    return IsReadOnly(*opened.file) ? ERROR_ACCESS_DENIED : opened.file->Remove();
}

// Whether the target of a move may be taken away by it.
DWORD CheckReplaceable(const std::string& to) {
    const OpenResult target = OpenToRemove(to, WantedKind::no_folder);
    if (target.error == ERROR_FILE_NOT_FOUND) {
        return ERROR_SUCCESS;
    }
    if (target.error == ERROR_SHARING_VIOLATION) {
        return ERROR_ACCESS_DENIED;  // as the system says it of a file that is in use
    }
    return target.error == ERROR_SUCCESS && IsReadOnly(*target.file) ? ERROR_ACCESS_DENIED : target.error;
}

bool Exists(const std::string& native) {
    struct stat status;
    return lstat(native.c_str(), &status) == 0;
}

bool Rename(const std::string& from, const std::string& to, bool replace) {
    if (replace) {
        return rename(from.c_str(), to.c_str()) == 0;
    }
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return true;
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return false;
    }
    if (Exists(to)) {  // the file system cannot refuse by itself
        errno = EEXIST;
        return false;
    }
    return rename(from.c_str(), to.c_str()) == 0;
}

// A rename is on the medium when its folder is. A folder that may not be read is left to the kernel.
bool FlushFolderOf(const std::string& native) {
    const UniqueFd folder(open(native.substr(0, native.rfind('/') + 1).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return !folder || fsync(folder.get()) == 0 || errno == EINVAL;
}

bool WriteWhole(int fd, const char* bytes, std::size_t size) {
    while (size > 0) {
        const ssize_t put = write(fd, bytes, size);
        if (put < 0 && errno != EINTR) {
            return false;
        }
        bytes += put < 0 ? 0 : put;
        size -= put < 0 ? 0 : static_cast<std::size_t>(put);
    }
    return true;
}

// From the positions of both to the end. The kernel copies by itself where it can; what it leaves goes through a buffer.
bool CopyContents(int from, int to) {
    constexpr std::size_t kAtOnce = std::size_t{1} << 30;
    while (copy_file_range(from, nullptr, to, nullptr, kAtOnce, 0) > 0) {
    }
    constexpr std::size_t kBuffer = std::size_t{1} << 17;
    const std::unique_ptr<char[]> buffer(new char[kBuffer]);
    ssize_t got = 0;
    while ((got = read(from, buffer.get(), kBuffer)) != 0) {
        if (got < 0 ? errno != EINTR : !WriteWhole(to, buffer.get(), static_cast<std::size_t>(got))) {
            return false;
        }
    }
    return true;
}

bool IsSameFile(const FileStatus& file, const std::string& native) {
    struct stat other;
    return stat(native.c_str(), &other) == 0 && other.st_dev == file.device && other.st_ino == file.index;
}

OpenRequest TargetRequest(const FileStatus& source, bool keep_existing) {
    constexpr mode_t kRights = 0777;
    OpenRequest request;
    request.access = FILE_WRITE_DATA | FILE_WRITE_ATTRIBUTES | DELETE;
    request.disposition = keep_existing ? CREATE_NEW : CREATE_ALWAYS;
    request.wanted = WantedKind::no_folder;
    request.mode = source.mode & kRights;  // what only its owner may read stays so
    request.read_only = (source.attributes & FILE_ATTRIBUTE_READONLY) != 0;
    return request;
}

DWORD CopyInto(const FileObject& source, const FileStatus& status, const std::string& to, bool keep_existing,
               bool write_through) {
    OpenResult target = OpenNative(AT_FDCWD, to, TargetRequest(status, keep_existing));
    if (target.error != ERROR_SUCCESS) {
        return target.error;
    }
    if (target.file->Kind() != FileKind::file) {
        return ERROR_ACCESS_DENIED;  // a device is not filled, and above all not removed
    }
    const int fd = target.file->Fd();
    if (CopyContents(source.Fd(), fd) && ApplyTimes(fd, nullptr, &status.written) && (!write_through || fsync(fd) == 0)) {
        return ERROR_SUCCESS;
    }
    const DWORD error = ErrorFromErrno(errno);
    target.file->Remove();
    return error;
}

DWORD Copy(const std::string& from, const std::string& to, bool keep_existing, bool write_through) {
    OpenRequest request;
    request.access = FILE_READ_DATA | FILE_READ_ATTRIBUTES;
    request.share = kAllShareModes;
    request.wanted = WantedKind::no_folder;
    const OpenResult source = OpenNative(AT_FDCWD, from, request);
    if (source.error != ERROR_SUCCESS) {
        return source.error;
    }
    FileStatus status;
    if (!source.file->Status(status)) {
        return ErrorFromErrno(errno);
    }
    if (source.file->Kind() != FileKind::file) {
        return ERROR_ACCESS_DENIED;  // a device need not have an end
    }
    if (!keep_existing && IsSameFile(status, to)) {
        return ERROR_SHARING_VIOLATION;
    }
    return CopyInto(*source.file, status, to, keep_existing, write_through);
}

// To another file system.
DWORD MoveByCopy(FileObject& source, const std::string& from, const std::string& to, DWORD flags) {
    if (source.Kind() == FileKind::folder) {
        return ERROR_ACCESS_DENIED;
    }
    if (source.Kind() != FileKind::file) {
        return ERROR_NOT_SAME_DEVICE;
    }
    const bool replace = (flags & MOVEFILE_REPLACE_EXISTING) != 0;
    const DWORD error = Copy(from, to, !replace, (flags & MOVEFILE_WRITE_THROUGH) != 0);
    if (error != ERROR_SUCCESS) {
        return error == ERROR_FILE_EXISTS ? ERROR_ALREADY_EXISTS : error;
    }
    return source.Remove();
}

DWORD MoveError(int error) {
    return error == ENOENT ? ERROR_PATH_NOT_FOUND : ErrorFromErrno(error);  // the source is there, so the folder is not
}

DWORD Move(const std::string& from, const std::string& to, DWORD flags) {
    OpenResult source = OpenToRemove(from, WantedKind::any);
    if (source.error != ERROR_SUCCESS || from == to) {
        return source.error;
    }
    const bool replace = (flags & MOVEFILE_REPLACE_EXISTING) != 0;
    if (replace && source.file->Kind() == FileKind::folder && Exists(to)) {
        return ERROR_ACCESS_DENIED;
    }
    if (const DWORD error = replace ? CheckReplaceable(to) : ERROR_SUCCESS; error != ERROR_SUCCESS) {
        return error;
    }
    if (!Rename(from, to, replace)) {
        const bool copies = errno == EXDEV && (flags & MOVEFILE_COPY_ALLOWED) != 0;
        if (const DWORD error = copies ? MoveByCopy(*source.file, from, to, flags) : MoveError(errno); error != ERROR_SUCCESS) {
            return error;
        }
    }
    const bool flushed = (flags & MOVEFILE_WRITE_THROUGH) == 0 || (FlushFolderOf(to) && FlushFolderOf(from));
    return flushed ? ERROR_SUCCESS : ErrorFromErrno(errno);
}

BOOL Result(DWORD error) {
    return error == ERROR_SUCCESS || Fail(error);
}

}  // namespace
}  // namespace kawin

BOOL DeleteFileW(LPCWSTR path) noexcept {
    return kawin::NoThrow([=]() -> BOOL {
        const std::optional<std::string> native = kawin::ToNativePath(path);
        return native && kawin::Result(kawin::Delete(*native));
    });
}

BOOL MoveFileW(LPCWSTR from, LPCWSTR to) noexcept {
    return MoveFileExW(from, to, MOVEFILE_COPY_ALLOWED);
}

BOOL MoveFileExW(LPCWSTR from, LPCWSTR to, DWORD flags) noexcept {
    return kawin::NoThrow([=]() -> BOOL {
        if ((flags & ~kawin::kAllMoveFlags) != 0) {
            return kawin::Fail(ERROR_INVALID_PARAMETER);
        }
        const std::optional<std::string> source = kawin::ToNativePath(from);
        const std::optional<std::string> target = source ? kawin::ToNativePath(to) : std::nullopt;
        return target && kawin::Result(kawin::Move(*source, *target, flags));
    });
}

BOOL CopyFileW(LPCWSTR from, LPCWSTR to, BOOL keep_existing) noexcept {
    return kawin::NoThrow([=]() -> BOOL {
        const std::optional<std::string> source = kawin::ToNativePath(from);
        const std::optional<std::string> target = source ? kawin::ToNativePath(to) : std::nullopt;
        return target && kawin::Result(kawin::Copy(*source, *target, keep_existing != FALSE, false));
    });
}
