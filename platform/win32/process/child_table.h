#pragma once

// The children that CreateProcessW has started and whose end has not been collected. Collecting it frees the process number, so
// that waits until the last handle is closed; a child that runs longer is collected when another one is started.

#include <sys/types.h>

#include <optional>

#include "../base/types.h"

namespace kawin {

// Counts one object for the process, if it is one of those children or `is_new` says so.
void RetainChild(pid_t process, bool is_new);
void ReleaseChild(pid_t process);

// The exit code that the first TerminateProcess was given for a child.
void SetKillCode(pid_t process, DWORD code);
std::optional<DWORD> KillCode(pid_t process);

void CollectForgottenChildren();

}  // namespace kawin
