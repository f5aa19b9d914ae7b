#include "zip_file.h"

#include <algorithm>
#include <cstring>

namespace kadata::zip {

ArchiveFile::ArchiveFile(const CString& path) {
    m_window.bytes.reset(new unsigned char[WINDOW]);
    m_file = CreateFileW(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL,
                         nullptr);
    LARGE_INTEGER size{};
    if (IsOpen() && GetFileSizeEx(m_file, &size)) {
        m_size = static_cast<ULONGLONG>(size.QuadPart);
    }
}

ArchiveFile::~ArchiveFile() {
    if (IsOpen()) {
        CloseHandle(m_file);
    }
}

DWORD ArchiveFile::ReadAcross(ULONGLONG place, unsigned char* target, DWORD size) noexcept {
    DWORD done = 0;
    while (done < size && place < m_size) {
        const DWORD wanted = size - done;
        const DWORD offset = static_cast<DWORD>(place % WINDOW);
        DWORD part = 0;
        if (offset == 0 && wanted >= WINDOW) {
            part = ReadFromFile(place, target + done, wanted);
        } else {
            if (place - offset != m_window.place || m_window.size == 0) {
                m_window.place = place - offset;
                m_window.size = ReadFromFile(m_window.place, m_window.bytes.get(), WINDOW);
            }
            part = offset < m_window.size ? std::min(wanted, m_window.size - offset) : 0;
            std::memcpy(target + done, m_window.bytes.get() + offset, part);
        }
        if (part == 0) {
            break;
        }
        done += part;
        place += part;
    }
    return done;
}

void ArchiveFile::KeepFrom(ULONGLONG place) {
    if (place >= m_size || m_size - place > LARGEST_KEPT) {
        return;
    }
    m_kept.size = 0;
    m_kept.bytes.reset(new unsigned char[static_cast<std::size_t>(m_size - place)]);
    m_kept.place = place;
    m_kept.size = ReadFromFile(place, m_kept.bytes.get(), static_cast<DWORD>(m_size - place));
}

DWORD ArchiveFile::ReadFromFile(ULONGLONG place, unsigned char* target, DWORD size) const noexcept {
    OVERLAPPED at{};
    at.Offset = static_cast<DWORD>(place);
    at.OffsetHigh = static_cast<DWORD>(place >> 32);
    DWORD read = 0;
    return ReadFile(m_file, target, size, &read, &at) ? read : 0;
}

}  // namespace kadata::zip
