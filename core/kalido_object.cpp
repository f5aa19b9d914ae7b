#include <kadata/kalido_object.h>

#include <algorithm>
#include <bit>
#include <limits>
#include <string>

namespace {

constexpr BYTE LONGER_THAN_BYTE = 0xFF;
constexpr WORD LONGER_THAN_WORD = 0xFFFF;
constexpr DWORD NO_LENGTH = 0xFFFFFFFF;
constexpr WORD UNICODE_MARK = 0xFFFE;                                // behind a first byte of 0xFF
constexpr std::size_t MAX_LENGTH = std::numeric_limits<int>::max();  // of a CString
constexpr std::size_t STACK_BYTES = 128;
constexpr std::size_t FIRST_STEP_BYTES = 4096;  // of what the heap is asked for before any of the text has arrived

static_assert(std::endian::native == std::endian::little, "units travel as they lie in memory");

template <class T>
T Take(CArchive& archive) {
    T value{};
    archive >> value;
    return value;
}

void ReadAll(CArchive& archive, void* target, std::size_t bytes) {
    if (archive.Read(target, static_cast<UINT>(bytes)) != bytes) {
        AfxThrowArchiveException(CArchiveException::endOfFile, archive.m_strFileName);
    }
}

// Reads `length` units into what `room(n)` gives: n units that keep what is in them when n grows. It grows with what has arrived,
// so that a damaged length costs no memory.
template <class Unit, class Room>
void ReadInSteps(CArchive& archive, std::size_t length, Room room) {
    for (std::size_t done = 0; done < length;) {
        const std::size_t step = std::min(length - done, std::max(done, FIRST_STEP_BYTES / sizeof(Unit)));
        ReadAll(archive, room(done + step) + done, step * sizeof(Unit));
        done += step;
    }
}

CString ReadWide(CArchive& archive, std::size_t length) {
    if (length * sizeof(TCHAR) <= STACK_BYTES) {
        TCHAR units[STACK_BYTES / sizeof(TCHAR)];
        ReadAll(archive, units, length * sizeof(TCHAR));
        return CString(units, static_cast<int>(length));
    }
    CString text;
    ReadInSteps<TCHAR>(archive, length, [&](std::size_t units) { return text.GetBufferSetLength(static_cast<int>(units)); });
    text.ReleaseBufferSetLength(static_cast<int>(length));
    return text;
}

CString WidenAnsi(const char* bytes, std::size_t length) {
    CString text;
    if (length == 0) {
        return text;  // the conversion takes it for a fault
    }
    const int units = MultiByteToWideChar(CP_ACP, 0, bytes, static_cast<int>(length), nullptr, 0);
    LPTSTR target = text.GetBufferSetLength(units);
    MultiByteToWideChar(CP_ACP, 0, bytes, static_cast<int>(length), target, units);
    text.ReleaseBufferSetLength(units);
    return text;
}

CString ReadNarrow(CArchive& archive, std::size_t length) {
    if (length <= STACK_BYTES) {
        char bytes[STACK_BYTES];
        ReadAll(archive, bytes, length);
        return WidenAnsi(bytes, length);
    }
    std::string bytes;
    ReadInSteps<char>(archive, length, [&](std::size_t count) {
        bytes.resize(count);
        return bytes.data();
    });
    return WidenAnsi(bytes.data(), length);
}

}  // namespace

CKalidoObject::CKalidoObject() = default;

CKalidoObject::~CKalidoObject() = default;

void CKalidoObject::WriteString(CArchive& archive, const CString& text) {
    const UINT length = static_cast<UINT>(text.GetLength());
    AfxWriteStringLength(archive, length, TRUE);
    archive.Write(static_cast<LPCTSTR>(text), static_cast<UINT>(length * sizeof(TCHAR)));
}

void CKalidoObject::ReadString(CArchive& archive, CString& text) {
    int unitSize = 0;
    const ULONGLONG length = AfxReadStringLength(archive, unitSize);
    if (length > MAX_LENGTH) {
        AfxThrowArchiveException(CArchiveException::endOfFile, archive.m_strFileName);
    }
    const bool wide = unitSize == sizeof(TCHAR);
    text = wide ? ReadWide(archive, static_cast<std::size_t>(length)) : ReadNarrow(archive, static_cast<std::size_t>(length));
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
