#pragma once

// Files: CFile on the disk, CMemFile in memory, CStdioFile for lines of text.
//
// All of them fail by throwing CFileException* unless said otherwise; it carries cause, error number of the system and path.
// One object is used by one thread at a time.

#include <string>

#include "afx_exception.h"
#include "afx_time.h"

// What is known of a file without reading it.
struct CFileStatus {
    CTime m_ctime;          // creation
    CTime m_mtime;          // last change
    CTime m_atime;          // last access
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
        osWriteThrough = 0x20000,
        osRandomAccess = 0x40000,
        osSequentialScan = 0x80000,
    };
    enum SeekPosition : UINT { begin = 0, current = 1, end = 2 };
    static const HANDLE hFileNull;

    CFile() = default;
    // Works on an open handle. It stays the caller's: only Close and Abort close
    // it, the destructor does not.
    explicit CFile(HANDLE file) : m_hFile(file) {}
    CFile(LPCTSTR path, UINT flags);
    ~CFile() override;  // closes, and swallows what fails then

    // FALSE when it cannot be opened; then `error`, when given, tells why. A file
    // that is still open is closed first.
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

    // FALSE when it cannot be read, or when this file is not on the disk; then `status` is unchanged. A time before 1970 is
    // left out. By path, a link is the link itself.
    BOOL GetStatus(CFileStatus& status) const;
    static BOOL GetStatus(LPCTSTR path, CFileStatus& status);
    static void Rename(LPCTSTR from, LPCTSTR to);
    static void Remove(LPCTSTR path);

    HANDLE m_hFile = hFileNull;

protected:
    [[noreturn]] void ThrowLastError() const;

    CString m_strFileName;  // absolute path, empty without a file of that name

private:
    bool m_closeOnDelete = false;
};

// A file in memory. It grows as it is written; out of memory, and growing where it must not, throw CMemoryException*.
class KADATA_API CMemFile : public CFile {
    DECLARE_DYNAMIC(CMemFile)

public:
    // The memory grows by multiples of growBytes; with 0 it does not grow.
    explicit CMemFile(UINT growBytes = 1024) : m_growBytes(growBytes) {}
    // As Attach.
    CMemFile(BYTE* bytes, UINT count, UINT growBytes = 0) { Attach(bytes, count, growBytes); }
    ~CMemFile() override;

    // Works in the caller's memory, position at the start. Without growBytes its bytes are the content, and it never grows. With
    // growBytes the file is empty and grows by realloc: the memory has to come from malloc, and the caller gets it back by
    // Detach. In both cases the destructor does not free it.
    void Attach(BYTE* bytes, UINT count, UINT growBytes = 0);
    // The memory, null when there is none; the file is empty afterwards. The caller frees it with free, unless it was attached
    // from elsewhere.
    BYTE* Detach();

    BOOL Open(LPCTSTR path, UINT flags, CFileException* error = nullptr) override;  // always FALSE: there is no such file
    UINT Read(void* buffer, UINT count) override;
    // A gap that a Seek behind the end has left is filled with zeros.
    void Write(const void* buffer, UINT count) override;
    ULONGLONG Seek(LONGLONG offset, UINT from) override;
    ULONGLONG GetPosition() const override { return m_position; }
    ULONGLONG GetLength() const override { return m_length; }
    // New bytes are zeros; a position behind the end moves to it.
    void SetLength(ULONGLONG length) override;
    void Flush() override {}
    // Drops the content.
    void Close() override;
    void Abort() override { Close(); }

    // The content, null when there is no memory. Valid until the next change.
    const BYTE* GetBytes() const { return m_bytes; }

private:
    void Extend(ULONGLONG length);
    void Reserve(ULONGLONG length);

    UINT m_growBytes = 0;
    bool m_attached = false;
    BYTE* m_bytes = nullptr;  // from malloc unless attached
    ULONGLONG m_capacity = 0;
    ULONGLONG m_length = 0;
    ULONGLONG m_position = 0;
};

// Lines of text in the ANSI code page, read and written in blocks.
//
// In text mode, the default, "\n" is written as "\r\n" and read back as "\n", and a byte 1A (Ctrl+Z) ends what is read.
// typeBinary passes all bytes on as they are. Positions and lengths always count the bytes of the file.
class KADATA_API CStdioFile : public CFile {
    DECLARE_DYNAMIC(CStdioFile)

public:
    CStdioFile() = default;
    CStdioFile(LPCTSTR path, UINT flags);
    // Writes what is left, and swallows what fails then; call Close to be told.
    ~CStdioFile() override;

    BOOL Open(LPCTSTR path, UINT flags, CFileException* error = nullptr) override;
    // The next line without its end. FALSE, and an empty text, when there is none left.
    virtual BOOL ReadString(CString& line);
    // The next characters, up to the end of the line, which is included, and to capacity - 1 units; no character is torn.
    // Returns `line`, or null when there is nothing left or no room.
    virtual LPTSTR ReadString(LPTSTR line, UINT capacity);
    // Characters that the code page lacks become the nearest that it has, else "?".
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
    struct Character {
        TCHAR units[2];
        UINT unitCount;  // 0: there is none left
        std::size_t byteCount;
    };

    std::size_t Ahead(std::size_t wanted);
    bool IsLineEnd() const;
    Character NextCharacter();
    bool ReadLine(std::string& line);
    void WriteOut();
    void DropRead();

    bool m_text = true;
    std::string m_read;        // bytes read ahead of the position
    std::size_t m_readAt = 0;  // the first of them that is not yet taken
    std::string m_written;     // bytes not yet handed to the system; then nothing is read ahead
};
