#include "file_opening.h"

#include <errno.h>
#include <fcntl.h>

#include "../base/error_map.h"
#include "path_error.h"
#include "share_modes.h"

namespace kawin {
namespace {

constexpr DWORD kReading = FILE_READ_DATA | FILE_EXECUTE;
constexpr DWORD kWriting = FILE_WRITE_DATA | FILE_APPEND_DATA;
constexpr mode_t kAllWriteBits = 0222;

FileKind KindOf(mode_t mode) {
    switch (mode & S_IFMT) {
        case S_IFREG:
            return FileKind::file;
        case S_IFDIR:
            return FileKind::folder;
        case S_IFLNK:
            return FileKind::link;
        default:
            return FileKind::device;
    }
}

class Opening {
public:
    Opening(int folder, const std::string& name, const OpenRequest& request)
        : folder_(folder),
          name_(name),
          request_(request),
          truncates_(request.disposition == CREATE_ALWAYS || request.disposition == TRUNCATE_EXISTING) {}

    OpenResult Run() {
        OpenResult result;
        result.error = OpenOrCreate();
        result.error = result.error != ERROR_SUCCESS ? result.error : Examine();
        result.error = result.error != ERROR_SUCCESS ? result.error : Settle();
        result.existed = !created_;
        result.refused_folder = refused_folder_;
        if (result.error == ERROR_SUCCESS) {
            result.file = MakeObject<FileObject>(std::move(fd_), KindOf(status_.st_mode), request_.access);
            if (leads_to_folder_) {
                result.file->LeadsToFolder();
            }
        }
        return result;
    }

private:
    bool Has(DWORD rights) const { return (request_.access & rights) != 0; }
    bool Writes() const { return Has(kWriting) || truncates_; }

    int CommonFlags() const {
        const bool only_appends = Has(FILE_APPEND_DATA) && !Has(FILE_WRITE_DATA);
        return O_CLOEXEC | O_NOCTTY | O_NONBLOCK | (request_.follow_links ? 0 : O_NOFOLLOW) | (only_appends ? O_APPEND : 0) |
               (request_.write_through ? O_DSYNC : 0);
    }

    bool Open(int flags) {
        const mode_t mode = request_.read_only ? request_.mode & ~kAllWriteBits : request_.mode;
        do {
            fd_ = UniqueFd(openat(folder_, name_.c_str(), flags, mode));
        } while (!fd_ && errno == EINTR);
        return static_cast<bool>(fd_);
    }

    bool OpenWithoutContents() { return Open(O_PATH | O_CLOEXEC | (request_.follow_links ? 0 : O_NOFOLLOW)); }

    // Readable even where only writing or deleting is asked for, because share modes need that; but not at the price of failing.
    bool OpenWithContents() {
        if (Writes()) {
            return Open(CommonFlags() | O_RDWR) || (errno == EACCES && !Has(kReading) && Open(CommonFlags() | O_WRONLY)) ||
                   (errno == EISDIR && Open(CommonFlags() | O_RDONLY));
        }
        return Open(CommonFlags() | O_RDONLY) || (!Has(kReading) && errno != ENOENT && OpenWithoutContents());
    }

    bool OpenExisting() {
        if (!Writes() && !Has(kReading | DELETE)) {
            return OpenWithoutContents();
        }
        return OpenWithContents() || (errno == ELOOP && !request_.follow_links && OpenWithoutContents());
    }

    bool Create(int exclusive) {
        const bool writes = Writes();
        created_ = Open(CommonFlags() | O_CREAT | exclusive | (writes ? O_RDWR : O_RDONLY));
        return created_;
    }

    // Nobody can tell in one call whether O_CREAT met a file. A link that leads nowhere is there for O_EXCL and not for a plain
    // open; what it leads to is created.
    bool OpenOrCreateAlways() {
        constexpr int kRaces = 8;
        for (int i = 0; i < kRaces; ++i) {
            if (OpenExisting()) {
                return true;
            }
            if (errno != ENOENT) {
                return false;
            }
            if (Create(O_EXCL)) {
                return true;
            }
            if (errno != EEXIST) {
                return false;
            }
        }
        return Create(0);
    }

    DWORD OpenOrCreate() {
        switch (request_.disposition) {
            case CREATE_NEW:
                if (Create(O_EXCL)) {
                    return ERROR_SUCCESS;
                }
                return errno == EEXIST ? ERROR_FILE_EXISTS : Failure();
            case CREATE_ALWAYS:
            case OPEN_ALWAYS:
                return OpenOrCreateAlways() ? ERROR_SUCCESS : Failure();
            default:
                return OpenExisting() ? ERROR_SUCCESS : Failure();
        }
    }

    DWORD Failure() const { return folder_ == AT_FDCWD ? ErrorForPath(name_, errno) : ErrorFromErrno(errno); }

    // Whether it is what was asked for.
    DWORD Examine() {
        if (fstat(fd_.get(), &status_) != 0) {
            return ErrorFromErrno(errno);
        }
        struct stat target;
        leads_to_folder_ =
            S_ISLNK(status_.st_mode) && fstatat(folder_, name_.c_str(), &target, 0) == 0 && S_ISDIR(target.st_mode);
        const bool is_folder = S_ISDIR(status_.st_mode) || leads_to_folder_;
        refused_folder_ = is_folder && request_.wanted == WantedKind::no_folder;
        if (!is_folder && request_.wanted == WantedKind::folder) {
            return ERROR_DIRECTORY;
        }
        const bool truncates_no_file = truncates_ && (is_folder || S_ISLNK(status_.st_mode));
        const bool is_read_only = S_ISREG(status_.st_mode) && (status_.st_mode & kAllWriteBits) == 0;
        const bool refused = refused_folder_ || truncates_no_file || (is_read_only && Writes() && !created_);
        return refused ? ERROR_ACCESS_DENIED : ERROR_SUCCESS;
    }

    // Enters the share mode, and only then touches the contents.
    DWORD Settle() {
        if (!S_ISREG(status_.st_mode)) {
            return ERROR_SUCCESS;
        }
        const DWORD access = request_.access | (truncates_ ? FILE_WRITE_DATA : 0);
        if (!ClaimShare(fd_.get(), access, request_.share)) {
            return ERROR_SHARING_VIOLATION;
        }
        if (!truncates_ || created_) {
            return ERROR_SUCCESS;
        }
        const bool done = ftruncate(fd_.get(), 0) == 0 && (request_.disposition != CREATE_ALWAYS ||
                                                           ApplyReadOnly(fd_.get(), status_.st_mode, request_.read_only));
        return done ? ERROR_SUCCESS : ErrorFromErrno(errno);
    }

    const int folder_;
    const std::string& name_;
    const OpenRequest& request_;
    const bool truncates_;
    UniqueFd fd_;
    struct stat status_ {};
    bool created_ = false;
    bool leads_to_folder_ = false;
    bool refused_folder_ = false;
};

}  // namespace

DWORD SpecificAccess(DWORD access) noexcept {
    constexpr DWORD kReadAll = FILE_READ_DATA | FILE_READ_ATTRIBUTES;
    constexpr DWORD kWriteAll = FILE_WRITE_DATA | FILE_APPEND_DATA | FILE_WRITE_ATTRIBUTES;
    constexpr DWORD kExecuteAll = FILE_EXECUTE | FILE_READ_ATTRIBUTES;
    return access | ((access & GENERIC_READ) != 0 ? kReadAll : 0) | ((access & GENERIC_WRITE) != 0 ? kWriteAll : 0) |
           ((access & GENERIC_EXECUTE) != 0 ? kExecuteAll : 0) | ((access & GENERIC_ALL) != 0 ? FILE_ALL_ACCESS : 0);
}

OpenResult OpenNative(int folder, const std::string& name, const OpenRequest& request) {
    return Opening(folder, name, request).Run();
}

}  // namespace kawin
