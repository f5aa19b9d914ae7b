#pragma once

// Rights count for root too inside such a scope: the thread's effective ids become those of "nobody". Without root it does
// nothing. Where a missing right cannot be had (Wine as root), Active() is false and a test leaves out what it would have shown.

namespace test {

class UnprivilegedScope {
public:
    UnprivilegedScope();
    UnprivilegedScope(const UnprivilegedScope&) = delete;
    UnprivilegedScope& operator=(const UnprivilegedScope&) = delete;
    ~UnprivilegedScope();

    // Whether missing rights stop this thread now.
    bool Active() const { return active_; }

private:
    bool active_ = false;
    bool switched_ = false;
};

}  // namespace test
