#include "afx_exception.h"

#include <algorithm>
#include <iterator>

IMPLEMENT_DYNAMIC(CException, CObject)
IMPLEMENT_DYNAMIC(CSimpleException, CException)
IMPLEMENT_DYNAMIC(CMemoryException, CSimpleException)
IMPLEMENT_DYNAMIC(CResourceException, CSimpleException)
IMPLEMENT_DYNAMIC(CInvalidArgException, CSimpleException)
IMPLEMENT_DYNAMIC(CNotSupportedException, CSimpleException)
IMPLEMENT_DYNAMIC(CUserException, CSimpleException)
IMPLEMENT_DYNAMIC(CFileException, CException)
IMPLEMENT_DYNAMIC(CArchiveException, CException)

namespace {

constexpr DWORD kDiskQuotaExceeded = 1295;  // ERROR_DISK_QUOTA_EXCEEDED, which not every system header names

struct CauseOfError {
    DWORD error;
    int cause;
};

constexpr CauseOfError kCauses[] = {
    {NO_ERROR, CFileException::none},
    {ERROR_FILE_NOT_FOUND, CFileException::fileNotFound},
    {ERROR_NO_MORE_FILES, CFileException::fileNotFound},
    {ERROR_INVALID_HANDLE, CFileException::fileNotFound},
    {ERROR_PATH_NOT_FOUND, CFileException::badPath},
    {ERROR_INVALID_DRIVE, CFileException::badPath},
    {ERROR_NOT_SAME_DEVICE, CFileException::badPath},
    {ERROR_INVALID_NAME, CFileException::badPath},
    {ERROR_BAD_PATHNAME, CFileException::badPath},
    {ERROR_BAD_NETPATH, CFileException::badPath},
    {ERROR_BAD_NET_NAME, CFileException::badPath},
    {ERROR_FILENAME_EXCED_RANGE, CFileException::badPath},
    {ERROR_DIRECTORY, CFileException::badPath},
    {ERROR_TOO_MANY_OPEN_FILES, CFileException::tooManyOpenFiles},
    {ERROR_ACCESS_DENIED, CFileException::accessDenied},
    {ERROR_FILE_EXISTS, CFileException::accessDenied},
    {ERROR_ALREADY_EXISTS, CFileException::accessDenied},
    {ERROR_WRITE_PROTECT, CFileException::accessDenied},
    {ERROR_BUSY, CFileException::accessDenied},
    {ERROR_BAD_FORMAT, CFileException::invalidFile},
    {ERROR_INVALID_DATA, CFileException::invalidFile},
    {ERROR_CURRENT_DIRECTORY, CFileException::removeCurrentDir},
    {ERROR_DIR_NOT_EMPTY, CFileException::removeCurrentDir},
    {ERROR_SEEK, CFileException::badSeek},
    {ERROR_NEGATIVE_SEEK, CFileException::badSeek},
    {ERROR_NOT_READY, CFileException::hardIO},
    {ERROR_WRITE_FAULT, CFileException::hardIO},
    {ERROR_READ_FAULT, CFileException::hardIO},
    {ERROR_IO_DEVICE, CFileException::hardIO},
    {ERROR_SHARING_VIOLATION, CFileException::sharingViolation},
    {ERROR_LOCK_VIOLATION, CFileException::lockViolation},
    {ERROR_DISK_FULL, CFileException::diskFull},
    {ERROR_HANDLE_DISK_FULL, CFileException::diskFull},
    {kDiskQuotaExceeded, CFileException::diskFull},
    {ERROR_HANDLE_EOF, CFileException::endOfFile},
};

// By cause; %s is the file.
constexpr LPCTSTR kFileMessages[] = {
    _T("%s: no failure."),
    _T("%s: unknown failure."),
    _T("%s: file not found."),
    _T("%s: the path is not valid."),
    _T("%s: too many files are open."),
    _T("%s: access denied."),
    _T("%s: not a usable file."),
    _T("%s: a folder in use cannot be removed."),
    _T("%s: the folder is full."),
    _T("%s: the position cannot be reached."),
    _T("%s: the device reports a failure."),
    _T("%s: in use by somebody else."),
    _T("%s: locked by somebody else."),
    _T("%s: the disk is full."),
    _T("%s: the file ends too early."),
};

constexpr LPCTSTR kArchiveMessages[] = {
    _T("%s: no failure."),
    _T("%s: unknown failure."),
    _T("%s: this archive is only read."),
    _T("%s: the archive ends too early."),
    _T("%s: this archive is only written."),
    _T("%s: the archive has another format."),
    _T("%s: the archive holds another kind of object."),
    _T("%s: the archive comes from another version."),
    _T("%s: the archive's buffer is full."),
};

BOOL CopyMessage(const CString& message, LPTSTR text, UINT capacity) {
    if (text == nullptr || capacity == 0) {
        return FALSE;
    }
    const std::size_t length = std::min<std::size_t>(static_cast<std::size_t>(message.GetLength()), capacity - 1);
    message.View().copy(text, length);
    text[length] = 0;
    return TRUE;
}

template <std::size_t N>
BOOL CopyCause(const LPCTSTR (&messages)[N], int cause, const CString& name, LPTSTR text, UINT capacity) {
    const bool known = cause >= 0 && cause < static_cast<int>(N);
    CString message;
    message.Format(messages[known ? cause : 1], name.IsEmpty() ? _T("File") : name.GetString());
    return CopyMessage(message, text, capacity);
}

// The shared exceptions are made when they are first thrown and never destroyed: one may be on its way while the process ends.
template <class Exception>
[[noreturn]] void ThrowShared() {
    alignas(Exception) static unsigned char room[sizeof(Exception)];
    static Exception* const shared = new (room) Exception;
    throw shared;
}

}  // namespace

void CException::Delete() {
    if (m_bAutoDelete) {
        delete this;
    }
}

BOOL CException::GetErrorMessage(LPTSTR text, UINT capacity, UINT* helpContext) const {
    if (helpContext != nullptr) {
        *helpContext = 0;
    }
    CopyMessage(CString(), text, capacity);
    return FALSE;
}

BOOL CSimpleException::GetErrorMessage(LPTSTR text, UINT capacity, UINT* helpContext) const {
    CException::GetErrorMessage(text, capacity, helpContext);
    return CopyMessage(m_message, text, capacity);
}

int CFileException::OsErrorToException(LONG osError) {
    const auto row = std::find_if(std::begin(kCauses), std::end(kCauses),
                                  [osError](const CauseOfError& r) { return r.error == static_cast<DWORD>(osError); });
    return row == std::end(kCauses) ? genericException : row->cause;
}

void CFileException::ThrowOsError(LONG osError, LPCTSTR fileName) {
    if (osError != 0) {
        AfxThrowFileException(OsErrorToException(osError), osError, fileName);
    }
}

BOOL CFileException::GetErrorMessage(LPTSTR text, UINT capacity, UINT* helpContext) const {
    CException::GetErrorMessage(text, capacity, helpContext);
    return CopyCause(kFileMessages, m_cause, m_strFileName, text, capacity);
}

BOOL CArchiveException::GetErrorMessage(LPTSTR text, UINT capacity, UINT* helpContext) const {
    CException::GetErrorMessage(text, capacity, helpContext);
    return CopyCause(kArchiveMessages, m_cause, m_strFileName, text, capacity);
}

void AtlThrow(HRESULT result) {
    throw CAtlException(result);
}

void AfxThrowMemoryException() {
    ThrowShared<CMemoryException>();
}

void AfxThrowResourceException() {
    ThrowShared<CResourceException>();
}

void AfxThrowInvalidArgException() {
    ThrowShared<CInvalidArgException>();
}

void AfxThrowNotSupportedException() {
    ThrowShared<CNotSupportedException>();
}

void AfxThrowUserException() {
    ThrowShared<CUserException>();
}

void AfxThrowFileException(int cause, LONG osError, LPCTSTR fileName) {
    throw new CFileException(cause, osError, fileName);
}

void AfxThrowArchiveException(int cause, LPCTSTR archiveName) {
    throw new CArchiveException(cause, archiveName);
}
