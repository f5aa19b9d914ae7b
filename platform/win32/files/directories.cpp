#include "directories.h"

#include <errno.h>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <string>
#include <string_view>

#include "../base/path_map.h"
#include "../base/utf.h"
#include "../process/native_environment.h"
#include "../text/no_throw.h"
#include "path_error.h"

namespace kawin {
namespace {

constexpr mode_t kWriteBits = 0222;  // without any, a folder has FILE_ATTRIBUTE_READONLY

// Copies `text` with its terminator when it fits; the result is what the system's functions return in both cases.
DWORD Deliver(std::u16string_view text, DWORD size, LPWSTR buffer) {
    if (buffer == nullptr || text.size() >= size) {
        return static_cast<DWORD>(text.size() + 1);
    }
    buffer[text.copy(buffer, text.size())] = u'\0';
    return static_cast<DWORD>(text.size());
}

bool IsCurrentDirectory(const struct stat& folder) {
    struct stat current;
    return stat(".", &current) == 0 && current.st_dev == folder.st_dev && current.st_ino == folder.st_ino;
}

bool IsLinkToFolder(const std::string& native, const struct stat& itself) {
    struct stat target;
    return S_ISLNK(itself.st_mode) && stat(native.c_str(), &target) == 0 && S_ISDIR(target.st_mode);
}

BOOL FailRemoval(const std::string& native) {
    switch (errno) {
        case EEXIST:
            return Fail(ERROR_DIR_NOT_EMPTY);
        case EBUSY:
            return Fail(ERROR_SHARING_VIOLATION);
        default:
            return FailForPath(native, errno);
    }
}

BOOL RemoveFolder(const std::string& native) {
    struct stat status;
    if (lstat(native.c_str(), &status) != 0) {
        return FailForPath(native, errno);
    }
    if (IsLinkToFolder(native, status)) {
        return unlink(native.c_str()) == 0 || FailForPath(native, errno);
    }
    if (!S_ISDIR(status.st_mode)) {
        return Fail(ERROR_DIRECTORY);
    }
    if ((status.st_mode & kWriteBits) == 0) {
        return Fail(ERROR_ACCESS_DENIED);
    }
    if (IsCurrentDirectory(status)) {  // the kernel would let it go, and every relative path with it
        return Fail(ERROR_SHARING_VIOLATION);
    }
    return rmdir(native.c_str()) == 0 || FailRemoval(native);
}

BOOL EnterFolder(const std::string& native) {
    if (chdir(native.c_str()) == 0) {
        return TRUE;
    }
    const int error = errno;
    struct stat status;
    const bool is_file = error == ENOTDIR && stat(native.c_str(), &status) == 0;
    return is_file ? Fail(ERROR_DIRECTORY) : FailForPath(native, error);
}

std::u16string CurrentFolder() {
    const std::unique_ptr<char, void (*)(void*)> native(getcwd(nullptr, 0), &free);
    if (native == nullptr) {
        FailFromErrno();
        return {};
    }
    return ToSystemPath(native.get());
}

std::u16string TempFolder() {
    std::string found;
    for (const char* const name : {"TMP", "TEMP", "USERPROFILE", "TMPDIR"}) {
        if (found = NativeVariable(name).value_or(""); !found.empty()) {
            break;
        }
    }
    if (found.empty()) {
        found = "/tmp";
    }
    std::u16string path = found[0] == '/' ? ToSystemPath(found) : ToFullSystemPath(FromFileName(found).c_str());
    if (!path.empty() && path.back() != u'\\') {
        path.push_back(u'\\');
    }
    return path;
}

constexpr std::size_t kPrefixLength = 3;
constexpr std::size_t kTempNameLength = 14;  // backslash, three characters, four digits and ".tmp", with a little to spare
constexpr UINT kTempNumbers = 0x10000;

std::u16string TempName(std::u16string_view folder, std::u16string_view prefix, UINT number) {
    char digits[16];
    snprintf(digits, sizeof digits, "%X.tmp", number);
    std::u16string name(folder);
    if (name.back() != u'\\' && name.back() != u'/') {
        name.push_back(u'\\');
    }
    name += prefix.substr(0, kPrefixLength);
    return name.append(digits, digits + std::char_traits<char>::length(digits));
}

// FALSE with errno EEXIST where the name is in use, by a link that leads nowhere too.
bool CreateForThisUser(const std::string& native) {
    constexpr mode_t kOwnerOnly = 0600;
    const int file = open(native.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_NOFOLLOW | O_CLOEXEC, kOwnerOnly);
    if (file < 0) {
        return false;
    }
    close(file);
    return true;
}

bool IsFolder(const std::string& native) {
    struct stat status;
    return stat(native.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

// Tries each number but 0 once, from one that the clock gives; 0 with the last error set when none can be had.
UINT CreateTempFile(std::u16string_view folder, std::u16string_view prefix, LPWSTR file) {
    const auto start = static_cast<UINT>(std::chrono::system_clock::now().time_since_epoch().count() / 1000);
    for (UINT step = 0; step < kTempNumbers; ++step) {
        const UINT number = 1 + (start + step) % (kTempNumbers - 1);
        const std::u16string name = TempName(folder, prefix, number);
        const std::optional<std::string> native = ToNativePath(name.c_str());
        if (!native) {
            return 0;
        }
        if (CreateForThisUser(*native)) {
            Deliver(name, MAX_PATH, file);
            return number;
        }
        if (errno != EEXIST) {
            FailFromErrno();
            return 0;
        }
    }
    Fail(ERROR_FILE_EXISTS);
    return 0;
}

UINT MakeTempName(std::u16string_view folder, std::u16string_view prefix, UINT unique, LPWSTR file) {
    if (folder.size() > MAX_PATH - kTempNameLength) {
        Fail(ERROR_BUFFER_OVERFLOW);
        return 0;
    }
    if (unique != 0) {
        Deliver(TempName(folder, prefix, unique % kTempNumbers), MAX_PATH, file);
        return unique;
    }
    const std::optional<std::string> native = ToNativePath(std::u16string(folder).c_str());
    if (!native || !IsFolder(*native)) {
        Fail(ERROR_DIRECTORY);
        return 0;
    }
    return CreateTempFile(folder, prefix, file);
}

}  // namespace
}  // namespace kawin

BOOL CreateDirectoryW(LPCWSTR path, LPSECURITY_ATTRIBUTES /*security*/) noexcept {
    return kawin::NoThrow([=]() -> BOOL {
        const std::optional<std::string> native = kawin::ToNativePath(path);
        if (!native) {
            return FALSE;
        }
        constexpr mode_t kAllThatTheMaskLeaves = 0777;
        if (mkdir(native->c_str(), kAllThatTheMaskLeaves) == 0) {
            return TRUE;
        }
        return errno == ENOENT ? kawin::Fail(ERROR_PATH_NOT_FOUND) : kawin::FailFromErrno();
    });
}

BOOL RemoveDirectoryW(LPCWSTR path) noexcept {
    return kawin::NoThrow([=]() -> BOOL {
        const std::optional<std::string> native = kawin::ToNativePath(path);
        return native && kawin::RemoveFolder(*native);
    });
}

DWORD GetCurrentDirectoryW(DWORD size, LPWSTR buffer) noexcept {
    return kawin::NoThrow([=]() -> DWORD {
        const std::u16string path = kawin::CurrentFolder();
        return path.empty() ? 0 : kawin::Deliver(path, size, buffer);
    });
}

BOOL SetCurrentDirectoryW(LPCWSTR path) noexcept {
    return kawin::NoThrow([=]() -> BOOL {
        const std::optional<std::string> native = kawin::ToNativePath(path);
        return native && kawin::EnterFolder(*native);
    });
}

DWORD GetFullPathNameW(LPCWSTR path, DWORD size, LPWSTR buffer, LPWSTR* file_part) noexcept {
    return kawin::NoThrow([=]() -> DWORD {
        if (path == nullptr || *path == u'\0') {
            kawin::Fail(ERROR_INVALID_NAME);
            return 0;
        }
        const std::u16string full = kawin::ToFullSystemPath(path);
        const DWORD length = full.empty() ? 0 : kawin::Deliver(full, size, buffer);
        if (file_part != nullptr && length == full.size()) {
            const std::size_t last = full.rfind(u'\\') + 1;
            *file_part = last < full.size() ? buffer + last : nullptr;
        }
        return length;
    });
}

DWORD GetTempPathW(DWORD size, LPWSTR buffer) noexcept {
    return kawin::NoThrow([=]() -> DWORD {
        const std::u16string path = kawin::TempFolder();
        return path.empty() ? 0 : kawin::Deliver(path, size, buffer);
    });
}

UINT GetTempFileNameW(LPCWSTR folder, LPCWSTR prefix, UINT unique, LPWSTR file) noexcept {
    return kawin::NoThrow([=]() -> UINT {
        if (folder == nullptr || *folder == u'\0' || file == nullptr) {
            kawin::Fail(folder != nullptr && file == nullptr ? ERROR_INVALID_PARAMETER : ERROR_DIRECTORY);
            return 0;
        }
        return kawin::MakeTempName(folder, prefix == nullptr ? u"" : prefix, unique, file);
    });
}
