#include <algorithm>
#include <utility>

#include "afx_file.h"

IMPLEMENT_DYNAMIC(CStdioFile, CFile)

namespace {

constexpr UINT kBlock = 4096;
constexpr char kEndMark = 0x1A;
constexpr std::size_t kLongestCharacter = 4;  // bytes, in any code page

CString FromAnsi(const std::string& bytes) {
    CString text;
    const int size = static_cast<int>(bytes.size());
    const int length = size == 0 ? 0 : MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, nullptr, 0);
    if (length != 0) {
        MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, text.GetBufferSetLength(length), length);
        text.ReleaseBufferSetLength(length);
    }
    return text;
}

std::string ToAnsi(LPCTSTR text) {
    const int length = lstrlenW(text);
    const int size = length == 0 ? 0 : WideCharToMultiByte(CP_ACP, 0, text, length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    if (size != 0) {
        WideCharToMultiByte(CP_ACP, 0, text, length, bytes.data(), size, nullptr, nullptr);
    }
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
    try {
        WriteOut();
    } catch (CException* e) {  // nobody is left to be told
        e->Delete();
    }
}

BOOL CStdioFile::Open(LPCTSTR path, UINT flags, CFileException* error) {
    CStdioFile::Close();
    m_text = (flags & typeBinary) == 0;
    return CFile::Open(path, flags, error);
}

BOOL CStdioFile::ReadString(CString& line) {
    std::string bytes;
    const bool found = ReadLine(bytes);
    line = FromAnsi(bytes);
    return found;
}

LPTSTR CStdioFile::ReadString(LPTSTR line, UINT capacity) {
    if (capacity < 2 || Ahead(1) == 0) {
        return nullptr;
    }
    UINT length = 0;
    bool ended = false;
    while (!ended) {
        const Character next = NextCharacter();
        if (next.unitCount == 0 || length + next.unitCount >= capacity) {
            break;
        }
        std::copy_n(next.units, next.unitCount, line + length);
        length += next.unitCount;
        m_readAt += next.byteCount;
        ended = next.units[0] == _T('\n');
    }
    line[length] = 0;
    return line;
}

void CStdioFile::WriteString(LPCTSTR text) {
    const std::string bytes = ToAnsi(text);
    CStdioFile::Write(bytes.data(), static_cast<UINT>(bytes.size()));
}

UINT CStdioFile::Read(void* buffer, UINT count) {
    char* const out = static_cast<char*>(buffer);
    UINT done = 0;
    while (done < count && Ahead(2) != 0) {
        m_readAt += IsLineEnd() ? 1 : 0;
        out[done++] = m_read[m_readAt++];
    }
    return done;
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
        WriteOut();
    }
}

ULONGLONG CStdioFile::Seek(LONGLONG offset, UINT from) {
    WriteOut();
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
    WriteOut();
    DropRead();
    CFile::SetLength(length);
}

void CStdioFile::Flush() {
    WriteOut();
    CFile::Flush();
}

void CStdioFile::Close() {
    WriteOut();
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

// Up to `wanted` bytes that are now in the buffer at m_readAt; fewer only at the end of what is to be read.
std::size_t CStdioFile::Ahead(std::size_t wanted) {
    if (m_read.size() - m_readAt < wanted) {
        WriteOut();
        char block[kBlock];
        const UINT size = CFile::Read(block, kBlock);
        const UINT kept = m_text ? static_cast<UINT>(std::find(block, block + size, kEndMark) - block) : size;
        if (kept < size) {
            CFile::Seek(static_cast<LONGLONG>(kept) - size,
                        current);  // the mark stays in front, to be met again
        }
        m_read.erase(0, m_readAt);
        m_readAt = 0;
        m_read.append(block, kept);
    }
    return std::min(wanted, m_read.size() - m_readAt);
}

// Whether "\r\n" stands at m_readAt and means "\n"; two bytes must be ahead.
bool CStdioFile::IsLineEnd() const {
    return m_text && m_read.compare(m_readAt, 2, "\r\n") == 0;
}

CStdioFile::Character CStdioFile::NextCharacter() {
    const std::size_t ahead = Ahead(kLongestCharacter);
    if (ahead == 0) {
        return {};
    }
    if (IsLineEnd()) {
        return {{_T('\n')}, 1, 2};
    }
    const char* const bytes = m_read.data() + m_readAt;
    if (static_cast<BYTE>(*bytes) < 0x80) {
        return {{static_cast<TCHAR>(*bytes)}, 1, 1};
    }
    Character next = {};
    for (std::size_t count = 1; count <= ahead && next.unitCount == 0; ++count) {
        const int size = static_cast<int>(count);
        next.unitCount = static_cast<UINT>(MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, bytes, size, next.units, 2));
        next.byteCount = count;
    }
    return next.unitCount != 0 ? next : Character{{_T('\xFFFD')}, 1, 1};
}

// One line without its end. False when there is nothing left.
bool CStdioFile::ReadLine(std::string& line) {
    bool found = false;
    while (Ahead(1) != 0) {
        found = true;
        const std::size_t end = m_read.find('\n', m_readAt);
        line.append(m_read, m_readAt, end - m_readAt);
        m_readAt = std::min(end, m_read.size() - 1) + 1;
        if (end != std::string::npos) {
            if (m_text && line.ends_with('\r')) {
                line.pop_back();
            }
            break;
        }
    }
    return found;
}

void CStdioFile::WriteOut() {
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
