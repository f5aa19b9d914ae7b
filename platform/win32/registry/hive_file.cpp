#include "hive_file.h"

#include <errno.h>
#include <fcntl.h>
#include <stdio.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include "../base/diagnose.h"
#include "../base/path_map.h"
#include "../base/utf.h"
#include "../files/xdg.h"
#include "../process/native_environment.h"

namespace kawin {
namespace {

constexpr mode_t kUserFolderRights = 0700;
constexpr mode_t kMachineFolderRights = 0755;  // every user reads the machine's settings

std::string FolderOf(const std::string& file) {
    return file.substr(0, file.rfind('/'));
}

bool MayWrite(const std::string& native) {
    return faccessat(AT_FDCWD, native.c_str(), W_OK, AT_EACCESS) == 0;
}

bool IsThere(const std::string& native) {
    return faccessat(AT_FDCWD, native.c_str(), F_OK, AT_EACCESS) == 0;
}

// "20261121-153012", local time: a technician compares it with the log.
std::string TimeInName() {
    const time_t now = time(nullptr);
    tm parts{};
    localtime_r(&now, &parts);
    char text[32];
    strftime(text, sizeof text, "%Y%m%d-%H%M%S", &parts);
    return text;
}

}  // namespace

std::string HiveFile(HiveKind kind) {
    const std::string name = kind == HiveKind::user ? "/user.registry" : "/machine.registry";
    if (const std::string folder = NativeVariable("KADATA_REGISTRY_DIR").value_or(""); !folder.empty()) {
        return (folder[0] == '/' ? folder : ToNativePath(FromFileName(folder).c_str()).value_or(folder)) + name;
    }
    if (kind == HiveKind::machine) {
        return "/var/lib/kadata" + name;
    }
    const std::string config = XdgFolder("XDG_CONFIG_HOME", ".config");
    return config.empty() ? config : config + "/kadata" + name;
}

FileIdentity IdentityOf(const std::string& file) noexcept {
    struct stat status {};
    return stat(file.c_str(), &status) == 0 ? FileIdentity{status.st_dev, status.st_ino} : FileIdentity{};
}

bool MayWriteHive(const std::string& file) {
    std::string folder = FolderOf(file);
    if (IsThere(file)) {
        return MayWrite(file) && MayWrite(folder);
    }
    while (!folder.empty() && !IsThere(folder)) {
        folder = FolderOf(folder);
    }
    return MayWrite(folder.empty() ? "/" : folder);
}

bool MakeHiveFolder(const std::string& file) {
    const bool whole_machine = file.compare(0, 5, "/var/") == 0;
    return MakeFolders(FolderOf(file), whole_machine ? kMachineFolderRights : kUserFolderRights);
}

HiveFolderLock::HiveFolderLock(const std::string& file)
    : folder_(open(FolderOf(file).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    while (folder_ >= 0 && flock(folder_, LOCK_EX) != 0 && errno == EINTR) {
    }
}

HiveFolderLock::~HiveFolderLock() {
    if (folder_ >= 0) {
        close(folder_);
    }
}

bool PutHiveAside(const std::string& file, const FileIdentity& which) {
    const HiveFolderLock lock(file);
    if (IdentityOf(file) != which) {
        return false;  // another process was faster
    }
    std::string aside = file + ".damaged-" + TimeInName();
    for (int number = 2; IsThere(aside); ++number) {
        aside = file + ".damaged-" + TimeInName() + "-" + std::to_string(number);
    }
    // The log first: a database without its log is older than one with it, but a log must never meet another database.
    for (const char* const part : {"-wal", "-shm"}) {
        rename((file + part).c_str(), (aside + part).c_str());
    }
    const bool renamed = rename(file.c_str(), aside.c_str()) == 0;
    if (renamed) {
        Diagnose(u"The settings database " + FromFileName(file) + u" is damaged and was kept as " + FromFileName(aside) +
                 u"; its settings have their defaults");
    }
    return renamed;
}

}  // namespace kawin
