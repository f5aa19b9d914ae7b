#pragma once

#include <cstddef>
#include <span>

#include "picture_files.h"

namespace kawin {

bool IsPng(std::span<const std::byte> file) noexcept;

// 32 bits ARGB of one with alpha or a transparent colour, else 24 bits.
ReadPicture ReadPng(std::span<const std::byte> file);

}  // namespace kawin
