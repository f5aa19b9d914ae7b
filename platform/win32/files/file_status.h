#pragma once

// What the kernel tells of a file, in the system's terms, with one call per file (two for a link). Internal to the layer.

#include <sys/stat.h>
#include <time.h>

#include "../base/types.h"
#include "attributes.h"

namespace kawin {

struct FileStatus {
    DWORD attributes = 0;
    DWORD reparse_tag = 0;    // IO_REPARSE_TAG_SYMLINK for a link
    ULONGLONG size = 0;       // bytes; 0 for everything but regular files
    ULONGLONG allocated = 0;  // bytes on the medium
    FILETIME created{};
    FILETIME accessed{};
    FILETIME written{};
    FILETIME changed{};  // contents or status
    DWORD links = 0;
    mode_t mode = 0;  // as in struct stat
    ULONGLONG device = 0;
    ULONGLONG index = 0;  // with `device` what the file is, whatever its name
};

// Of `name` in the folder `folder` (AT_FDCWD: a native path), a link itself; with an empty name, of what the descriptor `folder`
// is open on, O_PATH included. False with errno set.
bool StatAt(int folder, const char* name, FileStatus& status) noexcept;

// Takes away or gives back the write bits of what `fd` is open on, O_PATH included; `mode` is its present one. Those who
// may read get the right back, group and others as far as the process's mask allows. False with errno set.
bool ApplyReadOnly(int fd, mode_t mode, bool read_only) noexcept;

// Sets the times of what `fd` is open on, O_PATH included; null, 0 and -1 leave a time as it is. False with errno set, EINVAL for
// other negative values.
bool ApplyTimes(int fd, const FILETIME* accessed, const FILETIME* written) noexcept;

// The system's time for a native one and back. Times before 1601 become 0.
FILETIME ToFileTime(const timespec& time) noexcept;
timespec FromFileTime(const FILETIME& time) noexcept;

constexpr LONGLONG FileTimeValue(const FILETIME& time) {
    return static_cast<LONGLONG>((static_cast<ULONGLONG>(time.dwHighDateTime) << 32) | time.dwLowDateTime);
}

constexpr FILETIME FileTimeOf(LONGLONG value) {
    return {static_cast<DWORD>(static_cast<ULONGLONG>(value) & 0xFFFFFFFF),
            static_cast<DWORD>(static_cast<ULONGLONG>(value) >> 32)};
}

}  // namespace kawin
