// Texts of an archive, one after the other until the data end; what was read is written and read again.

#include <kadata/kalido_object.h>

#include <cstdint>
#include <cstdlib>

namespace {

// Reads one text. False, and the target as it was, when the archive ends first.
bool ReadOne(CArchive& archive, CString& text) {
    const CString before = text;
    try {
        CKalidoObject::ReadString(archive, text);
        return true;
    } catch (CArchiveException* e) {
        const bool asContracted = e->m_cause == CArchiveException::endOfFile && text == before;
        e->Delete();
        if (!asContracted) {
            std::abort();
        }
        return false;
    }
}

void CheckRoundTrip(const CString& text) {
    CMemFile file;
    CArchive storing(&file, CArchive::store);
    CKalidoObject::WriteString(storing, text);
    storing.Close();
    file.SeekToBegin();
    CArchive loading(&file, CArchive::load);
    CString again;
    if (!ReadOne(loading, again) || again != text) {
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    CMemFile file;
    file.Write(data, static_cast<UINT>(size));
    file.SeekToBegin();
    CArchive archive(&file, CArchive::load);
    CString text;
    while (ReadOne(archive, text)) {
        CheckRoundTrip(text);
    }
    return 0;
}
