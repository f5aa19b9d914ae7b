#include "registry_transaction.h"

#include <new>

#include "../ktmw32.h"
#include "../process/process.h"

namespace kawin {
namespace {

template <class Work>
BOOL OnTransaction(HANDLE handle, Work work) noexcept {
    const ObjectRef<RegistryTransaction> transaction = FindObject<RegistryTransaction>(handle);
    if (!transaction) {
        return FALSE;
    }
    const DWORD error = work(*transaction);
    if (error != ERROR_SUCCESS) {
        SetLastError(error);
    }
    return error == ERROR_SUCCESS;
}

}  // namespace

RegistryTransaction::~RegistryTransaction() {
    RollBack();
}

LSTATUS RegistryTransaction::Join(Hive& hive, HiveTables*& tables) {
    for (Part& part : parts_) {
        if (part.hive == &hive) {
            tables = &part.tables;
            return ERROR_SUCCESS;
        }
    }
    parts_.emplace_back();
    Part& part = parts_.back();
    part.hive = &hive;
    LSTATUS status = hive.BeginTransaction(part.tables);
    if (status != ERROR_SUCCESS) {
        parts_.pop_back();
        return status == static_cast<LSTATUS>(ERROR_BUSY) ? static_cast<LSTATUS>(ERROR_TRANSACTIONAL_CONFLICT) : status;
    }
    tables = &part.tables;
    return status;
}

// Closing a connection rolls back what it has not committed.
void RegistryTransaction::End(State state) noexcept {
    for (Part& part : parts_) {
        part.tables.Close();
        part.hive->ForgetTransaction();
    }
    parts_.clear();
    state_ = state;
}

DWORD RegistryTransaction::Commit() {
    const std::lock_guard lock(mutex_);
    if (state_ != State::active) {
        return state_ == State::committed ? ERROR_TRANSACTION_ALREADY_COMMITTED : ERROR_TRANSACTION_ALREADY_ABORTED;
    }
    LSTATUS status = ERROR_SUCCESS;
    for (Part& part : parts_) {
        if (status == ERROR_SUCCESS) {
            status = ErrorFromSqlite(part.tables.GetDatabase().Commit());
        }
    }
    End(status == ERROR_SUCCESS ? State::committed : State::rolled_back);
    return static_cast<DWORD>(status);
}

DWORD RegistryTransaction::RollBack() {
    const std::lock_guard lock(mutex_);
    if (state_ != State::active) {
        return state_ == State::committed ? ERROR_TRANSACTION_ALREADY_COMMITTED : ERROR_TRANSACTION_ALREADY_ABORTED;
    }
    End(State::rolled_back);
    return ERROR_SUCCESS;
}

}  // namespace kawin

HANDLE CreateTransaction(SECURITY_ATTRIBUTES* /*security*/, GUID* unit_of_work, DWORD /*options*/, DWORD isolation_level,
                         DWORD isolation_flags, DWORD timeout, LPWSTR /*description*/) noexcept {
    if (unit_of_work != nullptr || isolation_level != 0 || isolation_flags != 0 || (timeout != 0 && timeout != INFINITE)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return INVALID_HANDLE_VALUE;
    }
    try {
        const HANDLE handle = kawin::OpenHandle(kawin::MakeObject<kawin::RegistryTransaction>());
        return handle != nullptr ? handle : INVALID_HANDLE_VALUE;
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return INVALID_HANDLE_VALUE;
    }
}

BOOL CommitTransaction(HANDLE transaction) noexcept {
    return kawin::OnTransaction(transaction, [](kawin::RegistryTransaction& object) { return object.Commit(); });
}

BOOL RollbackTransaction(HANDLE transaction) noexcept {
    return kawin::OnTransaction(transaction, [](kawin::RegistryTransaction& object) { return object.RollBack(); });
}
