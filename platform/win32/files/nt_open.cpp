#include "nt_open.h"

#include <fcntl.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>

#include "../base/utf.h"
#include "../sync/waits.h"
#include "../text/no_throw.h"
#include "file_opening.h"

namespace kawin {
namespace {

constexpr NTSTATUS Status(DWORD value) {
    return static_cast<NTSTATUS>(value);
}

constexpr NTSTATUS kSuccess = Status(0);
constexpr NTSTATUS kUnsuccessful = Status(0xC0000001);
constexpr NTSTATUS kInvalidHandle = Status(0xC0000008);
constexpr NTSTATUS kInvalidParameter = Status(0xC000000D);
constexpr NTSTATUS kNoMemory = Status(0xC0000017);
constexpr NTSTATUS kAccessDenied = Status(0xC0000022);
constexpr NTSTATUS kTypeMismatch = Status(0xC0000024);
constexpr NTSTATUS kNameInvalid = Status(0xC0000033);
constexpr NTSTATUS kNameNotFound = Status(0xC0000034);
constexpr NTSTATUS kPathNotFound = Status(0xC000003A);
constexpr NTSTATUS kPathSyntaxBad = Status(0xC000003B);
constexpr NTSTATUS kSharingViolation = Status(0xC0000043);
constexpr NTSTATUS kInsufficientResources = Status(0xC000009A);
constexpr NTSTATUS kWriteProtected = Status(0xC00000A2);
constexpr NTSTATUS kFileIsADirectory = Status(0xC00000BA);
constexpr NTSTATUS kNotADirectory = Status(0xC0000103);
constexpr NTSTATUS kNameTooLong = Status(0xC0000106);
constexpr NTSTATUS kTooManyOpenedFiles = Status(0xC000011F);
constexpr NTSTATUS kIoDeviceError = Status(0xC0000185);

struct Row {
    NTSTATUS status;
    DWORD error;
};

// Where several rows have one error number, the first is the status for it.
constexpr Row kRows[] = {
    {kSuccess, ERROR_SUCCESS},
    {kNameNotFound, ERROR_FILE_NOT_FOUND},
    {kPathNotFound, ERROR_PATH_NOT_FOUND},
    {kTooManyOpenedFiles, ERROR_TOO_MANY_OPEN_FILES},
    {kAccessDenied, ERROR_ACCESS_DENIED},
    {kFileIsADirectory, ERROR_ACCESS_DENIED},
    {kInvalidHandle, ERROR_INVALID_HANDLE},
    {kTypeMismatch, ERROR_INVALID_HANDLE},
    {kNoMemory, ERROR_NOT_ENOUGH_MEMORY},
    {kWriteProtected, ERROR_WRITE_PROTECT},
    {kUnsuccessful, ERROR_GEN_FAILURE},
    {kSharingViolation, ERROR_SHARING_VIOLATION},
    {kInvalidParameter, ERROR_INVALID_PARAMETER},
    {kNameInvalid, ERROR_INVALID_NAME},
    {kPathSyntaxBad, ERROR_BAD_PATHNAME},
    {kNameTooLong, ERROR_FILENAME_EXCED_RANGE},
    {kNotADirectory, ERROR_DIRECTORY},
    {kIoDeviceError, ERROR_IO_DEVICE},
    {kInsufficientResources, ERROR_NO_SYSTEM_RESOURCES},
};
constexpr DWORD kNoMessage = 317;  // ERROR_MR_MID_NOT_FOUND

NTSTATUS StatusFromError(DWORD error) {
    const auto row = std::find_if(std::begin(kRows), std::end(kRows), [error](const Row& r) { return r.error == error; });
    return row == std::end(kRows) ? kUnsuccessful : row->status;
}

// The file name that the text stands for, or nothing when it is not the name of one entry.
std::optional<std::string> EntryName(const UNICODE_STRING& text) {
    std::string name = ToFileName(std::u16string_view(text.Buffer, text.Length / sizeof(WCHAR)));
    const bool valid =
        !name.empty() && name != "." && name != ".." && name.find_first_of(std::string_view("/\0", 2)) == std::string::npos;
    return valid ? std::optional<std::string>(std::move(name)) : std::nullopt;
}

OpenRequest RequestOf(ACCESS_MASK access, ULONG share, ULONG options) {
    OpenRequest request;
    request.access = SpecificAccess(access);
    request.share = share;
    request.follow_links = (options & FILE_OPEN_REPARSE_POINT) == 0;
    request.wanted = (options & FILE_DIRECTORY_FILE) != 0       ? WantedKind::folder
                     : (options & FILE_NON_DIRECTORY_FILE) != 0 ? WantedKind::no_folder
                                                                : WantedKind::any;
    return request;
}

bool AreValid(ACCESS_MASK access, ULONG options) {
    constexpr ULONG kBothKinds = FILE_DIRECTORY_FILE | FILE_NON_DIRECTORY_FILE;
    constexpr ULONG kKnown = kBothKinds | FILE_SYNCHRONOUS_IO_NONALERT | FILE_OPEN_FOR_BACKUP_INTENT | FILE_OPEN_REPARSE_POINT;
    constexpr ACCESS_MASK kImplySynchronize = SYNCHRONIZE | GENERIC_READ | GENERIC_WRITE | GENERIC_EXECUTE | GENERIC_ALL;
    return (options & ~kKnown) == 0 && (options & kBothKinds) != kBothKinds && (options & FILE_SYNCHRONOUS_IO_NONALERT) != 0 &&
           (access & kImplySynchronize) != 0;
}

// A later removal looks the name up in this folder, wherever that has been moved, and in no other.
void RememberPlace(FileObject& file, int folder, const std::string& name) {
    UniqueFd own(fcntl(folder, F_DUPFD_CLOEXEC, 0));
    if (own) {
        file.RememberPlace({std::move(own), name});
    }
}

NTSTATUS OpenIn(const FileObject& folder, const std::string& name, const OpenRequest& request, HANDLE& handle) {
    OpenResult opened = OpenNative(folder.Fd(), name, request);
    if (opened.error != ERROR_SUCCESS) {
        return opened.refused_folder ? kFileIsADirectory : StatusFromError(opened.error);
    }
    if (!request.follow_links && (request.access & DELETE) != 0) {
        RememberPlace(*opened.file, folder.Fd(), name);
    }
    handle = OpenHandle(std::move(opened.file));
    return handle == nullptr ? kTooManyOpenedFiles : kSuccess;
}

NTSTATUS OpenRelative(const OBJECT_ATTRIBUTES& attributes, const OpenRequest& request, HANDLE& handle) {
    const ObjectRef<FileObject> folder = FindFile(attributes.RootDirectory);
    if (!folder) {
        return attributes.RootDirectory == nullptr ? kPathSyntaxBad : kInvalidHandle;
    }
    if (folder->Kind() != FileKind::folder) {
        return kTypeMismatch;
    }
    const std::optional<std::string> name = EntryName(*attributes.ObjectName);
    return name ? OpenIn(*folder, *name, request, handle) : kNameInvalid;
}

// Status calls do not touch the last error, whatever the functions beneath them do.
class LastErrorKeeper {
public:
    LastErrorKeeper() noexcept = default;
    LastErrorKeeper(const LastErrorKeeper&) = delete;
    LastErrorKeeper& operator=(const LastErrorKeeper&) = delete;
    ~LastErrorKeeper() { SetLastError(error_); }

private:
    const DWORD error_ = GetLastError();
};

}  // namespace
}  // namespace kawin

void RtlInitUnicodeString(PUNICODE_STRING target, PCWSTR source) noexcept {
    constexpr std::size_t kLongest = 0xFFFC;  // bytes, so that the terminator can be counted too
    const std::size_t units = source == nullptr ? 0 : std::char_traits<WCHAR>::length(source);
    const auto bytes = static_cast<USHORT>(std::min(units * sizeof(WCHAR), kLongest));
    *target = {bytes, static_cast<USHORT>(source == nullptr ? 0 : bytes + sizeof(WCHAR)), const_cast<PWSTR>(source)};
}

NTSTATUS NtOpenFile(PHANDLE file, ACCESS_MASK access, POBJECT_ATTRIBUTES attributes, PIO_STATUS_BLOCK status, ULONG share,
                    ULONG options) noexcept {
    return NtCreateFile(file, access, attributes, status, nullptr, 0, share, FILE_OPEN, options, nullptr, 0);
}

NTSTATUS NtCreateFile(PHANDLE file, ACCESS_MASK access, POBJECT_ATTRIBUTES attributes, PIO_STATUS_BLOCK status,
                      PLARGE_INTEGER allocation, ULONG /*file_attributes*/, ULONG share, ULONG disposition, ULONG options,
                      PVOID extended_attributes, ULONG /*extended_length*/) noexcept {
    const kawin::LastErrorKeeper keeper;
    if (disposition != FILE_OPEN || allocation != nullptr || extended_attributes != nullptr || attributes == nullptr ||
        attributes->ObjectName == nullptr || !kawin::AreValid(access, options)) {
        return kawin::kInvalidParameter;
    }
    HANDLE handle = nullptr;
    const std::optional<NTSTATUS> result = kawin::NoThrow([&]() -> std::optional<NTSTATUS> {
        return kawin::OpenRelative(*attributes, kawin::RequestOf(access, share, options), handle);
    });
    if (!result || !NT_SUCCESS(*result)) {
        return result.value_or(kawin::kNoMemory);
    }
    *file = handle;
    status->Status = *result;
    status->Information = FILE_OPENED;
    return *result;
}

ULONG RtlNtStatusToDosError(NTSTATUS status) noexcept {
    const auto row = std::find_if(std::begin(kawin::kRows), std::end(kawin::kRows),
                                  [status](const kawin::Row& r) { return r.status == status; });
    return row == std::end(kawin::kRows) ? kawin::kNoMessage : row->error;
}
