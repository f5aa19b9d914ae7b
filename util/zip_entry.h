#pragma once

// From the bytes of an entry as they lie in the archive to its content. Internal to the library.

#include <zlib.h>

#include <memory>

#include "zip_file.h"

namespace kadata::zip {

enum class Method { stored = 0, deflated = 8 };

// Where an entry's bytes lie in the file.
struct Extent {
    ULONGLONG place;
    ULONGLONG size;
};

// Keeps its memory from one entry to the next.
class EntryReader {
public:
    EntryReader() = default;
    EntryReader(const EntryReader&) = delete;
    EntryReader& operator=(const EntryReader&) = delete;
    ~EntryReader();

    // Writes the first `size` bytes of the content to `target`, zeros where there is none or it is damaged.
    void Read(ArchiveFile& file, const Extent& extent, Method method, unsigned char* target, DWORD size);

private:
    bool Begin();
    DWORD Inflate(ArchiveFile& file, const Extent& extent, unsigned char* target, DWORD size);
    void MakeRoom(DWORD size);

    z_stream m_stream{};
    bool m_ready = false;
    std::unique_ptr<unsigned char[]> m_input;
    DWORD m_inputSize = 0;
};

}  // namespace kadata::zip
