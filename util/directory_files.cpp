// Files: whether they exist, lists, deleting by pattern and age, comparing, sizes and attributes.

#include <kadata/directory.h>

#include <algorithm>
#include <cstring>
#include <optional>
#include <vector>

#include "directory_support.h"

using namespace kadata::directory;

namespace {

constexpr int kLongestDriveName = 3;          // "C:\"
constexpr DWORD kDriveListRoom = 26 * 4 + 1;  // "A:\" with its terminator for each letter, and the end of the list
constexpr int kDriveFound = 1;
constexpr LONGLONG kSecondsPerDay = 86'400;
constexpr std::size_t kCompareBlock = 65'536;

// 0 when nothing matches.
DWORD FoundAttributes(const CString& pattern) {
    WIN32_FIND_DATAW entry;
    const HANDLE search = FindFirstFileW(pattern, &entry);
    if (search == INVALID_HANDLE_VALUE)
        return 0;
    FindClose(search);
    return entry.dwFileAttributes;
}

bool IsDrive(const CString& name) {
    const CString root = name.GetLength() == 2 ? name + kSeparator : name;
    TCHAR roots[kDriveListRoom + 1] = {};
    if (GetLogicalDriveStringsW(kDriveListRoom, roots) > kDriveListRoom)
        return false;
    for (const TCHAR* next = roots; *next != 0; next += lstrlenW(next) + 1) {
        if (root.CompareNoCase(next) == 0)
            return true;
    }
    return false;
}

// Local time of the last writing as seconds since 1970; 0 for what lies before. Nothing when it lies beyond the calendar.
std::optional<LONGLONG> WrittenAt(const FILETIME& written) {
    SYSTEMTIME utc, local;
    if (!FileTimeToSystemTime(&written, &utc) || !SystemTimeToTzSpecificLocalTime(nullptr, &utc, &local))
        return std::nullopt;
    // CTime would throw for the years from 1900 up to the first that it can hold.
    constexpr int kFirstYear = 1970;
    std::tm parts = {};
    parts.tm_year = local.wYear - 1900;
    parts.tm_mon = local.wMonth - 1;
    parts.tm_mday = local.wDay;
    parts.tm_hour = local.wHour;
    parts.tm_min = local.wMinute;
    parts.tm_sec = local.wSecond;
    parts.tm_isdst = -1;
    const LONGLONG seconds = local.wYear < kFirstYear ? -1 : _mktime64(&parts);
    if (seconds >= 0)
        return seconds;
    return local.wYear <= kFirstYear ? std::optional<LONGLONG>(0) : std::nullopt;
}

FileHandle OpenForComparing(LPCTSTR path) {
    return FileHandle(CreateFileW(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
}

// One block from the file; nothing when it cannot be read.
std::optional<DWORD> ReadBlock(const FileHandle& file, std::vector<BYTE>& block) {
    DWORD count = 0;
    if (!ReadFile(file.Get(), block.data(), static_cast<DWORD>(block.size()), &count, nullptr))
        return std::nullopt;
    return count;
}

// Nothing when a file cannot be read.
std::optional<bool> HaveSameBytes(const FileHandle& file1, const FileHandle& file2, DWORD size) {
    std::vector<BYTE> block1(kCompareBlock), block2(kCompareBlock);
    while (size > 0) {
        const std::optional<DWORD> count1 = ReadBlock(file1, block1);
        const std::optional<DWORD> count2 = ReadBlock(file2, block2);
        if (!count1 || !count2)
            return std::nullopt;
        if (*count1 != *count2 || std::memcmp(block1.data(), block2.data(), *count1) != 0)
            return false;
        if (*count1 == 0)
            return true;
        size -= std::min(size, *count1);
    }
    return true;
}

std::optional<bool> HaveSameContents(const FileHandle& file1, const FileHandle& file2) {
    // Deliberate: a size is its lower 32 bits here, so a file of exactly 4 GiB counts as an empty one.
    const DWORD size1 = ::GetFileSize(file1.Get(), nullptr);
    const DWORD size2 = ::GetFileSize(file2.Get(), nullptr);
    if (size1 == INVALID_FILE_SIZE || size2 == INVALID_FILE_SIZE)
        return std::nullopt;
    return size1 != size2 ? false : HaveSameBytes(file1, file2, size1);
}

bool IsMissing(LPCTSTR text) {
    return text == nullptr || *text == 0;
}

}  // namespace

int CDirectory::Exist(const CString& dir) {
    if (dir.IsEmpty())
        return 0;
    if (dir.GetLength() <= kLongestDriveName && IsDrive(dir))
        return kDriveFound;
    return static_cast<int>(FoundAttributes(dir) & FILE_ATTRIBUTE_DIRECTORY);
}

int CDirectory::FileExist(CString dir, const CString& name) {
    if (!dir.IsEmpty() && !name.IsEmpty())
        dir = WithSeparator(dir);
    const DWORD attributes = FoundAttributes(dir + name);
    return attributes != 0 && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

int CDirectory::ListFiles(CString dir, CStringArray& out, const CString& pattern, DWORD attributeMask) {
    FileSearch search(WithSeparator(dir) + pattern);
    while (search.Next()) {
        if ((search.Entry().dwFileAttributes & attributeMask) != 0)
            out.Add(search.Entry().cFileName);
    }
    return static_cast<int>(out.GetSize());
}

void CDirectory::DeleteFiles(const CString& pathWithPattern) {
    const CString dir = DirectoryPart(pathWithPattern);
    FileSearch search(pathWithPattern);
    while (search.Next()) {
        const CString path = dir + search.Entry().cFileName;
        if (!search.IsDirectory() && !DeleteFileW(path))
            ThrowAccessDenied(path);
    }
}

int CDirectory::DeleteOlderFiles(CString dir, const CString& pattern, unsigned int days) {
    return DeleteOlderFiles(dir, pattern, days, _time64(nullptr));
}

int CDirectory::DeleteOlderFiles(CString dir, const CString& pattern, unsigned int days, __time64_t now) {
    dir = WithSeparator(dir);
    const LONGLONG cutoff = now - days * kSecondsPerDay;
    std::vector<CString> old;
    FileSearch search(dir + pattern);
    while (search.Next()) {
        const std::optional<LONGLONG> written = WrittenAt(search.Entry().ftLastWriteTime);
        if (!search.IsDirectory() && (days == 0 || (written && *written < cutoff)))
            old.emplace_back(search.Entry().cFileName);
    }
    return static_cast<int>(std::count_if(old.begin(), old.end(), [&](const CString& name) { return DeleteFileW(dir + name); }));
}

int CDirectory::Compare(LPCTSTR file1, LPCTSTR file2, int* equal) {
    if (equal == nullptr)
        return 0;
    *equal = 0;
    if (IsMissing(file1) || IsMissing(file2))
        return 0;
    const FileHandle handle1 = OpenForComparing(file1);
    const FileHandle handle2 = OpenForComparing(file2);
    if (!handle1.IsOpen() || !handle2.IsOpen())
        return 0;
    const std::optional<bool> same = HaveSameContents(handle1, handle2);
    *equal = same.value_or(false);
    return same.has_value();
}

int CDirectory::EnoughRoomForFile(const CString& filePath, DWORD bytes) {
    const int end = filePath.ReverseFind(kSeparator);
    ULARGE_INTEGER free = {};
    return end >= 0 && GetDiskFreeSpaceExW(filePath.Left(end), &free, nullptr, nullptr) && free.QuadPart >= bytes;
}

LONGLONG CDirectory::GetFileSize(const CString& path) {
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExW(path, GetFileExInfoStandard, &data))
        return 0;
    return static_cast<LONGLONG>(static_cast<ULONGLONG>(data.nFileSizeHigh) << 32 | data.nFileSizeLow);
}

DWORD CDirectory::ModifyFileAttributes(LPCTSTR path, DWORD attributes, int set) {
    const DWORD before = GetFileAttributesW(path);
    if (before == INVALID_FILE_ATTRIBUTES)
        return before;
    const DWORD after = set ? before | attributes : before & ~attributes;
    SetFileAttributesW(path, after);
    return after;
}
