#include <kadata/archive.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <limits>
#include <typeinfo>
#include <utility>

namespace {

// Lengths of texts: values that say that a wider one follows.
constexpr unsigned int LONGER_THAN_BYTE = 0xFF;
constexpr unsigned int MARK_WORD = 0xFFFE;  // behind a first byte of 0xFF
constexpr unsigned int LONGER_THAN_WORD = 0xFFFF;
constexpr ULONGLONG LONGER_THAN_DWORD = 0xFFFFFFFF;
constexpr std::size_t LONGEST_PREFIX = 18;

constexpr ULONGLONG LONGEST_TEXT = std::numeric_limits<int>::max();
constexpr ULONGLONG LONGEST_COUNTED = std::numeric_limits<ULONGLONG>::max() / sizeof(TCHAR);
constexpr auto ARITHMETIC_OVERFLOW = static_cast<HRESULT>(0x80070216);
constexpr int FIRST_STEP = 4096;  // units of a long text that are asked for before any of it has arrived

static_assert(sizeof(TCHAR) == 2 && std::endian::native == std::endian::little, "the units of a text are moved as they are");

// Numbers as they stand in the stream.
class Prefix {
public:
    void Add(ULONGLONG value, std::size_t bytes) {
        for (std::size_t i = 0; i < bytes; ++i) {
            m_bytes[m_size++] = static_cast<unsigned char>(value >> (8 * i));
        }
    }
    const unsigned char* Bytes() const { return m_bytes; }
    unsigned int Size() const { return m_size; }

private:
    unsigned char m_bytes[LONGEST_PREFIX];
    unsigned int m_size = 0;
};

ULONGLONG ReadNumber(KaCArchive& archive, unsigned int size) {
    unsigned char bytes[sizeof(ULONGLONG)];
    archive.Read(bytes, size);
    ULONGLONG value = 0;
    for (unsigned int i = 0; i < size; ++i) {
        value |= static_cast<ULONGLONG>(bytes[i]) << (8 * i);
    }
    return value;
}

// A file may be handed several blocks at once: that makes the same file by fewer calls of the system. Any other class, one
// derived from these included, is promised single blocks.
bool TakesRuns(const KaIArchiveWriter& writer) {
    return typeid(writer) == typeid(KaCArchiveFileWriter);
}
bool GivesRuns(const KaIArchiveReader& reader) {
    return typeid(reader) == typeid(KaCArchiveFileReader);
}

// Ends the exception that is being handled.
void DropException() {
    try {
        throw;
    } catch (CException* e) {
        e->Delete();
    } catch (...) {  // a value, which frees itself
    }
}

unsigned int WholeBlocks(unsigned int size, unsigned int blockSize) {
    return size - size % blockSize;
}

}  // namespace

KaCArchive::KaCArchive(KaIArchiveWriter* writer)
    : m_writer(writer), m_size(writer != nullptr ? writer->GetWriteBufferSize() : 0) {
    m_block = new unsigned char[m_size]();
    m_cursor = m_block;
}

KaCArchive::KaCArchive(KaIArchiveReader* reader) : m_reader(reader), m_size(reader != nullptr ? reader->GetReadBufferSize() : 0) {
    m_block = new unsigned char[m_size];
    m_cursor = m_block + m_size;
}

KaCArchive::~KaCArchive() noexcept(false) {
    try {
        Flush();
    } catch (...) {
        Release();
        if (std::uncaught_exceptions() == 0) {
            throw;
        }
        DropException();
    }
}

void KaCArchive::Flush() {
    if (m_writer != nullptr && m_cursor != m_block) {
        const KaIArchiveWriter::EBufferPadding padding = m_writer->GetLastBufferPadding();
        PadBlock(padding);
        m_writer->Write(m_block, padding == KaIArchiveWriter::eBufferPaddingNone ? Used() : m_size, Left());
    }
    Release();
}

void KaCArchive::PadBlock(KaIArchiveWriter::EBufferPadding padding) {
    if (padding == KaIArchiveWriter::eBufferPaddingZero) {
        std::memset(m_cursor, 0, Left());
    } else if (padding == KaIArchiveWriter::eBufferPaddingRandom) {
        std::srand(GetTickCount());
        std::generate(m_cursor, m_block + m_size, [] { return static_cast<unsigned char>(std::rand()); });
    }
}

void KaCArchive::Release() {
    delete[] std::exchange(m_block, nullptr);
    m_cursor = nullptr;
    m_size = 0;
    m_writer = nullptr;
}

void KaCArchive::RequireWriting() const {
    if (m_reader != nullptr) {
        AfxThrowArchiveException(CArchiveException::readOnly);
    }
    if (m_writer == nullptr || m_size == 0) {
        AfxThrowArchiveException(CArchiveException::genericException);
    }
}

void KaCArchive::RequireReading() const {
    if (m_writer != nullptr) {
        AfxThrowArchiveException(CArchiveException::writeOnly);
    }
    if (m_reader == nullptr || m_block == nullptr) {
        AfxThrowArchiveException(CArchiveException::genericException);
    }
}

void KaCArchive::WriteAcross(const unsigned char* data, unsigned int size) {
    if (data == nullptr || size == 0) {
        return;
    }
    RequireWriting();
    while (size != 0) {
        unsigned int part = std::min(size, Left());
        if (Used() == 0 && part == m_size && TakesRuns(*m_writer)) {
            part = WholeBlocks(size, m_size);
            m_writer->Write(data, part, 0);
        } else {
            std::memcpy(m_cursor, data, part);
            m_cursor += part;
            if (Left() == 0) {
                HandOver();
            }
        }
        data += part;
        size -= part;
    }
}

// A block stays full when the sink throws: the next write tries again.
void KaCArchive::HandOver() {
    m_writer->Write(m_block, m_size, 0);
    m_cursor = m_block;
}

unsigned int KaCArchive::ReadAcross(unsigned char* data, unsigned int size) {
    if (data == nullptr || size == 0) {
        return 0;
    }
    RequireReading();
    for (unsigned int done = 0; done < size;) {
        const unsigned int wanted = size - done;
        if (Left() == 0 && m_size != 0 && wanted >= m_size && GivesRuns(*m_reader)) {
            done += ReadRun(data + done, WholeBlocks(wanted, m_size));
            continue;
        }
        if (Left() == 0) {
            Refill();
        }
        const unsigned int part = std::min(wanted, Left());
        std::memcpy(data + done, m_cursor, part);
        m_cursor += part;
        done += part;
    }
    return size;
}

// Up to `size` bytes of the source, at least one, past the block.
unsigned int KaCArchive::ReadRun(unsigned char* data, unsigned int size) {
    const unsigned int read = m_reader->Read(data, size);
    if (read == 0) {
        AfxThrowArchiveException(CArchiveException::endOfFile);
    }
    return read;
}

// What a source gives that is less than a block lies at the block's end. One that claims to have given more gave a block.
void KaCArchive::Refill() {
    const unsigned int read = std::min(ReadRun(m_block, m_size), m_size);
    if (read == 0) {
        AfxThrowArchiveException(CArchiveException::endOfFile);
    }
    m_cursor = m_block + (m_size - read);
    std::memmove(m_cursor, m_block, read);
}

void KaCArchive::WriteText(const CString& text) {
    const auto length = static_cast<unsigned int>(text.GetLength());
    WriteStringLength(length);
    Write(reinterpret_cast<const unsigned char*>(text.GetString()), length * static_cast<unsigned int>(sizeof(TCHAR)));
}

void KaCArchive::WriteStringLength(ULONGLONG length) {
    Prefix prefix;
    prefix.Add(LONGER_THAN_BYTE, 1);
    prefix.Add(MARK_WORD, 2);
    if (length < LONGER_THAN_BYTE) {
        prefix.Add(length, 1);
    } else if (prefix.Add(LONGER_THAN_BYTE, 1); length < MARK_WORD) {
        prefix.Add(length, 2);
    } else if (prefix.Add(LONGER_THAN_WORD, 2); length < LONGER_THAN_DWORD) {
        prefix.Add(length, 4);
    } else {
        prefix.Add(LONGER_THAN_DWORD, 4);
        prefix.Add(length, 8);
    }
    Write(prefix.Bytes(), prefix.Size());
}

// Deliberate: a length without the mark is a length, and two bytes may hold 0xFFFE, although it is never written so.
ULONGLONG KaCArchive::ReadStringLength() {
    ULONGLONG length = ReadNumber(*this, 1);
    if (length < LONGER_THAN_BYTE) {
        return length;
    }
    if (ReadNumber(*this, 2) != MARK_WORD) {
        AfxThrowArchiveException(CArchiveException::genericException);
    }
    if (length = ReadNumber(*this, 1); length < LONGER_THAN_BYTE) {
        return length;
    }
    if (length = ReadNumber(*this, 2); length < LONGER_THAN_WORD) {
        return length;
    }
    if (length = ReadNumber(*this, 4); length < LONGER_THAN_DWORD) {
        return length;
    }
    return ReadNumber(*this, 8);
}

void KaCArchive::ReadText(CString& text) {
    const ULONGLONG length = ReadStringLength();
    if (length > LONGEST_COUNTED) {
        AtlThrow(ARITHMETIC_OVERFLOW);
    }
    if (length > LONGEST_TEXT) {
        AfxThrowArchiveException(CArchiveException::endOfFile);
    }
    ReadUnits(text, static_cast<int>(length));
}

void KaCArchive::ReadUnits(CString& text, int length) {
    if (static_cast<unsigned int>(length) <= Left() / sizeof(TCHAR)) {
        const auto size = static_cast<unsigned int>(length) * static_cast<unsigned int>(sizeof(TCHAR));
        std::memmove(text.GetBufferSetLength(length), m_cursor, size);
        text.ReleaseBufferSetLength(length);
        m_cursor += size;
        return;
    }
    CString units;
    for (int done = 0; done < length;) {
        const int step = std::min(length - done, std::max(done, FIRST_STEP));
        auto* const target = reinterpret_cast<unsigned char*>(units.GetBufferSetLength(done + step) + done);
        Read(target, static_cast<unsigned int>(step) * static_cast<unsigned int>(sizeof(TCHAR)));
        done += step;
        units.ReleaseBufferSetLength(done);
    }
    text = std::move(units);
}
