#pragma once

// Archives over plain bytes.

#include <afx.h>

#include <string>
#include <string_view>

namespace test {

// What `store(archive)` writes.
template <class Store>
std::string StoredBytes(Store store) {
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    store(archive);
    archive.Close();
    std::string bytes(static_cast<std::size_t>(file.GetLength()), '\0');
    file.SeekToBegin();
    file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    return bytes;
}

// A loading archive over a copy of `bytes`.
class LoadingArchive {
public:
    explicit LoadingArchive(std::string_view bytes) {
        file_.Write(bytes.data(), static_cast<UINT>(bytes.size()));
        file_.SeekToBegin();
    }
    CArchive& operator*() { return archive_; }

private:
    CMemFile file_;
    CArchive archive_{&file_, CArchive::load};
};

// The cause of the CArchiveException that `call` throws; CArchiveException::none without one.
template <class Call>
int ArchiveCause(Call call) {
    try {
        call();
    } catch (CArchiveException* e) {
        const int cause = e->m_cause;
        e->Delete();
        return cause;
    }
    return CArchiveException::none;
}

}  // namespace test
