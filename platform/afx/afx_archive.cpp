#include "afx_archive.h"

#include <algorithm>
#include <limits>
#include <vector>

namespace {

constexpr int kSmallestBuffer = 128;
constexpr std::size_t kFirstStep = 4096;  // bytes of a long text that are asked
                                          // for before any of it has arrived

// Length prefixes: values that say that a wider one follows.
constexpr BYTE kLongerThanByte = 0xFF;
constexpr WORD kWideMark = 0xFFFE;
constexpr WORD kLongerThanWord = 0xFFFF;
constexpr DWORD kLongerThanDword = 0xFFFFFFFF;
constexpr std::size_t kLongestPrefix = 18;  // bytes, with the mark
constexpr std::size_t kLongestText = std::numeric_limits<int>::max();

// Bytes whose number only the data claim: memory grows with what has arrived, so that a wrong length costs none.
std::vector<BYTE> ReadBytes(CArchive& ar, std::size_t count) {
    std::vector<BYTE> bytes;
    while (bytes.size() < count) {
        const std::size_t done = bytes.size();
        const std::size_t step = std::min(count - done, std::max(done, kFirstStep));
        bytes.resize(done + step);
        ar.EnsureRead(bytes.data() + done, static_cast<UINT>(step));
    }
    return bytes;
}

void SetWide(CString& text, const BYTE* source, std::size_t size) {
    const int length = static_cast<int>(size / sizeof(TCHAR));
    afx::LoadUnits(text.GetBufferSetLength(length), source, static_cast<std::size_t>(length));
    text.ReleaseBufferSetLength(length);
}

void SetAnsi(CString& text, const BYTE* source, std::size_t size) {
    const auto* const bytes = reinterpret_cast<const char*>(source);
    const int count = static_cast<int>(size);
    const int length = count == 0 ? 0 : MultiByteToWideChar(CP_ACP, 0, bytes, count, nullptr, 0);
    LPTSTR const target = text.GetBufferSetLength(length);
    if (length != 0) {
        MultiByteToWideChar(CP_ACP, 0, bytes, count, target, length);
    }
    text.ReleaseBufferSetLength(length);
}

}  // namespace

CArchive::CArchive(CFile* file, UINT mode, int bufferSize, void* buffer)
    : m_strFileName(file->GetFilePath()),
      m_file(file),
      m_mode(mode),
      m_size(static_cast<std::size_t>(std::max(bufferSize, kSmallestBuffer))),
      m_owned(buffer == nullptr || bufferSize < kSmallestBuffer ? new BYTE[m_size] : nullptr),
      m_start(m_owned ? m_owned.get() : static_cast<BYTE*>(buffer)),
      m_storeAt(m_start),
      m_storeEnd(IsStoring() ? m_start + m_size : m_start),
      m_loadAt(m_start),
      m_loadEnd(m_start) {}

CArchive::~CArchive() {
    if ((m_mode & bNoFlushOnDelete) != 0) {
        return;
    }
    try {
        Close();
    } catch (CException* e) {  // nobody is left to be told
        e->Delete();
    }
}

UINT CArchive::Read(void* target, UINT count) {
    RequireMode(load);
    BYTE* const out = static_cast<BYTE*>(target);
    std::size_t done = 0;
    while (done < count) {
        if (Ahead() == 0) {
            const bool direct = count - done >= m_size;
            const UINT read = m_file->Read(direct ? out + done : m_start, static_cast<UINT>(direct ? count - done : m_size));
            if (read == 0) {
                break;
            }
            m_loadAt = m_start;
            m_loadEnd = direct ? m_start : m_start + read;
            done += direct ? read : 0;
            continue;
        }
        const std::size_t part = std::min(count - done, Ahead());
        std::memcpy(out + done, m_loadAt, part);
        m_loadAt += part;
        done += part;
    }
    return static_cast<UINT>(done);
}

void CArchive::EnsureRead(void* target, UINT count) {
    if (Read(target, count) != count) {
        AfxThrowArchiveException(CArchiveException::endOfFile, m_strFileName);
    }
}

void CArchive::WriteLarge(const void* source, UINT count) {
    MakeRoom();
    if (count >= m_size) {
        WriteToFile(source, count);
    } else {
        std::memcpy(m_storeAt, source, count);
        m_storeAt += count;
    }
}

void CArchive::Flush() {
    if (m_file == nullptr) {
        return;
    }
    if (IsStoring()) {
        MakeRoom();
    } else if (Ahead() != 0) {
        m_file->Seek(m_loadAt - m_loadEnd, CFile::current);
        m_loadAt = m_loadEnd = m_start;
    }
}

void CArchive::Close() {
    Flush();
    Abort();
}

void CArchive::Abort() noexcept {
    m_file = nullptr;
    m_storeAt = m_storeEnd = m_start;
    m_loadAt = m_loadEnd = m_start;
}

void CArchive::RequireMode(Mode mode) const {
    if ((m_mode & load) != mode) {
        AfxThrowArchiveException(mode == store ? CArchiveException::readOnly : CArchiveException::writeOnly, m_strFileName);
    }
    if (m_file == nullptr) {
        AfxThrowArchiveException(CArchiveException::genericException, m_strFileName);
    }
}

// Empties the buffer into the file.
void CArchive::MakeRoom() {
    RequireMode(store);
    const std::size_t count = static_cast<std::size_t>(m_storeAt - m_start);
    m_storeAt = m_start;
    WriteToFile(m_start, count);
}

void CArchive::WriteToFile(const void* source, std::size_t count) {
    try {
        m_file->Write(source, static_cast<UINT>(count));
    } catch (...) {
        Abort();
        throw;
    }
}

// Reads ahead until `count` bytes, at most the size of the buffer, lie there.
void CArchive::Fetch(std::size_t count) {
    RequireMode(load);
    const std::size_t kept = Ahead();
    std::memmove(m_start, m_loadAt, kept);
    m_loadAt = m_start;
    m_loadEnd = m_start + kept;
    while (Ahead() < count) {
        const UINT read = m_file->Read(m_start + Ahead(), static_cast<UINT>(m_size - Ahead()));
        if (read == 0) {
            AfxThrowArchiveException(CArchiveException::endOfFile, m_strFileName);
        }
        m_loadEnd += read;
    }
}

void CArchive::StoreText(std::basic_string_view<TCHAR> units) {
    const std::size_t size = kLongestPrefix + units.size() * sizeof(TCHAR);
    if (size > Room() && size <= m_size) {
        MakeRoom();  // a text that lies in one piece is copied faster
    }
    AfxWriteStringLength(*this, units.size(), TRUE);
    if constexpr (std::endian::native == std::endian::little) {
        Write(units.data(), static_cast<UINT>(units.size() * sizeof(TCHAR)));
    } else {
        for (const TCHAR unit : units) {
            *this << unit;
        }
    }
}

void CArchive::LoadText(CString& text) {
    int charSize = 0;
    const UINT_PTR length = AfxReadStringLength(*this, charSize);
    if (length > kLongestText) {
        AfxThrowArchiveException(CArchiveException::endOfFile, m_strFileName);
    }
    const auto set = charSize == sizeof(TCHAR) ? &SetWide : &SetAnsi;
    const std::size_t size = static_cast<std::size_t>(length) * static_cast<std::size_t>(charSize);
    if (size > m_size) {
        const std::vector<BYTE> bytes = ReadBytes(*this, size);
        set(text, bytes.data(), size);
        return;
    }
    if (Ahead() < size) {
        Fetch(size);
    }
    set(text, m_loadAt, size);
    m_loadAt += size;
}

void AfxWriteStringLength(CArchive& ar, UINT_PTR length, BOOL unicode) {
    if (unicode) {
        ar << kLongerThanByte << kWideMark;
    }
    if (length < kLongerThanByte) {
        ar << static_cast<BYTE>(length);
    } else if (length < kWideMark) {
        ar << kLongerThanByte << static_cast<WORD>(length);
    } else if (length < kLongerThanDword) {
        ar << kLongerThanByte << kLongerThanWord << static_cast<DWORD>(length);
    } else {
        ar << kLongerThanByte << kLongerThanWord << kLongerThanDword << static_cast<ULONGLONG>(length);
    }
}

UINT_PTR AfxReadStringLength(CArchive& ar, int& charSize) {
    charSize = sizeof(char);
    BYTE byte = 0;
    ar >> byte;
    if (byte < kLongerThanByte) {
        return byte;
    }
    WORD word = 0;
    ar >> word;
    if (word == kWideMark) {
        charSize = sizeof(TCHAR);
        ar >> byte;
        if (byte < kLongerThanByte) {
            return byte;
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
