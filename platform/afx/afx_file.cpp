#include "afx_file.h"

#include <algorithm>
#include <utility>

IMPLEMENT_DYNAMIC(CFile, CObject)

// Written out, so that it is a constant and nothing is done for it when the library is loaded.
const HANDLE CFile::hFileNull = reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(-1));

namespace {

constexpr UINT kShareFlags = 0x70;
constexpr ULONGLONG kTicksPerSecond = 10'000'000;
constexpr ULONGLONG kSecondsFrom1601To1970 = 11'644'473'600;

struct OpenArguments {
    DWORD access;
    DWORD share;
    DWORD disposition;
    DWORD attributes;
};

DWORD AccessOf(UINT flags) {
    switch (flags & (CFile::modeWrite | CFile::modeReadWrite)) {
        case CFile::modeWrite:
            return GENERIC_WRITE;
        case CFile::modeReadWrite:
            return GENERIC_READ | GENERIC_WRITE;
        default:
            return GENERIC_READ;
    }
}

DWORD ShareOf(UINT flags) {
    switch (flags & kShareFlags) {
        case CFile::shareDenyWrite:
            return FILE_SHARE_READ;
        case CFile::shareDenyRead:
            return FILE_SHARE_WRITE;
        case CFile::shareDenyNone:
            return FILE_SHARE_READ | FILE_SHARE_WRITE;
        default:
            return 0;
    }
}

OpenArguments ArgumentsOf(UINT flags) {
    const auto attribute = [flags](UINT flag, DWORD value) { return (flags & flag) != 0 ? value : 0U; };
    const DWORD existing = (flags & CFile::modeNoTruncate) != 0 ? OPEN_ALWAYS : CREATE_ALWAYS;
    return {AccessOf(flags), ShareOf(flags), (flags & CFile::modeCreate) != 0 ? existing : static_cast<DWORD>(OPEN_EXISTING),
            FILE_ATTRIBUTE_NORMAL | attribute(CFile::osWriteThrough, FILE_FLAG_WRITE_THROUGH) |
                attribute(CFile::osRandomAccess, FILE_FLAG_RANDOM_ACCESS) |
                attribute(CFile::osSequentialScan, FILE_FLAG_SEQUENTIAL_SCAN)};
}

CString AbsolutePath(LPCTSTR path) {
    const DWORD needed = GetFullPathNameW(path, 0, nullptr, nullptr);
    CString absolute;
    if (needed != 0) {
        const DWORD length = GetFullPathNameW(path, needed, absolute.GetBuffer(static_cast<int>(needed)), nullptr);
        absolute.ReleaseBufferSetLength(static_cast<int>(length));
    }
    return absolute.IsEmpty() ? CString(path) : absolute;
}

// By arithmetic: a constructor of CTime would throw for a time before 1970, which any disk may hold.
CTime TimeOf(const FILETIME& time) {
    const ULONGLONG seconds = ((static_cast<ULONGLONG>(time.dwHighDateTime) << 32) | time.dwLowDateTime) / kTicksPerSecond;
    return seconds < kSecondsFrom1601To1970 ? CTime() : CTime(static_cast<__time64_t>(seconds - kSecondsFrom1601To1970));
}

// `data` is one of the system's structures, which name these fields alike.
template <class Data>
CFileStatus StatusOf(const Data& data, const CString& path) {
    CFileStatus status;
    status.m_ctime = TimeOf(data.ftCreationTime);
    status.m_mtime = TimeOf(data.ftLastWriteTime);
    status.m_atime = TimeOf(data.ftLastAccessTime);
    status.m_size = (static_cast<ULONGLONG>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
    status.m_attribute = data.dwFileAttributes;
    status.m_szFullName = path;
    return status;
}

CString NameIn(const CString& path) {
    return path.Mid(path.ReverseFind(_T('\\')) + 1);
}

}  // namespace

CFile::CFile(LPCTSTR path, UINT flags) {
    CFileException error;
    if (!CFile::Open(path, flags, &error)) {
        AfxThrowFileException(error.m_cause, error.m_lOsError, error.m_strFileName);
    }
}

CFile::~CFile() {
    if (m_closeOnDelete) {
        CFile::Abort();
    }
}

BOOL CFile::Open(LPCTSTR path, UINT flags, CFileException* error) {
    if (m_hFile != hFileNull) {
        Close();
    }
    const OpenArguments arguments = ArgumentsOf(flags);
    const CString absolute = AbsolutePath(path);
    const HANDLE file =
        CreateFileW(path, arguments.access, arguments.share, nullptr, arguments.disposition, arguments.attributes, nullptr);
    if (file == hFileNull) {
        if (error != nullptr) {
            error->m_lOsError = static_cast<LONG>(GetLastError());
            error->m_cause = CFileException::OsErrorToException(error->m_lOsError);
            error->m_strFileName = absolute;
        }
        return FALSE;
    }
    m_hFile = file;
    m_closeOnDelete = true;
    m_strFileName = absolute;
    return TRUE;
}

UINT CFile::Read(void* buffer, UINT count) {
    DWORD read = 0;
    if (count != 0 && !ReadFile(m_hFile, buffer, count, &read, nullptr)) {
        ThrowLastError();
    }
    return read;
}

void CFile::Write(const void* buffer, UINT count) {
    DWORD written = 0;
    if (count != 0 && !WriteFile(m_hFile, buffer, count, &written, nullptr)) {
        ThrowLastError();
    }
    if (written != count) {
        AfxThrowFileException(CFileException::diskFull, -1, m_strFileName);
    }
}

ULONGLONG CFile::Seek(LONGLONG offset, UINT from) {
    LARGE_INTEGER distance = {};
    distance.QuadPart = offset;
    LARGE_INTEGER position = {};
    if (!SetFilePointerEx(m_hFile, distance, &position, from)) {
        ThrowLastError();
    }
    return static_cast<ULONGLONG>(position.QuadPart);
}

ULONGLONG CFile::GetPosition() const {
    LARGE_INTEGER position = {};
    if (!SetFilePointerEx(m_hFile, LARGE_INTEGER{}, &position, FILE_CURRENT)) {
        ThrowLastError();
    }
    return static_cast<ULONGLONG>(position.QuadPart);
}

ULONGLONG CFile::GetLength() const {
    LARGE_INTEGER size = {};
    if (!GetFileSizeEx(m_hFile, &size)) {
        ThrowLastError();
    }
    return static_cast<ULONGLONG>(size.QuadPart);
}

void CFile::SetLength(ULONGLONG length) {
    Seek(static_cast<LONGLONG>(length), begin);
    if (!SetEndOfFile(m_hFile)) {
        ThrowLastError();
    }
}

void CFile::Flush() {
    if (m_hFile != hFileNull && !FlushFileBuffers(m_hFile)) {
        ThrowLastError();
    }
}

void CFile::Close() {
    m_closeOnDelete = false;
    const HANDLE file = std::exchange(m_hFile, hFileNull);
    if (file != hFileNull && !CloseHandle(file)) {
        ThrowLastError();
    }
    m_strFileName.Empty();
}

void CFile::Abort() {
    m_closeOnDelete = false;
    if (m_hFile != hFileNull) {
        CloseHandle(std::exchange(m_hFile, hFileNull));
    }
    m_strFileName.Empty();
}

CString CFile::GetFileName() const {
    return NameIn(m_strFileName);
}

CString CFile::GetFileTitle() const {
    const CString name = GetFileName();
    const int dot = name.ReverseFind(_T('.'));
    return dot < 0 ? name : name.Left(dot);
}

BOOL CFile::GetStatus(CFileStatus& status) const {
    BY_HANDLE_FILE_INFORMATION data = {};
    if (!GetFileInformationByHandle(m_hFile, &data)) {
        return FALSE;
    }
    status = StatusOf(data, m_strFileName);
    return TRUE;
}

BOOL CFile::GetStatus(LPCTSTR path, CFileStatus& status) {
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    if (!GetFileAttributesExW(path, GetFileExInfoStandard, &data)) {
        return FALSE;
    }
    status = StatusOf(data, AbsolutePath(path));
    return TRUE;
}

void CFile::Rename(LPCTSTR from, LPCTSTR to) {
    if (!MoveFileW(from, to)) {
        CFileException::ThrowOsError(static_cast<LONG>(GetLastError()), from);
    }
}

void CFile::Remove(LPCTSTR path) {
    if (!DeleteFileW(path)) {
        CFileException::ThrowOsError(static_cast<LONG>(GetLastError()), path);
    }
}

void CFile::ThrowLastError() const {
    const LONG error = static_cast<LONG>(GetLastError());
    AfxThrowFileException(CFileException::OsErrorToException(error), error, m_strFileName);
}
