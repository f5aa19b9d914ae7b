#include <kadata/log.h>

#include <cstdlib>
#include <mutex>
#include <thread>

#include <diagnostics.h>

#include "log_text.h"

constinit std::atomic<DWORD> CLog::m_dwLogStatus{0};
constinit std::atomic<CLogFile*> CLog::m_pLogFile{nullptr};
constinit std::atomic<BOOL> CLog::m_bInitialized{FALSE};

namespace {

constinit std::atomic<unsigned> printing{0};  // prints under way; Destroy waits for them

// One thread makes the log file object. Inside a function because not every platform has mutexes that need no construction at
// load.
std::mutex& Creation() {
    static std::mutex creation;
    return creation;
}

class PrintScope {
public:
    PrintScope() { printing.fetch_add(1); }
    PrintScope(const PrintScope&) = delete;
    PrintScope& operator=(const PrintScope&) = delete;
    ~PrintScope() { printing.fetch_sub(1); }
};

constexpr TCHAR kMessageEnd[] = _T("\r\n\r\n");  // an empty line behind every message

bool HasBareLineFeed(std::basic_string_view<TCHAR> text) {
    using log_text::FindLineFeed;
    for (std::size_t at = FindLineFeed(text, 0); at != text.npos; at = FindLineFeed(text, at + 1)) {
        if (at == 0 || text[at - 1] != _T('\r')) {
            return true;
        }
    }
    return false;
}

// A message as it is printed most of the time: tag, text and end without a trip to the heap.
class Message {
public:
    explicit Message(const CLogStatus& category) {
        Append(category.GetTag());
        Append(_T("\t"));
    }
    void Append(std::basic_string_view<TCHAR> text) { m_length += text.copy(m_text + m_length, CAPACITY - m_length); }
    void AppendFormat(LPCTSTR format, const afx::FormatArg* args, std::size_t count) {
        m_length += afx::FormatInto(m_text + m_length, CLog::MAX_TEXT + 1, format, args, count);
    }
    std::basic_string_view<TCHAR> End() {
        Append(kMessageEnd);
        return {m_text, m_length};
    }

private:
    static constexpr std::size_t TAG_ROOM = 64;
    static constexpr std::size_t CAPACITY = TAG_ROOM + CLog::MAX_TEXT + 5;
    std::size_t m_length = 0;
    TCHAR m_text[CAPACITY + 1];  // and a terminator for FormatInto
};

// What the platform layer has to say, for example that a settings database was damaged.
void LogDiagnostic(std::basic_string_view<TCHAR> line) {
    CLog::Print(CLogWarning(), _T("%s"), CString(line.data(), static_cast<int>(line.size())));
}

}  // namespace

BOOL CLogStatus::IsEnabled() const {
    return (GetMask() & CLog::GetLogStatus()) != 0;
}

DWORD CLogError::GetMask() const {
    return 1;
}

LPCTSTR CLogError::GetTag() const {
    switch (m_dwKind) {
        case CATCH:
            return _T("@Error; @Catch;");
        case INFO:
            return _T("@Error; @Info;");
        case HANDLED:
            return _T("@Error; @Handled;");
        case CORRELATION:
            return _T("@Error; @ECorrelation;");
        default:
            return _T("??");
    }
}

DWORD CLogWarning::GetMask() const {
    return 2;
}

LPCTSTR CLogWarning::GetTag() const {
    return _T("@Warning;");
}

DWORD CLogInfo::GetMask() const {
    return 4;
}

LPCTSTR CLogInfo::GetTag() const {
    return _T("@Info;");
}

DWORD CLogTrace::GetMask() const {
    return 8;
}

LPCTSTR CLogTrace::GetTag() const {
    return _T("@Trace;");
}

void CLog::SetLogConfig(const SLogConfig& config) {
    if (!m_bInitialized.load()) {
        InitLogFile();
    }
    const PrintScope scope;
    m_dwLogStatus.store(config.m_dwStatusMask);
    if (CLogFile* const file = m_pLogFile.load()) {
        file->SetMaxFileCount(config.m_dwMaxFileCount);
        file->SetMaxFileSize(config.m_dwMaxFileSize);
    }
    kawin::SetDiagnosticSink(LogDiagnostic);
}

DWORD CLog::GetLogStatus() {
    return m_dwLogStatus.load(std::memory_order_relaxed);
}

void CLog::PrintArgs(const CLogStatus& category, LPCTSTR format, const afx::FormatArg* args, std::size_t count) {
    Message message(category);
    message.AppendFormat(format, args, count);
    WriteMessage(message.End());
}

void CLog::PrintText(const CLogStatus& category, std::basic_string_view<TCHAR> text) {
    Message message(category);
    message.Append(text.substr(0, MAX_TEXT));
    WriteMessage(message.End());
}

void CLog::WriteMessage(std::basic_string_view<TCHAR> message) {
    if (!m_bInitialized.load()) {
        InitLogFile();
    }
    const PrintScope scope;
    CLogFile* const file = m_pLogFile.load();
    if (file == nullptr) {  // the process is ending
        return;
    }
    file->PrintText(HasBareLineFeed(message) ? ClearString(CString(message)).View() : message);
}

void CLog::InitLogFile() {
    const std::lock_guard lock(Creation());
    if (m_bInitialized.load()) {
        return;
    }
    m_pLogFile.store(new CLogFile);
    std::atexit(Destroy);
    m_pLogFile.load()->SetFlags(CLogFile::HEADER_TIME | CLogFile::HEADER_DATE | CLogFile::HEADER_PROCESS);
    m_bInitialized.store(TRUE);
}

// Later prints find no object and do nothing; m_bInitialized stays set so that nobody makes another.
void CLog::Destroy() {
    kawin::SetDiagnosticSink(nullptr);
    const std::unique_ptr<CLogFile> file(m_pLogFile.exchange(nullptr));
    while (printing.load() != 0) {
        std::this_thread::yield();
    }
}

CString CLog::ClearString(CString text) {
    CString result;
    result.Preallocate(text.GetLength() * 2);
    for (int i = 0; i < text.GetLength(); ++i) {
        if (text[i] == _T('\n') && (i == 0 || text[i - 1] != _T('\r'))) {
            result.AppendChar(_T('\r'));
        }
        result.AppendChar(text[i]);
    }
    return result;
}
