#include "find.h"

#include <dirent.h>
#include <errno.h>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "../base/path_map.h"
#include "../base/utf.h"
#include "../text/no_throw.h"
#include "descriptor.h"
#include "drive_table.h"
#include "file_status.h"
#include "name_pattern.h"
#include "path_error.h"

namespace kawin {
namespace {

constexpr std::size_t kReadBytes = 128 * 1024;

void Fill(const FileStatus& status, std::string_view name, WIN32_FIND_DATAW& data) {
    data.dwFileAttributes = status.attributes;
    data.ftCreationTime = status.created;
    data.ftLastAccessTime = status.accessed;
    data.ftLastWriteTime = status.written;
    data.nFileSizeHigh = static_cast<DWORD>(status.size >> 32);
    data.nFileSizeLow = static_cast<DWORD>(status.size);
    data.dwReserved0 = status.reparse_tag;
    data.dwReserved1 = 0;
    data.cAlternateFileName[0] = u'\0';
    FromFileName(name, data.cFileName, MAX_PATH);
}

// The matching names as they were when the search began, and the place in them. What happens in the folder meanwhile can then
// neither lengthen the search nor move it, however the caller renames what it finds.
class Search {
public:
    Search(UniqueFd folder, std::string names) : folder_(std::move(folder)), names_(std::move(names)) {}

    // The next entry that is still there; false at the end.
    bool Next(WIN32_FIND_DATAW& data) {
        const std::lock_guard lock(mutex_);
        while (next_ < names_.size()) {
            const char* const name = names_.c_str() + next_;
            const std::size_t length = std::char_traits<char>::length(name);
            next_ += length + 1;
            FileStatus status;
            if (StatAt(folder_.get(), name, status)) {
                Fill(status, {name, length}, data);
                return true;
            }
        }
        return false;
    }

private:
    std::mutex mutex_;
    const UniqueFd folder_;
    const std::string names_;  // each with its terminator
    std::size_t next_ = 0;     // guarded by mutex_
};

// Open searches. They are not in the table of handles, because CloseHandle must not close one.
class Searches {
public:
    HANDLE Add(std::shared_ptr<Search> search) {
        const std::lock_guard lock(mutex_);
        const HANDLE handle = search.get();
        open_.emplace(handle, std::move(search));
        return handle;
    }

    // Empty for what is no open search. A search in use by one thread outlives the FindClose of another.
    std::shared_ptr<Search> Find(HANDLE handle) {
        const std::lock_guard lock(mutex_);
        const auto found = open_.find(handle);
        return found == open_.end() ? nullptr : found->second;
    }

    bool Remove(HANDLE handle) {
        std::shared_ptr<Search> removed;  // released after the lock is left
        const std::lock_guard lock(mutex_);
        const auto found = open_.find(handle);
        if (found == open_.end()) {
            return false;
        }
        removed = std::move(found->second);
        open_.erase(found);
        return true;
    }

private:
    std::mutex mutex_;
    std::unordered_map<HANDLE, std::shared_ptr<Search>> open_;  // guarded by mutex_
};

// Never destroyed: other threads may still search while the process ends.
Searches& OpenSearches() {
    static Searches& searches = *new Searches;
    return searches;
}

bool IsDots(std::string_view name) {
    return name == "." || name == "..";
}

void AddName(std::string& names, std::string_view name) {
    names.append(name);
    names.push_back('\0');
}

// Appends the names of one block of entries that match.
void AddMatches(const char* block, std::size_t size, const NamePattern& pattern, std::string& names) {
    for (std::size_t at = 0; at < size;) {
        const auto* const entry = reinterpret_cast<const dirent64*>(block + at);
        const std::string_view name = entry->d_name;
        if (!IsDots(name) && pattern.Matches(name)) {
            AddName(names, name);
        }
        at += entry->d_reclen;
    }
}

// All matching names of the folder; nothing with errno when it cannot be read. One system call reads hundreds of entries.
std::optional<std::string> MatchingNames(int folder, const NamePattern& pattern, bool with_dots) {
    std::string names;
    for (const std::string_view dots : {".", ".."}) {
        if (with_dots && pattern.Matches(dots)) {
            AddName(names, dots);
        }
    }
    const std::unique_ptr<char[]> block(new char[kReadBytes]);
    for (long got = 0; (got = syscall(SYS_getdents64, folder, block.get(), kReadBytes)) != 0;) {
        if (got < 0) {
            return std::nullopt;
        }
        AddMatches(block.get(), static_cast<std::size_t>(got), pattern, names);
    }
    return names;
}

bool IsDriveRoot(std::string_view native) {
    std::size_t length = 0;
    DriveOf(native, &length);
    return length == native.size() || native == "/";
}

HANDLE FailSearch(DWORD error) {
    SetLastError(error);
    return INVALID_HANDLE_VALUE;
}

// The search's handle, and its first entry in `data`.
HANDLE Begin(UniqueFd folder, std::string names, WIN32_FIND_DATAW& data) {
    auto search = std::make_shared<Search>(std::move(folder), std::move(names));
    return search->Next(data) ? OpenSearches().Add(std::move(search)) : FailSearch(ERROR_FILE_NOT_FOUND);
}

UniqueFd OpenFolder(const std::string& native) {
    return UniqueFd(open(native.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
}

DWORD ErrorOfFolder(const std::string& native) {
    if (errno == ENOTDIR && access(native.c_str(), F_OK) == 0) {
        return ERROR_DIRECTORY;
    }
    return errno == ENOENT ? ERROR_PATH_NOT_FOUND : ErrorFromErrno(errno);
}

HANDLE SearchFolder(const std::string& native, std::u16string_view pattern, WIN32_FIND_DATAW& data) {
    UniqueFd folder = OpenFolder(native);
    if (!folder) {
        return FailSearch(ErrorOfFolder(native));
    }
    std::optional<std::string> names = MatchingNames(folder.get(), NamePattern(pattern), !IsDriveRoot(native));
    return names ? Begin(std::move(folder), std::move(*names), data) : FailSearch(ErrorFromErrno(errno));
}

// A name without wildcards: one look, no listing.
HANDLE SearchName(const std::string& native, WIN32_FIND_DATAW& data) {
    const std::size_t slash = native.find_last_of('/');
    if (IsDriveRoot(native)) {
        return FailSearch(ERROR_FILE_NOT_FOUND);
    }
    FileStatus status;
    if (!StatAt(AT_FDCWD, native.c_str(), status)) {
        return FailSearch(ErrorForPath(native, errno));
    }
    Fill(status, std::string_view(native).substr(slash + 1), data);
    return OpenSearches().Add(std::make_shared<Search>(UniqueFd(), std::string()));
}

// "C:\dir\*.txt" is "C:\dir\" and "*.txt"; "C:*" is "C:" and "*"; "*" is the current directory and "*".
std::size_t PatternBegin(std::u16string_view path) {
    const std::size_t separator = path.find_last_of(u"\\/");
    if (separator != path.npos) {
        return separator + 1;
    }
    return path.size() >= 2 && path[1] == u':' ? 2 : 0;
}

HANDLE SearchPath(std::u16string_view path, WIN32_FIND_DATAW& data) {
    const std::size_t begin = PatternBegin(path);
    const std::u16string_view last = path.substr(begin);
    const bool wild = NamePattern::HasWildcards(last);
    const std::u16string folder(wild || last.empty() ? path.substr(0, begin) : path);
    const std::optional<std::string> native = ToNativePath(wild && folder.empty() ? u"." : folder.c_str());
    if (!native) {
        return INVALID_HANDLE_VALUE;
    }
    if (wild) {
        return SearchFolder(*native, last, data);
    }
    if (begin != 0 && last.empty() && path.back() != u':') {  // a separator at the end
        return FailSearch(OpenFolder(*native) ? ERROR_FILE_NOT_FOUND : ErrorOfFolder(*native));
    }
    return SearchName(*native, data);
}

}  // namespace
}  // namespace kawin

HANDLE FindFirstFileW(LPCWSTR pattern, LPWIN32_FIND_DATAW data) noexcept {
    return FindFirstFileExW(pattern, FindExInfoStandard, data, FindExSearchNameMatch, nullptr, 0);
}

HANDLE FindFirstFileExW(LPCWSTR pattern, FINDEX_INFO_LEVELS level, LPVOID data, FINDEX_SEARCH_OPS operation, LPVOID filter,
                        DWORD flags) noexcept {
    const bool known_level = level == FindExInfoStandard || level == FindExInfoBasic;
    if (!known_level || data == nullptr || operation != FindExSearchNameMatch || filter != nullptr ||
        (flags & ~FIND_FIRST_EX_LARGE_FETCH) != 0) {
        return kawin::FailSearch(ERROR_INVALID_PARAMETER);
    }
    if (pattern == nullptr || *pattern == u'\0') {
        return kawin::FailSearch(ERROR_PATH_NOT_FOUND);
    }
    const HANDLE search =
        kawin::NoThrow([=]() -> HANDLE { return kawin::SearchPath(pattern, *static_cast<WIN32_FIND_DATAW*>(data)); });
    return search == nullptr ? INVALID_HANDLE_VALUE : search;
}

BOOL FindNextFileW(HANDLE search, LPWIN32_FIND_DATAW data) noexcept {
    return kawin::NoThrow([=]() -> BOOL {
        const std::shared_ptr<kawin::Search> open = kawin::OpenSearches().Find(search);
        if (open == nullptr || data == nullptr) {
            return kawin::Fail(open == nullptr ? ERROR_INVALID_HANDLE : ERROR_INVALID_PARAMETER);
        }
        return open->Next(*data) || kawin::Fail(ERROR_NO_MORE_FILES);
    });
}

BOOL FindClose(HANDLE search) noexcept {
    return kawin::NoThrow([=]() -> BOOL { return kawin::OpenSearches().Remove(search) || kawin::Fail(ERROR_INVALID_HANDLE); });
}
