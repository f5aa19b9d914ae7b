#include "afx_archive.h"

#include <algorithm>
#include <string>

namespace {

constexpr int kSmallestBuffer = 128;
constexpr UINT kReadStep = 1 << 16;  // bytes asked for at once while a text is read: a lying length costs no more

// Length prefixes: a value that says "more follows", and the width that follows it.
constexpr BYTE kLongerThanByte = 0xFF;
constexpr WORD kWideMarker = 0xFFFE;
constexpr WORD kLongerThanWord = 0xFFFF;
constexpr DWORD kLongerThanDword = 0xFFFFFFFF;

// Text of `length` characters, taken in steps so that memory follows the data and not the promise.
template <class Character>
std::basic_string<Character> ReadCharacters(CArchive& ar, ULONGLONG length) {
    std::basic_string<Character> text;
    while (text.size() < length) {
        const std::size_t done = text.size();
        const auto part = static_cast<std::size_t>(std::min<ULONGLONG>(length - done, kReadStep / sizeof(Character)));
        text.resize(done + part);
        ar.EnsureRead(text.data() + done, static_cast<UINT>(part * sizeof(Character)));
    }
    return text;
}

CString FromAnsi(const std::string& bytes) {
    const int size = static_cast<int>(bytes.size());
    CString text;
    text.ReleaseBufferSetLength(MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, text.GetBuffer(size), size));
    return text;
}

}  // namespace

CArchive::CArchive(CFile* file, UINT mode, int bufferSize, void* buffer)
    : m_strFileName(file->GetFilePath()),
      m_file(file),
      m_mode(mode),
      m_size(static_cast<std::size_t>(std::max(bufferSize, kSmallestBuffer))),
      m_owned(buffer == nullptr || bufferSize < kSmallestBuffer ? new BYTE[m_size] : nullptr),
      m_start(m_owned ? m_owned.get() : static_cast<BYTE*>(buffer)),
      m_current(m_start),
      m_limit(IsStoring() ? m_start + m_size : m_start) {}

CArchive::~CArchive() {
    if (m_file == nullptr || (m_mode & bNoFlushOnDelete) != 0) {
        return;
    }
    try {
        Close();
    } catch (CException* e) {
        e->Delete();
    }
}

UINT CArchive::Read(void* target, UINT count) {
    if (IsStoring()) {
        ThrowMisuse();
    }
    BYTE* out = static_cast<BYTE*>(target);
    UINT left = count;
    while (left != 0) {
        if (m_current == m_limit) {
            if (left >= m_size && m_file != nullptr) {
                return count - left + m_file->Read(out, left);
            }
            Fill();
            if (m_current == m_limit) {
                break;
            }
        }
        const UINT part = static_cast<UINT>(std::min<std::ptrdiff_t>(left, m_limit - m_current));
        std::memcpy(out, m_current, part);
        m_current += part;
        out += part;
        left -= part;
    }
    return count - left;
}

void CArchive::EnsureRead(void* target, UINT count) {
    if (Read(target, count) != count) {
        AfxThrowArchiveException(CArchiveException::endOfFile, m_strFileName);
    }
}

void CArchive::Write(const void* source, UINT count) {
    if (IsLoading()) {
        ThrowMisuse();
    }
    if (m_limit - m_current < static_cast<std::ptrdiff_t>(count)) {
        FlushStored();
        if (count >= m_size) {
            if (m_file != nullptr) {
                m_file->Write(source, count);
            }
            return;
        }
    }
    std::memcpy(m_current, source, count);
    m_current += count;
}

void CArchive::Flush() {
    if (m_file == nullptr) {
        return;
    }
    if (IsStoring()) {
        FlushStored();
        return;
    }
    if (m_current != m_limit) {
        m_file->Seek(m_current - m_limit, CFile::current);
    }
    m_current = m_limit = m_start;
}

void CArchive::Close() {
    Flush();
    m_file = nullptr;
}

void CArchive::Abort() {
    m_file = nullptr;
    m_current = m_start;
    m_limit = IsStoring() ? m_start + m_size : m_start;
}

void CArchive::ThrowMisuse() const {
    AfxThrowArchiveException(IsLoading() ? CArchiveException::readOnly : CArchiveException::writeOnly, m_strFileName);
}

// The buffer is empty afterwards also when the file throws: nothing is written twice.
void CArchive::FlushStored() {
    const UINT count = static_cast<UINT>(m_current - m_start);
    m_current = m_start;
    if (count != 0 && m_file != nullptr) {
        m_file->Write(m_start, count);
    }
}

void CArchive::Fill() {
    m_current = m_limit = m_start;
    if (m_file != nullptr) {
        m_limit += m_file->Read(m_start, static_cast<UINT>(m_size));
    }
}

void AfxWriteStringLength(CArchive& ar, ULONGLONG length, BOOL unicode) {
    if (unicode) {
        ar << kLongerThanByte << kWideMarker;
    }
    if (length < kLongerThanByte) {
        ar << static_cast<BYTE>(length);
    } else if (length < kWideMarker) {
        ar << kLongerThanByte << static_cast<WORD>(length);
    } else if (length < kLongerThanDword) {
        ar << kLongerThanByte << kLongerThanWord << static_cast<DWORD>(length);
    } else {
        ar << kLongerThanByte << kLongerThanWord << kLongerThanDword << length;
    }
}

ULONGLONG AfxReadStringLength(CArchive& ar, int& charSize) {
    charSize = 1;
    BYTE shortest = 0;
    ar >> shortest;
    if (shortest < kLongerThanByte) {
        return shortest;
    }
    WORD word = 0;
    ar >> word;
    if (word == kWideMarker) {
        charSize = sizeof(TCHAR);
        ar >> shortest;
        if (shortest < kLongerThanByte) {
            return shortest;
        }
        ar >> word;
    }
    if (word < kLongerThanWord) {
        return word;
    }
    DWORD dword = 0;
    ar >> dword;
    if (dword < kLongerThanDword) {
        return dword;
    }
    ULONGLONG longest = 0;
    ar >> longest;
    return longest;
}

CArchive& operator<<(CArchive& ar, const CString& text) {
    AfxWriteStringLength(ar, static_cast<ULONGLONG>(text.GetLength()), TRUE);
    ar.Write(text.GetString(), static_cast<UINT>(text.GetLength()) * static_cast<UINT>(sizeof(TCHAR)));
    return ar;
}

CArchive& operator>>(CArchive& ar, CString& text) {
    int charSize = 0;
    const ULONGLONG length = AfxReadStringLength(ar, charSize);
    if (charSize == sizeof(TCHAR)) {
        text = CString(std::basic_string_view<TCHAR>(ReadCharacters<TCHAR>(ar, length)));
    } else {
        text = FromAnsi(ReadCharacters<char>(ar, length));
    }
    return ar;
}
