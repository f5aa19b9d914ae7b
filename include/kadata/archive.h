#pragma once

// A small binary stream in blocks: KaCArchive over a sink or a source of bytes, and files as both.
//
//     KaCArchiveFileWriter file(path, 4096);
//     KaCArchive archive(&file);
//     archive << name;
//     archive.Write(bytes, size);
//     archive.Flush();  // before the file is closed; tells of what fails
//
// The stream is the bytes that were written, in order, without header or framing. A text is the wide text of a CArchive, which
// each of the two reads from the other; numbers are little-endian:
//
//   bytes        content
//   3            FF FE FF
//   1            length in UTF-16 units below 255
//   or 3         FF, and a length from 255 to 65,533 in two bytes
//   or 7         FF FF FF, and a length up to 4,294,967,294 in four bytes
//   or 15        FF FF FF FF FF FF FF, and the length in eight bytes
//   2 x length   UTF-16LE, without terminator
//
// Sinks, sources and archives are used by one thread at a time. Exceptions of sinks and sources pass through as they are.

#include <afx.h>
#include <kadata/export.h>

#include <cstddef>
#include <cstring>

// Where the blocks of a writing archive go. Never destroyed through this interface.
class KADATA_API KaIArchiveWriter {
public:
    // How the last block is completed when it is only partly filled.
    enum EBufferPadding : int {
        eBufferPaddingKeep = 0,    // the whole block is written; its tail is what the block before held there, zeros at first
        eBufferPaddingRandom = 1,  // the whole block; the tail is from rand, after srand(GetTickCount())
        eBufferPaddingZero = 2,    // the whole block; the tail is zeros
        eBufferPaddingNone = 3,    // only the bytes in use
        // any other value is as eBufferPaddingKeep
    };

    // Bytes in a block. Asked once, by the archive's constructor.
    virtual unsigned int GetWriteBufferSize() const = 0;
    // Asked when the last block is due.
    virtual EBufferPadding GetLastBufferPadding() const = 0;
    // Takes `size` bytes. A full block has a padding of 0; with the last, partly filled one `paddingSize` bytes of the block
    // are not in use, whether they are handed over (they are at the end then) or, with eBufferPaddingNone, not.
    virtual void Write(const unsigned char* data, unsigned int size, unsigned int paddingSize) = 0;

protected:
    ~KaIArchiveWriter() = default;
};

// Where the blocks of a reading archive come from. Never destroyed through this interface.
class KADATA_API KaIArchiveReader {
public:
    // Bytes in a block. Asked once, by the archive's constructor.
    virtual unsigned int GetReadBufferSize() const = 0;
    // Fills up to `size` bytes of `buffer` and returns how many; 0 at the end of the data.
    virtual unsigned int Read(unsigned char* buffer, unsigned int size) = 0;

protected:
    ~KaIArchiveReader() = default;
};

// Either writes or reads, in blocks of the size that the other side asks for.
//
// Throws, beside what sink or source throw, CArchiveException* (the catcher deletes it) with the cause
//   endOfFile         the data end before what was to be read
//   genericException  a text does not begin as one; a sink with blocks of 0 bytes is written to; the archive is finished
//   readOnly          a reading archive is written to
//   writeOnly         a writing archive is read from
// What was read or written before stays so, and a text that was to be read as it was.
class KADATA_API KaCArchive {
public:
    // `writer` stays the caller's and has to outlive the archive, or its Flush.
    explicit KaCArchive(KaIArchiveWriter* writer);
    explicit KaCArchive(KaIArchiveReader* reader);
    // Deliberate: copies share the block, and write over each other. Only one of them may be flushed or destroyed.
    KaCArchive(const KaCArchive& other) = default;
    KaCArchive& operator=(const KaCArchive& other) = default;
    // Flushes. What fails then is thrown, unless an exception is on its way already: where that cannot be caught (a
    // unique_ptr, a container), call Flush before.
    ~KaCArchive() noexcept(false);

    // Hands over the last block and finishes the archive: of reading and writing no more can come. Once it is finished this
    // does nothing. When the sink throws, the archive is not finished, and a second Flush tries again.
    void Flush();
    // A block goes to the sink as soon as it is full. A file gets several full blocks in one piece. Null, and no bytes, are
    // nothing.
    void Write(const unsigned char* data, unsigned int size) {
        if (m_writer == nullptr || data == nullptr || size >= Left()) [[unlikely]] {
            WriteAcross(data, size);
            return;
        }
        std::memcpy(m_cursor, data, size);
        m_cursor += size;
    }
    // Exactly `size` bytes, which it returns. 0 for null and for no bytes.
    unsigned int Read(unsigned char* data, unsigned int size) {
        if (m_reader == nullptr || data == nullptr || size == 0 || size > Left()) [[unlikely]] {
            return ReadAcross(data, size);
        }
        std::memcpy(data, m_cursor, size);
        m_cursor += size;
        return size;
    }

    KaCArchive& operator<<(const CString& text) {
        const auto length = static_cast<unsigned int>(text.GetLength());
        if (m_writer == nullptr || length > SHORT_TEXT || TextSize(length) >= Left()) [[unlikely]] {
            WriteText(text);
            return *this;
        }
        std::memcpy(m_cursor, WIDE_MARK, sizeof WIDE_MARK);
        m_cursor[sizeof WIDE_MARK] = static_cast<unsigned char>(length);
        std::memmove(m_cursor + SHORT_PREFIX, text.GetString(), length * sizeof(TCHAR));
        m_cursor += TextSize(length);
        return *this;
    }
    // A length below 255 that no FF FE FF precedes is taken too; of a CArchive's narrow texts the short ones are misread so.
    // No more memory is taken than the data that are there can fill. A length of more than 2,147,483,647 is end of file, and one
    // whose bytes no 64-bit number counts throws CAtlException 0x80070216.
    KaCArchive& operator>>(CString& text) {
        if (m_reader == nullptr || Left() < SHORT_PREFIX || std::memcmp(m_cursor, WIDE_MARK, sizeof WIDE_MARK) != 0)
            [[unlikely]] {
            ReadText(text);
            return *this;
        }
        const unsigned int length = m_cursor[sizeof WIDE_MARK];
        if (length > SHORT_TEXT || TextSize(length) > Left()) [[unlikely]] {
            ReadText(text);
            return *this;
        }
        std::memmove(text.GetBufferSetLength(static_cast<int>(length)), m_cursor + SHORT_PREFIX, length * sizeof(TCHAR));
        text.ReleaseBufferSetLength(static_cast<int>(length));
        m_cursor += TextSize(length);
        return *this;
    }

    // Null in a reading archive and once the archive is finished.
    KaIArchiveWriter* GetKaIArchiveWriter() { return m_writer; }
    // Null in a writing archive.
    KaIArchiveReader* GetKaIArchiveReader() { return m_reader; }

protected:
    // What stands in front of the units of a text.
    void WriteStringLength(ULONGLONG length);
    ULONGLONG ReadStringLength();

private:
    // The commonest text has its length in one byte.
    static constexpr unsigned char WIDE_MARK[] = {0xFF, 0xFE, 0xFF};
    static constexpr unsigned int SHORT_PREFIX = 4;
    static constexpr unsigned int SHORT_TEXT = 254;
    static constexpr unsigned int TextSize(unsigned int length) { return SHORT_PREFIX + length * 2; }

    unsigned int Used() const { return static_cast<unsigned int>(m_cursor - m_block); }
    unsigned int Left() const { return m_size - Used(); }
    void RequireWriting() const;
    void RequireReading() const;
    void WriteAcross(const unsigned char* data, unsigned int size);
    unsigned int ReadAcross(unsigned char* data, unsigned int size);
    void WriteText(const CString& text);
    void ReadText(CString& text);
    void PadBlock(KaIArchiveWriter::EBufferPadding padding);
    void HandOver();
    void Refill();
    unsigned int ReadRun(unsigned char* data, unsigned int size);
    void ReadUnits(CString& text, int length);
    void Release();

    KaIArchiveWriter* m_writer = nullptr;
    KaIArchiveReader* m_reader = nullptr;
    unsigned char* m_block;   // owned, from new[]; null once the archive is finished
    unsigned char* m_cursor;  // what is before it waits to be written, or was read
    unsigned int m_size;      // of the block; 0 once the archive is finished
};

// A file that is written from its start, and to which nobody else has access while it is open.
//
// Failures are CFileException* (the catcher deletes it) with the system's error number, from Open with the path too.
class KADATA_API KaCArchiveFileWriter : public KaIArchiveWriter {
public:
    static constexpr unsigned int DEFAULT_BUFFER = 4096;

    explicit KaCArchiveFileWriter(unsigned int bufferSize = DEFAULT_BUFFER);
    explicit KaCArchiveFileWriter(const CString& path, unsigned int bufferSize = DEFAULT_BUFFER);
    // Deliberate: copies share the open file. Only one of them may be closed or destroyed.
    KaCArchiveFileWriter(const KaCArchiveFileWriter& other) = default;
    KaCArchiveFileWriter& operator=(const KaCArchiveFileWriter& other) = default;
    virtual ~KaCArchiveFileWriter();

    // A new file, or an existing one emptied. One that is still open is closed first.
    void Open(const CString& path);
    void Close();
    // As it was given to Open; empty before the first one.
    CString GetFilePath() const { return m_path; }

    unsigned int GetWriteBufferSize() const override { return m_bufferSize; }
    EBufferPadding GetLastBufferPadding() const override { return eBufferPaddingNone; }
    void Write(const unsigned char* data, unsigned int size, unsigned int paddingSize) override;

private:
    HANDLE m_file = INVALID_HANDLE_VALUE;
    unsigned int m_bufferSize;
    CString m_path;
};

// A file that is read once from its start, and to which nobody else has access while it is open. Failures as the writer's.
//
// Made with a path it reads as far as the file went then, and its blocks are no longer than the file. Made without, it reads to
// the end of what is opened. Deliberate: another Open changes nothing of that, and goes on counting; for another file make
// another object. No more than 4,294,967,295 bytes are read; a file that is longer shows only as many as its size exceeds a
// multiple of 4 GiB.
class KADATA_API KaCArchiveFileReader : public KaIArchiveReader {
public:
    static constexpr unsigned int DEFAULT_BUFFER = 4096;

    explicit KaCArchiveFileReader(unsigned int bufferSize = DEFAULT_BUFFER);
    explicit KaCArchiveFileReader(const CString& path, unsigned int bufferSize = DEFAULT_BUFFER);
    // Deliberate: copies share the open file and its position. Only one of them may be closed or destroyed.
    KaCArchiveFileReader(const KaCArchiveFileReader& other) = default;
    KaCArchiveFileReader& operator=(const KaCArchiveFileReader& other) = default;
    virtual ~KaCArchiveFileReader();

    // An existing file. One that is still open is closed first.
    void Open(const CString& path);
    void Close();

    unsigned int GetReadBufferSize() const override { return m_bufferSize; }
    unsigned int Read(unsigned char* buffer, unsigned int size) override;

private:
    HANDLE m_file = INVALID_HANDLE_VALUE;
    unsigned int m_bufferSize;
    unsigned int m_bytesRead = 0;
    unsigned int m_fileSize;
};
