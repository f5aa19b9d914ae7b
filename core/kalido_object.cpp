#include <kadata/kalido_object.h>

namespace {

constexpr BYTE LONGER_THAN_BYTE = 0xFF;
constexpr WORD LONGER_THAN_WORD = 0xFFFF;
constexpr DWORD NO_LENGTH = 0xFFFFFFFF;
constexpr WORD UNICODE_MARK = 0xFFFE;  // behind a first byte of 0xFF

template <class T>
T Take(CArchive& archive) {
    T value{};
    archive >> value;
    return value;
}

}  // namespace

CKalidoObject::CKalidoObject() = default;

CKalidoObject::~CKalidoObject() = default;

// The encoding is the archive's own.
void CKalidoObject::WriteString(CArchive& archive, const CString& text) {
    archive << text;
}

void CKalidoObject::ReadString(CArchive& archive, CString& text) {
    archive >> text;
}

unsigned int CKalidoObject::ReadStringLength(CArchive& archive) {
    if (!archive.IsLoading()) {
        AfxThrowArchiveException(CArchiveException::writeOnly, archive.m_strFileName);
    }
    const BYTE first = Take<BYTE>(archive);
    if (first != LONGER_THAN_BYTE) {
        return first;
    }
    const WORD word = Take<WORD>(archive);
    if (word == UNICODE_MARK) {
        return NO_LENGTH;
    }
    return word != LONGER_THAN_WORD ? word : Take<DWORD>(archive);
}
