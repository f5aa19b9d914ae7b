#include "process_object.h"

#include <poll.h>
#include <signal.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>

#include "../base/error_map.h"
#include "../sync/futex.h"
#include "../sync/waits.h"
#include "child_table.h"
#include "process.h"

namespace kawin {
namespace {

constexpr DWORD kSignalCodeBase = 128;

// Milliseconds for poll; rounded up, so that a wait does not end early.
int PollTime(Deadline deadline) {
    if (deadline == Deadline::max()) {
        return -1;
    }
    if (deadline == Deadline::min()) {
        return 0;
    }
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Deadline::clock::now()).count();
    return static_cast<int>(std::clamp<long long>(left, 0, INT_MAX));
}

bool EndsWithin(int descriptor, int milliseconds) {
    pollfd entry{descriptor, POLLIN, 0};
    return poll(&entry, 1, milliseconds) == 1;
}

int SendSignal(int descriptor, int signal) {
    return syscall(SYS_pidfd_send_signal, descriptor, signal, nullptr, 0) == 0 ? 0 : errno;
}

}  // namespace

ProcessObject::ProcessObject(pid_t process, int descriptor, DWORD access, bool is_new)
    : process_(process), descriptor_(descriptor), access_(access) {
    RetainChild(process, is_new);
}

ProcessObject::~ProcessObject() {
    close(descriptor_);
    ReleaseChild(process_);
}

DWORD ProcessObject::Wait(Deadline deadline) {
    if (!RequireAny(SYNCHRONIZE)) {
        return WAIT_FAILED;
    }
    for (;;) {
        const bool over = IsPast(deadline);
        if (EndsWithin(descriptor_, PollTime(deadline))) {
            return WAIT_OBJECT_0;
        }
        if (over) {
            return WAIT_TIMEOUT;
        }
    }
}

bool ProcessObject::HasEnded() const noexcept {
    return EndsWithin(descriptor_, 0);
}

std::optional<DWORD> ProcessObject::ExitCode() const noexcept {
    siginfo_t info{};
    if (waitid(P_PIDFD, static_cast<id_t>(descriptor_), &info, WEXITED | WNOHANG | WNOWAIT) == -1 || info.si_pid == 0) {
        return {};
    }
    const auto status = static_cast<DWORD>(info.si_status);
    if (info.si_code == CLD_EXITED) {
        return status;
    }
    return status == SIGKILL ? KillCode(process_).value_or(kSignalCodeBase + status) : kSignalCodeBase + status;
}

DWORD ProcessObject::Kill(DWORD code) noexcept {
    if (HasEnded()) {
        return ERROR_ACCESS_DENIED;
    }
    SetKillCode(process_, code);
    return ErrorFromErrno(SendSignal(descriptor_, SIGKILL));
}

bool ProcessObject::RequireAny(DWORD rights) const noexcept {
    return (access_ & rights) != 0 || Fail(ERROR_ACCESS_DENIED) != FALSE;
}

ObjectRef<ProcessObject> FindProcess(DWORD process_id, DWORD access) {
    const auto process = static_cast<pid_t>(process_id);
    const int descriptor = process > 0 ? static_cast<int>(syscall(SYS_pidfd_open, process, 0)) : -1;
    if (descriptor == -1) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return {};
    }
    auto object = MakeObject<ProcessObject>(process, descriptor, access, false);
    if ((access & PROCESS_TERMINATE) != 0 && SendSignal(descriptor, 0) == EPERM) {
        SetLastError(ERROR_ACCESS_DENIED);
        return {};
    }
    return object;
}

}  // namespace kawin
