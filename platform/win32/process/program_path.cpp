#include "program_path.h"

#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <optional>
#include <string_view>

#include "../base/error_map.h"
#include "../base/path_map.h"
#include "../base/utf.h"
#include "../files/path_error.h"
#include "../text/case_fold.h"
#include "native_environment.h"
#include "stand_ins.h"

namespace kawin {
namespace {

bool Exists(const std::string& native) {
    struct stat status {};
    return stat(native.c_str(), &status) == 0;
}

// The path as it is, else without its ".exe": the name that the program has on this system.
std::optional<std::string> ExistingForm(const std::string& native) {
    if (Exists(native)) {
        return native;
    }
    const std::size_t stem = native.size() < 4 ? 0 : native.size() - 4;
    if (CompareFolded(FromFileName(native.substr(stem)), u".exe") == 0 && Exists(native.substr(0, stem))) {
        return native.substr(0, stem);
    }
    return {};
}

std::string OwnFolder() {
    char path[PATH_MAX];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
    const std::string_view text(path, length > 0 ? static_cast<std::size_t>(length) : 0);
    return std::string(text.substr(0, text.rfind('/')));
}

// "" and other relative entries of PATH would mean the current directory.
std::optional<std::string> FindAlongPath(const std::string& name) {
    const std::string path = OwnFolder() + ':' + NativeVariable("PATH").value_or("/usr/local/bin:/usr/bin:/bin");
    for (std::size_t start = 0; start <= path.size();) {
        const std::size_t end = std::min(path.find(':', start), path.size());
        const std::string folder = path.substr(start, end - start);
        std::optional<std::string> found = folder.starts_with('/') ? ExistingForm(folder + '/' + name) : std::nullopt;
        if (found) {
            return found;
        }
        start = end + 1;
    }
    return {};
}

bool IsBareName(std::u16string_view name) {
    return name.find_first_of(u"\\/:") == name.npos;
}

// A program of the system, or what stands in for it here.
std::optional<std::string> FindBareName(const std::u16string& name) {
    std::optional<std::string> found = FindAlongPath(ToFileName(name));
    for (const std::string_view stand_in : StandInsFor(name)) {
        found = found ? found : FindAlongPath(std::string(stand_in));
    }
    return found;
}

// Empty with the last error set.
std::string FindNamed(const std::u16string& name, bool search) {
    if (search && IsBareName(name)) {
        SetLastError(ERROR_FILE_NOT_FOUND);
        return FindBareName(name).value_or("");
    }
    const std::optional<std::string> native = ToNativePath(name.c_str());
    if (!native) {
        return {};
    }
    std::optional<std::string> found = ExistingForm(*native);
    if (!found) {
        FailForPath(*native, ENOENT);
    }
    return found.value_or("");
}

// A name without quotation marks may hold blanks: "a b c" is a, else "a b", else all of it.
std::string FindUnquoted(std::u16string_view line) {
    for (std::size_t end = 0; end < line.size();) {
        end = std::min(line.find_first_of(u" \t", end + 1), line.size());
        std::string found = FindNamed(std::u16string(line.substr(0, end)), true);
        if (!found.empty()) {
            return found;
        }
    }
    return {};
}

}  // namespace

std::string FindProgram(LPCWSTR application, LPCWSTR command_line) {
    if (application != nullptr) {
        return FindNamed(application, false);
    }
    std::u16string_view line = command_line != nullptr ? command_line : u"";
    if (line.empty()) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return {};
    }
    if (line.front() == u'"') {
        line.remove_prefix(1);
        return FindNamed(std::u16string(line.substr(0, line.find(u'"'))), true);
    }
    return FindUnquoted(line);
}

}  // namespace kawin
