#include "hive_tables.h"

#include <sys/random.h>
#include <zlib.h>

#include <algorithm>
#include <optional>

#include "../text/case_fold.h"

namespace kawin {
namespace {

constexpr std::int64_t kLayoutVersion = 2;
constexpr std::int64_t kApplication = 0x4B415252;   // "KARR"
constexpr KeyId kHighestId = (KeyId{1} << 53) - 1;  // exact in every tool that shows it

// Texts are UTF-16, so that SQLite itself can show the values that are texts. Ids are random: a handle of a removed key, or of a
// hive that was replaced, can never come to mean another key. The view is for technicians; nothing here reads it.
constexpr const char* kLayout =
    "CREATE TABLE keys ("
    " parent INTEGER NOT NULL, folded TEXT NOT NULL, id INTEGER NOT NULL UNIQUE, name TEXT NOT NULL, \"check\" INTEGER NOT NULL,"
    " PRIMARY KEY (parent, folded)) WITHOUT ROWID;"
    "CREATE TABLE entries ("
    " key INTEGER NOT NULL, folded TEXT NOT NULL, name TEXT NOT NULL, type INTEGER NOT NULL, data BLOB NOT NULL,"
    " \"check\" INTEGER NOT NULL, PRIMARY KEY (key, folded)) WITHOUT ROWID;"
    "CREATE VIEW listing AS"
    " WITH RECURSIVE path (id, text) AS (SELECT id, name FROM keys WHERE parent = 0 UNION ALL"
    "  SELECT keys.id, path.text || '\\' || keys.name FROM keys JOIN path ON keys.parent = path.id),"
    " digit (n, text) AS (VALUES (1, '0123456789ABCDEF'))"
    " SELECT path.text AS key, entries.name AS name, type, CASE"
    "  WHEN type IN (1, 2) THEN rtrim(CAST(data AS TEXT), char(0))"
    "  WHEN type = 4 AND length(data) = 4 THEN (SELECT"
    "   (instr(digit.text, substr(hex(data), 7, 1)) - 1) * 268435456 + (instr(digit.text, substr(hex(data), 8, 1)) - 1) * "
    "16777216 +"
    "   (instr(digit.text, substr(hex(data), 5, 1)) - 1) * 1048576 + (instr(digit.text, substr(hex(data), 6, 1)) - 1) * 65536 +"
    "   (instr(digit.text, substr(hex(data), 3, 1)) - 1) * 4096 + (instr(digit.text, substr(hex(data), 4, 1)) - 1) * 256 +"
    "   (instr(digit.text, substr(hex(data), 1, 1)) - 1) * 16 + instr(digit.text, substr(hex(data), 2, 1)) - 1 FROM digit)"
    "  ELSE hex(data) END AS value"
    " FROM entries JOIN path ON entries.key = path.id;"
    "PRAGMA application_id = 1262572114;"
    "PRAGMA user_version = 2";

class Check {
public:
    Check& operator<<(std::int64_t number) noexcept { return Add(&number, sizeof number); }
    Check& operator<<(std::u16string_view text) noexcept {
        return *this << static_cast<std::int64_t>(text.size()), Add(text.data(), text.size() * sizeof(char16_t));
    }
    Check& operator<<(std::string_view bytes) noexcept { return Add(bytes.data(), bytes.size()); }
    std::int64_t Get() const noexcept { return static_cast<std::int64_t>(value_); }

private:
    Check& Add(const void* bytes, std::size_t size) noexcept {
        value_ = crc32_z(value_, static_cast<const Bytef*>(bytes), size);
        return *this;
    }
    uLong value_ = crc32_z(0, nullptr, 0);
};

std::int64_t CheckOfKey(KeyId parent, std::u16string_view folded, KeyId id) {
    return (Check() << parent << folded << id).Get();
}

std::int64_t CheckOfValue(KeyId key, std::u16string_view folded, DWORD type, std::string_view bytes) {
    return (Check() << key << folded << std::int64_t{type} << bytes).Get();
}

// Cuts the next non-empty part off the path; empty at the end.
std::u16string_view NextPart(std::u16string_view& path) {
    path.remove_prefix(std::min(path.find_first_not_of(u'\\'), path.size()));
    const std::u16string_view part = path.substr(0, path.find(u'\\'));
    path.remove_prefix(part.size());
    return part;
}

std::optional<std::int64_t> Number(const Database& database, const char* pragma, int& result) {
    Statement statement(pragma);
    Run run(database, statement);
    result = run.Step();
    return result == SQLITE_ROW ? std::optional<std::int64_t>(run.Integer(0)) : std::nullopt;
}

// What is shown of a name that was damaged is the folded one.
std::u16string ShownName(const Run& run) {
    std::u16string name(run.Text(0));
    std::u16string folded(run.Text(1));
    return FoldedName(name) == folded ? name : folded;
}

LSTATUS Done(int result) noexcept {
    return result == SQLITE_DONE ? ERROR_SUCCESS : ErrorFromSqlite(result);
}

}  // namespace

std::u16string FoldedName(std::u16string_view name) {
    std::u16string folded(name);
    std::transform(folded.begin(), folded.end(), folded.begin(), [](char16_t unit) { return FoldSimple(unit); });
    return folded;
}

LSTATUS HiveTables::Open(const std::string& file, bool create) {
    LSTATUS status = ErrorFromSqlite(database_.Open(file, create));
    if (status == ERROR_SUCCESS) {
        status = CheckLayout();
    }
    if (create && status == static_cast<LSTATUS>(ERROR_FILE_NOT_FOUND)) {
        status = LayOut();
    } else if (status == ERROR_SUCCESS && !database_.IsReadOnly()) {
        database_.Execute(
            "PRAGMA journal_mode = WAL");  // a copy that a technician made may have lost it; going on without is slower
    }
    if (status != ERROR_SUCCESS) {
        Close();
    }
    return status;
}

void HiveTables::Close() noexcept {
    for (Statement* const statement : statements_) {
        statement->Finalize();
    }
    database_.Close();
}

void HiveTables::Abandon() noexcept {
    for (Statement* const statement : statements_) {
        statement->Abandon();
    }
    database_.Abandon();
}

LSTATUS HiveTables::CheckLayout() {
    int result = SQLITE_OK;
    const std::optional<std::int64_t> application = Number(database_, "PRAGMA application_id", result);
    if (!application) {
        return ErrorFromSqlite(result);
    }
    const std::int64_t version = Number(database_, "PRAGMA user_version", result).value_or(0);
    if (*application == 0 && version == 0) {
        const bool empty = Number(database_, "SELECT count(*) FROM sqlite_schema", result).value_or(1) == 0;
        return empty ? ERROR_FILE_NOT_FOUND : ERROR_BADDB;
    }
    if (*application == kApplication && version > kLayoutVersion) {
        return ERROR_REVISION_MISMATCH;
    }
    return *application == kApplication && version == kLayoutVersion ? ERROR_SUCCESS : ERROR_BADDB;
}

LSTATUS HiveTables::LayOut() {
    int result = database_.Execute("PRAGMA encoding = 'UTF-16le'; PRAGMA journal_mode = WAL");
    if (result == SQLITE_OK) {
        Transaction transaction(database_);
        result = transaction.Begun();
        if (result == SQLITE_OK) {
            result = database_.Execute(kLayout);
        }
        if (result == SQLITE_OK) {
            result = transaction.Commit();
        }
    }
    return ErrorFromSqlite(result);
}

LSTATUS HiveTables::Child(KeyId parent, std::u16string_view name, KeyId& key) {
    const std::u16string folded = FoldedName(name);
    Run run(database_, find_key_);
    const int result = run.Bind(parent).Bind(folded).Step();
    if (result != SQLITE_ROW) {
        return result == SQLITE_DONE ? ERROR_FILE_NOT_FOUND : ErrorFromSqlite(result);
    }
    key = run.Integer(0);
    return run.Integer(1) == CheckOfKey(parent, folded, key) ? ERROR_SUCCESS : ERROR_CRC;
}

LSTATUS HiveTables::AddChild(KeyId parent, std::u16string_view name, KeyId& key) {
    const std::u16string folded = FoldedName(name);
    do {
        if (getrandom(&key, sizeof key, 0) != sizeof key) {
            return ERROR_GEN_FAILURE;
        }
        key &= kHighestId;
    } while (key == kRootKey);
    Run run(database_, add_key_);
    return Done(run.Bind(parent).Bind(folded).Bind(key).Bind(name).Bind(CheckOfKey(parent, folded, key)).Step());
}

LSTATUS HiveTables::Exists(KeyId key) {
    if (key == kRootKey) {
        return ERROR_SUCCESS;
    }
    Run run(database_, key_exists_);
    const int result = run.Bind(key).Step();
    return result == SQLITE_DONE ? ERROR_KEY_DELETED : ErrorFromSqlite(result);
}

LSTATUS HiveTables::FindKey(KeyId from, std::u16string_view path, KeyId& key) {
    LSTATUS status = ERROR_SUCCESS;
    key = from;
    for (std::u16string_view part; status == ERROR_SUCCESS && !(part = NextPart(path)).empty();) {
        status = Child(key, part, key);
    }
    return status;
}

LSTATUS HiveTables::CreateKey(KeyId from, std::u16string_view path, KeyId& key, bool& created) {
    LSTATUS status = Exists(from);
    key = from;
    created = false;
    for (std::u16string_view part; status == ERROR_SUCCESS && !(part = NextPart(path)).empty();) {
        const KeyId parent = key;
        status = Child(parent, part, key);
        created = status == static_cast<LSTATUS>(ERROR_FILE_NOT_FOUND) || status == static_cast<LSTATUS>(ERROR_CRC);
        if (created) {
            status = AddChild(parent, part, key);
        }
    }
    return status;
}

LSTATUS HiveTables::Read(KeyId key, std::u16string_view name, RegistryValue& value) {
    const std::u16string folded = FoldedName(name);
    Run run(database_, read_value_);
    const int result = run.Bind(key).Bind(folded).Step();
    if (result == SQLITE_ROW) {
        value.type = static_cast<DWORD>(run.Integer(0));
        value.bytes = run.Bytes(1);
        return run.Integer(2) == CheckOfValue(key, folded, value.type, value.bytes) ? ERROR_SUCCESS : ERROR_CRC;
    }
    if (result != SQLITE_DONE) {
        return ErrorFromSqlite(result);
    }
    const LSTATUS existing = Exists(key);
    return existing == ERROR_SUCCESS ? ERROR_FILE_NOT_FOUND : existing;
}

LSTATUS HiveTables::Write(KeyId key, std::u16string_view name, DWORD type, std::string_view bytes) {
    const std::u16string folded = FoldedName(name);
    Run run(database_, write_value_);
    const LSTATUS status = Done(run.Bind(key)
                                    .Bind(folded)
                                    .Bind(name)
                                    .Bind(std::int64_t{type})
                                    .BindBytes(bytes)
                                    .Bind(CheckOfValue(key, folded, type, bytes))
                                    .Step());
    return status == ERROR_SUCCESS && sqlite3_changes(database_.Handle()) == 0 ? ERROR_KEY_DELETED : status;
}

LSTATUS HiveTables::RemoveValue(KeyId key, std::u16string_view name) {
    const std::u16string folded = FoldedName(name);
    Run run(database_, remove_value_);
    const LSTATUS status = Done(run.Bind(key).Bind(folded).Step());
    return status == ERROR_SUCCESS && sqlite3_changes(database_.Handle()) == 0 ? ERROR_FILE_NOT_FOUND : status;
}

LSTATUS HiveTables::RemoveRow(KeyId key) {
    const LSTATUS status = Done(Run(database_, remove_values_).Bind(key).Step());
    return status == ERROR_SUCCESS ? Done(Run(database_, remove_key_).Bind(key).Step()) : status;
}

LSTATUS HiveTables::RemoveKey(KeyId from, std::u16string_view path) {
    KeyId key = from;
    const LSTATUS status = FindKey(from, path, key);
    if (status != ERROR_SUCCESS || key == kRootKey) {
        return status != ERROR_SUCCESS ? status : ERROR_ACCESS_DENIED;
    }
    const int below = Run(database_, has_child_).Bind(key).Step();
    if (below != SQLITE_DONE) {
        return below == SQLITE_ROW ? ERROR_ACCESS_DENIED : ErrorFromSqlite(below);
    }
    return RemoveRow(key);
}

LSTATUS HiveTables::RemoveTree(KeyId from, std::u16string_view path) {
    KeyId key = from;
    LSTATUS status = FindKey(from, path, key);
    if (status == ERROR_SUCCESS) {
        status = Done(Run(database_, remove_values_below_).Bind(key).Step());
    }
    if (status == ERROR_SUCCESS) {
        status = Done(Run(database_, remove_keys_below_).Bind(key).Bind(std::int64_t{key != from}).Step());
    }
    return status;
}

LSTATUS HiveTables::KeyAt(KeyId key, DWORD index, std::u16string& name) {
    Run run(database_, key_at_);
    const int result = run.Bind(key).Bind(std::int64_t{index}).Step();
    if (result != SQLITE_ROW) {
        return result == SQLITE_DONE ? ERROR_NO_MORE_ITEMS : ErrorFromSqlite(result);
    }
    name = ShownName(run);
    return ERROR_SUCCESS;
}

LSTATUS HiveTables::ValueAt(KeyId key, DWORD index, std::u16string& name, RegistryValue& value) {
    std::u16string folded;
    {
        Run run(database_, value_at_);
        const int result = run.Bind(key).Bind(std::int64_t{index}).Step();
        if (result != SQLITE_ROW) {
            return result == SQLITE_DONE ? ERROR_NO_MORE_ITEMS : ErrorFromSqlite(result);
        }
        name = ShownName(run);
        folded = run.Text(1);
    }
    return Read(key, folded, value);
}

LSTATUS HiveTables::Count(KeyId key, KeyCounts& counts) {
    const LSTATUS status = Exists(key);
    if (status != ERROR_SUCCESS) {
        return status;
    }
    Run keys(database_, count_keys_);
    int result = keys.Bind(key).Step();
    if (result == SQLITE_ROW) {
        counts.keys = static_cast<DWORD>(keys.Integer(0));
        counts.longest_key = static_cast<DWORD>(keys.Integer(1));
    }
    Run values(database_, count_values_);
    result = result == SQLITE_ROW ? values.Bind(key).Step() : result;
    if (result == SQLITE_ROW) {
        counts.values = static_cast<DWORD>(values.Integer(0));
        counts.longest_name = static_cast<DWORD>(values.Integer(1));
        counts.longest_value = static_cast<DWORD>(values.Integer(2));
    }
    return ErrorFromSqlite(result);
}

}  // namespace kawin
