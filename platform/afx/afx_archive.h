#pragma once

// A stream of binary values over a CFile. All values are little-endian on the disk, whatever the machine is.
//
// An archive either stores or loads. Doing the other thing throws CArchiveException*: readOnly when a loading one is written to,
// writeOnly when a storing one is read. >> throws endOfFile when the data end before the value does. The file's own failures pass
// through as CFileException*. The file stays the caller's; it is not to be used until the archive is closed.

#include <bit>
#include <cstring>
#include <memory>
#include <type_traits>

#include "afx_file.h"

static_assert(std::endian::native == std::endian::little, "values are written from memory as they stand");

// Types whose width on the disk is certain: a native long is 4 bytes on one platform and 8 on another, so only the former goes.
template <class T>
concept ArchiveValue = std::is_arithmetic_v<T> && sizeof(T) <= 8 &&
                       !((std::is_same_v<T, long> || std::is_same_v<T, unsigned long>) && sizeof(long) != 4);

class KADATA_API CArchive {
public:
    enum Mode : UINT { store = 0, load = 1, bNoFlushOnDelete = 2, bNoByteSwap = 4 };
    static constexpr int DEFAULT_BUFFER = 4096;

    // `buffer`, when given, has `bufferSize` bytes and stays the caller's. Sizes below 128 count as 128.
    CArchive(CFile* file, UINT mode, int bufferSize = DEFAULT_BUFFER, void* buffer = nullptr);
    CArchive(const CArchive&) = delete;
    CArchive& operator=(const CArchive&) = delete;
    // Closes a storing archive and swallows what fails then; call Close to be told. With bNoFlushOnDelete it only aborts.
    ~CArchive();

    BOOL IsLoading() const { return (m_mode & load) != 0; }
    BOOL IsStoring() const { return !IsLoading(); }
    CFile* GetFile() const { return m_file; }

    // Up to `count` bytes; how many there were.
    UINT Read(void* target, UINT count);
    // Exactly `count` bytes, or endOfFile.
    void EnsureRead(void* target, UINT count);
    void Write(const void* source, UINT count);

    // Hands what is buffered to the file; a loading archive gives back to the file what it read ahead.
    void Flush();
    void Close();
    // Lets go of the file without writing anything more.
    void Abort();

    template <ArchiveValue T>
    CArchive& operator<<(T value) {
        if (IsLoading()) [[unlikely]] {
            ThrowMisuse();
        }
        if (m_limit - m_current < static_cast<std::ptrdiff_t>(sizeof(T))) [[unlikely]] {
            Write(&value, sizeof(T));
            return *this;
        }
        std::memcpy(m_current, &value, sizeof(T));
        m_current += sizeof(T);
        return *this;
    }
    template <ArchiveValue T>
    CArchive& operator>>(T& value) {
        if (IsStoring()) [[unlikely]] {
            ThrowMisuse();
        }
        std::conditional_t<std::is_same_v<T, bool>, BYTE, T> read;
        if (m_limit - m_current < static_cast<std::ptrdiff_t>(sizeof(T))) [[unlikely]] {
            EnsureRead(&read, sizeof(T));
        } else {
            std::memcpy(&read, m_current, sizeof(T));
            m_current += sizeof(T);
        }
        value = static_cast<T>(read);
        return *this;
    }

    // Path of the file, for exceptions.
    CString m_strFileName;

private:
    [[noreturn]] void ThrowMisuse() const;
    void FlushStored();
    void Fill();

    CFile* m_file;
    UINT m_mode;
    std::size_t m_size;                     // of the buffer
    std::unique_ptr<BYTE[]> m_owned;        // null when the buffer is the caller's
    BYTE* m_start;
    BYTE* m_current;
    BYTE* m_limit;  // storing: end of the buffer; loading: end of what was read ahead
};

// The length in front of a string: a marker for wide characters when `unicode`, then the length in one to fifteen bytes.
KADATA_API void AfxWriteStringLength(CArchive& ar, ULONGLONG length, BOOL unicode);
// The counterpart; `charSize` becomes 2 behind a marker and 1 without. A length that ends early throws endOfFile.
KADATA_API ULONGLONG AfxReadStringLength(CArchive& ar, int& charSize);

// Text in the wide form; read back in either form, the narrow one from the ANSI code page. Reading takes no more memory than the data
// that are really there can fill, and changes the target only when all of it was read.
KADATA_API CArchive& operator<<(CArchive& ar, const CString& text);
KADATA_API CArchive& operator>>(CArchive& ar, CString& text);
