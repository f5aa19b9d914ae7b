#include "directory_support.h"

namespace kadata::directory {

CString WithSeparator(const CString& path) {
    return EndsWithSeparator(path) ? path : path + kSeparator;
}

CString WithoutSeparator(const CString& path) {
    return EndsWithSeparator(path) ? path.Left(path.GetLength() - 1) : path;
}

CString DirectoryPart(const CString& path) {
    return path.Left(path.ReverseFind(kSeparator) + 1);
}

CString NamePart(const CString& path) {
    return path.Mid(path.ReverseFind(kSeparator) + 1);
}

void ThrowAccessDenied(const CString& path) {
    const DWORD error = GetLastError();
    AfxThrowFileException(CFileException::accessDenied, static_cast<LONG>(error), path);
}

FileHandle::~FileHandle() {
    if (IsOpen())
        CloseHandle(m_handle);
}

FileSearch::FileSearch(const CString& pattern)
    : m_search(FindFirstFileExW(pattern, FindExInfoBasic, &m_entry, FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH)) {}

FileSearch::~FileSearch() {
    if (m_search != INVALID_HANDLE_VALUE)
        FindClose(m_search);
}

bool FileSearch::Next() {
    while (Step()) {
        const TCHAR* const name = m_entry.cFileName;
        const bool dots = name[0] == _T('.') && (name[1] == 0 || (name[1] == _T('.') && name[2] == 0));
        if (!dots)
            return true;
    }
    return false;
}

bool FileSearch::Step() {
    if (m_search == INVALID_HANDLE_VALUE)
        return false;
    if (m_first) {
        m_first = false;
        return true;
    }
    return FindNextFileW(m_search, &m_entry) != FALSE;
}

}  // namespace kadata::directory
