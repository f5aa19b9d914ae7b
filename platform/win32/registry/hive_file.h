#pragma once

// Where the hives lie and what happens to their files as a whole. Internal to the layer.

#include <sys/types.h>

#include <string>

#include "../base/types.h"

namespace kawin {

enum class HiveKind { user, machine };

// Native path by the environment as it is now; empty when there is no home folder to look in.
std::string HiveFile(HiveKind kind);

// Which file has the name at the moment; all 0 when there is none.
struct FileIdentity {
    dev_t device = 0;
    ino_t number = 0;
    bool operator==(const FileIdentity&) const = default;
    explicit operator bool() const noexcept { return number != 0; }
};
FileIdentity IdentityOf(const std::string& file) noexcept;

// Whether this user could change the hive; where it does not exist yet, whether it could be created.
bool MayWriteHive(const std::string& file);

// Makes the folders above a hive, with rights by what it is for. False when that cannot be.
bool MakeHiveFolder(const std::string& file);

// Held while a hive is made or put aside: two processes must not both do it.
class HiveFolderLock {
public:
    explicit HiveFolderLock(const std::string& file);
    HiveFolderLock(const HiveFolderLock&) = delete;
    HiveFolderLock& operator=(const HiveFolderLock&) = delete;
    ~HiveFolderLock();

private:
    int folder_;
};

// Gives the damaged hive `file`, as long as it is still `which`, a name with the time in it, together with the files of its log,
// and says so in a diagnostic line. False when it is another file by now or cannot be renamed.
bool PutHiveAside(const std::string& file, const FileIdentity& which);

}  // namespace kawin
