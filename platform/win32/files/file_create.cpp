#include <fcntl.h>

#include <optional>
#include <string_view>

#include "../base/error_map.h"
#include "../base/path_map.h"
#include "../text/no_throw.h"
#include "attributes.h"
#include "drive_table.h"
#include "file_io.h"
#include "file_opening.h"

namespace kawin {
namespace {

constexpr DWORD kAllShareModes = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// The letter X of "\\.\X:" or "\\?\X:", upper case; 0 for every other path.
WCHAR VolumeLetter(LPCWSTR path) {
    const std::u16string_view text = path == nullptr ? std::u16string_view() : std::u16string_view(path);
    constexpr std::size_t kLength = 6;
    if (text.size() != kLength || (text.substr(0, 4) != u"\\\\.\\" && text.substr(0, 4) != u"\\\\?\\") || text[5] != u':') {
        return 0;
    }
    const auto letter = static_cast<WCHAR>(text[4] & ~0x20);
    return letter >= u'A' && letter <= u'Z' ? letter : WCHAR{0};
}

HANDLE OpenVolume(WCHAR letter, DWORD access, DWORD disposition) {
    if (disposition != OPEN_EXISTING && disposition != OPEN_ALWAYS) {
        Fail(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    if (!DriveRoot(letter)) {
        Fail(ERROR_FILE_NOT_FOUND);
        return nullptr;
    }
    return OpenHandle(MakeObject<FileObject>(letter, SpecificAccess(access)));
}

bool IsValid(DWORD access, DWORD share, DWORD disposition) {
    const bool known = disposition >= CREATE_NEW && disposition <= TRUNCATE_EXISTING && (share & ~kAllShareModes) == 0;
    return known && (disposition != TRUNCATE_EXISTING || (access & (GENERIC_WRITE | GENERIC_ALL)) != 0);
}

OpenRequest RequestOf(DWORD access, DWORD share, DWORD disposition, DWORD flags) {
    OpenRequest request;
    request.access = SpecificAccess(access) | FILE_READ_ATTRIBUTES | ((flags & FILE_FLAG_DELETE_ON_CLOSE) != 0 ? DELETE : 0);
    request.share = share;
    request.disposition = disposition;
    request.follow_links = (flags & FILE_FLAG_OPEN_REPARSE_POINT) == 0;
    request.wanted = (flags & FILE_FLAG_BACKUP_SEMANTICS) != 0 ? WantedKind::any : WantedKind::no_folder;
    request.write_through = (flags & FILE_FLAG_WRITE_THROUGH) != 0;
    request.read_only = (flags & FILE_ATTRIBUTE_READONLY) != 0;
    return request;
}

void Advise(const FileObject& file, DWORD flags) {
    if ((flags & FILE_FLAG_SEQUENTIAL_SCAN) != 0) {
        posix_fadvise(file.Fd(), 0, 0, POSIX_FADV_SEQUENTIAL);
    } else if ((flags & FILE_FLAG_RANDOM_ACCESS) != 0) {
        posix_fadvise(file.Fd(), 0, 0, POSIX_FADV_RANDOM);
    }
}

// Null with the last error set on failure.
HANDLE Create(LPCWSTR path, const OpenRequest& request, DWORD flags) {
    const std::optional<std::string> native = ToNativePath(path);
    if (!native) {
        return nullptr;
    }
    OpenResult opened = OpenNative(AT_FDCWD, *native, request);
    if (opened.error == ERROR_SUCCESS && (flags & FILE_FLAG_DELETE_ON_CLOSE) != 0) {
        opened.error = opened.file->SetDeletePending(true);
    }
    if (opened.error != ERROR_SUCCESS) {
        Fail(opened.error);
        return nullptr;
    }
    Advise(*opened.file, flags);
    const HANDLE handle = OpenHandle(std::move(opened.file));
    const bool tells = request.disposition == CREATE_ALWAYS || request.disposition == OPEN_ALWAYS;
    if (handle != nullptr) {
        SetLastError(opened.existed && tells ? ERROR_ALREADY_EXISTS : ERROR_SUCCESS);
    }
    return handle;
}

}  // namespace
}  // namespace kawin

HANDLE CreateFileW(LPCWSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES /*security*/, DWORD disposition,
                   DWORD flags_and_attributes, HANDLE /*model*/) noexcept {
    const HANDLE handle = kawin::NoThrow([=]() -> HANDLE {
        if (!kawin::IsValid(access, share, disposition)) {
            kawin::Fail(ERROR_INVALID_PARAMETER);
            return nullptr;
        }
        if (const WCHAR letter = kawin::VolumeLetter(path)) {
            return kawin::OpenVolume(letter, access, disposition);
        }
        return kawin::Create(path, kawin::RequestOf(access, share, disposition, flags_and_attributes), flags_and_attributes);
    });
    return handle == nullptr ? INVALID_HANDLE_VALUE : handle;
}
