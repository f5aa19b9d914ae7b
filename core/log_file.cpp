// Writing of messages; log_file_choice.cpp chooses the file.

#include <kadata/directory.h>
#include <kadata/log.h>

#include <bit>
#include <cstdlib>
#include <new>

#include "log_share.h"
#include "log_text.h"

static_assert(std::endian::native == std::endian::little, "log files are UTF-16LE and written from memory as they stand");

CLogFile* CLogFile::m_pInstance = nullptr;

namespace {

using Text = std::basic_string<TCHAR>;
using View = std::basic_string_view<TCHAR>;

constexpr View kLineEnd = _T("\r\n");
constexpr std::size_t kKeptRecord = 0x10000;  // units; a longer message gives its memory back

class ProcessesScope {
public:
    explicit ProcessesScope(CLogShare& share) : m_share(share) { m_share.Enter(); }
    ProcessesScope(const ProcessesScope&) = delete;
    ProcessesScope& operator=(const ProcessesScope&) = delete;
    ~ProcessesScope() { m_share.Leave(); }

private:
    CLogShare& m_share;
};

CLogFile::SOptions BesideExecutable() {
    CLogFile::SOptions options;
    options.m_strFolder = CDirectory::Concat(CDirectory::GetExePath(), _T("SERVICE\\LOG-FILES"));
    return options;
}

CString ProcessText(DWORD thread) {
    CString text;
    text.Format(_T("P%4u.%4u "), GetCurrentProcessId(), thread);
    return text;
}

__time64_t SystemClock() {
    return _time64(nullptr);
}

}  // namespace

CLogFile::CLogFile() : CLogFile(BesideExecutable()) {}

CLogFile::CLogFile(const SOptions& options)
    : m_strFolder(options.m_strFolder),
      m_dwFlags(options.m_dwFlags),
      m_dwMaxFileSize(options.m_dwMaxFileSize),
      m_dwMaxFileCount(options.m_dwMaxFileCount),
      m_pfnClock(options.m_pfnClock != nullptr ? options.m_pfnClock : SystemClock),
      m_pShare(std::make_unique<CLogShare>()) {}

CLogFile::~CLogFile() {
    Close();
}

CLogFile* CLogFile::GetInstance() {
    if (m_pInstance == nullptr) {
        m_pInstance = new CLogFile;
        std::atexit(DestroyInstance);
    }
    return m_pInstance;
}

BOOL CLogFile::HasInstance() {
    return m_pInstance != nullptr;
}

void CLogFile::DestroyInstance() {
    delete m_pInstance;
    m_pInstance = nullptr;
}

void CLogFile::SetFlags(DWORD flags) {
    m_dwFlags.store(flags);
}

void CLogFile::SetMaxFileSize(DWORD bytes) {
    m_dwMaxFileSize.store(bytes);
}

void CLogFile::SetMaxFileCount(DWORD count) {
    m_dwMaxFileCount.store(count);
}

void CLogFile::PrintCore(LPCTSTR text) {
    PrintText(text == nullptr ? _T("") : text);
}

void CLogFile::PrintText(View message) {
    if (message.empty()) {
        return;
    }
    CSingleLock lock(&m_lock, TRUE);
    const ProcessesScope processes(*m_pShare);
    try {
        if (RefreshTimeText() && Deleted()) {  // somebody cleared the folder: looked at once a second
            Close();
        }
        if (Open()) {
            BuildRecord(message);
            WriteRecord();
        }
    } catch (const std::bad_alloc&) {  // costs the message
    }
}

void CLogFile::BuildRecord(View text) {
    if (m_strRecord.capacity() > kKeptRecord) {
        Text().swap(m_strRecord);
    }
    m_strRecord.clear();
    BOOL continuation = FALSE;
    while (!text.empty()) {
        const std::ptrdiff_t found = FindNextCRLF(text);
        const View line = text.substr(0, found < 0 ? text.size() : static_cast<std::size_t>(found));
        if (!line.empty()) {
            m_strRecord += BuildLineHeader(continuation);
        }
        m_strRecord += line;
        m_strRecord += kLineEnd;
        text.remove_prefix(found < 0 ? text.size() : line.size() + kLineEnd.size());
        continuation = TRUE;
    }
}

std::ptrdiff_t CLogFile::FindNextCRLF(View text) {
    std::size_t feed = log_text::FindLineFeed(text, 0);
    while (feed != View::npos && (feed == 0 || text[feed - 1] != _T('\r'))) {
        feed = log_text::FindLineFeed(text, feed + 1);
    }
    return feed == View::npos ? -1 : static_cast<std::ptrdiff_t>(feed) - 1;
}

View CLogFile::BuildLineHeader(BOOL continuation) {
    const DWORD thread = GetCurrentThreadId();
    if (m_bHeaderStale || thread != m_dwHeaderThread) {
        m_strHeader = m_strTime;
        if ((m_dwHeaderFlags & HEADER_PROCESS) != 0) {
            m_strHeader.append(m_strHeader.empty() ? 0 : 1, _T(' ')).append(ProcessText(thread).View());
        }
        m_strHeader.append(m_strHeader.empty() ? 0 : 1, _T(' '));
        m_strBlankHeader.assign(m_strHeader.size(), _T(' '));
        m_dwHeaderThread = thread;
        m_bHeaderStale = false;
    }
    return continuation ? m_strBlankHeader : m_strHeader;
}

// Date and time have no smaller part than a second. True when a new one has begun.
bool CLogFile::RefreshTimeText() {
    const __time64_t now = m_pfnClock();
    const DWORD flags = m_dwFlags;
    if (now == m_tHeader && flags == m_dwHeaderFlags) {
        return false;
    }
    const CTime time(now);
    m_strTime.clear();
    if ((flags & HEADER_DATE) != 0) {
        m_strTime += time.Format(_T("%Y-%m-%d; ")).View();
    }
    if ((flags & HEADER_TIME) != 0) {
        m_strTime.append(m_strTime.empty() ? 0 : 1, _T(' ')).append(time.Format(_T("%H:%M:%S; ")).View());
    }
    m_tHeader = now;
    m_dwHeaderFlags = flags;
    m_bHeaderStale = true;
    return true;
}

void CLogFile::WriteRecord() {
    const BOOL written = Append(m_strRecord.data(), m_strRecord.size() * sizeof(TCHAR));
    if (CLogShare::SState* const state = m_pShare->State()) {
        state->dwSize = m_dwFileSize;
        state->dwTorn = !written;
    }
    m_bTorn = !written;
}

// One call to the system.
BOOL CLogFile::Append(const void* bytes, std::size_t count) {
    DWORD written = 0;
    const BOOL done = WriteFile(m_hFile, bytes, static_cast<DWORD>(count), &written, nullptr) && written == count;
    m_dwFileSize = done ? m_dwFileSize + written : RealSize();
    return done;
}
