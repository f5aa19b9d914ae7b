#pragma once

// What the parts of CDirectory share. Internal to the library.

#include <afx.h>

#include <string_view>

namespace kadata::directory {

using TextView = std::basic_string_view<TCHAR>;

constexpr TCHAR kSeparator = _T('\\');
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr int kLongestText = 32767;  // of a path and of an environment variable, in characters

inline TextView View(const CString& text) {
    return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}
inline CString ToText(TextView view) {
    return CString(view.data(), static_cast<int>(view.size()));
}

inline bool EndsWithSeparator(const CString& path) {
    return View(path).ends_with(kSeparator);
}
CString WithSeparator(const CString& path);     // one is added where none is at the end
CString WithoutSeparator(const CString& path);  // one is taken off

// Up to and including the last backslash; empty without one.
CString DirectoryPart(const CString& path);
// Behind the last backslash.
CString NamePart(const CString& path);

// A failure of the system that CDirectory reports, with the last error.
[[noreturn]] void ThrowAccessDenied(const CString& path);

// Owns what CloseHandle closes.
class FileHandle {
public:
    explicit FileHandle(HANDLE handle = INVALID_HANDLE_VALUE) : m_handle(handle) {}
    FileHandle(FileHandle&& other) noexcept : m_handle(other.m_handle) { other.m_handle = INVALID_HANDLE_VALUE; }
    FileHandle& operator=(FileHandle&&) = delete;
    ~FileHandle();

    bool IsOpen() const { return m_handle != INVALID_HANDLE_VALUE; }
    HANDLE Get() const { return m_handle; }

private:
    HANDLE m_handle;
};

// Steps through what matches a pattern, "." and ".." left out:  FileSearch search(pattern); while (search.Next()) ...
class FileSearch {
public:
    explicit FileSearch(const CString& pattern);
    FileSearch(const FileSearch&) = delete;
    FileSearch& operator=(const FileSearch&) = delete;
    ~FileSearch();

    bool Next();
    const WIN32_FIND_DATAW& Entry() const { return m_entry; }
    bool IsDirectory() const { return (m_entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }

private:
    bool Step();

    WIN32_FIND_DATAW m_entry;
    HANDLE m_search;
    bool m_first = true;  // the entry that the opening has found was not handed out yet
};

}  // namespace kadata::directory
