#include "folder_reader.h"

#include <dirent.h>
#include <errno.h>
#include <fcntl.h>
#include <string.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <string>

#include "../base/error_map.h"
#include "../base/utf.h"
#include "file_by_handle.h"
#include "file_status.h"

namespace kawin {
namespace {

// What getdents64 writes, without the name that follows.
struct EntryHead {
    std::uint64_t index;
    std::int64_t next;
    std::uint16_t length;
    std::uint8_t type;
};
constexpr std::size_t kNameOffset = 19;

constexpr std::size_t kRecordHead = offsetof(FILE_FULL_DIR_INFO, FileName);
constexpr std::size_t kRecordAlignment = 8;

LARGE_INTEGER Large(LONGLONG value) {
    LARGE_INTEGER large;
    large.QuadPart = value;
    return large;
}

void Put(const FileStatus& status, std::u16string_view name, BYTE* target) {
    FILE_FULL_DIR_INFO record{};
    record.CreationTime = Large(FileTimeValue(status.created));
    record.LastAccessTime = Large(FileTimeValue(status.accessed));
    record.LastWriteTime = Large(FileTimeValue(status.written));
    record.ChangeTime = Large(FileTimeValue(status.changed));
    record.EndOfFile = Large(static_cast<LONGLONG>(status.size));
    record.AllocationSize = Large(static_cast<LONGLONG>(status.allocated));
    record.FileAttributes = status.attributes;
    record.FileNameLength = static_cast<ULONG>(name.size() * sizeof(WCHAR));
    record.EaSize = status.reparse_tag;
    memcpy(target, &record, kRecordHead);
    memcpy(target + kRecordHead, name.data(), name.size() * sizeof(WCHAR));
}

// False when the entry is gone. One that may be seen but not asked about has its kind alone.
bool Describe(int folder, const char* name, std::uint8_t type, FileStatus& status) {
    if (StatAt(folder, name, status)) {
        return true;
    }
    const bool gone = errno == ENOENT;
    status = FileStatus{};
    status.attributes = type == DT_DIR   ? FILE_ATTRIBUTE_DIRECTORY
                        : type == DT_LNK ? FILE_ATTRIBUTE_REPARSE_POINT
                                         : FILE_ATTRIBUTE_NORMAL;
    status.reparse_tag = type == DT_LNK ? IO_REPARSE_TAG_SYMLINK : 0;
    return !gone;
}

}  // namespace

void FolderReader::Restart() noexcept {
    restart_ = true;
}

const char* FolderReader::Peek() {
    if (restart_) {
        if (lseek(folder_, 0, SEEK_SET) != 0) {
            return nullptr;
        }
        restart_ = false;
        used_ = filled_ = 0;
    }
    if (used_ == filled_) {
        if (block_ == nullptr) {
            block_ = std::make_unique<std::byte[]>(kBlock);
        }
        const long got = syscall(SYS_getdents64, folder_, block_.get(), kBlock);
        used_ = 0;
        filled_ = got < 0 ? 0 : static_cast<std::size_t>(got);
        if (got <= 0) {
            errno = got == 0 ? 0 : errno;
            return nullptr;
        }
    }
    return reinterpret_cast<const char*>(block_.get() + used_ + kNameOffset);
}

void FolderReader::Pass() noexcept {
    EntryHead head;
    memcpy(&head, block_.get() + used_, sizeof head);
    used_ += head.length;
}

DWORD FolderReader::Fill(BYTE* buffer, std::size_t size) {
    std::size_t filled = 0;
    BYTE* previous = nullptr;
    const char* entry = nullptr;
    for (; (entry = Peek()) != nullptr; Pass()) {
        const std::u16string name = FromFileName(entry);
        const std::size_t length = kRecordHead + name.size() * sizeof(WCHAR);
        if (filled > size || length > size - filled) {
            return previous == nullptr ? ERROR_MORE_DATA : ERROR_SUCCESS;
        }
        FileStatus status;
        if (!Describe(folder_, entry, static_cast<std::uint8_t>(entry[-1]), status)) {
            continue;
        }
        Put(status, name, buffer + filled);
        if (previous != nullptr) {
            const auto step = static_cast<ULONG>(buffer + filled - previous);
            memcpy(previous, &step, sizeof step);
        }
        previous = buffer + filled;
        filled += (length + kRecordAlignment - 1) / kRecordAlignment * kRecordAlignment;
    }
    if (previous != nullptr) {
        return ERROR_SUCCESS;  // a failure shows again in the next call
    }
    return errno == 0 ? ERROR_NO_MORE_FILES : ErrorFromErrno(errno);
}

}  // namespace kawin
