#include "database.h"

namespace kawin {
namespace {

constexpr int kBusyMilliseconds = 5000;
constexpr int kIndexRegion = 32768;  // the size of one region of the log's index

}  // namespace

LSTATUS ErrorFromSqlite(int result) noexcept {
    switch (result & 0xFF) {
        case SQLITE_OK:
        case SQLITE_ROW:
        case SQLITE_DONE:
            return ERROR_SUCCESS;
        case SQLITE_PERM:
        case SQLITE_READONLY:
        case SQLITE_AUTH:
            return ERROR_ACCESS_DENIED;
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return ERROR_BUSY;
        case SQLITE_NOMEM:
            return ERROR_NOT_ENOUGH_MEMORY;
        case SQLITE_FULL:
            return ERROR_DISK_FULL;
        case SQLITE_IOERR:
            return ERROR_IO_DEVICE;
        case SQLITE_CANTOPEN:
            return ERROR_CANTOPEN;
        case SQLITE_TOOBIG:
            return ERROR_INVALID_PARAMETER;
        default:  // SQLITE_CORRUPT, SQLITE_NOTADB, and tables that are not ours
            return ERROR_BADDB;
    }
}

int Database::Open(const std::string& path, bool create) {
    sqlite3* handle = nullptr;
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | (create ? SQLITE_OPEN_CREATE : 0);
    int result = sqlite3_open_v2(path.c_str(), &handle, flags, nullptr);
    handle_.reset(handle);
    if (result == SQLITE_OK) {
        sqlite3_extended_result_codes(handle, 1);
        sqlite3_busy_timeout(handle, kBusyMilliseconds);
        // A damaged file must not get further than a failure.
        sqlite3_db_config(handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
        sqlite3_db_config(handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
        // Without the log's files a user who may only read could not open the machine's hive.
        int persist = 1;
        sqlite3_file_control(handle, "main", SQLITE_FCNTL_PERSIST_WAL, &persist);
        result = Execute("PRAGMA synchronous = NORMAL; PRAGMA cell_size_check = ON");
    }
    if (result != SQLITE_OK) {
        Close();
    }
    return result;
}

void Database::Close() noexcept {
    for (Statement* const statement : {&begin_, &commit_, &roll_back_}) {
        statement->Finalize();
    }
    handle_.reset();
}

void Database::Abandon() noexcept {
    for (Statement* const statement : {&begin_, &commit_, &roll_back_}) {
        statement->Abandon();
    }
    static_cast<void>(handle_.release());
}

int Database::Begin() noexcept {
    const int result = Run(*this, begin_).Step();
    return result == SQLITE_DONE ? SQLITE_OK : result;
}

int Database::Commit() noexcept {
    const int result = Run(*this, commit_).Step();
    return result == SQLITE_DONE ? SQLITE_OK : result;
}

void Database::RollBack() noexcept {
    Run(*this, roll_back_).Step();
}

// Asking for the index of a database without such a log would make one that nobody takes down.
bool Database::HasWriteAheadLog() const noexcept {
    Statement statement("PRAGMA journal_mode");
    Run run(*this, statement);
    return run.Step() == SQLITE_ROW && run.Text(0) == u"wal";
}

const std::uint32_t* Database::SharedIndex() const noexcept {
    if (!HasWriteAheadLog()) {
        return nullptr;
    }
    sqlite3_file* file = nullptr;
    if (sqlite3_file_control(handle_.get(), "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK || file == nullptr ||
        file->pMethods == nullptr || file->pMethods->iVersion < 2) {
        return nullptr;
    }
    void volatile* region = nullptr;
    const int result = file->pMethods->xShmMap(file, 0, kIndexRegion, 0, &region);
    return result == SQLITE_OK || result == SQLITE_READONLY ? static_cast<const std::uint32_t*>(const_cast<void*>(region))
                                                            : nullptr;
}

Run::Run(const Database& database, Statement& statement) noexcept {
    if (statement.compiled_ == nullptr) {
        sqlite3_stmt* compiled = nullptr;
        result_ = sqlite3_prepare_v3(database.Handle(), statement.sql_, -1, SQLITE_PREPARE_PERSISTENT, &compiled, nullptr);
        statement.compiled_.reset(compiled);
    }
    statement_ = statement.compiled_.get();
}

// What was bound is gone when the run ends, and is bound anew before the next.
Run::~Run() {
    sqlite3_reset(statement_);
}

Run& Run::Bind(std::int64_t value) noexcept {
    Note(sqlite3_bind_int64(statement_, next_++, value));
    return *this;
}

Run& Run::Bind(std::u16string_view text) noexcept {
    Note(sqlite3_bind_text16(statement_, next_++, text.empty() ? u"" : text.data(),
                             static_cast<int>(text.size() * sizeof(char16_t)), SQLITE_STATIC));
    return *this;
}

Run& Run::BindBytes(std::string_view bytes) noexcept {
    // A null pointer would store NULL, not an empty value.
    Note(sqlite3_bind_blob64(statement_, next_++, bytes.empty() ? "" : bytes.data(), bytes.size(), SQLITE_STATIC));
    return *this;
}

int Run::Step() noexcept {
    return result_ != SQLITE_OK ? result_ : sqlite3_step(statement_);
}

std::string_view Run::Bytes(int column) const noexcept {
    const auto* const bytes = static_cast<const char*>(sqlite3_column_blob(statement_, column));
    const int size = sqlite3_column_bytes(statement_, column);
    return bytes == nullptr ? std::string_view() : std::string_view(bytes, static_cast<std::size_t>(size));
}

std::u16string_view Run::Text(int column) const noexcept {
    const auto* const text = static_cast<const char16_t*>(sqlite3_column_text16(statement_, column));
    const int bytes = sqlite3_column_bytes16(statement_, column);
    return text == nullptr ? std::u16string_view()
                           : std::u16string_view(text, static_cast<std::size_t>(bytes) / sizeof(char16_t));
}

Transaction::~Transaction() {
    if (begun_ == SQLITE_OK && !committed_) {
        database_.RollBack();
    }
}

int Transaction::Commit() noexcept {
    const int result = database_.Commit();
    committed_ = result == SQLITE_OK;
    return result;
}

}  // namespace kawin
