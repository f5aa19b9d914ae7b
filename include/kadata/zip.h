#pragma once

// Reads the files of a ZIP archive into memory.

#include <afx.h>
#include <kadata/export.h>

namespace kadata::zip {
class Archive;
}

// An archive is opened by its path; its entries are walked in the order of the central directory, or asked for by name. The file
// stays open, and others may read and write it meanwhile, as long as the wrapper lives. One thread at a time.
//
//   int first = 1;
//   for (int left = zip.GetArchiveFileCount(); left > 0; --left, first = 0) {
//       zip.GetNextFile(name, &data, &size, first);
//       ...
//       delete[] data;
//   }
//
// Entries are stored or deflated (APPNOTE.TXT 6.3.3, methods 0 and 8, without the Zip64 extensions). A name is text in the
// ANSI code page, its path included and with the separators that it has there; of a longer one the first 260 bytes count.
//
// Nothing is thrown but std::bad_alloc. Of damage nothing is told: what cannot be read of an entry is zeros, and the check sums
// are not looked at. An entry that claims a size that it cannot have is as one without content: a size above 16 MiB that is more
// than 1,032 times that of its compressed bytes, or more than 4,294,967,295. One whose directory record is damaged has no name
// either.
//
// Contents come from new[], also for 0 bytes, and belong to the caller, who frees them with delete[].
class KADATA_API CZLibWrapper {
public:
    CZLibWrapper() = default;
    // Deliberate: copies share the archive and the place in it. Only one of them may be destroyed.
    CZLibWrapper(const CZLibWrapper& other) = default;
    CZLibWrapper& operator=(const CZLibWrapper& other) = default;
    ~CZLibWrapper();

    // Non-zero when `path` could be opened and is an archive; one without entries is none. Deliberate: one that was open before
    // is not closed, for a copy may use it; without a copy it stays open until the process ends.
    int OpenZipFile(const CString& path);
    // Entries that the archive claims to have; -1 when none is open, and for a number that its size rules out (one above 65,535
    // is looked at).
    int GetArchiveFileCount();

    // GetNextFile with `first`.
    int GetFirstFile(CString& name, unsigned char** data, DWORD* size);
    // The first entry when `first` is non-zero, else the one behind the current one, which GetFirstFile, GetNextFile and
    // ExtractFileFromZip set; `size` is in bytes. After the last one the last one comes again. Returns 1; 0 when no archive is
    // open (`data` becomes null) and when `data` or `size` is null.
    int GetNextFile(CString& name, unsigned char** data, DWORD* size, int first);
    // The content of the first entry of that name, without regard to case, which becomes the current one; returns its size in
    // bytes. 0 also when there is no such entry: then `data` is as before, and the last entry is the current one. When no archive
    // is open `data` becomes null; 0 when `data` is null. The first call makes an index of the names for those to come.
    DWORD ExtractFileFromZip(const CString& name, unsigned char** data);

private:
    kadata::zip::Archive* m_archive = nullptr;  // owned, null when none is open
};
