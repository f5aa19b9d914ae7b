#pragma once

// Reading a folder's entries into FILE_FULL_DIR_INFO records. Internal to the layer.

#include <cstddef>
#include <memory>
#include <string>

#include "../base/types.h"

namespace kawin {

class FolderReader {
public:
    // `folder` must be open for reading and stay so; its position is this reader's alone.
    explicit FolderReader(int folder) noexcept : folder_(folder) {}

    // Begins anew.
    void Restart() noexcept;

    // Fills `buffer` (8-byte aligned) with as many whole records as fit. The error number: 0, ERROR_NO_MORE_FILES,
    // ERROR_MORE_DATA when the next one alone does not fit (it stays the next), or what the kernel says.
    DWORD Fill(BYTE* buffer, std::size_t size);

private:
    // The next name, null at the end (errno 0) and on failure; it stays the next until Pass().
    const char* Peek();
    void Pass() noexcept;

    static constexpr std::size_t kBlock = 32768;

    int folder_;
    std::unique_ptr<std::byte[]> block_;  // what getdents64 gave
    std::size_t used_ = 0;
    std::size_t filled_ = 0;
    bool restart_ = true;
};

}  // namespace kawin
