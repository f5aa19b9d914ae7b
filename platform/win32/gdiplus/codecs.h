#pragma once

#include "gdiplus_codecs.h"
#include "picture_files.h"

namespace kawin {

// Makes a whole file of a picture; nothing when it cannot be made.
using MakeFile = std::vector<std::byte> (*)(const PixelStore& store);

// Null when there is no such encoder.
MakeFile FindEncoder(const CLSID& encoder) noexcept;

}  // namespace kawin
