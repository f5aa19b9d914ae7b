#include "tree_remover.h"

#include <winternl.h>

#include <utility>

namespace kadata::directory {
namespace {

constexpr std::size_t kBlockSize = 65'536;
constexpr DWORD kListAccess = FILE_LIST_DIRECTORY | FILE_READ_ATTRIBUTES | SYNCHRONIZE;
constexpr DWORD kDeleteAccess = DELETE | SYNCHRONIZE;

bool IsRealDirectory(DWORD attributes) {
    return (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT)) == FILE_ATTRIBUTE_DIRECTORY;
}

// 0 when they cannot be read.
DWORD AttributesOf(const FileHandle& file) {
    FILE_ATTRIBUTE_TAG_INFO info = {};
    return GetFileInformationByHandleEx(file.Get(), FileAttributeTagInfo, &info, sizeof info) ? info.FileAttributes : 0;
}

// Opens what `directory` has under that name now, a link as itself. Not open, with the last error set, when that fails.
FileHandle OpenIn(const FileHandle& directory, std::basic_string<TCHAR>& name, DWORD access) {
    UNICODE_STRING text = {};
    text.Buffer = name.data();
    text.Length = static_cast<USHORT>(name.size() * sizeof(TCHAR));
    text.MaximumLength = text.Length;
    OBJECT_ATTRIBUTES object = {};
    object.Length = sizeof object;
    object.RootDirectory = directory.Get();
    object.ObjectName = &text;
    IO_STATUS_BLOCK status = {};
    HANDLE opened = INVALID_HANDLE_VALUE;
    const NTSTATUS result = NtOpenFile(&opened, access, &object, &status, kShareAll,
                                       FILE_OPEN_REPARSE_POINT | FILE_OPEN_FOR_BACKUP_INTENT | FILE_SYNCHRONOUS_IO_NONALERT);
    if (result >= 0)
        return FileHandle(opened);
    SetLastError(RtlNtStatusToDosError(result));
    return FileHandle();
}

}  // namespace

TreeRemover::TreeRemover(const CString& root) : m_root(root), m_path(View(root)), m_block(kBlockSize / sizeof(ULONGLONG)) {}

int TreeRemover::Run() {
    if (!OpenRoot())
        return m_rootIsLink ? DeleteRoot() : 0;
    while (true) {
        if (m_levels.back().next < m_levels.back().entries.size()) {
            RemoveNextEntry();
            continue;
        }
        const bool whole = LeaveLevel();
        if (m_levels.empty())
            return whole ? DeleteRoot() : 0;
    }
}

bool TreeRemover::OpenRoot() {
    FileHandle root(CreateFileW(WithoutSeparator(m_root), kListAccess, kShareAll, nullptr, OPEN_EXISTING,
                                FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
    const DWORD attributes = root.IsOpen() ? AttributesOf(root) : 0;
    constexpr DWORD kDirectoryLink = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
    m_rootIsLink = (attributes & kDirectoryLink) == kDirectoryLink;
    return IsRealDirectory(attributes) && Enter(std::move(root));
}

// Makes `directory`, whose path is m_path, the current one. False when it cannot be listed.
bool TreeRemover::Enter(FileHandle directory) {
    std::vector<Entry> entries;
    if (!ReadEntries(directory.Get(), entries))
        return false;
    m_levels.push_back({std::move(directory), std::move(entries), 0, m_path.size()});
    return true;
}

void TreeRemover::RemoveNextEntry() {
    Level& level = m_levels.back();
    Entry& entry = level.entries[level.next++];
    if (entry.directory)
        RemoveDirectoryEntry(entry);
    else
        DeleteEntry(entry);
}

void TreeRemover::RemoveDirectoryEntry(Entry& entry) {
    FileHandle directory = OpenIn(m_levels.back().directory, entry.name, kListAccess);
    if (directory.IsOpen() && !IsRealDirectory(AttributesOf(directory))) {
        DeleteEntry(entry);  // a link or a file has taken its place meanwhile
        return;
    }
    const std::size_t parentLength = m_path.size();
    m_path.append(entry.name).append(1, kSeparator);
    if (directory.IsOpen() && Enter(std::move(directory)))
        return;
    m_path.resize(parentLength);
    m_levels.back().whole = false;
}

// Closes the current directory and deletes it, unless something had to stay in it or it is the root. Returns whether all of
// it could be listed.
bool TreeRemover::LeaveLevel() {
    const bool whole = m_levels.back().whole;
    m_levels.pop_back();  // a directory is gone only when its last handle is closed
    if (m_levels.empty())
        return whole;
    Level& parent = m_levels.back();
    parent.whole = parent.whole && whole;
    m_path.resize(parent.pathLength);
    if (whole)
        DeleteEntry(parent.entries[parent.next - 1]);
    return whole;
}

void TreeRemover::DeleteEntry(Entry& entry) {
    FILE_DISPOSITION_INFO deleted = {TRUE};
    const FileHandle file = OpenIn(m_levels.back().directory, entry.name, kDeleteAccess);
    if (file.IsOpen() && SetFileInformationByHandle(file.Get(), FileDispositionInfo, &deleted, sizeof deleted))
        return;
    const std::basic_string<TCHAR> path = m_path + entry.name;
    ThrowAccessDenied(entry.directory ? ToText(path) + kSeparator : ToText(path));
}

int TreeRemover::DeleteRoot() const {
    if (!RemoveDirectoryW(WithoutSeparator(m_root)))
        ThrowAccessDenied(m_root);
    return 1;
}

// All entries, before the first of them is deleted: what a listing gives while its directory changes is not settled.
bool TreeRemover::ReadEntries(HANDLE directory, std::vector<Entry>& entries) {
    FILE_INFO_BY_HANDLE_CLASS what = FileFullDirectoryRestartInfo;
    while (GetFileInformationByHandleEx(directory, what, m_block.data(), kBlockSize)) {
        AddEntries(entries);
        what = FileFullDirectoryInfo;
    }
    return GetLastError() == ERROR_NO_MORE_FILES;
}

void TreeRemover::AddEntries(std::vector<Entry>& entries) const {
    const BYTE* at = reinterpret_cast<const BYTE*>(m_block.data());
    for (DWORD step = 0;; at += step) {
        const auto& info = *reinterpret_cast<const FILE_FULL_DIR_INFO*>(at);
        const TextView name(info.FileName, info.FileNameLength / sizeof(TCHAR));
        if (name != TextView(_T(".")) && name != TextView(_T("..")))
            entries.push_back({std::basic_string<TCHAR>(name), IsRealDirectory(info.FileAttributes)});
        step = info.NextEntryOffset;
        if (step == 0)
            return;
    }
}

}  // namespace kadata::directory
