#pragma once

// Which program CreateProcessW means.

#include <string>

#include "../base/types.h"

namespace kawin {

// The native path of the program; empty with the last error set. See process.h for where it is looked for.
std::string FindProgram(LPCWSTR application, LPCWSTR command_line);

}  // namespace kawin
