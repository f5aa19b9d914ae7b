#pragma once

// What the tests of CZLibWrapper share.

#include <gtest/gtest.h>
#include <kadata/zip.h>

#include <memory>
#include <string>
#include <vector>

#include "directory_test_support.h"
#include "support/temp_folder.h"

namespace test {

// Leaves what it returns to the free store full of marks, so that memory which nobody wrote to shows.
inline void Dirty() {
    for (std::size_t size = 16; size <= 65536; size *= 2) {
        const std::unique_ptr<char[]> block(new char[size]);
        std::fill_n(static_cast<volatile char*>(block.get()), size, '\xA5');
    }
}

struct ZipContent {
    std::string name;
    std::string bytes;
    bool operator==(const ZipContent&) const = default;
};

// "(null)" for a null block.
inline std::string Taken(const unsigned char* data, DWORD size) {
    const std::unique_ptr<const unsigned char[]> owner(data);
    return data == nullptr ? "(null)" : std::string(reinterpret_cast<const char*>(data), size);
}

inline ZipContent Next(CZLibWrapper& zip, int first = 0) {
    Dirty();
    CString name;
    unsigned char* data = nullptr;
    DWORD size = 0xA5A5;
    EXPECT_EQ(zip.GetNextFile(name, &data, &size, first), 1);
    return {Narrow(name), Taken(data, size)};
}

// As many as the archive claims to have, at most `limit`.
inline std::vector<ZipContent> WalkZip(CZLibWrapper& zip, int limit) {
    std::vector<ZipContent> all;
    for (int i = 0; i < std::min(limit, zip.GetArchiveFileCount()); ++i)
        all.push_back(Next(zip, i == 0));
    return all;
}

// "(untouched)" where the call leaves the pointer alone.
inline std::string Extract(CZLibWrapper& zip, const CString& name) {
    Dirty();
    unsigned char untouched = 0;
    unsigned char* data = &untouched;
    const DWORD size = zip.ExtractFileFromZip(name, &data);
    if (data != &untouched)
        return Taken(data, size);
    return size == 0 ? "(untouched)" : "(size without data)";
}

}  // namespace test
