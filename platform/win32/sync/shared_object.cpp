#include "shared_object.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <cstdio>
#include <mutex>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "../base/error_map.h"

namespace kawin {
namespace {

constexpr char kFolder[] = "/dev/shm";
constexpr std::uint32_t kMagic = 0x324F534B;  // "KSO2": another layout takes another number
constexpr std::size_t kReadableLength = 80;
constexpr std::size_t kLongestName = 0x7FFF;
constexpr std::size_t kNameStart = 260;
constexpr off_t kAliveByte = 0;  // share-locked by every process that has the object open
constexpr off_t kGuardByte = 1;  // locked while the object is opened or closed

struct Header {
    std::uint32_t magic;
    SharedKind kind;
    ULONGLONG body_size;
    std::uint32_t name_length;
    char16_t name_start[kNameStart];  // the rest of a longer name is only in the path's hash
};

constexpr std::size_t kMappedBody = SharedBlock::kBodyOffset - SharedBlock::kSmallBody;  // small bodies end the first page
static_assert(sizeof(Header) <= kMappedBody);

// Closes a file unless it was handed on.
class FileGuard {
public:
    explicit FileGuard(int file) noexcept : file_(file) {}
    FileGuard(const FileGuard&) = delete;
    FileGuard& operator=(const FileGuard&) = delete;
    ~FileGuard() {
        if (file_ != -1) {
            close(file_);
        }
    }
    int get() const noexcept { return file_; }
    int release() noexcept { return std::exchange(file_, -1); }

private:
    int file_;
};

bool SetLock(int file, int command, short type, off_t byte) {
    struct flock lock {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    lock.l_start = byte;
    lock.l_len = 1;
    int result;
    do {
        result = fcntl(file, command, &lock);
    } while (result == -1 && errno == EINTR);
    return result == 0;
}

class OpenGuard {
public:
    explicit OpenGuard(int file) noexcept : file_(file) { SetLock(file_, F_OFD_SETLKW, F_WRLCK, kGuardByte); }
    OpenGuard(const OpenGuard&) = delete;
    OpenGuard& operator=(const OpenGuard&) = delete;
    ~OpenGuard() { SetLock(file_, F_OFD_SETLK, F_UNLCK, kGuardByte); }

private:
    int file_;
};

bool IsAloneWith(int file) {
    return SetLock(file, F_OFD_SETLK, F_WRLCK, kAliveByte);
}

struct ObjectName {
    std::u16string_view text;
    std::string path;
};

ULONGLONG HashOf(std::u16string_view text) {
    ULONGLONG hash = 0xCBF29CE484222325;  // FNV-1a
    for (const char16_t unit : text) {
        hash = ((hash ^ (unit & 0xFFU)) * 0x100000001B3 ^ (unit >> 8U)) * 0x100000001B3;
    }
    return hash;
}

bool IsReadable(char16_t unit) {
    return unit < 0x80 && (isalnum(unit) != 0 || unit == u'_' || unit == u'-');
}

std::string PathOf(std::u16string_view text, bool global) {
    std::string path = std::string(kFolder) + "/kadata." + (global ? "global" : std::to_string(geteuid())) + '.';
    for (const char16_t unit : text.substr(0, kReadableLength)) {
        path += IsReadable(unit) ? static_cast<char>(unit) : '~';
    }
    char hash[24];
    std::snprintf(hash, sizeof hash, ".%016llx", HashOf(text));
    return path + hash;
}

DWORD NameError(std::u16string_view text) {
    if (text.empty()) {
        return ERROR_INVALID_NAME;
    }
    if (text.size() > kLongestName) {
        return ERROR_FILENAME_EXCED_RANGE;
    }
    return text.find(u'\\') == text.npos ? ERROR_SUCCESS : ERROR_PATH_NOT_FOUND;
}

bool TakePrefix(std::u16string_view& text, std::u16string_view prefix) {
    const bool has = text.starts_with(prefix);
    text.remove_prefix(has ? prefix.size() : 0);
    return has;
}

std::optional<ObjectName> ParseName(LPCWSTR name) {
    if (name == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return {};
    }
    std::u16string_view text = name;
    const bool global = TakePrefix(text, u"Global\\");
    if (!global) {
        TakePrefix(text, u"Local\\");
    }
    if (const DWORD error = NameError(text); error != ERROR_SUCCESS) {
        SetLastError(error);
        return {};
    }
    return ObjectName{text, PathOf(text, global)};
}

struct Registry {
    std::mutex mutex;
    std::unordered_map<std::string, std::weak_ptr<SharedBlock>> blocks;  // by path; guarded by mutex
    std::vector<std::shared_ptr<void>> kept;                             // guarded by mutex
};

// Never destroyed: handles may be closed while the process ends.
Registry& TheRegistry() {
    static Registry& registry = *new Registry;
    return registry;
}

const Header& HeaderOf(const SharedBlock& block) {
    return *static_cast<const Header*>(block.Memory());
}

BlockRef MapBlock(FileGuard& file, const std::string& path) {
    void* const memory = mmap(nullptr, SharedBlock::kBodyOffset, PROT_READ | PROT_WRITE, MAP_SHARED, file.get(), 0);
    if (memory == MAP_FAILED) {
        FailFromErrno();
        return nullptr;
    }
    return std::make_shared<SharedBlock>(file.release(), memory, path);
}

enum class Joining { Joined, Gone, Failed };

// Becomes one of those who have the object open, unless nobody has: then the file is what a killed process left.
Joining JoinFile(int file, const std::string& path) {
    struct stat status {};
    const OpenGuard guard(file);
    if (fstat(file, &status) == -1 || status.st_nlink == 0) {
        return Joining::Gone;
    }
    if (status.st_uid != geteuid() || !S_ISREG(status.st_mode)) {
        SetLastError(ERROR_ACCESS_DENIED);
        return Joining::Failed;
    }
    if (IsAloneWith(file) || status.st_size < static_cast<off_t>(SharedBlock::kBodyOffset)) {
        const bool removed = unlink(path.c_str()) == 0 || FailFromErrno() != FALSE;
        return removed ? Joining::Gone : Joining::Failed;
    }
    SetLock(file, F_OFD_SETLK, F_RDLCK, kAliveByte);
    return Joining::Joined;
}

bool IsExpected(const SharedBlock& block, const ObjectName& name, SharedKind kind) {
    const Header& header = HeaderOf(block);
    return header.magic == kMagic && header.kind == kind && header.name_length == name.text.size() &&
           std::u16string_view(header.name_start, kNameStart).starts_with(name.text.substr(0, kNameStart));
}

int MakeFile(ULONGLONG size) {
    FileGuard file(open(kFolder, O_TMPFILE | O_RDWR | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (file.get() == -1) {
        FailFromErrno();
        return -1;
    }
    if (const int error = posix_fallocate(file.get(), 0, static_cast<off_t>(size + SharedBlock::kBodyOffset))) {
        FailFromErrno(error);
        return -1;
    }
    return file.release();
}

bool Publish(int file, const std::string& path) {
    const std::string self = "/proc/self/fd/" + std::to_string(file);
    return linkat(AT_FDCWD, self.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

// What is needed to make an object that does not exist.
struct Recipe {
    ULONGLONG size;
    const std::function<void(void*)>& prepare;
};

struct Attempt {
    BlockRef block;
    bool again = false;  // overtaken by another process
};

void WriteHeader(void* memory, const ObjectName& name, SharedKind kind, ULONGLONG size) {
    Header& header = *static_cast<Header*>(memory);
    header = {kMagic, kind, size, static_cast<std::uint32_t>(name.text.size()), {}};
    name.text.copy(header.name_start, kNameStart);
}

// Prepared after it is published: only then is it certain to be the one. Who finds it meanwhile waits for the guard.
Attempt TryMake(const ObjectName& name, SharedKind kind, const Recipe& recipe) {
    FileGuard file(MakeFile(recipe.size));
    if (file.get() == -1) {
        return {};
    }
    if (!SetLock(file.get(), F_OFD_SETLK, F_RDLCK, kAliveByte)) {
        FailFromErrno();
        return {};
    }
    BlockRef block = MapBlock(file, name.path);
    if (!block) {
        return {};
    }
    WriteHeader(block->Memory(), name, kind, recipe.size);
    const OpenGuard guard(block->File());
    if (!Publish(block->File(), name.path)) {
        const bool overtaken = errno == EEXIST || FailFromErrno() != FALSE;
        return {nullptr, overtaken};
    }
    recipe.prepare(block->Body());
    return {std::move(block)};
}

Attempt TryJoin(FileGuard& file, const ObjectName& name) {
    const Joining joining = JoinFile(file.get(), name.path);
    return {joining == Joining::Joined ? MapBlock(file, name.path) : nullptr, joining == Joining::Gone};
}

// From the disk; `recipe` is null to open only.
SharedObject OpenFromFile(const ObjectName& name, SharedKind kind, const Recipe* recipe) {
    for (;;) {
        FileGuard file(open(name.path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW));
        const bool exists = file.get() != -1;
        if (!exists && (errno != ENOENT || recipe == nullptr)) {
            FailFromErrno();
            return {};
        }
        Attempt attempt = exists ? TryJoin(file, name) : TryMake(name, kind, *recipe);
        if (!attempt.again) {
            return {std::move(attempt.block), exists};
        }
    }
}

SharedObject Open(LPCWSTR text, SharedKind kind, const Recipe* recipe) {
    const std::optional<ObjectName> name = ParseName(text);
    if (!name) {
        return {};
    }
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    std::weak_ptr<SharedBlock>& known = registry.blocks[name->path];
    SharedObject object{known.lock(), true};
    if (!object.block) {
        object = OpenFromFile(*name, kind, recipe);
        known = object.block;
    }
    if (object.block && !IsExpected(*object.block, *name, kind)) {
        SetLastError(ERROR_INVALID_HANDLE);
        return {};
    }
    return object;
}

}  // namespace

SharedBlock::SharedBlock(int file, void* memory, std::string path) noexcept
    : file_(file), memory_(memory), path_(std::move(path)), process_(getpid()) {}

SharedBlock::~SharedBlock() {
    if (process_ == getpid()) {
        struct stat status {};
        const OpenGuard guard(file_);
        if (IsAloneWith(file_) && fstat(file_, &status) == 0 && status.st_nlink != 0) {
            unlink(path_.c_str());
        }
    }
    munmap(memory_, kBodyOffset);
    close(file_);
}

void* SharedBlock::Body() const noexcept {
    return static_cast<char*>(memory_) + kMappedBody;
}

ULONGLONG SharedBlock::BodySize() const noexcept {
    return HeaderOf(*this).body_size;
}

SharedObject CreateShared(LPCWSTR name, SharedKind kind, ULONGLONG size, const std::function<void(void*)>& prepare) {
    const Recipe recipe{size, prepare};
    return Open(name, kind, &recipe);
}

SharedObject OpenShared(LPCWSTR name, SharedKind kind) {
    if (name != nullptr && *name == 0) {
        SetLastError(ERROR_INVALID_NAME);
        return {};
    }
    return Open(name, kind, nullptr);
}

bool IsUnnamed(LPCWSTR name) noexcept {
    return name == nullptr || *name == 0;
}

void KeepForEver(std::shared_ptr<void> memory) {
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    registry.kept.push_back(std::move(memory));
}

}  // namespace kawin
