#include "profile_file.h"

#include <errno.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <algorithm>
#include <string_view>

#include "../base/error_map.h"
#include "../base/path_map.h"
#include "../base/utf.h"
#include "path_error.h"
#include "xdg.h"

namespace kawin {
namespace {

constexpr LPCWSTR kUsualName = u"win.ini";
constexpr std::u16string_view kFolderMarks = u"\\/:";
constexpr mode_t kEverybody = 0666;
constexpr mode_t kOwnerOnly = 0700;
constexpr off_t kLargest = 64 << 20;  // bytes; what is larger is no profile

std::optional<std::string> NativePath(std::u16string_view name, ProfileFile::Use use) {
    if (name.find_first_of(kFolderMarks) != name.npos) {
        return ToNativePath(std::u16string(name).c_str());
    }
    const std::string folder = XdgFolder("XDG_CONFIG_HOME", ".config") + "/kadata";
    if (use == ProfileFile::Use::change) {
        MakeFolders(folder, kOwnerOnly);  // opening the file tells when that failed
    }
    return ToNativePath((ToSystemPath(folder) + u"\\" + std::u16string(name)).c_str());
}

bool Lock(int file, int operation) {
    int result = -1;
    do {
        result = flock(file, operation);
    } while (result != 0 && errno == EINTR);
    return result == 0 || errno == ENOLCK || errno == EOPNOTSUPP;  // file systems that cannot lock
}

// EISDIR, EINVAL or EFBIG for what cannot be a profile.
int Complaint(const struct stat& status) {
    if (S_ISREG(status.st_mode)) {
        return status.st_size > kLargest ? EFBIG : 0;
    }
    return S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
}

}  // namespace

std::optional<ProfileFile> ProfileFile::Open(LPCWSTR name, Use use) {
    const std::optional<std::string> native = NativePath(name != nullptr ? name : kUsualName, use);
    if (!native) {
        return {};
    }
    const int flags = (use == Use::read ? O_RDONLY : O_RDWR | O_CREAT) | O_CLOEXEC | O_NONBLOCK;
    UniqueFd file(open(native->c_str(), flags, kEverybody));
    if (!file || !Lock(file.get(), use == Use::read ? LOCK_SH : LOCK_EX)) {
        FailForPath(*native, errno);
        return {};
    }
    struct stat status = {};
    const int complaint = fstat(file.get(), &status) == 0 ? Complaint(status) : errno;
    if (complaint != 0) {
        FailFromErrno(complaint);
        return {};
    }
    return ProfileFile(std::move(file));
}

std::optional<std::string> ProfileFile::Read() const {
    std::string bytes;
    for (char block[4096];;) {
        const ssize_t count = pread(file_.get(), block, sizeof block, static_cast<off_t>(bytes.size()));
        if (count == 0) {
            return bytes;
        }
        if (count < 0 && errno != EINTR) {
            FailFromErrno();
            return {};
        }
        bytes.append(block, static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
}

BOOL ProfileFile::Replace(const std::string& bytes) const {
    std::size_t written = 0;
    while (written < bytes.size()) {
        const ssize_t count = pwrite(file_.get(), bytes.data() + written, bytes.size() - written, static_cast<off_t>(written));
        if (count < 0 && errno != EINTR) {
            return FailFromErrno();
        }
        written += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
    }
    return ftruncate(file_.get(), static_cast<off_t>(written)) == 0 || FailFromErrno();
}

}  // namespace kawin
