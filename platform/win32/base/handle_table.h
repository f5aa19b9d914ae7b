#pragma once

// The process's table of handles and the objects behind them. Safe from every thread; an object in use by one thread outlives
// the CloseHandle of another.

#include <atomic>
#include <chrono>
#include <memory>
#include <utility>

#include "handle.h"

namespace kawin {

using Deadline = std::chrono::steady_clock::time_point;  // Deadline::max() waits for ever

// Base of everything that has a handle. Counted by ObjectRef; the table holds one count for an open handle.
class KernelObject {
public:
    KernelObject() = default;
    KernelObject(const KernelObject&) = delete;
    KernelObject& operator=(const KernelObject&) = delete;
    virtual ~KernelObject() = default;

    // Waits until the object is signalled and takes what a successful wait takes (an auto-reset event's signal, a mutex's
    // ownership). Returns WAIT_OBJECT_0, WAIT_ABANDONED_0, WAIT_TIMEOUT, or WAIT_FAILED with the last error set. A deadline in
    // the past only looks. Objects that cannot be waited for fail with ERROR_INVALID_HANDLE.
    virtual DWORD Wait(Deadline deadline);

    void Retain() noexcept { count_.fetch_add(1, std::memory_order_relaxed); }
    void Release() noexcept;

private:
    std::atomic<long> count_{1};
};

template <class T>
class ObjectRef {
public:
    ObjectRef() = default;
    explicit ObjectRef(T* adopted) noexcept : object_(adopted) {}
    ObjectRef(ObjectRef&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    ObjectRef& operator=(ObjectRef&& other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~ObjectRef() {
        if (object_ != nullptr) {
            object_->Release();
        }
    }
    T* operator->() const noexcept { return object_; }
    T& operator*() const noexcept { return *object_; }
    T* get() const noexcept { return object_; }
    T* release() noexcept { return std::exchange(object_, nullptr); }
    explicit operator bool() const noexcept { return object_ != nullptr; }

private:
    T* object_ = nullptr;
};

template <class T, class... Args>
ObjectRef<T> MakeObject(Args&&... args) {
    return ObjectRef<T>(new T(std::forward<Args>(args)...));
}

// A new handle for `object`. Null with ERROR_TOO_MANY_OPEN_FILES when the table is full.
HANDLE OpenHandle(ObjectRef<KernelObject> object);

template <class T>
HANDLE OpenHandle(ObjectRef<T> object) {
    return OpenHandle(ObjectRef<KernelObject>(object.release()));
}

// The object behind a handle; empty with ERROR_INVALID_HANDLE when the handle is not open.
ObjectRef<KernelObject> FindObject(HANDLE handle) noexcept;

// The same for one class of objects; a handle of another class is ERROR_INVALID_HANDLE too.
template <class T>
ObjectRef<T> FindObject(HANDLE handle) noexcept {
    ObjectRef<KernelObject> object = FindObject(handle);
    if (!object) {
        return {};
    }
    if (T* const typed = dynamic_cast<T*>(object.get())) {
        object.release();
        return ObjectRef<T>(typed);
    }
    SetLastError(ERROR_INVALID_HANDLE);
    return {};
}

// Takes the handle out of the table. False with ERROR_INVALID_HANDLE when it is not open.
bool RemoveHandle(HANDLE handle) noexcept;

// As RemoveHandle, but only when an object of class T is behind it (for FindClose).
template <class T>
bool RemoveHandleOf(HANDLE handle) noexcept {
    return FindObject<T>(handle) && RemoveHandle(handle);
}

}  // namespace kawin
