#pragma once

// Handles and names of kernel objects in tests.

#include <tchar.h>
#include <windows.h>

#include <string>
#include <utility>

namespace test {

// Closes the handle at the end.
class Handle {
public:
    explicit Handle(HANDLE handle = nullptr) : handle_(handle) {}
    Handle(Handle&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    Handle& operator=(Handle&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~Handle() { Close(); }
    void Close() {
        if (handle_ != nullptr) {
            CloseHandle(std::exchange(handle_, nullptr));
        }
    }
    operator HANDLE() const { return handle_; }

private:
    HANDLE handle_;
};

// A name that no other run of the tests uses.
inline std::basic_string<TCHAR> UniqueName(const TCHAR* topic) {
    std::basic_string<TCHAR> name = topic;
    for (DWORD number : {GetCurrentProcessId(), GetTickCount()}) {
        for (name += _T('.'); number != 0; number /= 10) {
            name += static_cast<TCHAR>(_T('0') + number % 10);
        }
    }
    return name;
}

}  // namespace test
