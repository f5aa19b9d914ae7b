#pragma once

// Command lines and argument lists.

#include <string>
#include <string_view>
#include <vector>

#include "../base/types.h"

namespace kawin {

// As a C program on the system splits its command line: the first word is the program and knows no escapes.
std::vector<std::u16string> SplitCommandLine(std::u16string_view line);

// A command line that splits into these arguments.
std::u16string JoinCommandLine(const std::vector<std::u16string>& arguments);

}  // namespace kawin
