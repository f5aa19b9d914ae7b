#pragma once

// The object behind a file's handle. Internal to the layer.

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "../base/handle_table.h"
#include "descriptor.h"
#include "file_io.h"
#include "file_status.h"
#include "folder_reader.h"

namespace kawin {

enum class FileKind {
    file,  // a regular one
    folder,
    link,    // a symbolic link itself
    device,  // character or block device, pipe, socket
    volume   // a drive as a whole: has no descriptor, only a letter
};

// The entry of a folder that leads to a file.
struct FilePlace {
    UniqueFd folder;
    std::string name;
};

class FileObject final : public KernelObject {
public:
    FileObject(UniqueFd fd, FileKind kind, DWORD access) noexcept : fd_(std::move(fd)), kind_(kind), access_(access) {}
    explicit FileObject(WCHAR volume_letter, DWORD access) noexcept
        : kind_(FileKind::volume), access_(access), letter_(volume_letter) {}
    ~FileObject() override;  // removes the file when that was asked for

    // The descriptor belongs to the object; dup() it to keep the file, and its share mode, open for longer. -1 for a volume. It
    // may be O_PATH when the access asked for needs no more.
    int Fd() const noexcept { return fd_.get(); }
    FileKind Kind() const noexcept { return kind_; }
    WCHAR Letter() const noexcept { return letter_; }  // of a volume, upper case; else 0

    // Whether the handle was opened with one of these rights (FILE_READ_DATA and so on; never generic ones).
    bool Allows(DWORD rights) const noexcept { return (access_ & rights) != 0; }

    // Before the object has its handle.
    void LeadsToFolder() noexcept { leads_to_folder_ = true; }  // for a link
    void RememberPlace(FilePlace place) noexcept { place_ = std::move(place); }

    // What StatAt gives, with FILE_ATTRIBUTE_DIRECTORY for a link to a folder. False with errno set.
    bool Status(FileStatus& status) const noexcept;

    // Marks the file to be removed when the object goes, or takes that back. The error number, 0 for success.
    DWORD SetDeletePending(bool pending);
    bool IsDeletePending() const noexcept { return delete_pending_; }

    // Removes the file's name now, if it still means this file. The error number, 0 for success or when it is gone.
    DWORD Remove();

    // Appends where pwritev2 cannot; set once the kernel has refused.
    std::atomic<bool> append_refused{false};

    std::mutex listing_mutex;
    std::optional<FolderReader> listing;  // guarded by listing_mutex

private:
    const FilePlace* Place();

    UniqueFd fd_;
    const FileKind kind_;
    const DWORD access_;
    const WCHAR letter_ = 0;
    bool leads_to_folder_ = false;
    std::atomic<bool> delete_pending_{false};
    std::mutex place_mutex_;
    std::optional<FilePlace> place_;  // guarded by place_mutex_; found out when first needed unless the opener told it
};

// The file behind a handle; empty with ERROR_INVALID_HANDLE for anything else. (As FindObject, without the cost of a
// dynamic_cast.)
ObjectRef<FileObject> FindFile(HANDLE handle) noexcept;

}  // namespace kawin
