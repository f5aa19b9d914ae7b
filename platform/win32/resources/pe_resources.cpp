// The resource directory of a PE image: three levels of tables (type, name, language) that lead to the data.

#include <algorithm>
#include <set>

#include "byte_view.h"
#include "resource_reader.h"

namespace kawin {
namespace {

constexpr WORD kDosMark = 0x5A4D;      // MZ
constexpr DWORD kPeMark = 0x00004550;  // PE\0\0
constexpr std::size_t kPeOffset = 0x3C;
constexpr std::size_t kFileHeaderSize = 20;
constexpr std::size_t kSectionSize = 40;
constexpr WORD kPe32 = 0x10B;
constexpr WORD kPe32Plus = 0x20B;
constexpr std::size_t kDirectoriesInPe32 = 96;  // offset of the data directories in the optional header
constexpr std::size_t kDirectoriesInPe32Plus = 112;
constexpr std::size_t kDirectorySize = 8;
constexpr DWORD kResourceDirectory = 2;
constexpr std::size_t kTableHeaderSize = 16;
constexpr std::size_t kTableEntrySize = 8;
constexpr DWORD kHighBit = 0x80000000;  // of a name: it is a text; of an offset: it leads to a table
constexpr int kLevels = 3;
constexpr WORD kMostSections = 96;  // more than that the system does not load either

// Where the headers say that things are.
struct PeLayout {
    std::size_t sections;  // offset of the section table
    WORD section_count;
    DWORD resources;  // address in the image of the directory; 0 for none
};

std::optional<PeLayout> ReadLayout(Bytes file) {
    const std::optional<DWORD> pe = Word(file, 0) == kDosMark ? Dword(file, kPeOffset) : std::nullopt;
    if (!pe || Dword(file, *pe) != kPeMark) {
        return std::nullopt;
    }
    const std::size_t file_header = std::size_t{*pe} + 4;
    const std::size_t optional_header = file_header + kFileHeaderSize;
    const std::optional<WORD> section_count = Word(file, file_header + 2);
    const std::optional<WORD> optional_size = Word(file, file_header + 16);
    const std::optional<WORD> magic = Word(file, optional_header);
    if (!section_count || *section_count > kMostSections || !optional_size || (magic != kPe32 && magic != kPe32Plus)) {
        return std::nullopt;
    }
    const std::size_t directories = optional_header + (magic == kPe32 ? kDirectoriesInPe32 : kDirectoriesInPe32Plus);
    const std::optional<DWORD> directory_count = Dword(file, directories - 4);
    const std::optional<DWORD> resources = Dword(file, directories + kResourceDirectory * kDirectorySize);
    const bool has_resources = directory_count.value_or(0) > kResourceDirectory && resources;
    return PeLayout{optional_header + *optional_size, *section_count, has_resources ? *resources : 0};
}

// The bytes of the file from an address in the image to the end of its section.
std::optional<Bytes> AtAddress(Bytes file, const PeLayout& layout, DWORD address) {
    for (std::size_t i = 0; i < layout.section_count; ++i) {
        const std::size_t section = layout.sections + i * kSectionSize;
        const std::optional<DWORD> start = Dword(file, section + 12);
        const std::optional<DWORD> size = Dword(file, section + 16);
        const std::optional<DWORD> offset = Dword(file, section + 20);
        if (!offset) {
            break;
        }
        if (address >= *start && address - *start < *size && *offset < file.size()) {
            const std::size_t length = std::min<std::size_t>(*size, file.size() - *offset);
            const std::size_t skipped = address - *start;
            return skipped < length ? std::optional(file.subspan(*offset + skipped, length - skipped)) : std::nullopt;
        }
    }
    return std::nullopt;
}

// Walks the tables, each at most once: a table that is reached again, by a cycle or from two sides, is left out. Tables that
// overlap cannot make it walk on either: it looks at no more entries than the directory has room for.
class DirectoryWalk {
public:
    DirectoryWalk(Bytes file, const PeLayout& layout, Bytes directory)
        : file_(file), layout_(layout), directory_(directory), entries_left_(directory.size() / kTableEntrySize) {}

    std::vector<ResourceEntry> Run() {
        const Path none;
        ReadTable(0, none, 0);
        return std::move(entries_);
    }

private:
    struct Path {
        std::optional<ResourceKey> type;
        std::optional<ResourceKey> name;
    };

    void ReadTable(DWORD offset, const Path& path, int level) {
        const std::optional<WORD> named = Word(directory_, std::size_t{offset} + 12);
        const std::optional<WORD> numbered = Word(directory_, std::size_t{offset} + 14);
        if (!numbered || !visited_.insert(offset).second) {
            return;
        }
        const std::size_t count = std::size_t{*named} + *numbered;
        for (std::size_t i = 0; i < count && entries_left_ > 0; ++i, --entries_left_) {
            const std::size_t entry = offset + kTableHeaderSize + i * kTableEntrySize;
            const std::optional<DWORD> name = Dword(directory_, entry);
            const std::optional<DWORD> target = Dword(directory_, entry + 4);
            if (!target) {
                return;
            }
            ReadTableEntry(*name, *target, path, level);
        }
    }

    // The last level leads to data and names a language; the others lead to tables.
    void ReadTableEntry(DWORD name, DWORD target, Path path, int level) {
        const bool is_last = level == kLevels - 1;
        if (((target & kHighBit) == 0) != is_last) {
            return;
        }
        if (is_last) {
            ReadData(target, path, static_cast<LANGID>(name & 0xFFFF));
            return;
        }
        const std::optional<ResourceKey> key = ReadKey(name);
        if (key) {
            (level == 0 ? path.type : path.name) = key;
            ReadTable(target & ~kHighBit, path, level + 1);
        }
    }

    std::optional<ResourceKey> ReadKey(DWORD name) const {
        if ((name & kHighBit) == 0) {
            return ResourceKey(static_cast<WORD>(name & 0xFFFF));
        }
        const std::size_t offset = name & ~kHighBit;
        const std::optional<WORD> length = Word(directory_, offset);
        const auto text = length ? Slice(directory_, offset + 2, std::size_t{*length} * 2) : std::nullopt;
        return text ? std::optional(ResourceKey(*text)) : std::nullopt;
    }

    void ReadData(DWORD offset, const Path& path, LANGID language) {
        const std::optional<DWORD> address = Dword(directory_, offset);
        const std::optional<DWORD> size = Dword(directory_, std::size_t{offset} + 4);
        const auto rest = size ? AtAddress(file_, layout_, *address) : std::nullopt;
        const auto data = rest ? Slice(*rest, 0, *size) : std::nullopt;
        if (data) {
            entries_.push_back({*path.type, *path.name, language, *data});
        }
    }

    Bytes file_;
    const PeLayout& layout_;
    Bytes directory_;
    std::size_t entries_left_;
    std::set<DWORD> visited_;
    std::vector<ResourceEntry> entries_;
};

}  // namespace

std::optional<std::vector<ResourceEntry>> ReadPeResources(Bytes file) {
    const std::optional<PeLayout> layout = ReadLayout(file);
    if (!layout) {
        return std::nullopt;
    }
    const auto directory = layout->resources == 0 ? std::nullopt : AtAddress(file, *layout, layout->resources);
    return directory ? DirectoryWalk(file, *layout, *directory).Run() : std::vector<ResourceEntry>();
}

}  // namespace kawin
