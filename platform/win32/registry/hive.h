#pragma once

// One hive: the file, this process's connection to it, and what was read from it. Internal to the layer. Safe from every thread.
//
// A hive that is missing is empty. One that is damaged is put aside where that can be done, and is empty otherwise; the next
// write makes a new one. Whether the file is still the one that was opened is looked up at each call that goes to the database,
// and once a second by those that are answered from what was read before.

#include <atomic>
#include <mutex>
#include <shared_mutex>
#include <string>
#include <string_view>

#include "hive_cache.h"
#include "hive_file.h"
#include "hive_tables.h"

namespace kawin {

class Hive {
public:
    explicit Hive(std::string file) : file_(std::move(file)) {}

    const std::string& File() const noexcept { return file_; }

    // Answered from memory while nobody writes: `take(answer)` is called with the cached answer, under a lock, and its result
    // returned.
    template <class Take>
    LSTATUS Ask(const CacheQuestion& question, Take take) {
        {
            const std::shared_lock lock(cache_mutex_);
            if (const CachedAnswer* const answer = Known(question)) {
                return take(*answer);
            }
        }
        return take(Look(question));
    }

    // `work(tables)` over the database. ERROR_FILE_NOT_FOUND where there is none.
    template <class Work>
    LSTATUS Reading(Work work) {
        const std::lock_guard lock(mutex_);
        LSTATUS status = Attach();
        if (status == ERROR_SUCCESS) {
            status = work(tables_);
        }
        return AfterReading(status);
    }

    // `work(tables)` in a transaction of its own. Made again over a new database when the old one turns out to be damaged or
    // replaced.
    template <class Work>
    LSTATUS Writing(Work work) {
        return Changing([&work](HiveTables& tables) -> LSTATUS {
            Transaction transaction(tables.GetDatabase());
            LSTATUS status = ErrorFromSqlite(transaction.Begun());
            if (status == ERROR_SUCCESS) {
                status = work(tables);
            }
            return status == ERROR_SUCCESS ? ErrorFromSqlite(transaction.Commit()) : status;
        });
    }

    // The same for a change of a value: one statement and so a transaction by itself.
    template <class Work>
    LSTATUS ChangingValue(Work work) {
        return Changing([&](HiveTables& tables) {
            const CommitMark before = Mark();
            const LSTATUS status = work(tables);
            if (status == ERROR_SUCCESS && before.IsUsable()) {
                const std::unique_lock lock(cache_mutex_);
                cache_.ForgetValues(before, Mark());
            }
            return status;
        });
    }

    // Whether this user could change the hive, or make it.
    bool MayWrite();

    // Opens a second connection and begins a transaction on it, noted as this thread's until ForgetTransaction.
    LSTATUS BeginTransaction(HiveTables& tables);
    void ForgetTransaction() noexcept;

    // Closes the connection; the next call opens it again.
    void LetGo();

private:
    static constexpr int kAttempts = 3;

    // Makes a change again over a new database when the old one turns out to be damaged or replaced.
    template <class Work>
    LSTATUS Changing(Work work) {
        LSTATUS status = ERROR_BUSY;
        for (int attempt = 0; attempt < kAttempts; ++attempt) {
            const std::lock_guard lock(mutex_);
            status = BeforeWriting();
            if (status == ERROR_SUCCESS) {
                status = work(tables_);
            }
            if (!IsAnotherAttemptDue(status)) {
                break;
            }
        }
        return status;
    }

    const CachedAnswer* Known(const CacheQuestion& question) const;  // with cache_mutex_ held
    CachedAnswer Look(const CacheQuestion& question);

    // With mutex_ held.
    CommitMark Mark() const noexcept { return index_ != nullptr ? CommitMark(index_) : CommitMark(); }
    LSTATUS Attach();
    LSTATUS AttachOrMake();
    LSTATUS OpenFile(bool create);
    void Detach();
    LSTATUS BeforeWriting();
    LSTATUS AfterReading(LSTATUS status);
    bool IsAnotherAttemptDue(LSTATUS status);
    bool PutAside();

    const std::string file_;
    std::mutex mutex_;

    // guarded by mutex_
    HiveTables tables_;  // open or not
    pid_t owner_ = 0;    // the process that opened it; a forked child opens its own
    FileIdentity opened_;
    FileIdentity told_;         // which file's damage has been told although nothing could be done about it
    bool told_of_row_ = false;  // since the file was opened
    std::atomic<DWORD> transaction_thread_{0};

    std::shared_mutex cache_mutex_;  // taken after mutex_
    // guarded by cache_mutex_
    const std::uint32_t* index_ = nullptr;  // the database's; null while there is none
    HiveCache cache_;
    std::atomic<std::int64_t> next_check_{0};  // seconds of the coarse clock; then the file is looked at
};

// Where the environment says that it lies now; null when there is no home folder to look in. Hives stay for ever.
Hive* FindHive(HiveKind kind);

}  // namespace kawin
