#pragma once

// The log: one rolling set of text files, written by every process of the workstation.
//
// A host sets the limits once with CLog::SetLogConfig and then prints; before that nothing is logged. Everything here may be
// called from every thread. Lines of several processes in one folder do not mix, because each message is written in one piece
// under the named mutex "MUTEX_TARVO_LOGFILE". Failures are silent by contract: a log that cannot be written costs its message,
// never the host.

#include <afx.h>
#include <afxmt.h>
#include <kadata/export.h>

#include <atomic>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

// A category of messages: whether it is wanted, and how it is marked.
class KADATA_API CLogStatus {
public:
    // Whether CLog's mask has one of this category's bits.
    virtual BOOL IsEnabled() const;
    virtual DWORD GetMask() const = 0;
    // Stands in front of each message of the category.
    virtual LPCTSTR GetTag() const = 0;

protected:
    CLogStatus() = default;
    CLogStatus(const CLogStatus&) = default;
    CLogStatus& operator=(const CLogStatus&) = default;
    ~CLogStatus() = default;  // categories are values: nobody deletes one through its base
};

class KADATA_API CEventLogStatus : public CLogStatus {
protected:
    CEventLogStatus() = default;
    CEventLogStatus(const CEventLogStatus&) = default;
    CEventLogStatus& operator=(const CEventLogStatus&) = default;
    ~CEventLogStatus() = default;
};

// Mask 1. The kind tells where the error was met and chooses the tag; any other number is tagged "??".
class KADATA_API CLogError final : public CEventLogStatus {
public:
    enum EKind : DWORD { CATCH = 0, INFO = 1, HANDLED = 2, CORRELATION = 3 };

    explicit CLogError(DWORD kind = CATCH) : m_dwKind(kind) {}
    DWORD GetMask() const override;
    LPCTSTR GetTag() const override;

private:
    DWORD m_dwKind;
};

// Mask 2, "@Warning;".
class KADATA_API CLogWarning final : public CEventLogStatus {
public:
    DWORD GetMask() const override;
    LPCTSTR GetTag() const override;
};

// Mask 4, "@Info;".
class KADATA_API CLogInfo final : public CEventLogStatus {
public:
    DWORD GetMask() const override;
    LPCTSTR GetTag() const override;
};

// Mask 8, "@Trace;".
class KADATA_API CLogTrace final : public CEventLogStatus {
public:
    DWORD GetMask() const override;
    LPCTSTR GetTag() const override;
};

class CLogShare;

// The log files of one folder: TARVO000.log to TARVO999.log, UTF-16LE, used in a ring.
//
// A file that has reached the size limit is followed by the next number; a message is never split between two files. When as many
// files exist as the limit allows, the oldest are deleted before another is used, a file that another process holds open
// excepted. CLog has an object of its own; GetInstance serves code that writes without a category.
class KADATA_API CLogFile {
public:
    enum EFlags : DWORD {
        HEADER_TIME = 1,
        HEADER_DATE = 2,
        HEADER_PROCESS = 4,  // process and thread number
        WRITE_THROUGH = 16,  // each message is on the disk before PrintCore returns
    };

    static constexpr DWORD DEFAULT_MAX_FILE_SIZE = 1000000;
    static constexpr DWORD DEFAULT_MAX_FILE_COUNT = 100;

    // How an object writes. `clock` gives seconds since 1970 UTC; null is the system's.
    struct SOptions {
        CString m_strFolder;
        DWORD m_dwFlags = HEADER_TIME | HEADER_DATE;
        DWORD m_dwMaxFileSize = DEFAULT_MAX_FILE_SIZE;  // bytes
        DWORD m_dwMaxFileCount = DEFAULT_MAX_FILE_COUNT;
        __time64_t (*m_pfnClock)() = nullptr;
    };

    // The folder "SERVICE\LOG-FILES" beside the executable, the other options as above. Nothing is opened before the first
    // message. Throws CAtlException when the system cannot give it a critical section.
    CLogFile();
    // For a log of the host's own in another folder, which is made when it is missing.
    explicit CLogFile(const SOptions& options);
    CLogFile(const CLogFile&) = delete;
    CLogFile& operator=(const CLogFile&) = delete;
    ~CLogFile();

    // The directly used object, made by the first call and deleted when the process ends. Make the first call on one thread.
    static CLogFile* GetInstance();
    static BOOL HasInstance();

    // Writes one message. Its lines end in "\r\n"; a rest without that is written as a line too. The first line gets the line
    // header, every further one blanks of the same width, an empty one nothing. Null and empty texts write nothing.
    void PrintCore(LPCTSTR text);

protected:
    static void DestroyInstance();
    static CLogFile* m_pInstance;

private:
    friend class CLog;
    struct SFileStatus;

    void SetFlags(DWORD flags);
    void SetMaxFileSize(DWORD bytes);
    void SetMaxFileCount(DWORD count);

    BOOL IsOpen() const;
    BOOL Open();
    void Close();
    void FollowOtherWriters();
    CString ChooseFile();
    BOOL OpenFile(const CString& path);
    void EndTornLine();
    BOOL Append(const void* bytes, std::size_t count);
    DWORD RealSize() const;
    bool Deleted() const;

    CString GetNextFileName();
    std::vector<SFileStatus> ListFiles() const;
    void DeleteOldest(const std::vector<SFileStatus>& oldestFirst) const;
    static CString BuildFileName(int number);
    static int GetFileNumber(CString path);
    static std::basic_string<TCHAR> BuildFileHeader();
    static bool FileStatusComparer(const SFileStatus& a, const SFileStatus& b);

    std::basic_string_view<TCHAR> BuildLineHeader(BOOL continuation);
    bool RefreshTimeText();
    static std::ptrdiff_t FindNextCRLF(std::basic_string_view<TCHAR> text);
    void PrintText(std::basic_string_view<TCHAR> text);
    void BuildRecord(std::basic_string_view<TCHAR> text);
    void WriteRecord();

    const CString m_strFolder;
    HANDLE m_hFile = INVALID_HANDLE_VALUE;  // this and all below: m_lock
    std::atomic<DWORD> m_dwFlags;
    CCriticalSection m_lock;
    DWORD m_dwFileSize = 0;
    std::atomic<DWORD> m_dwMaxFileSize;  // the limits are set without the lock
    std::atomic<DWORD> m_dwMaxFileCount;

    __time64_t (*const m_pfnClock)();
    __time64_t m_tHeader = -1;  // second and flags of m_strTime, the header's date and time
    DWORD m_dwHeaderFlags = 0;
    std::basic_string<TCHAR> m_strTime;
    DWORD m_dwHeaderThread = 0;  // thread of m_strHeader
    bool m_bHeaderStale = true;  // m_strTime has changed since
    std::basic_string<TCHAR> m_strHeader;
    std::basic_string<TCHAR> m_strBlankHeader;  // for continuation lines
    std::basic_string<TCHAR> m_strRecord;       // its lines
    CString m_strPath;                          // of the file that was current last, empty when that is not known
    DWORD m_dwGeneration = 0;                   // of the choice of file that this object follows
    bool m_bTorn = false;                       // the last write of this object did not get through
    std::unique_ptr<CLogShare> m_pShare;        // what the processes know of each other
};

// The process's log settings and its front end.
class KADATA_API CLog {
public:
    struct SLogConfig {
        DWORD m_dwStatusMask;    // categories that are written: CLogError 1, CLogWarning 2, CLogInfo 4, CLogTrace 8
        DWORD m_dwMaxFileCount;  // files kept
        DWORD m_dwMaxFileSize;   // bytes after which the next file is used
    };

    // Longest formatted text of one message, in UTF-16 units; what is longer is cut.
    static constexpr std::size_t MAX_TEXT = 2047;

    static void SetLogConfig(const SLogConfig& config);
    static DWORD GetLogStatus();

    // Writes the category's tag, a tabulator and the text as one message, followed by an empty line. Does nothing, and formats
    // nothing, when the category is not enabled. A literal format is checked against its arguments when it is compiled:
    //     CLog::Print(CLogError(CLogError::HANDLED), _T("%s: error %u"), path, GetLastError());
    template <class... Args>
    static void Print(const CLogStatus& category, afx::FormatString<std::type_identity_t<Args>...> format, const Args&... args) {
        PrintList(category, format.Text(), args...);
    }
    // For a format that is known only at run time; <afx_format.h> tells what is printed where it does not fit its arguments.
    template <afx::RunTimeFormat Text, class... Args>
    static void Print(const CLogStatus& category, const Text& format, const Args&... args) {
        PrintList(category, format, args...);
    }

private:
    template <class... Args>
    static void PrintList(const CLogStatus& category, LPCTSTR format, const Args&... args) {
        if (category.IsEnabled()) {
            const auto list = afx::MakeFormatArgs(args...);
            PrintArgs(category, format, list.data(), list.size());
        }
    }
    static void PrintArgs(const CLogStatus& category, LPCTSTR format, const afx::FormatArg* args, std::size_t count);
    friend class CTarvoException;
    // Whether the category is enabled has been asked.
    static void PrintText(const CLogStatus& category, std::basic_string_view<TCHAR> text);
    static void WriteMessage(std::basic_string_view<TCHAR> message);

    static void InitLogFile();
    static void Destroy();
    static CString ClearString(CString text);

    static std::atomic<DWORD> m_dwLogStatus;
    static std::atomic<CLogFile*> m_pLogFile;
    static std::atomic<BOOL> m_bInitialized;
};
