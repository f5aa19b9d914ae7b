#include "child_process.h"

#include <gtest/gtest.h>
#include <shellapi.h>

#include <map>

#include "temp_folder.h"

namespace test {
namespace {

constexpr DWORD kKilled = 99;
constexpr DWORD kPathLength = 32768;
const Text kOption = _T("--child=");

std::map<Text, ChildFunction>& Children() {
    static std::map<Text, ChildFunction> children;
    return children;
}

// Arguments of tests hold no quotation mark and do not end with a backslash.
Text CommandLineFor(const Text& program, const ChildArgs& args) {
    Text line = _T("\"") + program + _T("\" \"") + kOption + args.at(0) + _T("\"");
    for (std::size_t i = 1; i < args.size(); ++i) {
        line += _T(" \"") + args[i] + _T("\"");
    }
    return line;
}

// All arguments behind the program; those of main() cannot hold every character on every system.
ChildArgs OwnArguments() {
    int count = 0;
    LPWSTR* const list = CommandLineToArgvW(GetCommandLineW(), &count);
    ChildArgs args(list + 1, list + count);
    LocalFree(list);
    return args;
}

}  // namespace

const TCHAR* const kNameVariable = _T("KADATA_TEST_CHILD");

Text OwnPath() {
    Text path(kPathLength, 0);
    path.resize(GetModuleFileNameW(nullptr, path.data(), kPathLength));
    return path;
}

ChildProcess::ChildProcess(const ChildArgs& args, const Text& program) {
    Text line = CommandLineFor(program, args);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &info_)) {
        ADD_FAILURE() << "the child cannot be started, error " << GetLastError();
    }
}

ChildProcess::~ChildProcess() {
    if (info_.hProcess != nullptr) {
        Kill();
        CloseHandle(info_.hThread);
        CloseHandle(info_.hProcess);
    }
}

std::optional<DWORD> ChildProcess::Wait(DWORD milliseconds) const {
    DWORD code = 0;
    const bool ended =
        WaitForSingleObject(info_.hProcess, milliseconds) == WAIT_OBJECT_0 && GetExitCodeProcess(info_.hProcess, &code);
    return ended ? std::optional(code) : std::nullopt;
}

void ChildProcess::Kill() const {
    TerminateProcess(info_.hProcess, kKilled);
    WaitForSingleObject(info_.hProcess, INFINITE);
}

ChildRegistration::ChildRegistration(const TCHAR* name, ChildFunction function) {
    Children()[name] = function;
}

std::optional<int> RunChild() {
    ChildArgs args = OwnArguments();
    TCHAR named[MAX_PATH] = {};
    if (args.empty() && GetEnvironmentVariableW(kNameVariable, named, MAX_PATH) != 0) {
        args.push_back(kOption + named);
    }
    if (args.empty() || !args[0].starts_with(kOption)) {
        return {};
    }
    const auto child = Children().find(args[0].substr(kOption.size()));
    args.erase(args.begin());
    return child != Children().end() ? child->second(args) : 127;
}

}  // namespace test
