// PE images and compiled .res through the resource reader, and every string of every string table.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "win32/resources/resource_reader.h"

namespace {

constexpr WORD kStringTable = 6;
constexpr UINT kStringsPerBlock = 16;

// Reads what an entry refers to, so that an address sanitizer sees every wrong one.
unsigned Touch(kawin::Bytes bytes) {
    unsigned sum = 0;
    for (const std::byte byte : bytes) {
        sum += std::to_integer<unsigned>(byte);
    }
    return sum;
}

void ReadStrings(kawin::Bytes block) {
    for (UINT id = 0; id < kStringsPerBlock; ++id) {
        const auto text = kawin::FindInStringBlock(block, id);
        if (text && Touch(*text) == UINT32_MAX) {
            std::abort();
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto* const bytes = reinterpret_cast<const std::byte*>(data);
    const auto file = kawin::ResourceFile::Read(std::vector<std::byte>(bytes, bytes + size));
    if (file == nullptr) {
        return 0;
    }
    if (file->Entries().size() > size) {  // more entries than bytes: something was visited again and again
        std::abort();
    }
    const kawin::ResourceName name(u"TEETH");
    std::size_t touched = 0;
    for (const kawin::ResourceEntry& entry : file->Entries()) {
        name.Matches(entry.type);
        name.Matches(entry.name);
        if (touched < size) {  // entries may share bytes
            touched += entry.data.size();
            ReadStrings(entry.data);
        }
    }
    const kawin::ResourceName strings(reinterpret_cast<LPCWSTR>(ULONG_PTR{kStringTable}));
    for (const kawin::ResourceEntry& entry : kawin::ResourceFile::OfType(file->Entries(), strings)) {
        if (!strings.Matches(entry.type)) {
            std::abort();
        }
    }
    return 0;
}
