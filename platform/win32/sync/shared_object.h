#pragma once

// Named objects between processes: the part that events, mutexes and mappings have in common.
//
// Each is a file in /dev/shm, "kadata." + the user's number or "global" + "." + a readable part of the name + "." + its hash,
// readable and writable by its owner alone: the memory holds what the C library trusts (the links of robust mutexes). Every
// process with a handle holds a shared lock on it, which the kernel drops with the process, however it ends. Who finds that
// nobody else holds one takes the file for what a killed process left, and makes a new one; the last to close removes it. Both
// hold a second lock meanwhile, and look afterwards whether the file still has its name.

#include <functional>
#include <memory>
#include <string>

#include "../base/error.h"

namespace kawin {

enum class SharedKind : std::uint32_t { Event = 1, Mutex, Mapping };

// This process's part in one named object. All handles of a process share one block, so that the object's memory has one address
// in it.
class SharedBlock {
public:
    SharedBlock(int file, void* memory, std::string path) noexcept;
    SharedBlock(const SharedBlock&) = delete;
    SharedBlock& operator=(const SharedBlock&) = delete;
    ~SharedBlock();

    // The object's own memory, 64-byte aligned, of kSmallBody bytes. A mapping's memory is mapped view by view from kBodyOffset
    // of File().
    void* Body() const noexcept;
    int File() const noexcept { return file_; }
    void* Memory() const noexcept { return memory_; }  // the first page: what all objects have, and a small body

    // The size that the object was made with.
    ULONGLONG BodySize() const noexcept;

    static constexpr std::size_t kSmallBody = 1024;
    static constexpr std::size_t kBodyOffset = 4096;

private:
    int file_;
    void* memory_;
    std::string path_;
    int process_;  // after a fork the lock is the parent's too
};

using BlockRef = std::shared_ptr<SharedBlock>;

struct SharedObject {
    BlockRef block;  // null: failed, with the last error set
    bool existed = false;
};

// Opens the object, or makes it with `size` bytes from kBodyOffset on, all zero. `prepare` gets its Body() before anyone else
// sees it.
SharedObject CreateShared(LPCWSTR name, SharedKind kind, ULONGLONG size, const std::function<void(void*)>& prepare);
SharedObject OpenShared(LPCWSTR name, SharedKind kind);

// Whether `name` asks for an object without a name: null or empty.
bool IsUnnamed(LPCWSTR name) noexcept;

// Keeps memory until the process ends.
void KeepForEver(std::shared_ptr<void> memory);

}  // namespace kawin
