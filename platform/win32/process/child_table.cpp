#include "child_table.h"

#include <sys/wait.h>

#include <cerrno>
#include <mutex>
#include <unordered_map>

namespace kawin {
namespace {

struct Child {
    int objects = 0;
    std::optional<DWORD> kill_code;
};

struct Table {
    std::mutex mutex;
    std::unordered_map<pid_t, Child> children;  // guarded by mutex
};

// Never destroyed: handles may be closed while the process ends.
Table& TheTable() {
    static Table& table = *new Table;
    return table;
}

// True when there is nothing left to collect: it has been, here or by the host itself.
bool Collect(pid_t process) {
    pid_t result;
    do {
        result = waitpid(process, nullptr, WNOHANG);
    } while (result == -1 && errno == EINTR);
    return result != 0;
}

}  // namespace

void RetainChild(pid_t process, bool is_new) {
    Table& table = TheTable();
    const std::lock_guard lock(table.mutex);
    if (is_new) {
        table.children[process] = {};
    }
    if (const auto found = table.children.find(process); found != table.children.end()) {
        ++found->second.objects;
    }
}

void ReleaseChild(pid_t process) {
    Table& table = TheTable();
    const std::lock_guard lock(table.mutex);
    const auto found = table.children.find(process);
    if (found != table.children.end() && --found->second.objects == 0 && Collect(process)) {
        table.children.erase(found);
    }
}

void SetKillCode(pid_t process, DWORD code) {
    Table& table = TheTable();
    const std::lock_guard lock(table.mutex);
    if (const auto found = table.children.find(process); found != table.children.end()) {
        found->second.kill_code = found->second.kill_code.value_or(code);
    }
}

std::optional<DWORD> KillCode(pid_t process) {
    Table& table = TheTable();
    const std::lock_guard lock(table.mutex);
    const auto found = table.children.find(process);
    return found != table.children.end() ? found->second.kill_code : std::nullopt;
}

void CollectForgottenChildren() {
    Table& table = TheTable();
    const std::lock_guard lock(table.mutex);
    std::erase_if(table.children, [](const auto& entry) { return entry.second.objects == 0 && Collect(entry.first); });
}

}  // namespace kawin
