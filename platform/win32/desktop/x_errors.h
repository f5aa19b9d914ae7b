#pragma once

namespace kawin {

// While it lives, requests that an X server refuses are no reason to end the program, as they are else: a window may have gone
// before the server has seen the last request about it, SDL's own wake-up call among them. Without Xlib it does nothing.
class IgnoredXErrors {
public:
    IgnoredXErrors() noexcept;
    IgnoredXErrors(const IgnoredXErrors&) = delete;
    IgnoredXErrors& operator=(const IgnoredXErrors&) = delete;
    ~IgnoredXErrors();

private:
    using Handler = int (*)(void* display, void* error);
    using Setter = Handler (*)(Handler handler);
    Setter set_ = nullptr;
    Handler before_ = nullptr;
};

}  // namespace kawin
