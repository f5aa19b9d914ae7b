#pragma once

// Files: CFile on the disk, CMemFile in memory, CStdioFile for lines of text.
//
// All of them fail by throwing CFileException* unless said otherwise; it carries cause, error number of the system and path. One
// object is used by one thread at a time.

#include <vector>

#include "afx_exception.h"
#include "afx_time.h"

// What is known of a file without reading it.
struct CFileStatus {
    CTime m_ctime;  // creation; the others: last change, last access
    CTime m_mtime;
    CTime m_atime;
    ULONGLONG m_size = 0;   // bytes
    DWORD m_attribute = 0;  // FILE_ATTRIBUTE_...
    CString m_szFullName;   // absolute path
};

class KADATA_API CFile : public CObject {
    DECLARE_DYNAMIC(CFile)

public:
    enum OpenFlags : UINT {
        modeRead = 0x00000,
        modeWrite = 0x00001,
        modeReadWrite = 0x00002,
        shareCompat = 0x00000,  // as shareExclusive
        shareExclusive = 0x00010,
        shareDenyWrite = 0x00020,
        shareDenyRead = 0x00030,
        shareDenyNone = 0x00040,
        modeNoInherit = 0x00080,
        modeCreate = 0x01000,      // a new file, or an existing one emptied
        modeNoTruncate = 0x02000,  // with modeCreate: an existing one keeps its content
        typeText = 0x04000,
        typeBinary = 0x08000,
        osNoBuffer = 0x10000,
        osWriteThrough = 0x20000,
        osRandomAccess = 0x40000,
        osSequentialScan = 0x80000,
    };
    enum SeekPosition : UINT { begin = 0, current = 1, end = 2 };
    static inline const HANDLE hFileNull = INVALID_HANDLE_VALUE;

    CFile() = default;
    // Takes an open handle and closes it in the end.
    explicit CFile(HANDLE file) : m_hFile(file) {}
    CFile(LPCTSTR path, UINT flags);
    ~CFile() override;  // closes, and swallows what fails then

    // FALSE when it cannot be opened; then `error`, when given, tells why. Throws nothing.
    virtual BOOL Open(LPCTSTR path, UINT flags, CFileException* error = nullptr);

    // Fewer bytes than asked for only at the end of the file.
    virtual UINT Read(void* buffer, UINT count);
    virtual void Write(const void* buffer, UINT count);
    // Position from the start of the file; before its start is an error, behind its end is not.
    virtual ULONGLONG Seek(LONGLONG offset, UINT from);
    void SeekToBegin() { Seek(0, begin); }
    ULONGLONG SeekToEnd() { return Seek(0, end); }
    virtual ULONGLONG GetPosition() const;
    virtual ULONGLONG GetLength() const;
    virtual void SetLength(ULONGLONG length);
    virtual void Flush();
    virtual void Close();
    // Closes without a thought for failures.
    virtual void Abort();

    virtual CString GetFileName() const;   // with extension
    virtual CString GetFileTitle() const;  // without
    virtual CString GetFilePath() const { return m_strFileName; }
    virtual void SetFilePath(LPCTSTR path) { m_strFileName = path; }

    // FALSE when it cannot be read; then `status` is unchanged.
    BOOL GetStatus(CFileStatus& status) const;
    static BOOL GetStatus(LPCTSTR path, CFileStatus& status);
    static void Rename(LPCTSTR from, LPCTSTR to);
    static void Remove(LPCTSTR path);

    HANDLE m_hFile = INVALID_HANDLE_VALUE;

protected:
    [[noreturn]] void ThrowLastError() const;

    CString m_strFileName;  // absolute path, empty without a file of that name
};

// A file in memory. It grows as it is written; out of memory throws CMemoryException*.
class KADATA_API CMemFile : public CFile {
    DECLARE_DYNAMIC(CMemFile)

public:
    explicit CMemFile(UINT growBytes = 1024) : m_growBytes(growBytes) {}
    // A copy of these bytes as content, position at the start.
    CMemFile(const BYTE* bytes, UINT count) : m_growBytes(1024), m_bytes(bytes, bytes + count) {}
    ~CMemFile() override = default;

    BOOL Open(LPCTSTR path, UINT flags, CFileException* error = nullptr) override;  // always FALSE: there is no such file
    UINT Read(void* buffer, UINT count) override;
    void Write(const void* buffer, UINT count) override;
    ULONGLONG Seek(LONGLONG offset, UINT from) override;
    ULONGLONG GetPosition() const override { return m_position; }
    ULONGLONG GetLength() const override { return m_bytes.size(); }
    void SetLength(ULONGLONG length) override;
    void Flush() override {}
    void Close() override;
    void Abort() override { Close(); }

    // Valid until the next change.
    const BYTE* GetBytes() const { return m_bytes.data(); }

private:
    void Grow(std::size_t size);

    UINT m_growBytes;
    std::size_t m_position = 0;
    std::vector<BYTE> m_bytes;
};

// Lines of text in the ANSI code page. In text mode (typeText, the default) "\n" is written as "\r\n" and read back as "\n".
class KADATA_API CStdioFile : public CFile {
    DECLARE_DYNAMIC(CStdioFile)

public:
    CStdioFile() = default;
    CStdioFile(LPCTSTR path, UINT flags);
    ~CStdioFile() override;

    BOOL Open(LPCTSTR path, UINT flags, CFileException* error = nullptr) override;
    // The next line without its end. FALSE, and an empty text, when there is none left.
    virtual BOOL ReadString(CString& line);
    // At most capacity - 1 units, with the "\n". Null when there is nothing left.
    virtual LPTSTR ReadString(LPTSTR line, UINT capacity);
    virtual void WriteString(LPCTSTR text);

    UINT Read(void* buffer, UINT count) override;
    void Write(const void* buffer, UINT count) override;
    ULONGLONG Seek(LONGLONG offset, UINT from) override;
    ULONGLONG GetPosition() const override;
    ULONGLONG GetLength() const override;
    void SetLength(ULONGLONG length) override;
    void Flush() override;
    void Close() override;
    void Abort() override;

private:
    bool Fill();
    bool ReadLineBytes(std::string& line, std::size_t limit);
    void FlushWritten();
    void DropRead();

    bool m_text = true;
    std::string m_read;         // bytes read ahead of the position
    std::size_t m_readAt = 0;   // first of them that is not yet taken
    std::string m_written;      // bytes not yet handed to the system
};
