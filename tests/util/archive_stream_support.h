#pragma once

// A sink and a source of the tests' own for archive streams.

#include <kadata/archive.h>

#include <algorithm>
#include <string>
#include <vector>

#include "afx/expect.h"

namespace test {

// Records what it is handed; throws "disk full" while `full`.
class Sink : public KaIArchiveWriter {
public:
    struct Call {
        std::string bytes;
        unsigned int padding;
    };

    Sink(unsigned int blockSize, EBufferPadding padding) : blockSize_(blockSize), padding_(padding) {}
    unsigned int GetWriteBufferSize() const override { return blockSize_; }
    EBufferPadding GetLastBufferPadding() const override { return padding_; }
    void Write(const unsigned char* data, unsigned int size, unsigned int paddingSize) override {
        if (full)
            AfxThrowFileException(CFileException::diskFull, ERROR_DISK_FULL);
        calls.push_back({std::string(reinterpret_cast<const char*>(data), size), paddingSize});
    }

    std::string All() const {
        std::string all;
        for (const Call& call : calls)
            all += call.bytes;
        return all;
    }

    std::vector<Call> calls;
    bool full = false;

private:
    unsigned int blockSize_;
    EBufferPadding padding_;
};

// Gives its bytes in portions of at most `portion`.
class Source : public KaIArchiveReader {
public:
    Source(std::string bytes, unsigned int blockSize, unsigned int portion = 0xFFFFFFFF)
        : bytes_(std::move(bytes)), blockSize_(blockSize), portion_(portion) {}
    unsigned int GetReadBufferSize() const override { return blockSize_; }
    unsigned int Read(unsigned char* buffer, unsigned int size) override {
        const std::size_t part = std::min<std::size_t>({bytes_.size() - at_, size, portion_});
        std::copy_n(bytes_.begin() + static_cast<std::ptrdiff_t>(at_), part, buffer);
        at_ += part;
        return static_cast<unsigned int>(part);
    }

private:
    std::string bytes_;
    std::size_t at_ = 0;
    unsigned int blockSize_;
    unsigned int portion_;
};

}  // namespace test
