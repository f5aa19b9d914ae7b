#pragma once

// Opening files, and what a call told of them.

#include <gtest/gtest.h>
#include <windows.h>
#include <winternl.h>

#include <map>
#include <vector>

#include "handles.h"
#include "temp_folder.h"

namespace test {

inline constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// Forgets the last error before.
inline HANDLE Open(const Text& path, DWORD access, DWORD share = kShareAll, DWORD disposition = OPEN_EXISTING,
                   DWORD flags = FILE_FLAG_BACKUP_SEMANTICS) {
    SetLastError(ERROR_SUCCESS);
    return CreateFileW(path.c_str(), access, share, nullptr, disposition, flags, nullptr);
}

// The error of a call that fails, ERROR_SUCCESS for one that succeeds; what it opened is closed again.
inline DWORD Outcome(BOOL done) {
    return done ? ERROR_SUCCESS : GetLastError();
}
inline DWORD Outcome(HANDLE opened) {
    const Handle file(opened == INVALID_HANDLE_VALUE ? nullptr : opened);
    return Outcome(BOOL{opened != INVALID_HANDLE_VALUE});
}

inline DWORD Dispose(HANDLE file, bool remove = true) {
    FILE_DISPOSITION_INFO info{};
    info.DeleteFile = remove;
    return Outcome(SetFileInformationByHandle(file, FileDispositionInfo, &info, sizeof info));
}

// Opens `name` in `folder` for its disposal.
inline DWORD OpenIn(HANDLE folder, const Text& name, ULONG options, Handle& opened) {
    const auto size = static_cast<USHORT>(name.size() * sizeof(TCHAR));
    UNICODE_STRING text{size, size, const_cast<TCHAR*>(name.data())};
    OBJECT_ATTRIBUTES attributes;
    InitializeObjectAttributes(&attributes, &text, OBJ_CASE_INSENSITIVE, folder, nullptr);
    IO_STATUS_BLOCK status{};
    HANDLE handle = nullptr;
    const NTSTATUS result = NtOpenFile(&handle, DELETE | FILE_READ_ATTRIBUTES | SYNCHRONIZE, &attributes, &status, kShareAll,
                                       options | FILE_SYNCHRONOUS_IO_NONALERT | FILE_OPEN_FOR_BACKUP_INTENT);
    opened = Handle(handle);
    return RtlNtStatusToDosError(result);
}

// The names and sizes that a listing in steps of `size` bytes gives before it fails; `calls` counts the steps that gave
// something.
inline std::map<Text, LONGLONG> List(HANDLE folder, DWORD size, int& calls) {
    std::map<Text, LONGLONG> entries;
    std::vector<LONGLONG> buffer(size / sizeof(LONGLONG));
    calls = 0;
    while (GetFileInformationByHandleEx(folder, calls == 0 ? FileFullDirectoryRestartInfo : FileFullDirectoryInfo, buffer.data(),
                                        size)) {
        ++calls;
        const FILE_FULL_DIR_INFO* entry = nullptr;
        for (const auto* at = reinterpret_cast<const BYTE*>(buffer.data()); entry == nullptr || entry->NextEntryOffset != 0;) {
            at += entry == nullptr ? 0 : entry->NextEntryOffset;
            entry = reinterpret_cast<const FILE_FULL_DIR_INFO*>(at);
            const Text name(entry->FileName, entry->FileNameLength / sizeof(TCHAR));
            EXPECT_TRUE(entries.emplace(name, entry->EndOfFile.QuadPart).second);
        }
    }
    return entries;
}

}  // namespace test
