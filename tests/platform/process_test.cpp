#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <shellapi.h>

#include <thread>
#include <vector>

#include "support/child_process.h"
#include "support/environment.h"
#include "support/handles.h"
#include "support/last_error.h"
#include "support/temp_folder.h"
#include "support/wine.h"

namespace {

using test::ChildArgs, test::ChildProcess, test::ErrorOf, test::Handle, test::TempFolder, test::Text;

constexpr DWORD kPatience = 20000;
const Text kValue = _T("äöü € blank");

// Written into a command line, and what the child must find.
const Text kWritten =
    _T(" plain \"two words\" a\\\\b \"end\\\\\" quote\\\" \"in \\\"side\" \"\" Gr\u00FC\u00DFe\u20AC x\"y z\"w");
const ChildArgs kRead = {_T("plain"),   _T("two words"), _T("a\\\\b"), _T("end\\"),
                         _T("quote\""), _T("in \"side"), _T(""),       _T("Gr\u00FC\u00DFe\u20AC"),
                         _T("xy zw")};

int CheckArguments(const ChildArgs& args) {
    return args == kRead ? 0 : 1;
}
REGISTER_CHILD(CheckArguments)

// Waits for the event, so that it runs until the test lets it end.
int WaitForIt(const ChildArgs& args) {
    return 17 + static_cast<int>(WaitForSingleObject(Handle(OpenEventW(SYNCHRONIZE, FALSE, args[0].c_str())), kPatience));
}
REGISTER_CHILD(WaitForIt)

Text Value(const TCHAR* name) {
    TCHAR value[8192];
    return Text(value, GetEnvironmentVariableW(name, value, 8192));
}

// Whether it has this environment, and this file in its current directory.
int CheckSurroundings(const ChildArgs& args) {
    return args[0] == Value(_T("KADATA_TEST")) && GetFileAttributesW(args[1].c_str()) != INVALID_FILE_ATTRIBUTES ? 0 : 1;
}
REGISTER_CHILD(CheckSurroundings)

// Its exit code, or the error (2 and more) of a program that does not start.
DWORD RunProgram(const TCHAR* application, Text line, Text environment = {}, const TCHAR* folder = nullptr) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION info{};
    if (!CreateProcessW(application, line.empty() ? nullptr : line.data(), nullptr, nullptr, FALSE, CREATE_UNICODE_ENVIRONMENT,
                        environment.empty() ? nullptr : environment.data(), folder, &startup, &info))
        return GetLastError();
    const Handle process(info.hProcess), thread(info.hThread);
    EXPECT_EQ(WaitForSingleObject(process, kPatience), WAIT_OBJECT_0);
    DWORD exit_code = MAXDWORD;
    EXPECT_TRUE(GetExitCodeProcess(process, &exit_code));
    return exit_code;
}

TEST(ProcessStart, SplitsTheCommandLineByTheRules) {
    EXPECT_EQ(RunProgram(nullptr, _T("\"") + test::OwnPath() + _T("\" --child=CheckArguments") + kWritten), 0U);
    EXPECT_EQ(RunProgram(test::OwnPath().c_str(), _T("anything --child=CheckArguments") + kWritten), 0U);

    int count = 0;
    LPWSTR* const list = CommandLineToArgvW((_T("\"C:\\a b\\c.exe\"") + kWritten).c_str(), &count);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(Text(list[0]), _T("C:\\a b\\c.exe"));
    EXPECT_EQ(ChildArgs(list + 1, list + count), kRead);
    LocalFree(list);
}

TEST(ProcessStart, GivesEnvironmentAndDirectory) {
    const TempFolder folder;
    folder.Write(_T("here"), "");
    const Text line = _T("\"") + test::OwnPath() + _T("\" --child=CheckSurroundings \"") + kValue + _T("\" here");
    Text environment;
    for (const TCHAR* variable : {_T("PATH"), _T("SystemRoot"), _T("WINEPREFIX")})  // what a process cannot do without
        environment += Value(variable).empty() ? Text() : Text(variable) + _T("=") + Value(variable) + TCHAR{0};
    environment += _T("KADATA_TEST=") + kValue + TCHAR{0};
    EXPECT_EQ(RunProgram(nullptr, line, environment, folder.Path().c_str()), 0U);
    EXPECT_EQ(RunProgram(nullptr, line, environment), 1U) << "another directory";
    EXPECT_EQ(RunProgram(nullptr, line, {}, folder.Path().c_str()), 1U) << "this process's environment";
    EXPECT_EQ(RunProgram(nullptr, line, environment, folder.Path(_T("here")).c_str()), ERROR_DIRECTORY);
}

TEST(ProcessStart, SaysWhyItCannot) {
    const TempFolder folder;
    EXPECT_EQ(RunProgram(nullptr, _T("no-such-program-anywhere a b")), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RunProgram(folder.Path(_T("none")).c_str(), {}), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RunProgram(folder.Path(_T("no\\ne")).c_str(), {}), ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(RunProgram(folder.Path().c_str(), {}), test::UnlessWine(ERROR_ACCESS_DENIED, ERROR_INVALID_HANDLE));
}

TEST(Process, IsOpenedByNumberWithTheRightsAskedFor) {
    EXPECT_EQ(GetProcessId(GetCurrentProcess()), GetCurrentProcessId());
    const Text name = test::UniqueName(_T("Open"));
    const Handle go(CreateEventW(nullptr, FALSE, FALSE, name.c_str()));
    DWORD code = 0;
    const ChildProcess child({_T("WaitForIt"), name}), ending({_T("WaitForIt"), name});
    const Handle waiter(OpenProcess(SYNCHRONIZE, FALSE, child.Id()));
    EXPECT_EQ(WaitForSingleObject(waiter, 1), WAIT_TIMEOUT);
    EXPECT_EQ(ErrorOf(TerminateProcess(waiter, 5)), ERROR_ACCESS_DENIED);
    EXPECT_EQ(ErrorOf(GetExitCodeProcess(waiter, &code)), ERROR_ACCESS_DENIED);

    const Handle killer(OpenProcess(PROCESS_TERMINATE | PROCESS_QUERY_LIMITED_INFORMATION, FALSE, child.Id()));
    EXPECT_EQ(ErrorOf(WaitForSingleObject(killer, 0) != WAIT_FAILED), ERROR_ACCESS_DENIED);
    EXPECT_TRUE(GetExitCodeProcess(killer, &code));
    EXPECT_EQ(code, STILL_ACTIVE);
    EXPECT_TRUE(TerminateProcess(killer, 77));
    EXPECT_EQ(WaitForSingleObject(waiter, kPatience), WAIT_OBJECT_0);
    EXPECT_EQ(TerminateProcess(killer, 78), test::UnlessWine(FALSE, TRUE)) << "it has ended";
    EXPECT_TRUE(GetExitCodeProcess(Handle(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, child.Id())), &code));
    EXPECT_EQ(code, 77U);
    SetEvent(go);
    EXPECT_EQ(ending.Wait(kPatience), 17U);
    EXPECT_EQ(ErrorOf(OpenProcess(SYNCHRONIZE, FALSE, 0)), ERROR_INVALID_PARAMETER);
}

TEST(Environment, StoresFindsAndForgets) {
    const TCHAR* const name = _T("KaData_Test_Ä");
    const test::InEnvironment stored(name, kValue.c_str());
    EXPECT_EQ(Value(_T("kadata_test_ä")), kValue);
    EXPECT_TRUE(SetEnvironmentVariableW(_T("KADATA_TEST_Ä"), _T("second"))) << "the same variable";
    EXPECT_EQ(Value(name), _T("second"));

    TCHAR buffer[7];
    EXPECT_EQ(GetEnvironmentVariableW(name, buffer, 6), 7U);
    EXPECT_EQ(GetEnvironmentVariableW(name, buffer, 7), 6U);
    EXPECT_TRUE(SetEnvironmentVariableW(name, nullptr));
    EXPECT_EQ(ErrorOf(GetEnvironmentVariableW(name, buffer, 7)), ERROR_ENVVAR_NOT_FOUND);
    for (const TCHAR* const wrong : {_T(""), _T("a=b")})
        EXPECT_EQ(ErrorOf(SetEnvironmentVariableW(wrong, _T("x"))), ERROR_INVALID_PARAMETER);
}

TEST(Environment, ExpandsWhatExists) {
    const test::InEnvironment a(_T("KADATA_A"), _T("one")), b(_T("KADATA_B"), _T("%KADATA_A%"));
    const TCHAR* const source = _T("x%kadata_a%y %KADATA_B% %KADATA_NONE%%KADATA_A% 50%KADATA_A%% %%");
    const Text expanded = _T("xoney %KADATA_A% %KADATA_NONE%one 50one% %%");
    TCHAR target[64];
    EXPECT_EQ(ExpandEnvironmentStringsW(source, nullptr, 0), expanded.size() + 1);
    EXPECT_EQ(ExpandEnvironmentStringsW(source, target, 64), expanded.size() + 1);
    EXPECT_EQ(Text(target), expanded);
}

TEST(Environment, MayChangeWhileOthersRead) {
    const std::jthread writer([] {
        for (int i = 0; i < 2000; ++i) {
            SetEnvironmentVariableW(_T("KADATA_T"), Text(static_cast<std::size_t>(i % 50 + 1), _T('v')).c_str());
            SetEnvironmentVariableW((Text(_T("KADATA_T")) + static_cast<TCHAR>(_T('a') + i % 20)).c_str(),
                                    i % 3 == 0 ? nullptr : _T("x"));
        }
    });
    for (int i = 0; i < 2000; ++i) {
        EXPECT_EQ(Value(_T("KADATA_T")).find_first_not_of(_T('v')), Text::npos);
        SYSTEMTIME now{};
        GetLocalTime(&now);
    }
}

}  // namespace
