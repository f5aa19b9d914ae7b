#include "zip_archive.h"

#include <unzip.h>

#include <algorithm>
#include <cstring>

namespace kadata::zip {

namespace {

constexpr std::size_t LONGEST_NAME = 260;
constexpr ULONGLONG DIRECTORY_RECORD = 46;        // bytes, the least
constexpr ULONGLONG CLOSING_RECORD = 22;          // likewise
constexpr ULONGLONG LARGEST_SHORT_COUNT = 65535;  // a record without Zip64 holds no more
constexpr ULONGLONG LARGEST_PLACE = ~ULONGLONG{0} >> 1;

// A claim of no more than this costs little; above it, it has to be possible.
constexpr ULONGLONG LARGEST_UNASKED = 16 * 1024 * 1024;
constexpr ULONGLONG BEST_RATIO = 1032;  // of deflate: 258 bytes by 2 bits

CString FromAnsi(const char* bytes, std::size_t size) {
    TCHAR units[LONGEST_NAME];
    const int length =
        size == 0 ? 0 : MultiByteToWideChar(CP_ACP, 0, bytes, static_cast<int>(size), units, static_cast<int>(LONGEST_NAME));
    return CString(units, length);
}

bool IsPossible(ULONGLONG size, ULONGLONG compressed) {
    return size <= MAXDWORD && (size <= LARGEST_UNASKED || size / BEST_RATIO <= compressed);
}

}  // namespace

// How minizip reads. It is given the archive itself as the open file.
struct FileFunctions {
    static voidpf Open(voidpf archive, const void*, int) { return archive; }
    static int Close(voidpf, voidpf) { return 0; }
    // The end of the file is a failure: minizip would take it for zeros otherwise.
    static int Error(voidpf, voidpf stream) { return static_cast<Archive*>(stream)->m_short ? 1 : 0; }
    static uLong Write(voidpf, voidpf, const void*, uLong) { return 0; }

    static uLong Read(voidpf, voidpf stream, void* target, uLong size) {
        auto& archive = *static_cast<Archive*>(stream);
        const DWORD read = archive.m_file.Read(archive.m_place, static_cast<unsigned char*>(target),
                                               static_cast<DWORD>(std::min<ULONGLONG>(size, MAXDWORD)));
        archive.m_place += read;
        archive.m_short = read < size;
        return read;
    }
    static ZPOS64_T Tell(voidpf, voidpf stream) { return static_cast<Archive*>(stream)->m_place; }
    // An offset may be negative as a signed number.
    static long Seek(voidpf, voidpf stream, ZPOS64_T offset, int origin) {
        auto& archive = *static_cast<Archive*>(stream);
        const ULONGLONG place = offset + (origin == ZLIB_FILEFUNC_SEEK_CUR   ? archive.m_place
                                          : origin == ZLIB_FILEFUNC_SEEK_END ? archive.m_end
                                                                             : 0);
        if (place > LARGEST_PLACE) {
            return -1;
        }
        archive.m_place = place;
        archive.m_sought = origin == ZLIB_FILEFUNC_SEEK_SET ? place : archive.m_sought;
        return 0;
    }
};

std::unique_ptr<Archive> Archive::Open(const CString& path) {
    std::unique_ptr<Archive> archive(new Archive(path));
    if (!archive->m_file.IsOpen() || !archive->OpenDirectory()) {
        return nullptr;
    }
    return archive;
}

// minizip looks for the record that closes the archive in the last 65,535 bytes, which miss it behind the longest comments: then
// it is told of an earlier end.
bool Archive::OpenDirectory() {
    zlib_filefunc64_def functions{&FileFunctions::Open, &FileFunctions::Read,  &FileFunctions::Write, &FileFunctions::Tell,
                                  &FileFunctions::Seek, &FileFunctions::Close, &FileFunctions::Error, this};
    m_end = m_file.Size();
    m_unzip = unzOpen2_64("", &functions);
    if (m_unzip == nullptr && m_file.Size() > CLOSING_RECORD) {
        m_end = m_file.Size() - CLOSING_RECORD;
        m_unzip = unzOpen2_64("", &functions);
    }
    return m_unzip != nullptr;
}

Archive::~Archive() {
    if (m_unzip != nullptr) {
        unzClose(m_unzip);
    }
}

ULONGLONG Archive::Count() const {
    unz_global_info64 info{};
    if (unzGetGlobalInfo64(m_unzip, &info) != UNZ_OK) {
        return NO_COUNT;
    }
    const ULONGLONG count = info.number_entry;
    return count <= LARGEST_SHORT_COUNT || count <= m_file.Size() / DIRECTORY_RECORD ? count : NO_COUNT;
}

void Archive::GoToFirst() {
    unzGoToFirstFile(m_unzip);
}

void Archive::GoToNext() {
    unzGoToNextFile(m_unzip);
}

bool Archive::GoTo(const Position& position) {
    const unz64_file_pos place{position.inDirectory, position.number};
    return unzGoToFilePos64(m_unzip, &place) == UNZ_OK;
}

const Entry* Archive::Find(const CString& name) {
    if (!m_index) {
        m_index = MakeIndex();
    }
    if (const auto found = m_index->entries.find(name); found != m_index->entries.end()) {
        GoTo(found->second.position);
        return &found->second.entry;
    }
    if (!m_index->last) {
        GoToFirst();
    } else if (GoTo(*m_index->last)) {
        GoToNext();
    }
    return nullptr;
}

// FNV-1a over the ASCII characters; what the others are in the other case is left to the comparison.
std::size_t Archive::HashWithoutCase::operator()(const CString& name) const {
    std::size_t hash = 0xCBF29CE484222325;
    for (int i = 0; i < name.GetLength(); ++i) {
        const TCHAR unit = name[i];
        if (unit < 0x80) {
            hash ^= static_cast<std::size_t>(unit >= _T('a') && unit <= _T('z') ? unit - (_T('a') - _T('A')) : unit);
            hash *= 0x100000001B3;
        }
    }
    return hash;
}

// Ends where a directory record is damaged. The directory stays in memory: each look-up reads the entry's record again.
Archive::Index Archive::MakeIndex() {
    Index index;
    for (int result = unzGoToFirstFile(m_unzip); result == UNZ_OK; result = unzGoToNextFile(m_unzip)) {
        unz64_file_pos place{};
        unzGetFilePos64(m_unzip, &place);
        const Position position{place.pos_in_zip_directory, place.num_of_file};
        if (!index.last) {
            m_file.KeepFrom(m_sought);
        }
        CString name;
        const Entry entry = Current(name);
        index.entries.emplace(name, Found{position, entry});
        index.last = position;
    }
    return index;
}

Entry Archive::Current(CString& name) {
    unz_file_info64 info{};
    char bytes[LONGEST_NAME] = {};
    Entry entry;
    if (unzGetCurrentFileInfo64(m_unzip, &info, bytes, sizeof bytes, nullptr, 0, nullptr, 0) != UNZ_OK) {
        name.Empty();
        return entry;
    }
    name = FromAnsi(bytes, strnlen(bytes, sizeof bytes));
    entry.compressed = std::min<ULONGLONG>(info.compressed_size, m_file.Size());
    if (!IsPossible(info.uncompressed_size, entry.compressed)) {
        return entry;
    }
    entry.size = static_cast<DWORD>(info.uncompressed_size);
    entry.method = static_cast<Method>(info.compression_method);
    entry.readable = entry.method == Method::stored || entry.method == Method::deflated;
    return entry;
}

std::unique_ptr<unsigned char[]> Archive::Read(const Entry& current) {
    std::unique_ptr<unsigned char[]> content(new unsigned char[current.size]);
    const std::optional<Extent> extent = FindContent(current);
    m_reader.Read(m_file, extent.value_or(Extent{0, 0}), current.method, content.get(), current.size);
    return content;
}

// Nothing when the entry's local header does not agree with its directory record.
std::optional<Extent> Archive::FindContent(const Entry& current) {
    constexpr int RAW = 1;  // minizip is not to inflate
    int method = 0;
    if (!current.readable || unzOpenCurrentFile2(m_unzip, &method, nullptr, RAW) != UNZ_OK) {
        return std::nullopt;
    }
    const Extent extent{unzGetCurrentFileZStreamPos64(m_unzip), current.compressed};
    unzCloseCurrentFile(m_unzip);
    return extent;
}

}  // namespace kadata::zip
