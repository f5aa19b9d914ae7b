#pragma once

// Exceptions of the foundation classes. They are thrown by pointer and belong to whoever catches them:
//     catch (CFileException* e) { ... e->Delete(); }

#include "afx_object.h"
#include "afx_string.h"

class KADATA_API CException : public CObject {
    DECLARE_DYNAMIC(CException)

public:
    explicit CException(BOOL autoDelete = TRUE) : m_bAutoDelete(autoDelete) {}

    // Ends the exception: frees it when it came from new, and does nothing to one
    // that is shared. Not for one on the stack.
    void Delete();

    // Writes the message, cut to `capacity` units with its terminator. FALSE, and
    // an empty text, when there is none.
    virtual BOOL GetErrorMessage(LPTSTR text, UINT capacity, UINT* helpContext = nullptr) const;

protected:
    BOOL m_bAutoDelete;
};

// Exceptions of which the process keeps one, so that throwing them needs no memory.
class KADATA_API CSimpleException : public CException {
    DECLARE_DYNAMIC(CSimpleException)

public:
    explicit CSimpleException(LPCTSTR message) : CException(FALSE), m_message(message) {}
    BOOL GetErrorMessage(LPTSTR text, UINT capacity, UINT* helpContext = nullptr) const override;

private:
    LPCTSTR m_message;
};

class KADATA_API CMemoryException : public CSimpleException {
    DECLARE_DYNAMIC(CMemoryException)

public:
    CMemoryException() : CSimpleException(_T("Out of memory.")) {}
};

class KADATA_API CResourceException : public CSimpleException {
    DECLARE_DYNAMIC(CResourceException)

public:
    CResourceException() : CSimpleException(_T("The system has no resources left.")) {}
};

class KADATA_API CInvalidArgException : public CSimpleException {
    DECLARE_DYNAMIC(CInvalidArgException)

public:
    CInvalidArgException() : CSimpleException(_T("Invalid argument.")) {}
};

class KADATA_API CNotSupportedException : public CSimpleException {
    DECLARE_DYNAMIC(CNotSupportedException)

public:
    CNotSupportedException() : CSimpleException(_T("Not supported.")) {}
};

// Ends what the user has begun, after he was told why: nobody tells him again.
class KADATA_API CUserException : public CSimpleException {
    DECLARE_DYNAMIC(CUserException)

public:
    CUserException() : CSimpleException(_T("Cancelled.")) {}
};

class KADATA_API CFileException : public CException {
    DECLARE_DYNAMIC(CFileException)

public:
    enum {
        none,
        genericException,
        fileNotFound,
        badPath,
        tooManyOpenFiles,
        accessDenied,
        invalidFile,
        removeCurrentDir,
        directoryFull,
        badSeek,
        hardIO,
        sharingViolation,
        lockViolation,
        diskFull,
        endOfFile
    };

    explicit CFileException(int cause = none, LONG osError = -1, LPCTSTR fileName = nullptr)
        : m_cause(cause), m_lOsError(osError), m_strFileName(fileName) {}

    // The cause that stands for an error number of the system; genericException when none does.
    static int OsErrorToException(LONG osError);
    // Throws the exception of that error. Returns, and does nothing, when the error is 0.
    static void ThrowOsError(LONG osError, LPCTSTR fileName = nullptr);

    BOOL GetErrorMessage(LPTSTR text, UINT capacity, UINT* helpContext = nullptr) const override;

    int m_cause;
    LONG m_lOsError;  // -1 when the system had none
    CString m_strFileName;
};

class KADATA_API CArchiveException : public CException {
    DECLARE_DYNAMIC(CArchiveException)

public:
    enum { none, genericException, readOnly, endOfFile, writeOnly, badIndex, badClass, badSchema, bufferFull };

    explicit CArchiveException(int cause = none, LPCTSTR archiveName = nullptr) : m_cause(cause), m_strFileName(archiveName) {}

    BOOL GetErrorMessage(LPTSTR text, UINT capacity, UINT* helpContext = nullptr) const override;

    int m_cause;
    CString m_strFileName;
};

// A failure of the system that no other exception fits, thrown by value.
class KADATA_API CAtlException {
public:
    explicit CAtlException(HRESULT result) noexcept : m_hr(result) {}
    operator HRESULT() const noexcept { return m_hr; }

    HRESULT m_hr;
};

[[noreturn]] KADATA_API void AtlThrow(HRESULT result);
[[noreturn]] KADATA_API void AfxThrowMemoryException();
[[noreturn]] KADATA_API void AfxThrowResourceException();
[[noreturn]] KADATA_API void AfxThrowNotSupportedException();
[[noreturn]] KADATA_API void AfxThrowUserException();
[[noreturn]] KADATA_API void AfxThrowFileException(int cause, LONG osError = -1, LPCTSTR fileName = nullptr);
[[noreturn]] KADATA_API void AfxThrowArchiveException(int cause, LPCTSTR archiveName = nullptr);
