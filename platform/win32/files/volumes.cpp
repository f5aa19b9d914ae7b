#include "volumes.h"

#include <errno.h>
#include <sys/stat.h>
#include <sys/statvfs.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "../base/path_map.h"
#include "../base/utf.h"
#include "../text/no_throw.h"
#include "drive_table.h"
#include "path_error.h"
#include "volume_identity.h"

namespace kawin {
namespace {

constexpr DWORD kSectorBytes = 512;

struct FileSystemName {
    std::string_view kernel;
    const char16_t* system;
};

constexpr FileSystemName kFileSystemNames[] = {
    {"vfat", u"FAT32"},   {"msdos", u"FAT"},   {"ntfs", u"NTFS"},    {"ntfs3", u"NTFS"},
    {"fuseblk", u"NTFS"}, {"exfat", u"exFAT"}, {"iso9660", u"CDFS"}, {"udf", u"UDF"},
};

constexpr std::string_view kRemote[] = {"nfs", "nfs4", "cifs", "smb3",       "smbfs",
                                        "9p",  "ceph", "afs",  "fuse.sshfs", "fuse.glusterfs"};
constexpr std::string_view kInMemory[] = {"tmpfs", "ramfs"};

template <std::size_t size>
bool Among(const std::string_view (&names)[size], std::string_view name) {
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

bool IsSeparator(WCHAR unit) {
    return unit == u'\\' || unit == u'/';
}

// The drive whose root `path` names; "X:" counts as root too. Null is the current directory's drive.
std::optional<Drive> DriveOfRoot(LPCWSTR path, std::optional<std::string>& native) {
    std::u16string text = path == nullptr ? u"\\" : path;
    if (text.size() == 2 && text[1] == u':') {
        text.push_back(u'\\');
    }
    native = ToNativePath(text.c_str());
    if (!native) {
        return std::nullopt;
    }
    std::size_t length = 0;
    const WCHAR letter = DriveOf(*native, &length);
    const std::size_t without_slash = native->back() == '/' ? native->size() - 1 : native->size();
    return length == without_slash ? FindDrive(letter) : std::nullopt;
}

bool IsOptical(const Drive& drive) {
    return drive.device.compare(0, 7, "/dev/sr") == 0;
}

bool IsFolder(const std::string& native) {
    struct stat status;
    return stat(native.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

UINT TypeOf(const Drive& drive) {
    if (!IsFolder(drive.root + "/")) {
        return DRIVE_NO_ROOT_DIR;
    }
    if (IsOptical(drive)) {
        return DRIVE_CDROM;
    }
    if (drive.removable) {
        return DRIVE_REMOVABLE;
    }
    if (Among(kRemote, drive.file_system)) {
        return DRIVE_REMOTE;
    }
    return Among(kInMemory, drive.file_system) ? DRIVE_RAMDISK : DRIVE_FIXED;
}

// Sizes of the file system that holds a folder; null is the current one.
bool ReadSpace(LPCWSTR folder, struct statvfs& space) {
    const std::optional<std::string> native = ToNativePath(folder == nullptr ? u"." : folder);
    if (!native) {
        return false;
    }
    struct stat status;
    if (stat(native->c_str(), &status) != 0 || statvfs(native->c_str(), &space) != 0) {
        return FailForPath(*native, errno) != FALSE;
    }
    return S_ISDIR(status.st_mode) || Fail(ERROR_DIRECTORY) != FALSE;
}

void Give(PULARGE_INTEGER target, ULONGLONG value) {
    if (target != nullptr) {
        target->QuadPart = value;
    }
}

void Give(LPDWORD target, ULONGLONG value) {
    if (target != nullptr) {
        *target = static_cast<DWORD>(value);
    }
}

struct Clusters {
    ULONGLONG sectors_each;
    ULONGLONG free;
    ULONGLONG all;
};

Clusters CountClusters(const struct statvfs& space) {
    Clusters clusters{std::max<ULONGLONG>(space.f_frsize / kSectorBytes, 1), space.f_bavail, space.f_blocks};
    while (clusters.all > MAXDWORD) {
        clusters = {clusters.sectors_each * 2, clusters.free / 2, clusters.all / 2};
    }
    return clusters;
}

std::u16string SystemName(const std::string& file_system) {
    const auto row = std::find_if(std::begin(kFileSystemNames), std::end(kFileSystemNames),
                                  [&file_system](const FileSystemName& name) { return name.kernel == file_system; });
    return row == std::end(kFileSystemNames) ? FromUtf8(file_system) : row->system;
}

DWORD SerialOf(const VolumeIdentity& identity, const struct statvfs& space) {
    const DWORD serial = SerialFromUuid(identity.uuid);
    return serial != 0 ? serial : static_cast<DWORD>(space.f_fsid ^ (space.f_fsid >> 32));
}

DWORD FlagsOf(const struct statvfs& space) {
    constexpr DWORD kAlways = FILE_CASE_SENSITIVE_SEARCH | FILE_CASE_PRESERVED_NAMES | FILE_UNICODE_ON_DISK;
    return kAlways | ((space.f_flag & ST_RDONLY) != 0 ? FILE_READ_ONLY_VOLUME : 0);
}

bool CopyText(const std::u16string& text, LPWSTR target, DWORD size) {
    if (target == nullptr || size == 0) {
        return true;
    }
    if (text.size() >= size) {
        return false;
    }
    target[text.copy(target, text.size())] = u'\0';
    return true;
}

// The drive for GetVolumeInformationW, or none with its error set.
std::optional<Drive> NamedVolume(LPCWSTR root) {
    const std::u16string_view text = root == nullptr ? u"\\" : root;
    if (text.empty() || !IsSeparator(text.back())) {
        Fail(text.empty() ? ERROR_PATH_NOT_FOUND : ERROR_INVALID_NAME);
        return std::nullopt;
    }
    std::optional<std::string> native;
    std::optional<Drive> drive = DriveOfRoot(root, native);
    if (native && !drive) {
        struct stat status;
        Fail(stat(native->c_str(), &status) == 0 ? ERROR_DIR_NOT_ROOT : ErrorForPath(*native, errno));
    }
    return drive;
}

}  // namespace
}  // namespace kawin

DWORD GetLogicalDrives() noexcept {
    return kawin::NoThrow([]() -> DWORD {
        DWORD bits = 0;
        for (const auto drives = kawin::Drives(); const kawin::Drive& drive : *drives) {
            bits |= 1U << (drive.letter - u'A');
        }
        return bits;
    });
}

DWORD GetLogicalDriveStringsW(DWORD size, LPWSTR buffer) noexcept {
    return kawin::NoThrow([=]() -> DWORD {
        std::u16string text;
        for (const auto drives = kawin::Drives(); const kawin::Drive& drive : *drives) {
            text.append({drive.letter, u':', u'\\', u'\0'});
        }
        const auto length = static_cast<DWORD>(text.size());
        if (buffer == nullptr || length >= size) {
            return length + 1;
        }
        buffer[text.copy(buffer, text.size())] = u'\0';
        return length;
    });
}

UINT GetDriveTypeW(LPCWSTR root) noexcept {
    return kawin::NoThrow([=]() -> UINT {
        std::optional<std::string> native;
        const std::optional<kawin::Drive> drive = kawin::DriveOfRoot(root, native);
        return drive ? kawin::TypeOf(*drive) : DRIVE_NO_ROOT_DIR;
    });
}

BOOL GetDiskFreeSpaceExW(LPCWSTR folder, PULARGE_INTEGER free_to_caller, PULARGE_INTEGER total, PULARGE_INTEGER free) noexcept {
    return kawin::NoThrow([=]() -> BOOL {
        struct statvfs space;
        if (!kawin::ReadSpace(folder, space)) {
            return FALSE;
        }
        kawin::Give(free_to_caller, ULONGLONG{space.f_bavail} * space.f_frsize);
        kawin::Give(total, ULONGLONG{space.f_blocks} * space.f_frsize);
        kawin::Give(free, ULONGLONG{space.f_bfree} * space.f_frsize);
        return TRUE;
    });
}

BOOL GetDiskFreeSpaceW(LPCWSTR root, LPDWORD sectors_per_cluster, LPDWORD bytes_per_sector, LPDWORD free_clusters,
                       LPDWORD clusters) noexcept {
    return kawin::NoThrow([=]() -> BOOL {
        struct statvfs space;
        if (!kawin::ReadSpace(root, space)) {
            return FALSE;
        }
        const kawin::Clusters count = kawin::CountClusters(space);
        kawin::Give(sectors_per_cluster, count.sectors_each);
        kawin::Give(bytes_per_sector, kawin::kSectorBytes);
        kawin::Give(free_clusters, count.free);
        kawin::Give(clusters, count.all);
        return TRUE;
    });
}

BOOL GetVolumeInformationW(LPCWSTR root, LPWSTR label, DWORD label_size, LPDWORD serial, LPDWORD longest_name, LPDWORD flags,
                           LPWSTR file_system, DWORD file_system_size) noexcept {
    return kawin::NoThrow([=]() -> BOOL {
        const std::optional<kawin::Drive> drive = kawin::NamedVolume(root);
        if (!drive) {
            return FALSE;
        }
        struct statvfs space;
        if (statvfs((drive->root + "/").c_str(), &space) != 0) {
            return kawin::FailForPath(drive->root + "/", errno);
        }
        const kawin::VolumeIdentity identity = kawin::ReadVolumeIdentity(kawin::CurrentDriveSources(), *drive);
        kawin::Give(serial, kawin::SerialOf(identity, space));
        kawin::Give(longest_name, space.f_namemax);
        kawin::Give(flags, kawin::FlagsOf(space));
        const bool all_fit = kawin::CopyText(kawin::FromFileName(identity.label), label, label_size) &&
                             kawin::CopyText(kawin::SystemName(drive->file_system), file_system, file_system_size);
        return all_fit || kawin::Fail(ERROR_MORE_DATA);
    });
}
