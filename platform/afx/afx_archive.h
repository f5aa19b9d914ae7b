#pragma once

// A stream of binary values over a CFile. All values are little-endian on the disk, whatever the machine is.
//
// An archive either stores or loads. Doing the other thing throws CArchiveException*: readOnly when a loading one is written
// to, writeOnly when a storing one is read. Data that end before a value does throw endOfFile, and its target stays as it was.
// Using a closed or aborted archive throws genericException. The file's own failures pass
// through as CFileException*; one that comes while storing aborts the archive, so that nothing lands behind a gap. The file
// stays the caller's, and is not to be used until the archive is closed. One archive is used by one thread at a time.

#include <bit>
#include <cstring>
#include <memory>
#include <string_view>
#include <type_traits>

#include "afx_file.h"

// Types whose width on the disk is certain: a native long may have 4 or 8 bytes, and only the former is taken.
template <class T>
concept ArchiveValue = std::is_arithmetic_v<T> && sizeof(T) <= 8 &&
                       !((std::is_same_v<T, long> || std::is_same_v<T, unsigned long>)&&sizeof(long) != 4) &&
                       !(std::is_same_v<T, wchar_t> && sizeof(wchar_t) != 2);

namespace afx {

template <std::size_t N>
using UnsignedOf =
    std::conditional_t<N == 1, BYTE, std::conditional_t<N == 2, WORD, std::conditional_t<N == 4, DWORD, ULONGLONG>>>;

template <ArchiveValue T>
void StoreLittleEndian(BYTE* target, T value) {
    const ULONGLONG bits = std::bit_cast<UnsignedOf<sizeof(T)>>(value);
    for (std::size_t i = 0; i < sizeof(T); ++i) {
        target[i] = static_cast<BYTE>(bits >> (8 * i));
    }
}

template <ArchiveValue T>
T LoadLittleEndian(const BYTE* source) {
    ULONGLONG bits = 0;
    for (std::size_t i = 0; i < sizeof(T); ++i) {
        bits |= static_cast<ULONGLONG>(source[i]) << (8 * i);
    }
    if constexpr (std::is_same_v<T, bool>) {
        return bits != 0;
    } else {
        return std::bit_cast<T>(static_cast<UnsignedOf<sizeof(T)>>(bits));
    }
}

// UTF-16 units, to and from two bytes each. By memmove: of a memcpy that is known to be short the compiler makes a string
// instruction, which takes longer than the library's function.
inline void StoreUnits(BYTE* target, const TCHAR* units, std::size_t count) {
    if constexpr (std::endian::native == std::endian::little) {
        std::memmove(target, units, count * sizeof(TCHAR));
    } else {
        for (std::size_t i = 0; i < count; ++i) {
            StoreLittleEndian(target + 2 * i, units[i]);
        }
    }
}

inline void LoadUnits(TCHAR* units, const BYTE* source, std::size_t count) {
    if constexpr (std::endian::native == std::endian::little) {
        std::memmove(units, source, count * sizeof(TCHAR));
    } else {
        for (std::size_t i = 0; i < count; ++i) {
            units[i] = LoadLittleEndian<TCHAR>(source + 2 * i);
        }
    }
}

// The commonest text: the mark of wide characters, FF FE FF, and a length in one byte.
inline constexpr std::size_t kShortTextPrefix = 4;
inline constexpr std::size_t kShortTextLimit = 0xFF;

}  // namespace afx

class KADATA_API CArchive {
public:
    enum Mode : UINT { store = 0, load = 1, bNoFlushOnDelete = 2, bNoByteSwap = 4 };
    static constexpr int DEFAULT_BUFFER = 4096;

    // `buffer`, when given, has `bufferSize` bytes and stays the caller's. Below 128 bytes one of 128 is made instead.
    CArchive(CFile* file, UINT mode, int bufferSize = DEFAULT_BUFFER, void* buffer = nullptr);
    CArchive(const CArchive&) = delete;
    CArchive& operator=(const CArchive&) = delete;
    // Closes the archive and swallows what fails then; call Close to be told. With bNoFlushOnDelete it only aborts.
    ~CArchive();

    BOOL IsLoading() const { return (m_mode & load) != 0; }
    BOOL IsStoring() const { return !IsLoading(); }
    // Null once the archive is closed or aborted.
    CFile* GetFile() const { return m_file; }

    // Up to `count` bytes, fewer only at the end of the file; how many there were.
    UINT Read(void* target, UINT count);
    // Exactly `count` bytes, or endOfFile.
    void EnsureRead(void* target, UINT count);
    void Write(const void* source, UINT count) {
        if (count > Room()) [[unlikely]] {
            WriteLarge(source, count);
        } else if (count != 0) {
            std::memcpy(m_storeAt, source, count);
            m_storeAt += count;
        }
    }

    // Hands what is buffered to the file; a loading archive gives back to the file what it read ahead.
    void Flush();
    void Close();
    // Lets go of the file without writing anything more.
    void Abort() noexcept;

    template <ArchiveValue T>
    CArchive& operator<<(T value) {
        if (Room() < sizeof(T)) [[unlikely]] {
            MakeRoom();
        }
        afx::StoreLittleEndian(m_storeAt, value);
        m_storeAt += sizeof(T);
        return *this;
    }

    template <ArchiveValue T>
    CArchive& operator>>(T& value) {
        if (Ahead() < sizeof(T)) [[unlikely]] {
            Fetch(sizeof(T));
        }
        value = afx::LoadLittleEndian<T>(m_loadAt);
        m_loadAt += sizeof(T);
        return *this;
    }

    // Text in the wide form.
    CArchive& operator<<(const CString& text) {
        const std::basic_string_view<TCHAR> units = text.View();
        const std::size_t size = afx::kShortTextPrefix + units.size() * sizeof(TCHAR);
        if (units.size() >= afx::kShortTextLimit || size > Room()) [[unlikely]] {
            StoreText(units);
            return *this;
        }
        BYTE* const target = m_storeAt;
        target[0] = 0xFF;
        target[1] = 0xFE;
        target[2] = 0xFF;
        target[3] = static_cast<BYTE>(units.size());
        afx::StoreUnits(target + afx::kShortTextPrefix, units.data(), units.size());
        m_storeAt = target + size;
        return *this;
    }

    // Text in the wide form or in the narrow one, which is in the ANSI code page. It changes only when all of it was read, and no
    // more memory is taken than the data that are there can fill; a length above 2,147,483,647 is end of file too.
    CArchive& operator>>(CString& text) {
        const BYTE* const source = m_loadAt;
        if (Ahead() < afx::kShortTextPrefix || source[0] != 0xFF || source[1] != 0xFE || source[2] != 0xFF) [[unlikely]] {
            LoadText(text);
            return *this;
        }
        const std::size_t length = source[3];
        const std::size_t size = afx::kShortTextPrefix + length * sizeof(TCHAR);
        if (length >= afx::kShortTextLimit || size > Ahead()) [[unlikely]] {
            LoadText(text);
            return *this;
        }
        afx::LoadUnits(text.GetBufferSetLength(static_cast<int>(length)), source + afx::kShortTextPrefix, length);
        text.ReleaseBufferSetLength(static_cast<int>(length));
        m_loadAt = source + size;
        return *this;
    }

    // Path of the file, for exceptions.
    CString m_strFileName;

private:
    std::size_t Room() const { return static_cast<std::size_t>(m_storeEnd - m_storeAt); }
    std::size_t Ahead() const { return static_cast<std::size_t>(m_loadEnd - m_loadAt); }

    void RequireMode(Mode mode) const;
    void MakeRoom();
    void Fetch(std::size_t count);
    void WriteLarge(const void* source, UINT count);
    void WriteToFile(const void* source, std::size_t count);
    void StoreText(std::basic_string_view<TCHAR> units);
    void LoadText(CString& text);

    CFile* m_file;
    const UINT m_mode;
    const std::size_t m_size;               // of the buffer
    const std::unique_ptr<BYTE[]> m_owned;  // null when the buffer is the caller's
    BYTE* const m_start;                    // of the buffer
    // What is free to store into, and what was read ahead. The pair that the mode does not use, and both once the file is gone,
    // are empty: one comparison finds that there is room, that the mode is right and that the archive is open.
    BYTE* m_storeAt;
    BYTE* m_storeEnd;
    const BYTE* m_loadAt;
    const BYTE* m_loadEnd;
};

// The length in front of a text: the mark of wide characters when `unicode`, then the length in 1, 3, 7 or 15 bytes.
KADATA_API void AfxWriteStringLength(CArchive& ar, UINT_PTR length, BOOL unicode);
// The counterpart; `charSize` becomes 2 behind a mark and 1 without. A length that ends early throws endOfFile.
KADATA_API UINT_PTR AfxReadStringLength(CArchive& ar, int& charSize);
