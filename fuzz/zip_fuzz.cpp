// ZIP archives: walked, and every name of the walk asked for.

#include <kadata/zip.h>
#include <unistd.h>
#include <zlib.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr int kEntries = 8;  // an entry may be as large as 16 MiB without a byte of content

struct Content {
    CString name;
    DWORD size;
    uLong sum;
    bool operator==(const Content& other) const { return size == other.size && sum == other.sum; }
};

void Require(bool good) {
    if (!good) {
        std::abort();
    }
}

Content Take(const CString& name, const unsigned char* data, DWORD size) {
    const std::unique_ptr<const unsigned char[]> owner(data);
    return {name, size, crc32(0, data, size)};
}

std::vector<Content> Walk(CZLibWrapper& zip) {
    std::vector<Content> walk;
    for (int left = std::min(zip.GetArchiveFileCount(), kEntries); left > 0; --left) {
        CString name;
        unsigned char* data = nullptr;
        DWORD size = 0;
        Require(zip.GetNextFile(name, &data, &size, walk.empty()) == 1 && data != nullptr);
        walk.push_back(Take(name, data, size));
    }
    return walk;
}

// By name comes the first one of that name.
void AskForAll(CZLibWrapper& zip, const std::vector<Content>& walk) {
    for (const Content& entry : walk) {
        if (entry.name.IsEmpty()) {  // perhaps for its record is damaged
            continue;
        }
        const auto first = std::find_if(walk.begin(), walk.end(),
                                        [&](const Content& other) { return other.name.CompareNoCase(entry.name) == 0; });
        unsigned char* data = nullptr;
        const DWORD size = zip.ExtractFileFromZip(entry.name, &data);
        Require(data != nullptr && Take(entry.name, data, size) == *first);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string path = "/tmp/kadata-zip-fuzz-" + std::to_string(getpid());
    std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    CZLibWrapper zip;
    if (zip.OpenZipFile(CString(path.c_str())) != 0) {
        AskForAll(zip, Walk(zip));
        unsigned char* none = nullptr;
        zip.ExtractFileFromZip(_T("no such name"), &none);
        delete[] none;
    }
    unlink(path.c_str());
    return 0;
}
