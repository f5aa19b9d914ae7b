#pragma once

// Pictures from resources and files, and to files.

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

#include "pixel_store.h"

namespace kawin {

struct ReadPicture {
    std::shared_ptr<PixelStore> store;  // null: no picture, because of
    Gdiplus::Status status = Gdiplus::InvalidParameter;
};

// A whole file, BMP or PNG by its content. Status as Image's constructor has it.
ReadPicture ReadPictureFile(const WCHAR* path) noexcept;

ReadPicture ReadBitmapResource(HINSTANCE module, const WCHAR* name) noexcept;

// Whole files. PNG keeps alpha, BMP is 24 bits. Empty when it cannot be made.
std::vector<std::byte> MakePng(const PixelStore& store);
std::vector<std::byte> MakeBmp(const PixelStore& store);

// False with the last error.
bool WriteWholeFile(const WCHAR* path, std::span<const std::byte> bytes) noexcept;

}  // namespace kawin
