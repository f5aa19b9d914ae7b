#include <algorithm>
#include <cstring>
#include <new>

#include "afx_file.h"

IMPLEMENT_DYNAMIC(CMemFile, CFile)

BOOL CMemFile::Open(LPCTSTR path, UINT /*flags*/, CFileException* error) {
    if (error != nullptr) {
        error->m_cause = CFileException::fileNotFound;
        error->m_strFileName = path;
    }
    return FALSE;
}

UINT CMemFile::Read(void* buffer, UINT count) {
    const std::size_t left = m_position < m_bytes.size() ? m_bytes.size() - m_position : 0;
    const std::size_t taken = std::min<std::size_t>(count, left);
    if (taken != 0) {
        std::memcpy(buffer, m_bytes.data() + m_position, taken);
        m_position += taken;
    }
    return static_cast<UINT>(taken);
}

void CMemFile::Write(const void* buffer, UINT count) {
    if (count == 0) {
        return;
    }
    if (m_position + count > m_bytes.size()) {
        Grow(m_position + count);
    }
    std::memcpy(m_bytes.data() + m_position, buffer, count);
    m_position += count;
}

// A gap left by seeking behind the end is filled with zeros.
void CMemFile::Grow(std::size_t size) {
    try {
        if (size > m_bytes.capacity()) {
            m_bytes.reserve(std::max(size + m_growBytes, m_bytes.capacity() * 2));
        }
        m_bytes.resize(size);
    } catch (const std::exception&) {  // no memory, or more than any memory
        AfxThrowMemoryException();
    }
}

ULONGLONG CMemFile::Seek(LONGLONG offset, UINT from) {
    const std::size_t base = from == begin ? 0 : from == current ? m_position : m_bytes.size();
    const LONGLONG target = static_cast<LONGLONG>(base) + offset;
    if (target < 0) {
        AfxThrowFileException(CFileException::badSeek);
    }
    m_position = static_cast<std::size_t>(target);
    return m_position;
}

void CMemFile::SetLength(ULONGLONG length) {
    Grow(static_cast<std::size_t>(length));
    m_position = std::min(m_position, m_bytes.size());
}

void CMemFile::Close() {
    m_position = 0;
    std::vector<BYTE>().swap(m_bytes);
}
