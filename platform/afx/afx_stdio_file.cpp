#include <algorithm>
#include <utility>
#include <string>

#include "afx_file.h"

IMPLEMENT_DYNAMIC(CStdioFile, CFile)

namespace {

constexpr std::size_t kBlock = 4096;

CString FromAnsi(const std::string& bytes) {
    const int size = static_cast<int>(bytes.size());
    CString text;
    text.ReleaseBufferSetLength(MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, text.GetBuffer(size), size));
    return text;
}

std::string ToAnsi(LPCTSTR text) {
    const int length = lstrlenW(text);
    const int size = WideCharToMultiByte(CP_ACP, 0, text, length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_ACP, 0, text, length, bytes.data(), size, nullptr, nullptr);
    return bytes;
}

}  // namespace

CStdioFile::CStdioFile(LPCTSTR path, UINT flags) {
    CFileException error;
    if (!CStdioFile::Open(path, flags, &error)) {
        AfxThrowFileException(error.m_cause, error.m_lOsError, error.m_strFileName);
    }
}

CStdioFile::~CStdioFile() {
    if (m_hFile != hFileNull) {
        try {
            FlushWritten();
        } catch (CFileException* e) {  // nobody is left to be told
            e->Delete();
        }
    }
}

BOOL CStdioFile::Open(LPCTSTR path, UINT flags, CFileException* error) {
    m_text = (flags & typeBinary) == 0;
    m_read.clear();
    m_readAt = 0;
    m_written.clear();
    return CFile::Open(path, flags, error);
}

bool CStdioFile::Fill() {
    FlushWritten();
    m_read.resize(kBlock);
    m_readAt = 0;
    m_read.resize(CFile::Read(m_read.data(), kBlock));
    return !m_read.empty();
}

// One line with its "\n", at most `limit` bytes. False when there is nothing left.
bool CStdioFile::ReadLineBytes(std::string& line, std::size_t limit) {
    line.clear();
    while (line.size() < limit && (m_readAt < m_read.size() || Fill())) {
        const char byte = m_read[m_readAt++];
        if (byte == '\n' && m_text && line.ends_with('\r')) {
            line.pop_back();
        }
        line += byte;
        if (byte == '\n') {
            break;
        }
    }
    return !line.empty();
}

BOOL CStdioFile::ReadString(CString& line) {
    std::string bytes;
    const bool found = ReadLineBytes(bytes, std::string::npos);
    if (bytes.ends_with('\n')) {
        bytes.pop_back();
    }
    line = FromAnsi(bytes);
    return found;
}

LPTSTR CStdioFile::ReadString(LPTSTR line, UINT capacity) {
    std::string bytes;
    if (capacity == 0 || !ReadLineBytes(bytes, capacity - 1)) {
        return nullptr;
    }
    const CString text = FromAnsi(bytes);
    text.View().copy(line, capacity - 1);
    line[text.GetLength()] = 0;
    return line;
}

void CStdioFile::WriteString(LPCTSTR text) {
    const std::string bytes = ToAnsi(text);
    Write(bytes.data(), static_cast<UINT>(bytes.size()));
}

UINT CStdioFile::Read(void* buffer, UINT count) {
    UINT taken = 0;
    while (taken < count && (m_readAt < m_read.size() || Fill())) {
        const std::size_t part = std::min<std::size_t>(count - taken, m_read.size() - m_readAt);
        m_read.copy(static_cast<char*>(buffer) + taken, part, m_readAt);
        m_readAt += part;
        taken += static_cast<UINT>(part);
    }
    return taken;
}

void CStdioFile::Write(const void* buffer, UINT count) {
    DropRead();
    const char* const bytes = static_cast<const char*>(buffer);
    for (UINT i = 0; i < count; ++i) {
        if (m_text && bytes[i] == '\n') {
            m_written += '\r';
        }
        m_written += bytes[i];
    }
    if (m_written.size() >= kBlock) {
        FlushWritten();
    }
}

ULONGLONG CStdioFile::Seek(LONGLONG offset, UINT from) {
    FlushWritten();
    DropRead();
    return CFile::Seek(offset, from);
}

ULONGLONG CStdioFile::GetPosition() const {
    return CFile::GetPosition() - (m_read.size() - m_readAt) + m_written.size();
}

ULONGLONG CStdioFile::GetLength() const {
    return std::max<ULONGLONG>(CFile::GetLength(), m_written.empty() ? 0 : GetPosition());
}

void CStdioFile::SetLength(ULONGLONG length) {
    FlushWritten();
    DropRead();
    CFile::SetLength(length);
}

void CStdioFile::Flush() {
    FlushWritten();
    CFile::Flush();
}

void CStdioFile::Close() {
    FlushWritten();
    m_read.clear();
    m_readAt = 0;
    CFile::Close();
}

void CStdioFile::Abort() {
    m_written.clear();
    m_read.clear();
    m_readAt = 0;
    CFile::Abort();
}

void CStdioFile::FlushWritten() {
    if (!m_written.empty()) {
        const std::string bytes = std::exchange(m_written, {});
        CFile::Write(bytes.data(), static_cast<UINT>(bytes.size()));
    }
}

// The system's position goes back to where the caller stands.
void CStdioFile::DropRead() {
    if (m_readAt < m_read.size()) {
        CFile::Seek(-static_cast<LONGLONG>(m_read.size() - m_readAt), current);
    }
    m_read.clear();
    m_readAt = 0;
}
