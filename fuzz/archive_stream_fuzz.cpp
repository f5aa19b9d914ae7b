// A stream of texts in blocks: the first byte is the size of a block. What was read is written, and read again by the
// foundation's archive.

#include <kadata/archive.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <vector>

namespace {

void Require(bool good) {
    if (!good) {
        std::abort();
    }
}

class Bytes : public KaIArchiveReader, public KaIArchiveWriter {
public:
    explicit Bytes(unsigned int blockSize) : m_blockSize(blockSize) {}
    unsigned int GetReadBufferSize() const override { return m_blockSize; }
    unsigned int GetWriteBufferSize() const override { return m_blockSize; }
    EBufferPadding GetLastBufferPadding() const override { return eBufferPaddingNone; }
    unsigned int Read(unsigned char* buffer, unsigned int size) override {
        const auto part = static_cast<unsigned int>(std::min<std::size_t>(size, bytes.size() - m_at));
        std::copy_n(bytes.data() + m_at, part, buffer);
        m_at += part;
        return part;
    }
    void Write(const unsigned char* data, unsigned int size, unsigned int) override {
        bytes.insert(bytes.end(), data, data + size);
    }

    std::vector<unsigned char> bytes;

private:
    std::size_t m_at = 0;
    unsigned int m_blockSize;
};

// False at the end, or where there is no text; then the text is as before.
bool ReadOne(KaCArchive& archive, CString& text) {
    const CString before = text;
    try {
        archive >> text;
        return true;
    } catch (CArchiveException* e) {
        const int cause = e->m_cause;
        e->Delete();
        Require(cause == CArchiveException::endOfFile || cause == CArchiveException::genericException);
    } catch (const CAtlException&) {
    }
    Require(text == before);
    return false;
}

void CheckRoundTrip(const CString& text, unsigned int blockSize) {
    Bytes sink(blockSize);
    KaCArchive archive(static_cast<KaIArchiveWriter*>(&sink));
    archive << text;
    archive.Flush();
    CMemFile file(sink.bytes.data(), static_cast<UINT>(sink.bytes.size()));
    CArchive other(&file, CArchive::load);
    CString again;
    other >> again;
    Require(again == text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const unsigned int blockSize = data[0] + 1U;
    Bytes source(blockSize);
    source.bytes.assign(data + 1, data + size);
    KaCArchive archive(static_cast<KaIArchiveReader*>(&source));
    CString text;
    while (ReadOne(archive, text)) {
        CheckRoundTrip(text, blockSize);
    }
    return 0;
}
