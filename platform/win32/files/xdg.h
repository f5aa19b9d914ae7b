#pragma once

// Native folders of the user, as the XDG base directory rules and user-dirs.dirs name them. Without slash at the end. Internal to
// the layer.

#include <sys/stat.h>

#include <string>

namespace kawin {

// HOME, else the user database's entry; empty when neither knows.
std::string HomeFolder();

// The value of `variable` ("XDG_CONFIG_HOME") when it is an absolute path, else `below_home` (".config") in the home folder;
// empty when there is no home folder.
std::string XdgFolder(const char* variable, const char* below_home);

// A folder of user-dirs.dirs ("DOCUMENTS"); without an entry the desktop's rule holds: ~/Desktop for "DESKTOP", home for the
// others.
std::string XdgUserFolder(const std::string& name);

// Makes what is missing of an absolute path, with these rights less the process's mask. False when it is no folder in the end.
bool MakeFolders(const std::string& native, mode_t rights);

}  // namespace kawin
