#include "database.h"

#include <unistd.h>

namespace kawin {
namespace {

constexpr int kBusyMilliseconds = 5000;

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
        // Without the log's files a user who may only read could not open the machine's hive.
        int persist = 1;
        sqlite3_file_control(handle, "main", SQLITE_FCNTL_PERSIST_WAL, &persist);
        result = Execute("PRAGMA synchronous = NORMAL");
    }
    if (result != SQLITE_OK) {
        Close();
    }
    return result;
}

Run::Run(const Database& database, Statement& statement) noexcept {
    if (statement.compiled_ == nullptr) {
        sqlite3_stmt* compiled = nullptr;
        result_ = sqlite3_prepare_v3(database.Handle(), statement.sql_, -1, SQLITE_PREPARE_PERSISTENT, &compiled, nullptr);
        statement.compiled_.reset(compiled);
    }
    statement_ = statement.compiled_.get();
}

Run::~Run() {
    sqlite3_reset(statement_);
    sqlite3_clear_bindings(statement_);
}

Run& Run::Bind(std::int64_t value) noexcept {
    Note(sqlite3_bind_int64(statement_, next_++, value));
    return *this;
}

Run& Run::Bind(std::string_view text) noexcept {
    Note(sqlite3_bind_text(statement_, next_++, text.empty() ? "" : text.data(), static_cast<int>(text.size()), SQLITE_STATIC));
    return *this;
}

Run& Run::BindBytes(const void* bytes, std::size_t size) noexcept {
    // A null pointer would store NULL, not an empty value.
    Note(sqlite3_bind_blob64(statement_, next_++, size == 0 ? "" : bytes, size, SQLITE_STATIC));
    return *this;
}

int Run::Step() noexcept {
    if (result_ != SQLITE_OK) {
        return result_;
    }
    return sqlite3_step(statement_);
}

std::string_view Run::Bytes(int column) const noexcept {
    const auto* const bytes = static_cast<const char*>(sqlite3_column_blob(statement_, column));
    const int size = sqlite3_column_bytes(statement_, column);
    return bytes == nullptr ? std::string_view() : std::string_view(bytes, static_cast<std::size_t>(size));
}

Transaction::~Transaction() {
    if (begun_ == SQLITE_OK && !committed_) {
        database_.Execute("ROLLBACK");
    }
}

int Transaction::Commit() noexcept {
    const int result = database_.Execute("COMMIT");
    committed_ = result == SQLITE_OK;
    return result;
}

}  // namespace kawin
