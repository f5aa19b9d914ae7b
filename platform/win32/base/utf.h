#pragma once

// UTF-8 (what the kernel and the libraries speak) to and from UTF-16 (what the system interface speaks).
//
// Ill-formed input becomes U+FFFD and never throws. File names may hold any byte, so they have a pair of their own that keeps
// each byte that is not UTF-8 as one lone surrogate U+DC80 to U+DCFF and gives the very same byte back.

#include <string>
#include <string_view>

#include "types.h"

namespace kawin {

std::u16string FromUtf8(std::string_view text);
std::string ToUtf8(std::u16string_view text);

std::u16string FromFileName(std::string_view name);
std::string ToFileName(std::u16string_view name);

// Writes the UTF-16 form of `name` with its terminator into `target`. False when it does not fit; then nothing is written.
bool FromFileName(std::string_view name, WCHAR* target, std::size_t capacity);

}  // namespace kawin
