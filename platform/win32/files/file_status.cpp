#include "file_status.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/sysmacros.h>

#include <algorithm>

#include "descriptor.h"

namespace kawin {
namespace {

constexpr LONGLONG kStepsPerSecond = 10'000'000;
constexpr LONGLONG kNanosecondsPerStep = 100;
constexpr LONGLONG kUnixEpoch = 11'644'473'600;    // seconds from 1601 to 1970
constexpr ULONGLONG kStatusBlock = 512;            // what stx_blocks counts
constexpr LONGLONG kLastSecond = 922'337'203'684;  // the last whole one that a FILETIME's 63 bits can tell
constexpr mode_t kModeBits = 07777;
constexpr mode_t kAllReadBits = 0444;
constexpr mode_t kAllWriteBits = 0222;
constexpr mode_t kOwnerWrites = 0200;

timespec Native(const statx_timestamp& time) {
    return {static_cast<time_t>(time.tv_sec), static_cast<long>(time.tv_nsec)};
}

bool LeadsToFolder(int folder, const char* name) {
    struct stat target;
    return name[0] != '\0' && fstatat(folder, name, &target, 0) == 0 && S_ISDIR(target.st_mode);
}

DWORD AttributesOf(int folder, const char* name, mode_t mode) {
    DWORD attributes = 0;
    if (S_ISLNK(mode)) {  // a link's own mode says nothing
        attributes = FILE_ATTRIBUTE_REPARSE_POINT | (LeadsToFolder(folder, name) ? FILE_ATTRIBUTE_DIRECTORY : 0);
    } else {
        attributes = ((mode & kAllWriteBits) == 0 ? FILE_ATTRIBUTE_READONLY : 0) | (S_ISDIR(mode) ? FILE_ATTRIBUTE_DIRECTORY : 0);
    }
    return attributes == 0 ? FILE_ATTRIBUTE_NORMAL : attributes;
}

FILETIME CreationTime(const struct statx& known) {
    if ((known.stx_mask & STATX_BTIME) != 0) {
        return ToFileTime(Native(known.stx_btime));
    }
    const FILETIME changed = ToFileTime(Native(known.stx_ctime));
    const FILETIME written = ToFileTime(Native(known.stx_mtime));
    return FileTimeValue(changed) < FileTimeValue(written) ? changed : written;
}

// The process's mask, asked for in a way that does not change it for a moment, as umask() would.
mode_t CreationMask() {
    constexpr unsigned kUsualMask = 022;
    unsigned mask = kUsualMask;
    if (FILE* const status = fopen("/proc/self/status", "re")) {
        char line[256];
        while (fgets(line, sizeof line, status) != nullptr && sscanf(line, "Umask: %o", &mask) != 1) {
        }
        fclose(status);
    }
    return mask;
}

mode_t Writable(mode_t mode) {
    if ((mode & kAllWriteBits) != 0) {
        return mode;
    }
    return mode | kOwnerWrites | (((mode & kAllReadBits) >> 1) & ~CreationMask());
}

timespec TimeToSet(const FILETIME* time) {
    const LONGLONG value = time == nullptr ? 0 : FileTimeValue(*time);
    return value == 0 || value == -1 ? timespec{0, UTIME_OMIT} : FromFileTime(*time);
}

}  // namespace

bool StatAt(int folder, const char* name, FileStatus& status) noexcept {
    struct statx known;
    constexpr int kFlags = AT_SYMLINK_NOFOLLOW | AT_EMPTY_PATH | AT_NO_AUTOMOUNT;
    if (statx(folder, name, kFlags, STATX_BASIC_STATS | STATX_BTIME, &known) != 0) {
        return false;
    }
    status.attributes = AttributesOf(folder, name, known.stx_mode);
    status.reparse_tag = S_ISLNK(known.stx_mode) ? IO_REPARSE_TAG_SYMLINK : 0;
    status.size = S_ISREG(known.stx_mode) ? known.stx_size : 0;
    status.allocated = S_ISREG(known.stx_mode) ? known.stx_blocks * kStatusBlock : 0;
    status.created = CreationTime(known);
    status.accessed = ToFileTime(Native(known.stx_atime));
    status.written = ToFileTime(Native(known.stx_mtime));
    status.changed = ToFileTime(Native(known.stx_ctime));
    status.links = known.stx_nlink;
    status.mode = known.stx_mode;
    status.device = makedev(known.stx_dev_major, known.stx_dev_minor);
    status.index = known.stx_ino;
    return true;
}

bool ApplyTimes(int fd, const FILETIME* accessed, const FILETIME* written) noexcept {
    const timespec times[] = {TimeToSet(accessed), TimeToSet(written)};
    return utimensat(AT_FDCWD, DescriptorName(fd).text, times, 0) == 0;
}

FILETIME ToFileTime(const timespec& time) noexcept {
    const LONGLONG seconds = std::clamp<LONGLONG>(time.tv_sec, -kUnixEpoch, kLastSecond - kUnixEpoch) + kUnixEpoch;
    return FileTimeOf(seconds * kStepsPerSecond + time.tv_nsec / kNanosecondsPerStep);
}

timespec FromFileTime(const FILETIME& time) noexcept {
    const LONGLONG value = FileTimeValue(time);
    return {static_cast<time_t>(value / kStepsPerSecond - kUnixEpoch),
            static_cast<long>(value % kStepsPerSecond * kNanosecondsPerStep)};
}

bool ApplyReadOnly(int fd, mode_t mode, bool read_only) noexcept {
    const mode_t wanted = (read_only ? mode & ~kAllWriteBits : Writable(mode)) & kModeBits;
    return wanted == (mode & kModeBits) || chmod(DescriptorName(fd).text, wanted) == 0;
}

}  // namespace kawin
