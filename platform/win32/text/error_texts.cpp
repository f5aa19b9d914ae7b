#include "error_texts.h"

#include <algorithm>
#include <iterator>

#include "../base/error.h"
#include "messages.h"

namespace kawin {
namespace {

struct Row {
    DWORD error;
    std::u16string_view text;
};

constexpr Row kRows[] = {
    // in ascending order
    {ERROR_SUCCESS, u"The operation completed successfully."},
    {ERROR_INVALID_FUNCTION, u"Incorrect function."},
    {ERROR_FILE_NOT_FOUND, u"The system cannot find the file specified."},
    {ERROR_PATH_NOT_FOUND, u"The system cannot find the path specified."},
    {ERROR_TOO_MANY_OPEN_FILES, u"The system cannot open the file."},
    {ERROR_ACCESS_DENIED, u"Access is denied."},
    {ERROR_INVALID_HANDLE, u"The handle is invalid."},
    {ERROR_NOT_ENOUGH_MEMORY, u"Not enough memory resources are available to process this command."},
    {ERROR_BAD_FORMAT, u"An attempt was made to load a program with an incorrect format."},
    {ERROR_INVALID_DATA, u"The data is invalid."},
    {ERROR_OUTOFMEMORY, u"Not enough memory resources are available to complete this operation."},
    {ERROR_INVALID_DRIVE, u"The system cannot find the drive specified."},
    {ERROR_CURRENT_DIRECTORY, u"The directory cannot be removed."},
    {ERROR_NOT_SAME_DEVICE, u"The system cannot move the file to a different disk drive."},
    {ERROR_NO_MORE_FILES, u"There are no more files."},
    {ERROR_WRITE_PROTECT, u"The media is write protected."},
    {ERROR_NOT_READY, u"The device is not ready."},
    {ERROR_SEEK, u"The drive cannot locate a specific area or track on the disk."},
    {ERROR_WRITE_FAULT, u"The system cannot write to the specified device."},
    {ERROR_READ_FAULT, u"The system cannot read from the specified device."},
    {ERROR_GEN_FAILURE, u"A device attached to the system is not functioning."},
    {ERROR_SHARING_VIOLATION, u"The process cannot access the file because it is being used by another process."},
    {ERROR_LOCK_VIOLATION, u"The process cannot access the file because another process has locked a portion of the file."},
    {ERROR_HANDLE_EOF, u"Reached the end of the file."},
    {ERROR_HANDLE_DISK_FULL, u"The disk is full."},
    {ERROR_NOT_SUPPORTED, u"The request is not supported."},
    {ERROR_BAD_NETPATH, u"The network path was not found."},
    {ERROR_BAD_NET_NAME, u"The network name cannot be found."},
    {ERROR_FILE_EXISTS, u"The file exists."},
    {ERROR_INVALID_PARAMETER, u"The parameter is incorrect."},
    {ERROR_BROKEN_PIPE, u"The pipe has been ended."},
    {ERROR_DISK_FULL, u"There is not enough space on the disk."},
    {ERROR_CALL_NOT_IMPLEMENTED, u"This function is not supported on this system."},
    {ERROR_INSUFFICIENT_BUFFER, u"The data area passed to a system call is too small."},
    {ERROR_INVALID_NAME, u"The filename, directory name, or volume label syntax is incorrect."},
    {ERROR_MOD_NOT_FOUND, u"The specified module could not be found."},
    {ERROR_PROC_NOT_FOUND, u"The specified procedure could not be found."},
    {ERROR_NEGATIVE_SEEK, u"An attempt was made to move the file pointer before the beginning of the file."},
    {ERROR_DIR_NOT_EMPTY, u"The directory is not empty."},
    {ERROR_BAD_PATHNAME, u"The specified path is invalid."},
    {ERROR_BUSY, u"The requested resource is in use."},
    {ERROR_ALREADY_EXISTS, u"Cannot create a file when that file already exists."},
    {ERROR_BAD_EXE_FORMAT, u"%1 is not a valid Win32 application."},
    {ERROR_ENVVAR_NOT_FOUND, u"The system could not find the environment option that was entered."},
    {ERROR_FILENAME_EXCED_RANGE, u"The filename or extension is too long."},
    {ERROR_FILE_TOO_LARGE, u"The file size exceeds the limit allowed and cannot be saved."},
    {ERROR_MORE_DATA, u"More data is available."},
    {WAIT_TIMEOUT, u"The wait operation timed out."},
    {ERROR_NO_MORE_ITEMS, u"No more data is available."},
    {ERROR_DIRECTORY, u"The directory name is invalid."},
    {ERROR_NOT_OWNER, u"Attempt to release mutex not owned by caller."},
    {ERROR_TOO_MANY_POSTS, u"Too many posts were made to a semaphore."},
    {ERROR_MR_MID_NOT_FOUND, u"The system cannot find the text for a message number in the message file."},
    {ERROR_INVALID_ADDRESS, u"Attempt to access invalid address."},
    {ERROR_STOPPED_ON_SYMLINK, u"The operation stopped after reaching a symbolic link."},
    {ERROR_OPERATION_ABORTED, u"The operation was ended because a thread exits or a program asked for it."},
    {ERROR_NOACCESS, u"Invalid access to memory location."},
    {ERROR_STACK_OVERFLOW, u"Recursion too deep; the stack overflowed."},
    {ERROR_INVALID_FLAGS, u"Invalid flags."},
    {ERROR_BADDB, u"The configuration registry database is corrupt."},
    {ERROR_BADKEY, u"The configuration registry key is invalid."},
    {ERROR_CANTOPEN, u"The configuration registry key could not be opened."},
    {ERROR_CANTREAD, u"The configuration registry key could not be read."},
    {ERROR_CANTWRITE, u"The configuration registry key could not be written."},
    {ERROR_KEY_DELETED, u"Illegal operation attempted on a registry key that has been marked for deletion."},
    {ERROR_NO_UNICODE_TRANSLATION, u"A Unicode character has no counterpart in the code page."},
    {ERROR_IO_DEVICE, u"The request could not be performed because of an I/O device error."},
    {ERROR_TOO_MANY_LINKS, u"The file has too many links."},
    {ERROR_NOT_FOUND, u"Element not found."},
    {ERROR_CANCELLED, u"The operation was canceled by the user."},
    {ERROR_DISK_QUOTA_EXCEEDED, u"The disk quota does not allow the operation."},
    {ERROR_FILE_CORRUPT, u"The file or directory is corrupted and unreadable."},
    {ERROR_DISK_CORRUPT, u"The disk structure is corrupted and unreadable."},
    {ERROR_NO_SYSTEM_RESOURCES, u"Insufficient system resources exist to complete the requested service."},
    {ERROR_RESOURCE_DATA_NOT_FOUND, u"The specified image file did not contain a resource section."},
    {ERROR_RESOURCE_TYPE_NOT_FOUND, u"The specified resource type cannot be found in the image file."},
    {ERROR_RESOURCE_NAME_NOT_FOUND, u"The specified resource name cannot be found in the image file."},
    {ERROR_RESOURCE_LANG_NOT_FOUND, u"The specified resource language ID cannot be found in the image file."},
    {ERROR_CANT_ACCESS_FILE, u"The file cannot be accessed by the system."},
    {ERROR_CANT_RESOLVE_FILENAME, u"The name of the file cannot be resolved by the system."},
};

constexpr bool IsBefore(const Row& a, const Row& b) {
    return a.error < b.error;
}
static_assert(std::is_sorted(std::begin(kRows), std::end(kRows), IsBefore));

}  // namespace

std::u16string_view ErrorText(DWORD error) noexcept {
    const auto row = std::lower_bound(std::begin(kRows), std::end(kRows), Row{error, {}}, IsBefore);
    return row != std::end(kRows) && row->error == error ? row->text : std::u16string_view();
}

}  // namespace kawin
