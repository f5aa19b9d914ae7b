#include "hive.h"

#include <errno.h>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <optional>

#include "../base/path_map.h"
#include "../base/utf.h"
#include "../files/xdg.h"
#include "../process/native_environment.h"
#include "../text/case_fold.h"

namespace kawin {
namespace {

constexpr std::int64_t kSchemaVersion = 1;
constexpr mode_t kUserFolderRights = 0700;
constexpr mode_t kMachineFolderRights = 0755;  // every user reads the machine's settings

// Rows are never numbered twice, so that a handle of a removed key cannot come to mean another one. Key 0 is the hive's root
// and has no row.
constexpr const char* kSchema =
    "CREATE TABLE IF NOT EXISTS keys ("
    " id INTEGER PRIMARY KEY AUTOINCREMENT, parent INTEGER NOT NULL, folded TEXT NOT NULL, name TEXT NOT NULL, UNIQUE (parent, "
    "folded));"
    "CREATE TABLE IF NOT EXISTS entries ("
    " key INTEGER NOT NULL, folded TEXT NOT NULL, name TEXT NOT NULL, type INTEGER NOT NULL, data BLOB NOT NULL,"
    " PRIMARY KEY (key, folded)) WITHOUT ROWID;"
    "PRAGMA application_id = 1262572882;"  // "KARR"
    "PRAGMA user_version = 1";

std::string Folded(std::u16string_view name) {
    std::u16string folded(name);
    std::transform(folded.begin(), folded.end(), folded.begin(), [](char16_t unit) { return FoldSimple(unit); });
    return ToUtf8(folded);
}

// Cuts the next non-empty part off the path; empty at the end.
std::u16string_view NextPart(std::u16string_view& path) {
    path.remove_prefix(std::min(path.find_first_not_of(u'\\'), path.size()));
    const std::u16string_view part = path.substr(0, path.find(u'\\'));
    path.remove_prefix(part.size());
    return part;
}

std::string FolderOf(const std::string& file) {
    return file.substr(0, file.rfind('/'));
}

bool MayWrite(const std::string& native) {
    return faccessat(AT_FDCWD, native.c_str(), W_OK, AT_EACCESS) == 0;
}

bool IsThere(const std::string& native) {
    return faccessat(AT_FDCWD, native.c_str(), F_OK, AT_EACCESS) == 0;
}

// Held while a hive is made: two processes that both find none must not both lay it out.
class FolderLock {
public:
    explicit FolderLock(const std::string& folder) : folder_(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        while (folder_ >= 0 && flock(folder_, LOCK_EX) != 0 && errno == EINTR) {
        }
    }
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;
    ~FolderLock() {
        if (folder_ >= 0) {
            close(folder_);
        }
    }

private:
    int folder_;
};

std::optional<std::int64_t> Number(const Database& database, const char* pragma, int& result) {
    Statement statement(pragma);
    Run run(database, statement);
    result = run.Step();
    return result == SQLITE_ROW ? std::optional<std::int64_t>(run.Integer(0)) : std::nullopt;
}

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

struct HiveSlots {
    std::mutex mutex;
    std::shared_ptr<Hive> hives[2];  // guarded by mutex
};

}  // namespace

bool Hive::IsWritable() {
    const std::lock_guard lock(mutex_);
    if (IsThere(file_)) {
        return MayWrite(file_) && MayWrite(FolderOf(file_));
    }
    std::string folder = FolderOf(file_);
    while (!folder.empty() && !IsThere(folder)) {
        folder = FolderOf(folder);
    }
    return MayWrite(folder.empty() ? "/" : folder);
}

void Hive::Detach() noexcept {
    for (Statement* const statement : statements_) {
        statement->Finalize();
    }
    database_.Close();
}

void Hive::AbandonParents() noexcept {
    for (Statement* const statement : statements_) {
        statement->Abandon();
    }
    database_.Abandon();
}

// ERROR_FILE_NOT_FOUND for a file that has not been laid out yet; ERROR_BADDB for one that is damaged or newer than this code.
LSTATUS Hive::CheckSchema() {
    int result = SQLITE_OK;
    const std::optional<std::int64_t> version = Number(database_, "PRAGMA user_version", result);
    if (!version) {
        return ErrorFromSqlite(result);
    }
    if (*version == 0) {
        return ERROR_FILE_NOT_FOUND;
    }
    return *version == kSchemaVersion ? ERROR_SUCCESS : ERROR_BADDB;
}

LSTATUS Hive::Attach() {
    if (database_.IsOpen() && owner_ != getpid()) {
        AbandonParents();
    }
    if (database_.IsOpen()) {
        return ERROR_SUCCESS;
    }
    if (!IsThere(file_)) {
        return ERROR_FILE_NOT_FOUND;
    }
    return OpenFile(false);
}

LSTATUS Hive::OpenFile(bool create) {
    owner_ = getpid();
    LSTATUS status = ErrorFromSqlite(database_.Open(file_, create));
    if (status == ERROR_SUCCESS) {
        status = create ? CreateSchema() : CheckSchema();
    }
    if (status != ERROR_SUCCESS) {
        Detach();
    }
    return status;
}

// Under the folder's lock only.
LSTATUS Hive::CreateSchema() {
    int result = database_.Execute("PRAGMA journal_mode = WAL");
    if (result == SQLITE_OK) {
        Transaction transaction(database_);
        result = transaction.Begun();
        if (result == SQLITE_OK) {
            result = database_.Execute(kSchema);
        }
        if (result == SQLITE_OK) {
            result = transaction.Commit();
        }
    }
    return ErrorFromSqlite(result);
}

LSTATUS Hive::AttachForWriting() {
    LSTATUS status = Attach();
    if (status != static_cast<LSTATUS>(ERROR_FILE_NOT_FOUND)) {
        return status == ERROR_SUCCESS && database_.IsReadOnly() ? ERROR_ACCESS_DENIED : status;
    }
    const std::string folder = FolderOf(file_);
    const bool whole_machine = file_.compare(0, 5, "/var/") == 0;
    if (!MakeFolders(folder, whole_machine ? kMachineFolderRights : kUserFolderRights)) {
        return ERROR_ACCESS_DENIED;
    }
    const FolderLock lock(folder);
    status = Attach();  // another process may have been faster
    return status == static_cast<LSTATUS>(ERROR_FILE_NOT_FOUND) ? OpenFile(true) : status;
}

LSTATUS Hive::Child(KeyId parent, std::u16string_view name, KeyId& key) {
    const std::string folded = Folded(name);
    Run run(database_, find_key_);
    const int result = run.Bind(parent).Bind(folded).Step();
    if (result == SQLITE_ROW) {
        key = run.Integer(0);
    }
    return result == SQLITE_DONE ? ERROR_FILE_NOT_FOUND : ErrorFromSqlite(result);
}

LSTATUS Hive::AddChild(KeyId parent, std::u16string_view name, KeyId& key) {
    const std::string folded = Folded(name);
    const std::string written = ToUtf8(name);
    Run run(database_, add_key_);
    const int result = run.Bind(parent).Bind(folded).Bind(written).Step();
    key = sqlite3_last_insert_rowid(database_.Handle());
    return ErrorFromSqlite(result);
}

LSTATUS Hive::Exists(KeyId key) {
    if (key == kRootKey) {
        return ERROR_SUCCESS;
    }
    Run run(database_, key_exists_);
    const int result = run.Bind(key).Step();
    return result == SQLITE_DONE ? ERROR_KEY_DELETED : ErrorFromSqlite(result);
}

LSTATUS Hive::Walk(KeyId from, std::u16string_view path, KeyId& key) {
    LSTATUS status = ERROR_SUCCESS;
    key = from;
    for (std::u16string_view part; status == ERROR_SUCCESS && !(part = NextPart(path)).empty();) {
        status = Child(key, part, key);
    }
    return status;
}

LSTATUS Hive::WalkAndAdd(KeyId from, std::u16string_view path, KeyId& key, bool& created) {
    LSTATUS status = Exists(from);
    key = from;
    created = false;
    for (std::u16string_view part; status == ERROR_SUCCESS && !(part = NextPart(path)).empty();) {
        status = Child(key, part, key);
        created = status == static_cast<LSTATUS>(ERROR_FILE_NOT_FOUND);
        if (created) {
            status = AddChild(key, part, key);
        }
    }
    return status;
}

LSTATUS Hive::FindKey(KeyId from, std::u16string_view path, KeyId& key) {
    const std::lock_guard lock(mutex_);
    key = from;
    if (from == kRootKey && path.find_first_not_of(u'\\') == path.npos) {
        return ERROR_SUCCESS;  // the root is there even where no database is
    }
    const LSTATUS status = Attach();
    if (status == static_cast<LSTATUS>(ERROR_BADDB) || status == static_cast<LSTATUS>(ERROR_CANTOPEN)) {
        return ERROR_FILE_NOT_FOUND;
    }
    return status == ERROR_SUCCESS ? Walk(from, path, key) : status;
}

LSTATUS Hive::CreateKey(KeyId from, std::u16string_view path, KeyId& key, bool& created) {
    const std::lock_guard lock(mutex_);
    created = false;
    if (Attach() == ERROR_SUCCESS && Walk(from, path, key) == ERROR_SUCCESS) {
        return Exists(key);
    }
    LSTATUS status = AttachForWriting();
    if (status != ERROR_SUCCESS) {
        return status;
    }
    Transaction transaction(database_);
    status = ErrorFromSqlite(transaction.Begun());
    if (status == ERROR_SUCCESS) {
        status = WalkAndAdd(from, path, key, created);
    }
    return status == ERROR_SUCCESS ? ErrorFromSqlite(transaction.Commit()) : status;
}

LSTATUS Hive::Read(KeyId key, std::u16string_view name, RegistryValue& value) {
    const std::lock_guard lock(mutex_);
    const LSTATUS status = Attach();
    if (status != ERROR_SUCCESS) {
        return key == kRootKey ? ERROR_FILE_NOT_FOUND : status;
    }
    const std::string folded = Folded(name);
    Run run(database_, read_value_);
    const int result = run.Bind(key).Bind(folded).Step();
    if (result == SQLITE_ROW) {
        value.type = static_cast<DWORD>(run.Integer(0));
        value.bytes = run.Bytes(1);
        return ERROR_SUCCESS;
    }
    if (result != SQLITE_DONE) {
        return ErrorFromSqlite(result);
    }
    const LSTATUS existing = Exists(key);
    return existing == ERROR_SUCCESS ? ERROR_FILE_NOT_FOUND : existing;
}

LSTATUS Hive::Write(KeyId key, std::u16string_view name, DWORD type, const void* bytes, std::size_t size) {
    const std::lock_guard lock(mutex_);
    LSTATUS status = AttachForWriting();
    if (status != ERROR_SUCCESS) {
        return status;
    }
    Transaction transaction(database_);
    status = ErrorFromSqlite(transaction.Begun());
    if (status == ERROR_SUCCESS) {
        status = Exists(key);
    }
    if (status != ERROR_SUCCESS) {
        return status;
    }
    const std::string folded = Folded(name);
    const std::string written = ToUtf8(name);
    {
        Run run(database_, write_value_);
        status = ErrorFromSqlite(run.Bind(key).Bind(folded).Bind(written).Bind(std::int64_t{type}).BindBytes(bytes, size).Step());
    }
    return status == ERROR_SUCCESS ? ErrorFromSqlite(transaction.Commit()) : status;
}

LSTATUS Hive::Remove(KeyId key, std::u16string_view name) {
    const std::lock_guard lock(mutex_);
    LSTATUS status = Attach();
    if (status != ERROR_SUCCESS) {
        return status;
    }
    const std::string folded = Folded(name);
    Transaction transaction(database_);
    status = ErrorFromSqlite(transaction.Begun());
    if (status != ERROR_SUCCESS) {
        return status;
    }
    {
        Run run(database_, remove_value_);
        status = ErrorFromSqlite(run.Bind(key).Bind(folded).Step());
    }
    if (status == ERROR_SUCCESS && sqlite3_changes(database_.Handle()) == 0) {
        return ERROR_FILE_NOT_FOUND;
    }
    return status == ERROR_SUCCESS ? ErrorFromSqlite(transaction.Commit()) : status;
}

LSTATUS Hive::RemoveBelow(KeyId key, bool itself) {
    Run values(database_, remove_values_below_);
    const int result = values.Bind(key).Step();
    if (result != SQLITE_DONE) {
        return ErrorFromSqlite(result);
    }
    Run keys(database_, remove_keys_below_);
    return ErrorFromSqlite(keys.Bind(key).Bind(std::int64_t{itself}).Step());
}

LSTATUS Hive::RemoveTree(KeyId from, std::u16string_view path) {
    const std::lock_guard lock(mutex_);
    LSTATUS status = Attach();
    if (status != ERROR_SUCCESS) {
        return status;
    }
    Transaction transaction(database_);
    status = ErrorFromSqlite(transaction.Begun());
    KeyId key = from;
    if (status == ERROR_SUCCESS) {
        status = Walk(from, path, key);
    }
    if (status == ERROR_SUCCESS) {
        status = RemoveBelow(key, key != from);
    }
    return status == ERROR_SUCCESS ? ErrorFromSqlite(transaction.Commit()) : status;
}

std::shared_ptr<Hive> FindHive(HiveKind kind) {
    static HiveSlots& slots = *new HiveSlots;  // never destroyed: other threads may still ask while the process ends
    const std::string file = HiveFile(kind);
    if (file.empty()) {
        return nullptr;
    }
    const std::lock_guard lock(slots.mutex);
    std::shared_ptr<Hive>& hive = slots.hives[kind == HiveKind::user ? 0 : 1];
    if (hive == nullptr || hive->File() != file) {
        hive = std::make_shared<Hive>(file);
    }
    return hive;
}

}  // namespace kawin
