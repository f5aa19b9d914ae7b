#include "module_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <iterator>

#include "../base/error_map.h"
#include "../base/path_map.h"
#include "../base/utf.h"
#include "../text/case_fold.h"
#include "module_table.h"

namespace kawin {
namespace {

using View = std::u16string_view;

constexpr View kSeparators = u"\\/";
constexpr View kLibraryExtension = u".dll";
constexpr off_t kMostBytes = off_t{256} * 1024 * 1024;

struct Rule {
    View library;
    View shared_object;
};
// Libraries whose shared object has another name than the plain rule gives.
constexpr Rule kRules[] = {
    {u"lua5.1.dll", u"liblua5.1.so.0"},
};

class OpenedFile {
public:
    explicit OpenedFile(const std::string& path) : descriptor_(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {}
    OpenedFile(const OpenedFile&) = delete;
    OpenedFile& operator=(const OpenedFile&) = delete;
    ~OpenedFile() {
        if (descriptor_ >= 0) {
            close(descriptor_);
        }
    }

    // Bytes of a regular file; -1 for anything else.
    off_t Size() const {
        struct stat status {};
        return descriptor_ >= 0 && fstat(descriptor_, &status) == 0 && S_ISREG(status.st_mode) ? status.st_size : -1;
    }
    // What could be read, which is less than asked for at the end of the file and on an error.
    std::size_t Read(std::byte* target, std::size_t count) const {
        std::size_t done = 0;
        while (done < count) {
            const ssize_t got = read(descriptor_, target + done, count - done);
            if (got < 0 && errno == EINTR) {
                continue;
            }
            if (got <= 0) {
                break;
            }
            done += static_cast<std::size_t>(got);
        }
        return done;
    }

private:
    int descriptor_;
};

bool IsSeparator(char16_t unit) {
    return kSeparators.find(unit) != View::npos;
}

bool IsBare(View name) {
    return name.find_first_of(u"\\/:") == View::npos;
}

bool IsAbsolute(View name) {
    const bool has_drive = name.size() > 2 && name[1] == u':';
    return !name.empty() && IsSeparator(name[has_drive ? 2 : 0]);
}

// "C:name" is relative to a current folder, which is never looked at.
bool NeedsCurrentFolder(View name) {
    return !IsAbsolute(name) && name.find(u':') != View::npos;
}

std::u16string OwnFolder() {
    const std::u16string path = ToSystemPath(ExecutablePath());
    return path.substr(0, path.size() - BaseName(path).size());
}

void AddFile(ModuleSearch& search, const std::u16string& path) {
    if (std::optional<std::string> native = ToNativePath(path.c_str())) {
        search.files.push_back(std::move(*native));
    }
}

}  // namespace

std::u16string_view BaseName(View path) noexcept {
    const std::size_t separator = path.find_last_of(u"\\/:");
    return separator == View::npos ? path : path.substr(separator + 1);
}

std::u16string WithExtension(View name) {
    const std::size_t dot = BaseName(name).find_last_of(u'.');
    if (dot == View::npos) {
        return std::u16string(name).append(kLibraryExtension);
    }
    return std::u16string(name.substr(0, name.size() - (name.back() == u'.' ? 1 : 0)));
}

std::u16string SharedObjectName(View library) {
    const auto rule = std::find_if(std::begin(kRules), std::end(kRules),
                                   [library](const Rule& r) { return CompareFolded(r.library, library) == 0; });
    if (rule != std::end(kRules)) {
        return std::u16string(rule->shared_object);
    }
    if (library.size() <= kLibraryExtension.size() ||
        CompareFolded(library.substr(library.size() - kLibraryExtension.size()), kLibraryExtension) != 0) {
        return {};
    }
    return u"lib" + std::u16string(library.substr(0, library.size() - kLibraryExtension.size())) + u".so";
}

ModuleSearch SearchFor(View name, bool as_data) {
    ModuleSearch search;
    if (name.empty() || NeedsCurrentFolder(name)) {
        return search;
    }
    const std::u16string full = (IsAbsolute(name) ? std::u16string() : OwnFolder()) + WithExtension(name);
    AddFile(search, full);
    const View library = BaseName(full);
    const std::u16string shared_object = as_data ? std::u16string() : SharedObjectName(library);
    if (!shared_object.empty()) {
        AddFile(search, full.substr(0, full.size() - library.size()) + shared_object);
    }
    if (IsBare(name) && !as_data) {
        search.linked_name = ToFileName(shared_object.empty() ? std::u16string(library) : shared_object);
    }
    return search;
}

FileKind KindOfFile(const std::string& path) {
    constexpr char kElfMark[] = {0x7F, 'E', 'L', 'F'};
    const OpenedFile file(path);
    std::byte mark[sizeof kElfMark] = {};
    if (file.Size() < 0) {
        return FileKind::Missing;
    }
    file.Read(mark, sizeof mark);
    return std::memcmp(mark, kElfMark, sizeof mark) == 0 ? FileKind::SharedObject : FileKind::Other;
}

std::optional<std::vector<std::byte>> ReadModuleFile(const std::string& path) {
    const OpenedFile file(path);
    const off_t size = file.Size();
    if (size < 0 || size > kMostBytes) {
        SetLastError(size < 0 ? ERROR_FILE_NOT_FOUND : ERROR_BAD_EXE_FORMAT);
        return std::nullopt;
    }
    std::vector<std::byte> bytes(static_cast<std::size_t>(size));
    bytes.resize(file.Read(bytes.data(), bytes.size()));
    return bytes;
}

}  // namespace kawin
