#pragma once

// An environment variable set (null: removed) for a scope.

#include <tchar.h>
#include <windows.h>

#include <iterator>
#include <string>

namespace test {

class InEnvironment {
public:
    InEnvironment(const TCHAR* name, const TCHAR* value) : name_(name) {
        TCHAR before[MAX_PATH * 4];
        was_set_ = GetEnvironmentVariableW(name, before, static_cast<DWORD>(std::size(before))) != 0;
        before_ = was_set_ ? before : _T("");
        SetEnvironmentVariableW(name, value);
    }
    InEnvironment(const InEnvironment&) = delete;
    InEnvironment& operator=(const InEnvironment&) = delete;
    ~InEnvironment() { SetEnvironmentVariableW(name_, was_set_ ? before_.c_str() : nullptr); }

private:
    const TCHAR* name_;
    std::basic_string<TCHAR> before_;
    bool was_set_ = false;
};

}  // namespace test
