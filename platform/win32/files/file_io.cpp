#include "file_io.h"

#include <errno.h>
#include <sys/uio.h>

#include <algorithm>

#include "../base/error_map.h"
#include "file_object.h"

namespace kawin {
namespace {

constexpr DWORD kAnyWriting = FILE_WRITE_DATA | FILE_APPEND_DATA;
// Places that are no offset, as the documentation of OVERLAPPED has them.
constexpr off_t kAtEnd = -1;
constexpr off_t kAtPosition = -2;

off_t PlaceOf(const OVERLAPPED* place) {
    return place == nullptr ? kAtPosition : static_cast<off_t>((static_cast<ULONGLONG>(place->OffsetHigh) << 32) | place->Offset);
}

// The object behind `handle` if it has contents and was opened with one of `rights`; else empty with the last error set.
ObjectRef<FileObject> FindContents(HANDLE handle, DWORD rights) noexcept {
    ObjectRef<FileObject> file = FindFile(handle);
    if (!file) {
        return {};
    }
    if (file->Kind() == FileKind::file || file->Kind() == FileKind::device) {
        if (file->Allows(rights)) {
            return file;
        }
        SetLastError(ERROR_ACCESS_DENIED);
        return {};
    }
    SetLastError(ERROR_INVALID_FUNCTION);
    return {};
}

// As many bytes as one call of the kernel gives; < 0 with errno set.
ssize_t ReadOnce(int fd, char* buffer, std::size_t size, off_t place) {
    ssize_t got = 0;
    do {
        got = place < 0 ? read(fd, buffer, size) : pread(fd, buffer, size, place);
    } while (got < 0 && errno == EINTR);
    return got;
}

// Until all is read, nothing is left, or a pipe or device has given what it has. False with errno set when nothing was read.
bool ReadAll(const FileObject& file, char* buffer, std::size_t size, off_t place, DWORD& done) {
    while (done < size) {
        const ssize_t got = ReadOnce(file.Fd(), buffer + done, size - done, place < 0 ? place : place + done);
        if (got <= 0) {
            return got == 0 || done > 0;
        }
        done += static_cast<DWORD>(got);
        if (file.Kind() != FileKind::file) {
            return true;
        }
    }
    return true;
}

ssize_t AppendOnce(FileObject& file, const char* buffer, std::size_t size) {
    if (!file.append_refused.load(std::memory_order_relaxed)) {
        const iovec part{const_cast<char*>(buffer), size};
        const ssize_t put = pwritev2(file.Fd(), &part, 1, -1, RWF_APPEND);
        if (put >= 0 || (errno != EOPNOTSUPP && errno != ENOSYS && errno != EINVAL)) {
            return put;
        }
        file.append_refused.store(true, std::memory_order_relaxed);
    }
    const bool at_end = lseek(file.Fd(), 0, SEEK_END) >= 0 || errno == ESPIPE;
    return at_end ? write(file.Fd(), buffer, size) : -1;
}

ssize_t WriteOnce(FileObject& file, const char* buffer, std::size_t size, off_t place) {
    ssize_t put = 0;
    do {
        put = place == kAtEnd        ? AppendOnce(file, buffer, size)
              : place == kAtPosition ? write(file.Fd(), buffer, size)
                                     : pwrite(file.Fd(), buffer, size, place);
    } while (put < 0 && errno == EINTR);
    return put;
}

// False with errno set before all is written; `done` counts what was.
bool WriteAll(FileObject& file, const char* buffer, std::size_t size, off_t place, DWORD& done) {
    while (done < size) {
        const ssize_t put = WriteOnce(file, buffer + done, size - done, place < 0 ? place : place + done);
        if (put <= 0) {
            errno = put == 0 ? ENOSPC : errno;
            return false;
        }
        done += static_cast<DWORD>(put);
    }
    return true;
}

// A transfer at a place of its own leaves the position behind it all the same.
void Follow(const FileObject& file, off_t place, DWORD done) {
    if (place >= 0) {
        lseek(file.Fd(), place + static_cast<off_t>(done), SEEK_SET);
    }
}

// The new position, or -1 with the last error set.
LONGLONG Seek(HANDLE handle, LONGLONG distance, DWORD method) noexcept {
    const ObjectRef<FileObject> file = FindContents(handle, MAXDWORD);
    if (!file) {
        return -1;
    }
    if (method > FILE_END) {
        Fail(ERROR_INVALID_PARAMETER);
        return -1;
    }
    constexpr int kWhence[] = {SEEK_SET, SEEK_CUR, SEEK_END};
    const off_t position = lseek(file->Fd(), distance, kWhence[method]);
    if (position < 0) {  // the only invalid argument left is a position before the begin
        Fail(errno == EINVAL ? ERROR_NEGATIVE_SEEK : ErrorFromErrno(errno));
    }
    return position;
}

// The same for a caller who can be told 32 bits only: a position beyond them is an error and not taken.
LONGLONG SeekLow(HANDLE handle, LONG distance, DWORD method) noexcept {
    if (method == FILE_BEGIN) {
        return Seek(handle, distance, method);
    }
    const LONGLONG before = Seek(handle, 0, FILE_CURRENT);
    const LONGLONG position = before < 0 ? before : Seek(handle, distance, method);
    if (position <= static_cast<LONGLONG>(MAXDWORD)) {
        return position;
    }
    Seek(handle, before, FILE_BEGIN);
    Fail(ERROR_INVALID_PARAMETER);
    return -1;
}

// The lower half of a size or position; where it looks like failure the last error says that it is none.
DWORD LowHalf(LONGLONG value) noexcept {
    const auto low = static_cast<DWORD>(value & MAXDWORD);
    if (low == MAXDWORD) {
        SetLastError(NO_ERROR);
    }
    return low;
}

}  // namespace

}  // namespace kawin

BOOL ReadFile(HANDLE handle, LPVOID buffer, DWORD size, LPDWORD read, LPOVERLAPPED place) noexcept {
    DWORD done = 0;
    DWORD& count = read == nullptr ? done : *read;
    count = 0;
    const kawin::ObjectRef<kawin::FileObject> file = kawin::FindContents(handle, FILE_READ_DATA);
    if (!file) {
        return FALSE;
    }
    const off_t from = kawin::PlaceOf(place);
    if (from < kawin::kAtPosition || from == kawin::kAtEnd) {
        return kawin::Fail(ERROR_INVALID_PARAMETER);
    }
    if (!kawin::ReadAll(*file, static_cast<char*>(buffer), size, from, count)) {
        return kawin::FailFromErrno();
    }
    kawin::Follow(*file, from, count);
    const bool at_end = place != nullptr && count == 0 && size > 0;
    return !at_end || kawin::Fail(ERROR_HANDLE_EOF);
}

BOOL WriteFile(HANDLE handle, LPCVOID buffer, DWORD size, LPDWORD written, LPOVERLAPPED place) noexcept {
    DWORD done = 0;
    DWORD& count = written == nullptr ? done : *written;
    count = 0;
    const kawin::ObjectRef<kawin::FileObject> file = kawin::FindContents(handle, kawin::kAnyWriting);
    if (!file) {
        return FALSE;
    }
    const off_t to = kawin::PlaceOf(place);
    if (to < kawin::kAtPosition) {
        return kawin::Fail(ERROR_INVALID_PARAMETER);
    }
    const bool all = kawin::WriteAll(*file, static_cast<const char*>(buffer), size, to, count);
    const int error = errno;
    kawin::Follow(*file, to, count);
    return all || kawin::FailFromErrno(error);
}

DWORD SetFilePointer(HANDLE handle, LONG distance, PLONG high, DWORD method) noexcept {
    LONGLONG position = 0;
    if (high == nullptr) {
        position = kawin::SeekLow(handle, distance, method);
    } else {
        const auto whole = (static_cast<ULONGLONG>(static_cast<DWORD>(*high)) << 32) | static_cast<DWORD>(distance);
        position = kawin::Seek(handle, static_cast<LONGLONG>(whole), method);
    }
    if (position < 0) {
        return INVALID_SET_FILE_POINTER;
    }
    if (high != nullptr) {
        *high = static_cast<LONG>(position >> 32);
    }
    return kawin::LowHalf(position);
}

BOOL SetFilePointerEx(HANDLE handle, LARGE_INTEGER distance, PLARGE_INTEGER position, DWORD method) noexcept {
    const LONGLONG reached = kawin::Seek(handle, distance.QuadPart, method);
    if (reached >= 0 && position != nullptr) {
        position->QuadPart = reached;
    }
    return reached >= 0;
}

BOOL SetEndOfFile(HANDLE handle) noexcept {
    const kawin::ObjectRef<kawin::FileObject> file = kawin::FindContents(handle, FILE_WRITE_DATA);
    if (!file) {
        return FALSE;
    }
    const off_t position = lseek(file->Fd(), 0, SEEK_CUR);
    return (position >= 0 && ftruncate(file->Fd(), position) == 0) || kawin::FailFromErrno();
}

DWORD GetFileSize(HANDLE handle, LPDWORD high) noexcept {
    LARGE_INTEGER size;
    if (!GetFileSizeEx(handle, &size)) {
        return INVALID_FILE_SIZE;
    }
    if (high != nullptr) {
        *high = static_cast<DWORD>(size.QuadPart >> 32);
    }
    return kawin::LowHalf(size.QuadPart);
}

BOOL GetFileSizeEx(HANDLE handle, PLARGE_INTEGER size) noexcept {
    const kawin::ObjectRef<kawin::FileObject> file = kawin::FindFile(handle);
    struct stat status;
    if (!file) {
        return FALSE;
    }
    if (fstat(file->Fd(), &status) != 0) {
        return kawin::FailFromErrno();
    }
    size->QuadPart = file->Kind() == kawin::FileKind::file ? status.st_size : 0;
    return TRUE;
}

BOOL FlushFileBuffers(HANDLE handle) noexcept {
    const kawin::ObjectRef<kawin::FileObject> file = kawin::FindContents(handle, kawin::kAnyWriting);
    return file && (fsync(file->Fd()) == 0 || kawin::FailFromErrno());
}

DWORD GetFileType(HANDLE handle) noexcept {
    const kawin::ObjectRef<kawin::FileObject> file = kawin::FindFile(handle);
    if (!file) {
        return FILE_TYPE_UNKNOWN;
    }
    struct stat status;
    if (file->Kind() != kawin::FileKind::device || fstat(file->Fd(), &status) != 0 || S_ISBLK(status.st_mode)) {
        return FILE_TYPE_DISK;
    }
    return S_ISCHR(status.st_mode) ? FILE_TYPE_CHAR : FILE_TYPE_PIPE;
}

BOOL GetFileTime(HANDLE handle, LPFILETIME created, LPFILETIME accessed, LPFILETIME written) noexcept {
    const kawin::ObjectRef<kawin::FileObject> file = kawin::FindFile(handle);
    if (!file) {
        return FALSE;
    }
    kawin::FileStatus status;
    if (!file->Status(status)) {
        return kawin::FailFromErrno();
    }
    if (created != nullptr) {
        *created = status.created;
    }
    if (accessed != nullptr) {
        *accessed = status.accessed;
    }
    if (written != nullptr) {
        *written = status.written;
    }
    return TRUE;
}

BOOL SetFileTime(HANDLE handle, const FILETIME* /*created*/, const FILETIME* accessed, const FILETIME* written) noexcept {
    const kawin::ObjectRef<kawin::FileObject> file = kawin::FindFile(handle);
    if (!file) {
        return FALSE;
    }
    if (!file->Allows(FILE_WRITE_ATTRIBUTES)) {
        return kawin::Fail(ERROR_ACCESS_DENIED);
    }
    return kawin::ApplyTimes(file->Fd(), accessed, written) || kawin::FailFromErrno();
}
