#pragma once

// What is behind a process handle.

#include <sys/types.h>

#include <optional>

#include "../base/handle_table.h"

namespace kawin {

class ProcessObject final : public KernelObject {
public:
    // Adopts the process descriptor. `is_new`: a child that was just started.
    ProcessObject(pid_t process, int descriptor, DWORD access, bool is_new);
    ~ProcessObject() override;

    DWORD Wait(Deadline deadline) override;

    pid_t Id() const noexcept { return process_; }
    bool HasEnded() const noexcept;

    // The exit code of an ended child of this process; nothing for any other process.
    std::optional<DWORD> ExitCode() const noexcept;

    // 0 or the error number.
    DWORD Kill(DWORD code) noexcept;

    // False with ERROR_ACCESS_DENIED unless the handle has one of the rights.
    bool RequireAny(DWORD rights) const noexcept;

private:
    pid_t process_;
    int descriptor_;
    DWORD access_;
};

// A new object for a process whose number is still taken; empty with the last error set.
ObjectRef<ProcessObject> FindProcess(DWORD process_id, DWORD access);

}  // namespace kawin
