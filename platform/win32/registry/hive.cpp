#include "hive.h"

#include <time.h>
#include <unistd.h>

#include <map>
#include <memory>

#include "../base/diagnose.h"
#include "../base/utf.h"
#include "../process/native_environment.h"
#include "../process/process.h"

namespace kawin {
namespace {

// A few nanoseconds, no system call.
std::int64_t CoarseSeconds() noexcept {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    return now.tv_sec;
}

bool Is(LSTATUS status, DWORD error) noexcept {
    return status == static_cast<LSTATUS>(error);
}

// The hive in use of each kind, and for how many changes of the environment that is known to be right.
struct HiveSlot {
    std::atomic<Hive*> hive{nullptr};
    std::atomic<unsigned> seen_changes{0};
    std::atomic<bool> known{false};
};

struct HiveSlots {
    std::mutex mutex;
    std::map<std::string, std::unique_ptr<Hive>> hives;  // guarded by mutex
    HiveSlot slots[2];
};

Hive* ResolveHive(HiveSlots& all, HiveKind kind) {
    const std::lock_guard lock(all.mutex);
    HiveSlot& slot = all.slots[kind == HiveKind::user ? 0 : 1];
    const unsigned changes = EnvironmentChanges();
    const std::string file = HiveFile(kind);
    Hive* hive = nullptr;
    if (!file.empty()) {
        std::unique_ptr<Hive>& known = all.hives[file];
        if (known == nullptr) {
            known = std::make_unique<Hive>(file);
        }
        hive = known.get();
    }
    Hive* const before = slot.hive.exchange(hive);
    if (before != nullptr && before != hive) {
        before->LetGo();
    }
    slot.seen_changes = changes;
    slot.known = true;
    return hive;
}

}  // namespace

Hive* FindHive(HiveKind kind) {
    static HiveSlots& all = *new HiveSlots;  // never destroyed: other threads may still ask while the process ends
    const HiveSlot& slot = all.slots[kind == HiveKind::user ? 0 : 1];
    if (slot.known.load(std::memory_order_acquire) && slot.seen_changes.load(std::memory_order_relaxed) == EnvironmentChanges()) {
        return slot.hive.load(std::memory_order_acquire);
    }
    return ResolveHive(all, kind);
}

const CachedAnswer* Hive::Known(const CacheQuestion& question) const {
    if (index_ == nullptr || CoarseSeconds() >= next_check_.load(std::memory_order_relaxed)) {
        return nullptr;
    }
    return cache_.Find(index_, question);
}

// Reads the database and keeps the answer if nobody wrote meanwhile. Nothing that failed is kept.
CachedAnswer Hive::Look(const CacheQuestion& question) {
    const std::lock_guard lock(mutex_);
    CachedAnswer answer;
    answer.status = Attach();
    if (answer.status != ERROR_SUCCESS) {
        answer.status = AfterReading(answer.status);
        return answer;
    }
    const CommitMark before = Mark();
    answer.status = tables_.FindKey(question.from, question.path, answer.key);
    if (answer.status == ERROR_SUCCESS && question.value) {
        RegistryValue value;
        answer.status = tables_.Read(answer.key, question.name, value);
        answer.type = value.type;
        answer.bytes = std::move(value.bytes);
    }
    answer.status = AfterReading(answer.status);
    if (index_ != nullptr && (answer.status == ERROR_SUCCESS || Is(answer.status, ERROR_FILE_NOT_FOUND)) && Mark() == before) {
        const std::unique_lock cache_lock(cache_mutex_);
        cache_.Keep(before, question, answer);
    }
    return answer;
}

bool Hive::MayWrite() {
    {
        const std::lock_guard lock(mutex_);
        if (tables_.GetDatabase().IsOpen() && CoarseSeconds() < next_check_.load(std::memory_order_relaxed)) {
            return !tables_.GetDatabase().IsReadOnly();
        }
    }
    return MayWriteHive(file_);
}

void Hive::Detach() {
    {
        const std::unique_lock lock(cache_mutex_);
        index_ = nullptr;
        cache_.Clear();
    }
    tables_.Close();
}

void Hive::LetGo() {
    const std::lock_guard lock(mutex_);
    Detach();
}

LSTATUS Hive::OpenFile(bool create) {
    owner_ = getpid();
    opened_ = IdentityOf(file_);
    const LSTATUS status = tables_.Open(file_, create);
    if (status != ERROR_SUCCESS) {
        return status;
    }
    const FileIdentity now = IdentityOf(file_);
    if (create && !opened_) {
        opened_ = now;
    } else if (!(now == opened_)) {  // replaced in between
        Detach();
        return ERROR_BUSY;
    }
    told_of_row_ = false;
    const std::unique_lock lock(cache_mutex_);
    cache_.Clear();
    index_ = tables_.GetDatabase().SharedIndex();
    return ERROR_SUCCESS;
}

LSTATUS Hive::Attach() {
    if (tables_.GetDatabase().IsOpen() && owner_ != getpid()) {
        const std::unique_lock lock(cache_mutex_);
        index_ = nullptr;
        cache_.Clear();
        tables_.Abandon();
    }
    const FileIdentity now = IdentityOf(file_);
    next_check_.store(CoarseSeconds() + 1, std::memory_order_relaxed);
    if (tables_.GetDatabase().IsOpen()) {
        if (now == opened_) {
            return ERROR_SUCCESS;
        }
        Detach();
    }
    return now ? OpenFile(false) : ERROR_FILE_NOT_FOUND;
}

LSTATUS Hive::AttachOrMake() {
    LSTATUS status = Attach();
    if (Is(status, ERROR_BADDB) && PutAside()) {
        status = ERROR_FILE_NOT_FOUND;
    }
    if (!Is(status, ERROR_FILE_NOT_FOUND)) {
        return status == ERROR_SUCCESS && tables_.GetDatabase().IsReadOnly() ? ERROR_ACCESS_DENIED : status;
    }
    if (!MakeHiveFolder(file_)) {
        return ERROR_ACCESS_DENIED;
    }
    const HiveFolderLock lock(file_);
    status = Attach();  // another process may have been faster
    return Is(status, ERROR_FILE_NOT_FOUND) ? OpenFile(true) : status;
}

LSTATUS Hive::BeforeWriting() {
    if (transaction_thread_.load(std::memory_order_relaxed) == GetCurrentThreadId()) {
        return ERROR_TRANSACTIONAL_CONFLICT;  // waiting for it would be waiting for this thread
    }
    return AttachOrMake();
}

// Without rights the file stays, is found damaged by every call, and told of once.
bool Hive::PutAside() {
    const FileIdentity damaged = opened_;
    Detach();
    const bool aside = PutHiveAside(file_, damaged);
    if (!aside && IdentityOf(file_) == damaged && !(told_ == damaged)) {
        told_ = damaged;
        Diagnose(u"The settings database " + FromFileName(file_) +
                 u" is damaged and could not be put aside; its settings have their defaults");
    }
    return aside;
}

// What a reader sees of a hive that is damaged, cannot be opened or was made by a later version: an empty one.
LSTATUS Hive::AfterReading(LSTATUS status) {
    if (Is(status, ERROR_BADDB)) {
        PutAside();
        return ERROR_FILE_NOT_FOUND;
    }
    if (Is(status, ERROR_CRC)) {
        if (!told_of_row_) {
            Diagnose(u"A row of the settings database " + FromFileName(file_) + u" is damaged; its setting has its default");
        }
        told_of_row_ = true;
        return ERROR_FILE_NOT_FOUND;
    }
    return Is(status, ERROR_CANTOPEN) || Is(status, ERROR_REVISION_MISMATCH) ? static_cast<LSTATUS>(ERROR_FILE_NOT_FOUND)
                                                                             : status;
}

// A change that went to a file which was put aside meanwhile has to be made again, and so has one that found the damage itself.
bool Hive::IsAnotherAttemptDue(LSTATUS status) {
    if (Is(status, ERROR_BADDB)) {
        return PutAside();
    }
    return status == ERROR_SUCCESS && !(IdentityOf(file_) == opened_);
}

LSTATUS Hive::BeginTransaction(HiveTables& tables) {
    LSTATUS status = ERROR_SUCCESS;
    {
        const std::lock_guard lock(mutex_);
        status = BeforeWriting();
        if (status == ERROR_SUCCESS) {
            status = tables.Open(file_, false);
        }
    }
    if (status == ERROR_SUCCESS) {  // without the lock: it may have to wait for another writer
        status = ErrorFromSqlite(tables.GetDatabase().Begin());
    }
    if (status == ERROR_SUCCESS) {
        transaction_thread_ = GetCurrentThreadId();
    }
    return status;
}

void Hive::ForgetTransaction() noexcept {
    transaction_thread_ = 0;
}

}  // namespace kawin
