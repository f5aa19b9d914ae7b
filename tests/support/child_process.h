#pragma once

// This test program started again as a child, for what can only be seen between processes.
//
//     int HoldTheMutex(const test::ChildArgs& args) { ... }     // args[0] is the first argument after the name
//     REGISTER_CHILD(HoldTheMutex)                              // at namespace scope
//     test::ChildProcess child({_T("HoldTheMutex"), name});           // in the test
//     EXPECT_EQ(child.Wait(10000), 0u);
//
// A child runs its function instead of the tests, and ends with the function's result (0 to 255).

#include <tchar.h>
#include <windows.h>

#include <optional>
#include <string>
#include <vector>

namespace test {

using ChildArgs = std::vector<std::basic_string<TCHAR>>;
using ChildFunction = int (*)(const ChildArgs& args);

// The environment variable that names the child function of a program that is started without arguments.
extern const TCHAR* const kNameVariable;

// The path of this program.
std::basic_string<TCHAR> OwnPath();

class ChildProcess {
public:
    // Starts the child function args[0] with the rest as its arguments. A test failure is recorded when it cannot be started.
    // `program` is a copy of this program that is to run instead of it.
    explicit ChildProcess(const ChildArgs& args, const std::basic_string<TCHAR>& program = OwnPath());
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess();  // kills a child that still runs

    // The exit code, or nothing when the child still runs after `milliseconds`.
    std::optional<DWORD> Wait(DWORD milliseconds) const;

    // Ends the child at once, as a crash would (exit code 99), and returns when it is gone.
    void Kill() const;

    DWORD Id() const { return info_.dwProcessId; }
    HANDLE Process() const { return info_.hProcess; }

private:
    PROCESS_INFORMATION info_{};
};

class ChildRegistration {
public:
    ChildRegistration(const TCHAR* name, ChildFunction function);
};

// The result of the child function that the command line asks for, or nothing when the tests are to be run.
std::optional<int> RunChild();

}  // namespace test

#define REGISTER_CHILD(function) static const test::ChildRegistration child_##function(_T(#function), &function);
