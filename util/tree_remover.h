#pragma once

// Removal of a directory with all that is in it. Internal to the library: CDirectory::Remove.
//
// No path is looked up twice. Each directory is opened once, as itself and never through a link, and what is in it is opened and
// deleted relative to that handle; so whoever swaps a directory for a link at the same time cannot lead the removal out of the
// tree (CVE-2022-21658). Handles are held for the directories on the way to the current one only, and the way is a list of
// its own, so that a deep tree costs no stack.

#include <afx.h>

#include <string>
#include <vector>

#include "directory_support.h"

namespace kadata::directory {

class TreeRemover {
public:
    // `root` ends with a backslash.
    explicit TreeRemover(const CString& root);

    // 1 when all is gone, 0 when a directory could not be listed; throws when something could not be deleted.
    int Run();

private:
    struct Entry {
        std::basic_string<TCHAR> name;
        bool directory;
    };

    // A directory on the way.
    struct Level {
        FileHandle directory;
        std::vector<Entry> entries;
        std::size_t next = 0;    // the first entry that was not looked at yet
        std::size_t pathLength;  // of m_path up to and including this directory
        bool whole = true;       // all directories in it could be listed
    };

    bool OpenRoot();
    bool Enter(FileHandle directory);
    void RemoveNextEntry();
    void RemoveDirectoryEntry(Entry& entry);
    bool LeaveLevel();
    void DeleteEntry(Entry& entry);
    int DeleteRoot() const;

    bool ReadEntries(HANDLE directory, std::vector<Entry>& entries);
    void AddEntries(std::vector<Entry>& entries) const;

    const CString m_root;
    bool m_rootIsLink = false;
    std::basic_string<TCHAR> m_path;  // of the current directory, with a backslash at the end
    std::vector<Level> m_levels;      // the current directory is the last one
    std::vector<ULONGLONG> m_block;   // what one call tells of a directory; aligned for it
};

}  // namespace kadata::directory
