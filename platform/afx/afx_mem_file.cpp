#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <utility>

#include "afx_file.h"

IMPLEMENT_DYNAMIC(CMemFile, CFile)

CMemFile::~CMemFile() {
    CMemFile::Close();
}

void CMemFile::Attach(BYTE* bytes, UINT count, UINT growBytes) {
    CMemFile::Close();
    m_growBytes = growBytes;
    m_attached = true;
    m_bytes = bytes;
    m_capacity = count;
    m_length = growBytes == 0 ? count : 0;
}

BYTE* CMemFile::Detach() {
    BYTE* const bytes = std::exchange(m_bytes, nullptr);
    CMemFile::Close();
    return bytes;
}

BOOL CMemFile::Open(LPCTSTR path, UINT /*flags*/, CFileException* error) {
    if (error != nullptr) {
        error->m_cause = CFileException::fileNotFound;
        error->m_lOsError = ERROR_FILE_NOT_FOUND;
        error->m_strFileName = path;
    }
    return FALSE;
}

UINT CMemFile::Read(void* buffer, UINT count) {
    const ULONGLONG left = m_position < m_length ? m_length - m_position : 0;
    const UINT taken = static_cast<UINT>(std::min<ULONGLONG>(count, left));
    if (taken != 0) {
        std::memcpy(buffer, m_bytes + m_position, taken);
        m_position += taken;
    }
    return taken;
}

void CMemFile::Write(const void* buffer, UINT count) {
    if (count == 0) {
        return;
    }
    if (m_position + count > m_length) {
        Extend(m_position + count);
    }
    std::memcpy(m_bytes + m_position, buffer, count);
    m_position += count;
}

ULONGLONG CMemFile::Seek(LONGLONG offset, UINT from) {
    const LONGLONG base = static_cast<LONGLONG>(from == begin ? 0 : from == current ? m_position : m_length);
    if (offset < -base || offset > std::numeric_limits<LONGLONG>::max() - base) {
        AfxThrowFileException(CFileException::badSeek, ERROR_NEGATIVE_SEEK, m_strFileName);
    }
    m_position = static_cast<ULONGLONG>(base + offset);
    return m_position;
}

void CMemFile::SetLength(ULONGLONG length) {
    if (length > m_length) {
        Extend(length);
    }
    m_length = length;
    m_position = std::min(m_position, m_length);
}

void CMemFile::Close() {
    if (!m_attached) {
        std::free(m_bytes);
    }
    m_attached = false;
    m_bytes = nullptr;
    m_capacity = m_length = m_position = 0;
    m_strFileName.Empty();
}

void CMemFile::Extend(ULONGLONG length) {
    Reserve(length);
    std::memset(m_bytes + m_length, 0, static_cast<std::size_t>(length - m_length));
    m_length = length;
}

void CMemFile::Reserve(ULONGLONG length) {
    if (length <= m_capacity) {
        return;
    }
    // At least twice as much, so that many small writes cost no more than a few large
    // ones.
    const ULONGLONG wanted = std::max(length, m_capacity * 2);
    const bool possible =
        m_growBytes != 0 && wanted <= static_cast<ULONGLONG>(std::numeric_limits<std::ptrdiff_t>::max()) - m_growBytes;
    const ULONGLONG capacity = possible ? (wanted + m_growBytes - 1) / m_growBytes * m_growBytes : 0;
    void* const bytes = possible ? std::realloc(m_bytes, static_cast<std::size_t>(capacity)) : nullptr;
    if (bytes == nullptr) {
        AfxThrowMemoryException();
    }
    m_bytes = static_cast<BYTE*>(bytes);
    m_capacity = capacity;
}
