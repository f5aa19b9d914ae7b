#pragma once

// The file of a ZIP archive: bytes at places, with what lies around them kept for the next. Internal to the library.

#include <afx.h>

#include <cstring>
#include <memory>

namespace kadata::zip {

class ArchiveFile {
public:
    // IsOpen tells whether that could be done.
    explicit ArchiveFile(const CString& path);
    ArchiveFile(const ArchiveFile&) = delete;
    ArchiveFile& operator=(const ArchiveFile&) = delete;
    ~ArchiveFile();

    bool IsOpen() const { return m_file != INVALID_HANDLE_VALUE; }
    // In bytes, when it was opened.
    ULONGLONG Size() const { return m_size; }
    // Fewer than `size` bytes at the end of the file and where it cannot be read.
    DWORD Read(ULONGLONG place, unsigned char* target, DWORD size) noexcept {
        for (const Piece* piece : {&m_window, &m_kept}) {
            if (const ULONGLONG offset = place - piece->place; offset < piece->size && size <= piece->size - offset) {
                std::memcpy(target, piece->bytes.get() + offset, size);
                return size;
            }
        }
        return ReadAcross(place, target, size);
    }
    // Keeps all from `place` to the end in memory, if that is not too much.
    void KeepFrom(ULONGLONG place);

private:
    struct Piece {
        std::unique_ptr<unsigned char[]> bytes;
        ULONGLONG place = 0;
        DWORD size = 0;
    };
    static constexpr DWORD WINDOW = 4096;
    static constexpr ULONGLONG LARGEST_KEPT = 4 * 1024 * 1024;

    DWORD ReadAcross(ULONGLONG place, unsigned char* target, DWORD size) noexcept;
    DWORD ReadFromFile(ULONGLONG place, unsigned char* target, DWORD size) const noexcept;

    HANDLE m_file;
    ULONGLONG m_size = 0;
    Piece m_window;  // what was read last; begins at a multiple of WINDOW
    Piece m_kept;
};

}  // namespace kadata::zip
