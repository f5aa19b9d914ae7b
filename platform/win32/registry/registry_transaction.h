#pragma once

// A registry transaction: one database transaction in each hive that it touches. Internal to the layer; hosts see its handle.

#include <list>
#include <mutex>

#include "../base/handle_table.h"
#include "hive.h"

namespace kawin {

class RegistryTransaction final : public KernelObject {
public:
    ~RegistryTransaction() override;

    // `work(tables)` inside the transaction, which begins in that hive when it is first used there. ERROR_TRANSACTIONAL_CONFLICT
    // when somebody else has been writing to the hive for five seconds, or this thread is inside another transaction;
    // ERROR_TRANSACTION_NOT_ACTIVE when it has ended.
    template <class Work>
    LSTATUS Within(Hive& hive, Work work) {
        const std::lock_guard lock(mutex_);
        if (state_ != State::active) {
            return ERROR_TRANSACTION_NOT_ACTIVE;
        }
        HiveTables* tables = nullptr;
        const LSTATUS status = Join(hive, tables);
        return status == ERROR_SUCCESS ? work(*tables) : status;
    }

    // The error number. Hive by hive: a power failure in between may leave one committed and the other not.
    DWORD Commit();
    DWORD RollBack();

private:
    enum class State { active, committed, rolled_back };
    struct Part {
        Hive* hive;
        HiveTables tables;
    };

    LSTATUS Join(Hive& hive, HiveTables*& tables);  // both with mutex_ held
    void End(State state) noexcept;

    std::mutex mutex_;
    State state_ = State::active;  // guarded by mutex_
    std::list<Part> parts_;        // guarded by mutex_
};

}  // namespace kawin
