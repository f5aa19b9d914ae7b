#include "drive_table.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <mutex>

#include "../process/native_environment.h"
#include "block_device.h"

namespace kawin {
namespace {

constexpr std::size_t kLetters = 26;
constexpr std::size_t kFirstMediumLetter = 'D' - 'A';

struct Mount {
    std::string id;
    std::string parent;
    std::string device_id;  // "8:17"
    std::string root;       // the native folder where it is seen, "" for /
    std::string file_system;
    std::string source;
};

// Cuts the text before the next `separator` (or all) off `rest`.
std::string_view Cut(std::string_view& rest, char separator) {
    const std::size_t end = rest.find(separator);
    const std::string_view part = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    return part;
}

bool IsOctal(std::string_view digits) {
    return digits.size() == 3 && digits[0] <= '3' &&
           std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '7'; });
}

// The kernel writes blanks, tabs, line ends and backslashes as \ and three octal digits.
std::string Unescape(std::string_view text) {
    std::string out;
    while (!text.empty()) {
        const std::string_view digits = text.substr(1, 3);
        if (text[0] == '\\' && IsOctal(digits)) {
            out.push_back(static_cast<char>((digits[0] - '0') * 64 + (digits[1] - '0') * 8 + (digits[2] - '0')));
            text.remove_prefix(4);
        } else {
            out.push_back(text[0]);
            text.remove_prefix(1);
        }
    }
    return out;
}

std::string WithoutTrailingSlash(std::string path) {
    while (!path.empty() && path.back() == '/') {
        path.pop_back();
    }
    return path;
}

// id parent device root point options [tags ...] - type source options
std::optional<Mount> ParseMount(std::string_view line) {
    Mount mount;
    mount.id = Cut(line, ' ');
    mount.parent = Cut(line, ' ');
    mount.device_id = Cut(line, ' ');
    Cut(line, ' ');
    const std::string point = Unescape(Cut(line, ' '));
    while (!line.empty() && Cut(line, ' ') != "-") {
    }
    mount.file_system = Cut(line, ' ');
    mount.source = Unescape(Cut(line, ' '));
    if (point.empty() || point[0] != '/' || mount.file_system.empty()) {
        return std::nullopt;
    }
    mount.root = WithoutTrailingSlash(point);
    return mount;
}

std::vector<Mount> ParseMounts(std::string_view text) {
    std::vector<Mount> mounts;
    while (!text.empty()) {
        if (std::optional<Mount> mount = ParseMount(Cut(text, '\n'))) {
            mounts.push_back(std::move(*mount));
        }
    }
    return mounts;
}

// Whether another file system has been mounted over this very one.
bool IsCovered(const Mount& mount, const std::vector<Mount>& all) {
    return std::any_of(all.begin(), all.end(), [&mount](const Mount& other) {
        return other.parent == mount.id && other.root == mount.root && other.id != mount.id;
    });
}

bool Holds(std::string_view root, std::string_view path) {
    return path.substr(0, root.size()) == root && (path.size() == root.size() || path[root.size()] == '/');
}

const Mount* MountOf(std::string_view path, const std::vector<Mount>& mounts) {
    const Mount* best = nullptr;
    for (const Mount& mount : mounts) {
        if (Holds(mount.root, path) && (best == nullptr || mount.root.size() >= best->root.size()) && !IsCovered(mount, mounts)) {
            best = &mount;
        }
    }
    return best;
}

class TableMaker {
public:
    TableMaker(std::string_view mount_info, const std::string& sysfs) : mounts_(ParseMounts(mount_info)), sysfs_(sysfs) {}

    DriveTable Make(std::string_view overrides) {
        Put(u'C', "");
        while (!overrides.empty()) {
            Override(Cut(overrides, ';'));
        }
        for (const Mount& mount : mounts_) {
            AddMedium(mount);
        }
        DriveTable table;
        for (std::optional<Drive>& drive : drives_) {
            if (drive) {
                table.push_back(std::move(*drive));
            }
        }
        return table;
    }

private:
    void Put(WCHAR letter, std::string root) {
        Drive drive{letter, std::move(root), "", "", "", false};
        if (const Mount* const mount = MountOf(drive.root, mounts_)) {
            drive.device = mount->source;
            drive.device_id = mount->device_id;
            drive.file_system = mount->file_system;
            // A folder on a medium is not the medium itself.
            drive.removable = letter != u'C' && mount->root == drive.root && IsRemovable(*mount);
        }
        drives_[static_cast<std::size_t>(letter - u'A')] = std::move(drive);
    }

    void Override(std::string_view entry) {
        const auto letter = static_cast<char>(entry.empty() ? 0 : entry[0] & ~0x20);
        const bool well_formed = entry.size() > 2 && letter >= 'A' && letter <= 'Z' && entry[1] == '=' && entry[2] == '/';
        if (well_formed && letter != 'C') {
            Put(static_cast<WCHAR>(letter), WithoutTrailingSlash(std::string(entry.substr(2))));
        }
    }

    void AddMedium(const Mount& mount) {
        while (next_ < kLetters && drives_[next_]) {
            ++next_;
        }
        if (next_ < kLetters && !mount.root.empty() && !IsKnown(mount) && IsRemovable(mount) && !IsCovered(mount, mounts_)) {
            Put(static_cast<WCHAR>(u'A' + next_), mount.root);
        }
    }

    bool IsRemovable(const Mount& mount) const {
        const BlockDevice device = ReadBlockDevice(sysfs_, mount.device_id, mount.source);
        return device.removable || device.bus == DeviceBus::usb;
    }

    // The same medium mounted again (a bind mount, a second folder) has its letter already.
    bool IsKnown(const Mount& mount) const {
        return std::any_of(drives_.begin(), drives_.end(), [&mount](const std::optional<Drive>& drive) {
            return drive && (drive->root == mount.root || (drive->removable && drive->device_id == mount.device_id));
        });
    }

    std::vector<Mount> mounts_;
    const std::string& sysfs_;
    std::array<std::optional<Drive>, kLetters> drives_;
    std::size_t next_ = kFirstMediumLetter;
};

std::string ReadWhole(int fd) {
    std::string text;
    char buffer[4096];
    lseek(fd, 0, SEEK_SET);
    for (ssize_t got = 0; (got = read(fd, buffer, sizeof buffer)) > 0;) {
        text.append(buffer, static_cast<std::size_t>(got));
    }
    return text;
}

// Keeps the mounts' file open, because the kernel then tells by poll whether anything has changed: one call a look.
class DriveCache {
public:
    std::shared_ptr<const DriveTable> Get() {
        const std::lock_guard lock(mutex_);
        std::string overrides = NativeVariable("KADATA_DRIVES").value_or("");
        if (table_ == nullptr || MountsChanged() || overrides != overrides_) {
            overrides_ = std::move(overrides);
            table_ =
                std::make_shared<const DriveTable>(ReadDriveTable(fd_ < 0 ? "" : ReadWhole(fd_), sources_.sysfs, overrides_));
        }
        return table_;
    }

    DriveSources Sources() {
        const std::lock_guard lock(mutex_);
        return sources_;
    }

    void SetSources(const DriveSources& sources) {
        const std::lock_guard lock(mutex_);
        sources_ = sources;
        table_ = nullptr;
        Reopen();
    }

private:
    bool MountsChanged() {
        // A forked child shares the open file, and with it the "changed" that can be seen only once.
        if (fd_ < 0 || owner_ != getpid()) {
            Reopen();
            return true;
        }
        pollfd look{fd_, POLLPRI, 0};
        return poll(&look, 1, 0) > 0;
    }

    void Reopen() {
        if (fd_ >= 0) {
            close(fd_);
        }
        fd_ = open(sources_.mount_info.c_str(), O_RDONLY | O_CLOEXEC);
        owner_ = getpid();
    }

    std::mutex mutex_;
    DriveSources sources_;                     // guarded by mutex_
    std::string overrides_;                    // guarded by mutex_: KADATA_DRIVES as the table was made
    std::shared_ptr<const DriveTable> table_;  // guarded by mutex_: what is handed out never changes
    int fd_ = -1;                              // guarded by mutex_
    pid_t owner_ = 0;                          // guarded by mutex_
};

// Never destroyed: other threads may still ask while the process ends.
DriveCache& Cache() {
    static DriveCache& cache = *new DriveCache;
    return cache;
}

WCHAR UpperLetter(WCHAR letter) {
    return letter >= u'a' && letter <= u'z' ? static_cast<WCHAR>(letter - u'a' + u'A') : letter;
}

}  // namespace

DriveTable ReadDriveTable(std::string_view mount_info, const std::string& sysfs, std::string_view overrides) {
    return TableMaker(mount_info, sysfs).Make(overrides);
}

std::shared_ptr<const DriveTable> Drives() {
    return Cache().Get();
}

DriveSources CurrentDriveSources() {
    return Cache().Sources();
}

void HandInDriveSources(const DriveSources& sources) {
    Cache().SetSources(sources);
}

std::optional<Drive> FindDrive(WCHAR letter) {
    const std::shared_ptr<const DriveTable> drives = Drives();
    const auto drive = std::find_if(drives->begin(), drives->end(),
                                    [wanted = UpperLetter(letter)](const Drive& d) { return d.letter == wanted; });
    return drive == drives->end() ? std::nullopt : std::optional<Drive>(*drive);
}

std::optional<std::string> DriveRoot(WCHAR letter) {
    if (UpperLetter(letter) == u'C') {
        return std::string();  // most paths: no look at the mounts
    }
    std::optional<Drive> drive = FindDrive(letter);
    return drive ? std::optional<std::string>(std::move(drive->root)) : std::nullopt;
}

WCHAR DriveOf(std::string_view native_path, std::size_t* root_length) {
    WCHAR letter = u'C';
    std::size_t length = 0;
    for (const std::shared_ptr<const DriveTable> drives = Drives(); const Drive& drive : *drives) {
        if (drive.root.size() > length && Holds(drive.root, native_path)) {
            letter = drive.letter;
            length = drive.root.size();
        }
    }
    if (root_length != nullptr) {
        *root_length = length;
    }
    return letter;
}

}  // namespace kawin
