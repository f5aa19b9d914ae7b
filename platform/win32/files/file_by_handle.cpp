#include "file_by_handle.h"

#include <errno.h>
#include <string.h>
#include <unistd.h>

#include <optional>
#include <string>

#include "../base/error_map.h"
#include "../base/path_map.h"
#include "../text/no_throw.h"
#include "file_object.h"

namespace kawin {
namespace {

LARGE_INTEGER Large(ULONGLONG value) {
    LARGE_INTEGER large;
    large.QuadPart = static_cast<LONGLONG>(value);
    return large;
}

LARGE_INTEGER Large(const FILETIME& time) {
    return Large(static_cast<ULONGLONG>(FileTimeValue(time)));
}

DWORD HighHalf(ULONGLONG value) {
    return static_cast<DWORD>(value >> 32);
}

DWORD LowHalf(ULONGLONG value) {
    return static_cast<DWORD>(value & MAXDWORD);
}

FILE_BASIC_INFO BasicInfo(const FileStatus& status) {
    FILE_BASIC_INFO info{};
    info.CreationTime = Large(status.created);
    info.LastAccessTime = Large(status.accessed);
    info.LastWriteTime = Large(status.written);
    info.ChangeTime = Large(status.changed);
    info.FileAttributes = status.attributes;
    return info;
}

FILE_STANDARD_INFO StandardInfo(const FileObject& file, const FileStatus& status) {
    FILE_STANDARD_INFO info{};
    info.AllocationSize = Large(status.allocated);
    info.EndOfFile = Large(status.size);
    info.NumberOfLinks = status.links;
    info.DeletePending = file.IsDeletePending() ? 1 : 0;
    info.Directory = (status.attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? 1 : 0;
    return info;
}

template <class Info>
BOOL Give(const Info& info, LPVOID buffer, DWORD size) {
    if (size < sizeof info) {
        return Fail(ERROR_BAD_LENGTH);
    }
    memcpy(buffer, &info, sizeof info);
    return TRUE;
}

BOOL List(FileObject& file, bool restart, LPVOID buffer, DWORD size) {
    if (size < sizeof(FILE_FULL_DIR_INFO)) {
        return Fail(ERROR_BAD_LENGTH);
    }
    if (file.Kind() != FileKind::folder) {
        return Fail(ERROR_INVALID_PARAMETER);
    }
    if (!file.Allows(FILE_LIST_DIRECTORY)) {
        return Fail(ERROR_ACCESS_DENIED);
    }
    const std::lock_guard lock(file.listing_mutex);
    if (!file.listing) {
        file.listing.emplace(file.Fd());
    } else if (restart) {
        file.listing->Restart();
    }
    const DWORD error = file.listing->Fill(static_cast<BYTE*>(buffer), size);
    return error == ERROR_SUCCESS || Fail(error);
}

BOOL Tell(FileObject& file, FILE_INFO_BY_HANDLE_CLASS information_class, LPVOID buffer, DWORD size) {
    FileStatus status;
    if (!file.Status(status)) {
        return FailFromErrno();
    }
    switch (information_class) {
        case FileBasicInfo:
            return Give(BasicInfo(status), buffer, size);
        case FileStandardInfo:
            return Give(StandardInfo(file, status), buffer, size);
        case FileAttributeTagInfo:
            return Give(FILE_ATTRIBUTE_TAG_INFO{status.attributes, status.reparse_tag}, buffer, size);
        default:
            return Fail(ERROR_INVALID_PARAMETER);
    }
}

// The structure that the caller gave, for a handle with one of `rights`; else nothing with the last error set.
template <class Info>
std::optional<Info> Take(const FileObject& file, DWORD rights, LPCVOID buffer, DWORD size) {
    if (size < sizeof(Info) || !file.Allows(rights)) {
        Fail(size < sizeof(Info) ? ERROR_BAD_LENGTH : ERROR_ACCESS_DENIED);
        return std::nullopt;
    }
    Info info;
    memcpy(&info, buffer, sizeof info);
    return info;
}

BOOL SetBasic(const FileObject& file, const FILE_BASIC_INFO& info) {
    const FILETIME accessed = FileTimeOf(info.LastAccessTime.QuadPart);
    const FILETIME written = FileTimeOf(info.LastWriteTime.QuadPart);
    FileStatus status;
    if (!file.Status(status) || !ApplyTimes(file.Fd(), &accessed, &written)) {
        return FailFromErrno();
    }
    const bool read_only = (info.FileAttributes & FILE_ATTRIBUTE_READONLY) != 0;
    if (info.FileAttributes == 0 || file.Kind() == FileKind::link) {
        return !read_only || Fail(ERROR_NOT_SUPPORTED);
    }
    return ApplyReadOnly(file.Fd(), status.mode, read_only) || FailFromErrno();
}

BOOL SetEnd(const FileObject& file, const FILE_END_OF_FILE_INFO& info) {
    return ftruncate(file.Fd(), info.EndOfFile.QuadPart) == 0 || FailFromErrno();
}

BOOL Change(FileObject& file, FILE_INFO_BY_HANDLE_CLASS information_class, LPCVOID buffer, DWORD size) {
    switch (information_class) {
        case FileBasicInfo: {
            const auto info = Take<FILE_BASIC_INFO>(file, FILE_WRITE_ATTRIBUTES, buffer, size);
            return info && SetBasic(file, *info);
        }
        case FileEndOfFileInfo: {
            const auto info = Take<FILE_END_OF_FILE_INFO>(file, FILE_WRITE_DATA, buffer, size);
            return info && SetEnd(file, *info);
        }
        case FileDispositionInfo: {
            const auto info = Take<FILE_DISPOSITION_INFO>(file, DELETE, buffer, size);
            const DWORD error = info ? file.SetDeletePending(info->DeleteFile != 0) : ERROR_SUCCESS;
            return info && (error == ERROR_SUCCESS || Fail(error));
        }
        default:
            return Fail(ERROR_INVALID_PARAMETER);
    }
}

// The system's path of the open file; empty with the last error set.
std::u16string FinalPath(const FileObject& file) {
    FileStatus status;
    std::string native;
    if (file.Status(status)) {
        native = PathOfDescriptor(file.Fd());
    }
    if (native.empty() || native[0] != '/' || status.links == 0) {
        Fail(native.empty() ? ErrorFromErrno(errno) : ERROR_FILE_NOT_FOUND);
        return {};
    }
    return u"\\\\?\\" + ToSystemPath(native);
}

}  // namespace
}  // namespace kawin

BOOL GetFileInformationByHandle(HANDLE handle, LPBY_HANDLE_FILE_INFORMATION information) noexcept {
    const kawin::ObjectRef<kawin::FileObject> file = kawin::FindFile(handle);
    if (!file) {
        return FALSE;
    }
    kawin::FileStatus status;
    if (!file->Status(status)) {
        return kawin::FailFromErrno();
    }
    *information = {
        status.attributes,
        status.created,
        status.accessed,
        status.written,
        kawin::LowHalf(status.device ^ kawin::HighHalf(status.device)),
        kawin::HighHalf(status.size),
        kawin::LowHalf(status.size),
        status.links,
        kawin::HighHalf(status.index),
        kawin::LowHalf(status.index),
    };
    return TRUE;
}

BOOL GetFileInformationByHandleEx(HANDLE handle, FILE_INFO_BY_HANDLE_CLASS information_class, LPVOID buffer,
                                  DWORD size) noexcept {
    const kawin::ObjectRef<kawin::FileObject> file = kawin::FindFile(handle);
    if (!file) {
        return FALSE;
    }
    return kawin::NoThrow([&]() -> BOOL {
        const bool restart = information_class == FileFullDirectoryRestartInfo;
        return restart || information_class == FileFullDirectoryInfo ? kawin::List(*file, restart, buffer, size)
                                                                     : kawin::Tell(*file, information_class, buffer, size);
    });
}

BOOL SetFileInformationByHandle(HANDLE handle, FILE_INFO_BY_HANDLE_CLASS information_class, LPVOID buffer, DWORD size) noexcept {
    const kawin::ObjectRef<kawin::FileObject> file = kawin::FindFile(handle);
    return file && kawin::NoThrow([&]() -> BOOL { return kawin::Change(*file, information_class, buffer, size); });
}

DWORD GetFinalPathNameByHandleW(HANDLE handle, LPWSTR buffer, DWORD size, DWORD flags) noexcept {
    const kawin::ObjectRef<kawin::FileObject> file = kawin::FindFile(handle);
    if (!file) {
        return 0;
    }
    return kawin::NoThrow([&]() -> DWORD {
        if ((flags & ~FILE_NAME_OPENED) != 0) {
            return static_cast<DWORD>(kawin::Fail(ERROR_INVALID_PARAMETER));
        }
        const std::u16string path = kawin::FinalPath(*file);
        if (path.size() >= size) {
            return path.empty() ? 0 : static_cast<DWORD>(path.size() + 1);
        }
        buffer[path.copy(buffer, path.size())] = 0;
        return static_cast<DWORD>(path.size());
    });
}
