// Which file a message goes to: opening, following other processes, and the ring of numbers.

#include <kadata/directory.h>
#include <kadata/log.h>

#include <algorithm>

#include "log_share.h"

namespace {

using View = std::basic_string_view<TCHAR>;

constexpr TCHAR kPrefix[] = _T("TARVO");
constexpr TCHAR kSuffix[] = _T(".log");
constexpr TCHAR kPattern[] = _T("TARVO*.log");
constexpr int kDigits = 3;
constexpr int kHighestNumber = 999;
constexpr int kPrefixLength = 5;
constexpr int kNameLength = 12;

constexpr TCHAR kByteOrderMark = 0xFEFF;
constexpr BYTE kLineEnd[] = {'\r', 0, '\n', 0};
constexpr std::size_t kAsterisks = 51;

ULONGLONG Joined(DWORD high, DWORD low) {
    return (static_cast<ULONGLONG>(high) << 32) | low;
}

}  // namespace

struct CLogFile::SFileStatus {
    CString strPath;
    ULONGLONG ullWritten;  // 100 ns
    ULONGLONG ullSize;
};

BOOL CLogFile::IsOpen() const {
    return m_hFile != INVALID_HANDLE_VALUE;
}

void CLogFile::Close() {
    if (IsOpen()) {
        CloseHandle(m_hFile);
        m_hFile = INVALID_HANDLE_VALUE;
    }
}

BOOL CLogFile::Open() {
    FollowOtherWriters();
    if (IsOpen() && m_dwFileSize < m_dwMaxFileSize) {
        return TRUE;
    }
    Close();
    try {
        return OpenFile(ChooseFile());
    } catch (CFileException* noFolder) {
        noFolder->Delete();
        return FALSE;
    }
}

// Brings the size up to date with what other processes wrote, and closes a file that they have left for another.
void CLogFile::FollowOtherWriters() {
    if (!IsOpen()) {
        return;
    }
    const CLogShare::SState* const state = m_pShare->State();
    if (state != nullptr && state->dwGeneration != m_dwGeneration) {
        Close();
        return;
    }
    const bool torn = state != nullptr ? state->dwTorn != 0 : m_bTorn;
    m_dwFileSize = state != nullptr && !torn ? state->dwSize : RealSize();
    if (torn) {
        EndTornLine();
    }
}

// Follows the choice of another process while its file has room, and chooses for all of them otherwise.
CString CLogFile::ChooseFile() {
    m_pShare->Attach(m_strFolder);
    CLogShare::SState* state = m_pShare->State();
    if (state == nullptr || state->dwGeneration != m_dwGeneration) {
        m_strPath.Empty();  // others may have gone on from there
    }
    if (state != nullptr && state->dwGeneration != m_dwGeneration && state->dwNumber != CLogShare::NO_NUMBER) {
        m_strPath = CDirectory::Concat(m_strFolder, BuildFileName(static_cast<int>(state->dwNumber)));
        m_dwGeneration = state->dwGeneration;
        if (state->dwSize < m_dwMaxFileSize) {
            return m_strPath;
        }
    }
    const CString path = GetNextFileName();
    m_pShare->Attach(m_strFolder);  // the folder may be new
    state = m_pShare->State();
    if (state != nullptr) {
        const int number = GetFileNumber(path);
        state->dwNumber = number < 0 ? CLogShare::NO_NUMBER : static_cast<DWORD>(number);
        m_dwGeneration = ++state->dwGeneration;
    }
    return path;
}

BOOL CLogFile::OpenFile(const CString& path) {
    const DWORD attributes = FILE_ATTRIBUTE_NORMAL | ((m_dwFlags & WRITE_THROUGH) != 0 ? FILE_FLAG_WRITE_THROUGH : 0U);
    // Without the right to write elsewhere the system puts every write at the end, wherever that is by then.
    m_hFile = CreateFileW(path, GENERIC_READ | FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS,
                          attributes, nullptr);
    if (!IsOpen()) {
        return FALSE;
    }
    m_strPath = path;
    m_dwFileSize = RealSize();
    if (m_dwFileSize == 0) {
        const std::basic_string<TCHAR> header = BuildFileHeader();
        if (!Append(header.data(), header.size() * sizeof(TCHAR))) {
            Close();  // no line without a header above it
            return FALSE;
        }
    } else {
        EndTornLine();
    }
    if (CLogShare::SState* const state = m_pShare->State()) {
        state->dwSize = m_dwFileSize;
    }
    return TRUE;
}

// The end of a file that a writer left in the middle of a line, even of a character, becomes the end of a line.
void CLogFile::EndTornLine() {
    const DWORD size = RealSize();
    TCHAR tail[sizeof(kLineEnd) / sizeof(TCHAR)] = {};
    const DWORD wanted = std::min<DWORD>(size, sizeof(tail)) & ~1U;
    OVERLAPPED where = {};
    where.Offset = (size & ~1U) - wanted;
    DWORD read = 0;
    if (size == 0 || !ReadFile(m_hFile, tail, wanted, &read, &where) || read != wanted) {
        return;
    }
    std::string end;
    if (size % 2 != 0) {
        end += size == 1 ? '\xFE' : '\0';  // of a cut byte-order mark, of any other cut character
    }
    const View last(tail, wanted / sizeof(TCHAR));
    const bool whole = end.empty() && last == _T("\r\n");
    const bool half = end.empty() && last.ends_with(_T('\r'));
    if (!whole) {
        end.append(reinterpret_cast<const char*>(half ? kLineEnd + sizeof(TCHAR) : kLineEnd),
                   half ? sizeof(TCHAR) : sizeof(kLineEnd));
        Append(end.data(), end.size());
    }
}

// In bytes. A file that has outgrown 32 bits counts as full.
DWORD CLogFile::RealSize() const {
    LARGE_INTEGER size = {};
    if (!GetFileSizeEx(m_hFile, &size)) {
        return m_dwFileSize;
    }
    return static_cast<DWORD>(std::min<LONGLONG>(size.QuadPart, MAXDWORD));
}

bool CLogFile::Deleted() const {
    BY_HANDLE_FILE_INFORMATION information = {};
    return IsOpen() && GetFileInformationByHandle(m_hFile, &information) && information.nNumberOfLinks == 0;
}

CString CLogFile::GetNextFileName() {
    if (!CDirectory::Exist(m_strFolder)) {
        CDirectory::Make(m_strFolder);
    }
    CString path = CDirectory::Concat(m_strFolder, BuildFileName(0));
    const std::vector<SFileStatus> files = ListFiles();
    if (!files.empty()) {
        const SFileStatus& newest = files.back();
        if (newest.ullSize < m_dwMaxFileSize) {
            path = newest.strPath;
        } else {
            const int next = GetFileNumber(newest.strPath) + 1;
            path = CDirectory::Concat(m_strFolder, BuildFileName(next > kHighestNumber ? 0 : next));
        }
    }
    DeleteOldest(files);
    return path;
}

// Oldest first. The file that was written last counts as the newest whatever the clock has done since.
std::vector<CLogFile::SFileStatus> CLogFile::ListFiles() const {
    CStringArray names;
    CDirectory::ListFiles(m_strFolder, names, kPattern, ~static_cast<DWORD>(FILE_ATTRIBUTE_DIRECTORY));
    std::vector<SFileStatus> files;
    for (INT_PTR i = 0; i < names.GetSize(); ++i) {
        SFileStatus file = {CDirectory::Concat(m_strFolder, names[i]), 0, 0};
        WIN32_FILE_ATTRIBUTE_DATA data = {};
        if (GetFileAttributesExW(file.strPath, GetFileExInfoStandard, &data) &&
            (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
            file.ullWritten = Joined(data.ftLastWriteTime.dwHighDateTime, data.ftLastWriteTime.dwLowDateTime);
            file.ullSize = Joined(data.nFileSizeHigh, data.nFileSizeLow);
            files.push_back(std::move(file));
        }
    }
    std::sort(files.begin(), files.end(), FileStatusComparer);
    std::stable_partition(files.begin(), files.end(), [this](const SFileStatus& file) { return file.strPath != m_strPath; });
    return files;
}

// Equal times: the lower number first.
bool CLogFile::FileStatusComparer(const SFileStatus& a, const SFileStatus& b) {
    return a.ullWritten != b.ullWritten ? a.ullWritten < b.ullWritten : GetFileNumber(a.strPath) < GetFileNumber(b.strPath);
}

// A file that another process holds open stays, and the next one goes in its place.
void CLogFile::DeleteOldest(const std::vector<SFileStatus>& oldestFirst) const {
    std::size_t left = oldestFirst.size();
    for (const SFileStatus& file : oldestFirst) {
        if (left < m_dwMaxFileCount) {
            return;
        }
        if (DeleteFileW(file.strPath)) {
            --left;
        }
    }
}

CString CLogFile::BuildFileName(int number) {
    CString name;
    name.Format(_T("%s%0*u%s"), kPrefix, kDigits, static_cast<unsigned>(number), kSuffix);
    return name;
}

int CLogFile::GetFileNumber(CString path) {
    const CString name = path.Mid(path.ReverseFind(_T('\\')) + 1);
    if (name.GetLength() != kNameLength || name.Left(kPrefixLength).CompareNoCase(kPrefix) != 0 ||
        name.Right(kNameLength - kPrefixLength - kDigits).CompareNoCase(kSuffix) != 0) {
        return -1;
    }
    int number = 0;
    for (int i = kPrefixLength; i < kPrefixLength + kDigits; ++i) {
        if (name[i] < _T('0') || name[i] > _T('9')) {
            return -1;
        }
        number = number * 10 + (name[i] - _T('0'));
    }
    return number;
}

// What a new file starts with, the byte-order mark included.
std::basic_string<TCHAR> CLogFile::BuildFileHeader() {
    const std::basic_string<TCHAR> asterisks = std::basic_string<TCHAR>(kAsterisks, _T('*')) + _T("\r\n");
    std::basic_string<TCHAR> header(1, kByteOrderMark);
    header += _T("\r\n");
    header += asterisks;
    header += _T("     Kalido Dental Systems - TARVO LogFile File \r\n");
    header += asterisks;
    return header;
}
