#pragma once

// Drive letters: C: is the root of the file system, removable media have the letters from D: on in the order in which they were
// mounted, and KADATA_DRIVES ("E=/mnt/x;F=/y") adds or overrides letters. Internal to the layer. Safe from every thread.

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "../base/types.h"

namespace kawin {

// Native folder of a letter (either case) without trailing slash; "" for C:. Empty when there is no such drive.
std::optional<std::string> DriveRoot(WCHAR letter);

// The letter (upper case) whose root is the longest one that holds the absolute `native_path`; C when no other does.
// `root_length`, when given, receives that root's length, 0 for C.
WCHAR DriveOf(std::string_view native_path, std::size_t* root_length = nullptr);

struct Drive {
    WCHAR letter = 0;         // upper case
    std::string root;         // as DriveRoot gives it
    std::string device;       // "/dev/sdb1", or what the kernel names as source; empty when nothing is known
    std::string device_id;    // "8:17", the device's number
    std::string file_system;  // the kernel's name: "vfat", "ext4"
    bool removable = false;   // its disk says so, or hangs on USB
};

// Letters in ascending order; C: is always there.
using DriveTable = std::vector<Drive>;

// Where the system's knowledge of drives lies. Tests hand in folders of their own.
struct DriveSources {
    std::string mount_info = "/proc/self/mountinfo";
    std::string sysfs = "/sys";
    std::string udev_data = "/run/udev/data";
    std::string disk_links = "/dev/disk";
};

// The table that these mounts (text of a mountinfo file) make; `overrides` is the text of KADATA_DRIVES. Lines and entries that
// cannot be understood are passed over. Each medium has one letter, at its first visible mount point. An override
// reserves its letter, so media move on to the next; C: cannot be overridden, because it is where every path has a name.
DriveTable ReadDriveTable(std::string_view mount_info, const std::string& sysfs, std::string_view overrides);

// The table of now, read again when the mounts, KADATA_DRIVES or the sources have changed. Never null.
std::shared_ptr<const DriveTable> Drives();

// The drive of a letter of either case.
std::optional<Drive> FindDrive(WCHAR letter);

DriveSources CurrentDriveSources();

// Test seam: takes the place of the system's own sources for the whole process, until called again.
KADATA_API void HandInDriveSources(const DriveSources& sources);

}  // namespace kawin
