#include "zip_entry.h"

#include <algorithm>
#include <cstring>

namespace kadata::zip {

namespace {

// Compressed bytes that are inflated in one piece. That is faster than by smaller ones: between two of them zlib keeps a copy of
// the last 32 KiB.
constexpr DWORD LARGEST_INPUT = 1024 * 1024;

}  // namespace

EntryReader::~EntryReader() {
    if (m_ready) {
        inflateEnd(&m_stream);
    }
}

void EntryReader::Read(ArchiveFile& file, const Extent& extent, Method method, unsigned char* target, DWORD size) {
    DWORD done = 0;
    if (extent.place < file.Size()) {
        const Extent present{extent.place, std::min(extent.size, file.Size() - extent.place)};
        done = method == Method::stored
                   ? file.Read(present.place, target, static_cast<DWORD>(std::min<ULONGLONG>(present.size, size)))
                   : Inflate(file, present, target, size);
    }
    std::memset(target + done, 0, size - done);
}

bool EntryReader::Begin() {
    if (m_ready) {
        return inflateReset(&m_stream) == Z_OK;
    }
    m_ready = inflateInit2(&m_stream, -MAX_WBITS) == Z_OK;  // raw: without the head and tail of zlib's own format
    return m_ready;
}

// The check sum would not change the result, so it is not made.
DWORD EntryReader::Inflate(ArchiveFile& file, const Extent& extent, unsigned char* target, DWORD size) {
    if (!Begin()) {
        return 0;
    }
    m_stream.next_out = target;
    m_stream.avail_out = size;
    MakeRoom(static_cast<DWORD>(std::min<ULONGLONG>(extent.size, LARGEST_INPUT)));
    ULONGLONG place = extent.place;
    ULONGLONG left = extent.size;
    int result = Z_OK;
    while (result == Z_OK && left != 0 && m_stream.avail_out != 0) {
        const DWORD wanted = static_cast<DWORD>(std::min<ULONGLONG>(left, m_inputSize));
        const DWORD read = file.Read(place, m_input.get(), wanted);
        m_stream.next_in = m_input.get();
        m_stream.avail_in = read;
        place += read;
        left = read == wanted ? left - read : 0;
        result = inflate(&m_stream, left == 0 ? Z_FINISH : Z_NO_FLUSH);
    }
    return size - m_stream.avail_out;
}

void EntryReader::MakeRoom(DWORD size) {
    if (size > m_inputSize) {
        m_inputSize = 0;
        m_input.reset(new unsigned char[size]);
        m_inputSize = size;
    }
}

}  // namespace kadata::zip
