#include "xdg.h"

#include <pwd.h>
#include <unistd.h>

#include <fstream>
#include <string_view>

#include "../process/native_environment.h"

namespace kawin {
namespace {

std::string WithoutSlash(std::string path) {
    while (path.size() > 1 && path.back() == '/') {
        path.pop_back();
    }
    return path;
}

std::string AbsoluteFromEnvironment(const char* variable) {
    const std::string value = NativeVariable(variable).value_or("");
    return value.substr(0, 1) == "/" ? WithoutSlash(value) : std::string();
}

// The text between the quotes of NAME="text", where \ keeps the next character as it is.
std::string Quoted(std::string_view text) {
    std::string out;
    for (std::size_t i = 1; i < text.size() && text[i] != '"'; ++i) {
        if (text[i] == '\\' && i + 1 < text.size()) {
            ++i;
        }
        out.push_back(text[i]);
    }
    return out;
}

// "$HOME/x" or "/x"; anything else is no value.
std::string UserFolder(const std::string& value) {
    constexpr std::string_view kHome = "$HOME";
    if (value.compare(0, kHome.size(), kHome) == 0) {
        const std::string home = HomeFolder();
        return home.empty() ? home : WithoutSlash(home + value.substr(kHome.size()));
    }
    return value.substr(0, 1) == "/" ? WithoutSlash(value) : std::string();
}

}  // namespace

bool MakeFolders(const std::string& native, mode_t rights) {
    for (std::size_t end = 0; end != native.npos;) {
        end = native.find('/', end + 1);
        mkdir(native.substr(0, end).c_str(), rights);  // fails where there is one already; the last look decides
    }
    struct stat status;
    return stat(native.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::string HomeFolder() {
    std::string home = AbsoluteFromEnvironment("HOME");
    passwd entry;
    passwd* found = nullptr;
    char buffer[4096];
    if (home.empty() && getpwuid_r(geteuid(), &entry, buffer, sizeof buffer, &found) == 0 && found != nullptr) {
        home = WithoutSlash(found->pw_dir);
    }
    return home;
}

std::string XdgFolder(const char* variable, const char* below_home) {
    std::string folder = AbsoluteFromEnvironment(variable);
    const std::string home = folder.empty() ? HomeFolder() : std::string();
    return home.empty() ? folder : home + "/" + below_home;
}

std::string XdgUserFolder(const std::string& name) {
    const std::string begin = "XDG_" + name + "_DIR=\"";
    std::ifstream in(XdgFolder("XDG_CONFIG_HOME", ".config") + "/user-dirs.dirs");
    std::string folder;
    for (std::string line; std::getline(in, line);) {
        if (line.compare(0, begin.size(), begin) == 0) {
            folder = UserFolder(Quoted(std::string_view(line).substr(begin.size() - 1)));
        }
    }
    const std::string home = folder.empty() ? HomeFolder() : std::string();
    return home.empty() ? folder : name == "DESKTOP" ? home + "/Desktop" : home;
}

}  // namespace kawin
