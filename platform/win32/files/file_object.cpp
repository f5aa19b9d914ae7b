#include "file_object.h"

#include <dirent.h>
#include <errno.h>
#include <fcntl.h>

#include <string_view>
#include <typeinfo>

#include "../base/error_map.h"

namespace kawin {
namespace {

bool IsDot(const char* name) {
    return std::string_view(name) == "." || std::string_view(name) == "..";
}

// 0, ERROR_DIR_NOT_EMPTY, or why the folder cannot be read.
DWORD CheckEmpty(int folder) {
    const int fd = openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    DIR* const listing = fd < 0 ? nullptr : fdopendir(fd);
    if (listing == nullptr) {
        return ErrorFromErrno(errno);
    }
    const dirent* entry = readdir(listing);
    while (entry != nullptr && IsDot(entry->d_name)) {
        entry = readdir(listing);
    }
    closedir(listing);
    return entry == nullptr ? ERROR_SUCCESS : ERROR_DIR_NOT_EMPTY;
}

// Whether this process may take the entry of a file that `owner` owns out of the folder.
DWORD CheckRights(int folder, uid_t owner) {
    struct stat status;
    if (faccessat(folder, ".", W_OK | X_OK, AT_EACCESS) != 0 || fstat(folder, &status) != 0) {
        return ErrorFromErrno(errno);
    }
    const uid_t user = geteuid();
    const bool kept_for_owner = (status.st_mode & S_ISVTX) != 0 && user != 0 && user != owner && user != status.st_uid;
    return kept_for_owner ? ERROR_ACCESS_DENIED : ERROR_SUCCESS;
}

bool Means(const FilePlace& place, int fd) {
    struct stat named;
    struct stat opened;
    return fstatat(place.folder.get(), place.name.c_str(), &named, AT_SYMLINK_NOFOLLOW) == 0 && fstat(fd, &opened) == 0 &&
           named.st_dev == opened.st_dev && named.st_ino == opened.st_ino;
}

}  // namespace

FileObject::~FileObject() {
    if (delete_pending_) {
        Remove();
    }
}

bool FileObject::Status(FileStatus& status) const noexcept {
    if (!StatAt(fd_.get(), "", status)) {
        return false;
    }
    status.attributes |= leads_to_folder_ ? FILE_ATTRIBUTE_DIRECTORY : 0;
    return true;
}

const FilePlace* FileObject::Place() {
    const std::lock_guard lock(place_mutex_);
    if (!place_) {
        const std::string path = PathOfDescriptor(fd_.get());
        const std::size_t slash = path.rfind('/');
        if (slash == std::string::npos || path.size() < 2) {
            errno = ENOENT;
            return nullptr;
        }
        UniqueFd folder(open(path.substr(0, slash + 1).c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
        if (!folder) {
            return nullptr;
        }
        place_ = FilePlace{std::move(folder), path.substr(slash + 1)};
    }
    return &*place_;
}

DWORD FileObject::SetDeletePending(bool pending) {
    struct stat status;
    if (!pending) {
        delete_pending_ = false;
        return ERROR_SUCCESS;
    }
    if (fstat(fd_.get(), &status) != 0) {
        return ErrorFromErrno(errno);
    }
    constexpr mode_t kAllWriteBits = 0222;
    if (kind_ != FileKind::link && (status.st_mode & kAllWriteBits) == 0) {
        return ERROR_ACCESS_DENIED;
    }
    const FilePlace* const place = Place();
    DWORD error = place == nullptr ? ErrorFromErrno(errno) : CheckRights(place->folder.get(), status.st_uid);
    if (error == ERROR_SUCCESS && kind_ == FileKind::folder) {
        error = CheckEmpty(fd_.get());
    }
    delete_pending_ = error == ERROR_SUCCESS;
    return error;
}

DWORD FileObject::Remove() {
    const FilePlace* const place = Place();
    if (place == nullptr) {
        return ErrorFromErrno(errno);
    }
    if (!Means(*place, fd_.get())) {
        return ERROR_SUCCESS;
    }
    const int flags = kind_ == FileKind::folder ? AT_REMOVEDIR : 0;
    return unlinkat(place->folder.get(), place->name.c_str(), flags) == 0 || errno == ENOENT ? ERROR_SUCCESS
                                                                                             : ErrorFromErrno(errno);
}

ObjectRef<FileObject> FindFile(HANDLE handle) noexcept {
    ObjectRef<KernelObject> object = FindObject(handle);
    const KernelObject* const found = object.get();
    if (found != nullptr && typeid(*found) == typeid(FileObject)) {
        return ObjectRef<FileObject>(static_cast<FileObject*>(object.release()));
    }
    SetLastError(ERROR_INVALID_HANDLE);
    return {};
}

}  // namespace kawin
