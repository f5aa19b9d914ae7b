#include "mapping.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <memory>
#include <mutex>
#include <unordered_map>

#include "../base/error_map.h"
#include "../base/handle_table.h"
#include "../text/no_throw.h"
#include "shared_object.h"

namespace kawin {
namespace {

constexpr ULONGLONG kGranularity = 0x10000;  // of view offsets

constexpr ULONGLONG Join(DWORD high, DWORD low) {
    return static_cast<ULONGLONG>(high) << 32 | low;
}

// The memory itself, when it has no name.
class AnonymousMemory {
public:
    explicit AnonymousMemory(int file) noexcept : file_(file) {}
    AnonymousMemory(const AnonymousMemory&) = delete;
    AnonymousMemory& operator=(const AnonymousMemory&) = delete;
    ~AnonymousMemory() { close(file_); }
    int File() const noexcept { return file_; }

private:
    int file_;
};

class MappingObject final : public KernelObject {
public:
    MappingObject(BlockRef block, DWORD access) : block_(std::move(block)), size_(block_->BodySize()), access_(access) {}
    MappingObject(std::unique_ptr<AnonymousMemory> memory, ULONGLONG size, DWORD access)
        : memory_(std::move(memory)), size_(size), access_(access) {}

    bool Allows(DWORD access) const noexcept { return (access & ~access_) == 0; }
    ULONGLONG Size() const noexcept { return size_; }

    // MAP_FAILED with errno set.
    void* Map(std::size_t length, int protection, ULONGLONG offset) const noexcept {
        const int file = block_ ? block_->File() : memory_->File();
        const ULONGLONG start = block_ ? SharedBlock::kBodyOffset : 0;
        return mmap(nullptr, length, protection, MAP_SHARED, file, static_cast<off_t>(start + offset));
    }

private:
    std::unique_ptr<AnonymousMemory> memory_;  // or
    BlockRef block_;                           // who holds the memory
    ULONGLONG size_;
    DWORD access_;  // what views may do, of FILE_MAP_READ and FILE_MAP_WRITE
};

DWORD AccessOf(DWORD wanted) {
    const DWORD access = wanted & (FILE_MAP_READ | FILE_MAP_WRITE);
    return (access & FILE_MAP_WRITE) != 0 ? access | FILE_MAP_READ : access;
}

ObjectRef<MappingObject> CreateUnnamed(ULONGLONG size, DWORD access) {
    auto memory = std::make_unique<AnonymousMemory>(memfd_create("kadata", MFD_CLOEXEC));
    if (memory->File() == -1) {
        FailFromErrno();
        return {};
    }
    if (const int error = posix_fallocate(memory->File(), 0, static_cast<off_t>(size))) {
        FailFromErrno(error);
        return {};
    }
    SetLastError(ERROR_SUCCESS);
    return MakeObject<MappingObject>(std::move(memory), size, access);
}

ObjectRef<MappingObject> CreateNamed(LPCWSTR name, ULONGLONG size, DWORD access) {
    const SharedObject shared = CreateShared(name, SharedKind::Mapping, size, [](void*) {});
    if (!shared.block) {
        return {};
    }
    SetLastError(shared.existed ? ERROR_ALREADY_EXISTS : ERROR_SUCCESS);
    return MakeObject<MappingObject>(shared.block, access);
}

struct Views {
    std::mutex mutex;
    std::unordered_map<const void*, std::size_t> lengths;  // by address; guarded by mutex
};

// Never destroyed: views may be given back while the process ends.
Views& TheViews() {
    static Views& views = *new Views;
    return views;
}

// The length of a view of `length` bytes or up to the end; 0 with the last error set when there is no such view.
ULONGLONG ViewLength(const MappingObject& mapping, ULONGLONG offset, ULONGLONG length) {
    if (offset % kGranularity != 0) {
        SetLastError(ERROR_MAPPED_ALIGNMENT);
        return 0;
    }
    if (offset >= mapping.Size() || length > mapping.Size() - offset) {
        SetLastError(ERROR_ACCESS_DENIED);
        return 0;
    }
    return length != 0 ? length : mapping.Size() - offset;
}

LPVOID MapView(const MappingObject& mapping, DWORD access, ULONGLONG offset, std::size_t length) {
    const int protection = (access & FILE_MAP_WRITE) != 0 ? PROT_READ | PROT_WRITE : PROT_READ;
    Views& views = TheViews();
    const std::lock_guard lock(views.mutex);
    void* const view = mapping.Map(length, protection, offset);
    if (view == MAP_FAILED) {
        FailFromErrno();
        return nullptr;
    }
    views.lengths[view] = length;
    return view;
}

}  // namespace
}  // namespace kawin

HANDLE CreateFileMappingW(HANDLE file, LPSECURITY_ATTRIBUTES /*security*/, DWORD protect, DWORD size_high, DWORD size_low,
                          LPCWSTR name) noexcept {
    return kawin::NoThrow([&]() -> HANDLE {
        const ULONGLONG size = kawin::Join(size_high, size_low);
        const DWORD protection = protect & ~SEC_COMMIT;
        if (file != INVALID_HANDLE_VALUE) {
            SetLastError(ERROR_INVALID_HANDLE);
            return nullptr;
        }
        if ((protection != PAGE_READONLY && protection != PAGE_READWRITE) || size == 0 || size > INT64_MAX / 2) {
            SetLastError(ERROR_INVALID_PARAMETER);
            return nullptr;
        }
        const DWORD access = kawin::AccessOf(protection == PAGE_READONLY ? FILE_MAP_READ : FILE_MAP_WRITE);
        auto mapping = kawin::IsUnnamed(name) ? kawin::CreateUnnamed(size, access) : kawin::CreateNamed(name, size, access);
        return mapping ? kawin::OpenHandle(std::move(mapping)) : nullptr;
    });
}

HANDLE OpenFileMappingW(DWORD access, BOOL /*inherit*/, LPCWSTR name) noexcept {
    return kawin::NoThrow([&]() -> HANDLE {
        const kawin::SharedObject shared = kawin::OpenShared(name, kawin::SharedKind::Mapping);
        return shared.block ? kawin::OpenHandle(kawin::MakeObject<kawin::MappingObject>(shared.block, kawin::AccessOf(access)))
                            : nullptr;
    });
}

LPVOID MapViewOfFile(HANDLE mapping, DWORD access, DWORD offset_high, DWORD offset_low, SIZE_T length) noexcept {
    return kawin::NoThrow([&]() -> LPVOID {
        const auto object = kawin::FindObject<kawin::MappingObject>(mapping);
        if (!object) {
            return nullptr;
        }
        const DWORD wanted = kawin::AccessOf(access);
        if (wanted == 0 || !object->Allows(wanted)) {
            SetLastError(wanted == 0 ? ERROR_INVALID_PARAMETER : ERROR_ACCESS_DENIED);
            return nullptr;
        }
        const ULONGLONG offset = kawin::Join(offset_high, offset_low);
        const ULONGLONG whole = kawin::ViewLength(*object, offset, length);
        return whole != 0 ? kawin::MapView(*object, wanted, offset, static_cast<std::size_t>(whole)) : nullptr;
    });
}

BOOL UnmapViewOfFile(LPCVOID view) noexcept {
    kawin::Views& views = kawin::TheViews();
    const std::lock_guard lock(views.mutex);
    const auto found = views.lengths.find(view);
    if (found == views.lengths.end()) {
        return kawin::Fail(ERROR_INVALID_ADDRESS);
    }
    munmap(const_cast<void*>(view), found->second);
    views.lengths.erase(found);
    return TRUE;
}
