#pragma once

// SQLite behind a hive: connection and prepared statements that close themselves. Internal to the layer.

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "registry.h"

namespace kawin {

// The registry's error number for a result of SQLite. ERROR_BADDB means that the file is damaged or not ours.
LSTATUS ErrorFromSqlite(int result) noexcept;

// Compiled when first used, kept until Finalize.
class Statement {
public:
    explicit constexpr Statement(const char* sql) noexcept : sql_(sql) {}
    void Finalize() noexcept { compiled_.reset(); }
    void Abandon() noexcept { static_cast<void>(compiled_.release()); }

private:
    friend class Run;
    struct Finalizer {
        void operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }
    };
    const char* sql_;
    std::unique_ptr<sqlite3_stmt, Finalizer> compiled_;
};

class Database {
public:
    // Opens an existing file, or creates it when asked to; for reading only where this user may not write. SQLITE_OK or the
    // failure.
    int Open(const std::string& path, bool create);
    void Close() noexcept;

    // Lets go of a connection that belongs to the parent process, without touching it.
    void Abandon() noexcept;

    bool IsOpen() const noexcept { return handle_ != nullptr; }
    bool IsReadOnly() const noexcept { return sqlite3_db_readonly(handle_.get(), "main") != 0; }
    sqlite3* Handle() const noexcept { return handle_.get(); }

    int Execute(const char* sql) noexcept { return sqlite3_exec(handle_.get(), sql, nullptr, nullptr, nullptr); }

    // A write transaction that no other connection's can come between.
    int Begin() noexcept;
    int Commit() noexcept;
    void RollBack() noexcept;

    // The index of the write-ahead log that all processes with this database share, as far as it starts; null where there is
    // none. Valid until Close.
    const std::uint32_t* SharedIndex() const noexcept;

private:
    bool HasWriteAheadLog() const noexcept;

    struct Closer {
        void operator()(sqlite3* handle) const noexcept { sqlite3_close_v2(handle); }
    };
    std::unique_ptr<sqlite3, Closer> handle_;
    Statement begin_{"BEGIN IMMEDIATE"};
    Statement commit_{"COMMIT"};
    Statement roll_back_{"ROLLBACK"};
};

// One use of a statement: bind from the left, step, read; reset at the end.
class Run {
public:
    Run(const Database& database, Statement& statement) noexcept;
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;
    ~Run();

    Run& Bind(std::int64_t value) noexcept;
    Run& Bind(std::u16string_view text) noexcept;  // the text outlives the run
    Run& BindBytes(std::string_view bytes) noexcept;

    // SQLITE_ROW, SQLITE_DONE or the first failure, that of compiling and binding included.
    int Step() noexcept;

    std::int64_t Integer(int column) const noexcept { return sqlite3_column_int64(statement_, column); }
    std::string_view Bytes(int column) const noexcept;  // both valid until the next step
    std::u16string_view Text(int column) const noexcept;

private:
    void Note(int result) noexcept { result_ = result_ == SQLITE_OK ? result : result_; }

    sqlite3_stmt* statement_ = nullptr;
    int result_ = SQLITE_OK;
    int next_ = 1;
};

// A write transaction; rolled back unless committed.
class Transaction {
public:
    explicit Transaction(Database& database) noexcept : database_(database), begun_(database.Begin()) {}
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction();

    int Begun() const noexcept { return begun_; }  // SQLITE_OK or why there is none
    int Commit() noexcept;

private:
    Database& database_;
    int begun_;
    bool committed_ = false;
};

}  // namespace kawin
