#pragma once

// An open ZIP archive: minizip for the directory and the headers, and an index of the names. Internal to the library.

#include <memory>
#include <optional>
#include <unordered_map>

#include "zip_entry.h"
#include "zip_file.h"

namespace kadata::zip {

struct Entry {
    DWORD size = 0;            // of its content in bytes
    ULONGLONG compressed = 0;  // of its bytes in the archive
    Method method = Method::stored;
    bool readable = false;  // false: nothing of its content can be read
};

class Archive {
public:
    static constexpr ULONGLONG NO_COUNT = ~ULONGLONG{0};

    // Null when it cannot be opened or is no archive.
    static std::unique_ptr<Archive> Open(const CString& path);
    Archive(const Archive&) = delete;
    Archive& operator=(const Archive&) = delete;
    ~Archive();

    // NO_COUNT when it cannot be true.
    ULONGLONG Count() const;
    void GoToFirst();
    void GoToNext();  // stays at the last one, and at one whose directory record is damaged
    // Null when there is none; then it stands where a walk through all of them ends. Valid until the archive is closed.
    const Entry* Find(const CString& name);

    // The one that it stands at, and its name.
    Entry Current(CString& name);
    std::unique_ptr<unsigned char[]> Read(const Entry& current);

private:
    // What minizip needs to come back to an entry.
    struct Position {
        ULONGLONG inDirectory;
        ULONGLONG number;
    };
    struct Found {
        Position position;
        Entry entry;
    };
    struct HashWithoutCase {
        std::size_t operator()(const CString& name) const;
    };
    struct SameWithoutCase {
        bool operator()(const CString& a, const CString& b) const { return a.CompareNoCase(b) == 0; }
    };
    struct Index {
        std::unordered_map<CString, Found, HashWithoutCase, SameWithoutCase> entries;  // the first one of each name
        std::optional<Position> last;                                                  // of all
    };

    explicit Archive(const CString& path) : m_file(path) {}
    bool OpenDirectory();
    Index MakeIndex();
    bool GoTo(const Position& position);
    std::optional<Extent> FindContent(const Entry& current);

    ArchiveFile m_file;
    ULONGLONG m_place = 0;    // in the file, where minizip reads next
    ULONGLONG m_end = 0;      // of the file, as minizip sees it
    ULONGLONG m_sought = 0;   // the last place that minizip went to directly: of a record
    bool m_short = false;     // minizip's last read has met the end of the file
    void* m_unzip = nullptr;  // minizip's handle
    EntryReader m_reader;
    std::optional<Index> m_index;  // made when the first name is looked up

    friend struct FileFunctions;
};

}  // namespace kadata::zip
