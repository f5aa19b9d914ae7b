#pragma once

// Programs of a Linux desktop that do what a program of the system does, under names of their own.

#include <span>
#include <string_view>

#include "../base/types.h"

namespace kawin {

// The names to look for instead of the system's program, the best first; none for most. Without regard to case.
std::span<const std::string_view> StandInsFor(std::u16string_view program) noexcept;

// The system's program that the program `name` is or stands in for; empty for most. `name` may be cut as the kernel cuts the
// names of commands.
std::u16string_view ReplacedProgram(std::string_view name) noexcept;

}  // namespace kawin
