// Compiled resources (.res): entries of a header and bytes, each aligned to 4 bytes; the first entry is empty and marks the file.

#include <algorithm>
#include <iterator>

#include "byte_view.h"
#include "resource_reader.h"

namespace kawin {
namespace {

constexpr unsigned char kMark[] = {0, 0, 0, 0, 0x20, 0, 0, 0, 0xFF, 0xFF, 0, 0, 0xFF, 0xFF, 0, 0,
                                   0, 0, 0, 0, 0,    0, 0, 0, 0,    0,    0, 0, 0,    0,    0, 0};
constexpr std::size_t kSizes = 8;  // size of the data, size of the header
constexpr WORD kNumberFollows = 0xFFFF;
constexpr std::size_t kLanguage = 6;  // in what follows the names: version of the data, flags, language

std::size_t Align(std::size_t offset) {
    return (offset + 3) & ~std::size_t{3};
}

bool HasMark(Bytes file) {
    return file.size() >= sizeof kMark && std::equal(std::begin(kMark), std::end(kMark), file.begin(),
                                                     [](unsigned char mark, std::byte byte) { return std::byte{mark} == byte; });
}

// A number after its mark, or a text with its terminator; moves `offset` behind it.
std::optional<ResourceKey> TakeKey(Bytes header, std::size_t& offset) {
    const std::size_t start = offset;
    if (Word(header, offset) == kNumberFollows) {
        const std::optional<WORD> id = Word(header, offset + 2);
        offset += 4;
        return id ? std::optional(ResourceKey(*id)) : std::nullopt;
    }
    while (const std::optional<WORD> unit = Word(header, offset)) {
        offset += 2;
        if (*unit == 0) {
            return ResourceKey(header.subspan(start, offset - 2 - start));
        }
    }
    return std::nullopt;
}

std::optional<ResourceEntry> ReadEntry(Bytes header, Bytes data) {
    std::size_t offset = kSizes;
    const std::optional<ResourceKey> type = TakeKey(header, offset);
    const std::optional<ResourceKey> name = type ? TakeKey(header, offset) : std::nullopt;
    const std::optional<WORD> language = name ? Word(header, Align(offset) + kLanguage) : std::nullopt;
    return language ? std::optional(ResourceEntry{*type, *name, *language, data}) : std::nullopt;
}

}  // namespace

std::optional<std::vector<ResourceEntry>> ReadCompiledResources(Bytes file) {
    if (!HasMark(file)) {
        return std::nullopt;
    }
    std::vector<ResourceEntry> entries;
    for (std::size_t offset = sizeof kMark; offset < file.size();) {
        const std::optional<DWORD> data_size = Dword(file, offset);
        const std::optional<DWORD> header_size = Dword(file, offset + 4);
        const auto header = header_size ? Slice(file, offset, *header_size) : std::nullopt;
        const auto data = header ? Slice(file, offset + *header_size, *data_size) : std::nullopt;
        if (!data || header->size() <= kSizes) {
            break;
        }
        if (const std::optional<ResourceEntry> entry = ReadEntry(*header, *data)) {
            entries.push_back(*entry);
        }
        offset = Align(offset + *header_size + *data_size);
    }
    return entries;
}

}  // namespace kawin
