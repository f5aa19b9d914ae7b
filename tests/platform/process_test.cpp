#include <gtest/gtest.h>
#include <windows.h>

#include <shellapi.h>

#include <thread>
#include <vector>

#include "support/child_process.h"
#include "support/handles.h"
#include "support/temp_folder.h"

namespace {

using test::ChildArgs;
using test::ChildProcess;
using test::Handle;
using test::TempFolder;
using test::Text;
using test::UniqueName;

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

int ReturnCode(const ChildArgs& args) {
    return static_cast<int>(args[0].size());
}
REGISTER_CHILD(ReturnCode)

// Waits for the event, so that it runs until the test lets it end.
int WaitForIt(const ChildArgs& args) {
    return static_cast<int>(WaitForSingleObject(Handle(OpenEventW(SYNCHRONIZE, FALSE, args[0].c_str())), kPatience));
}
REGISTER_CHILD(WaitForIt)

// Whether it has this environment, and this file in its current directory.
int CheckSurroundings(const ChildArgs& args) {
    TCHAR value[64];
    const DWORD length = GetEnvironmentVariableW(_T("KADATA_TEST"), value, 64);
    const bool has_variable = args[0] == Text(value, length);
    return has_variable && GetFileAttributesW(args[1].c_str()) != INVALID_FILE_ATTRIBUTES ? 0 : 1;
}
REGISTER_CHILD(CheckSurroundings)

Text OwnPath() {
    TCHAR path[32768];
    return Text(path, GetModuleFileNameW(nullptr, path, 32768));
}

struct Started {
    BOOL ok = FALSE;
    DWORD error = 0;
    DWORD exit_code = MAXDWORD;
};

Started RunProgram(const TCHAR* application, Text line, const Text& environment = {}, const TCHAR* folder = nullptr) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION info{};
    Text block = environment;
    Started started;
    started.ok = CreateProcessW(application, line.empty() ? nullptr : line.data(), nullptr, nullptr, FALSE,
                                CREATE_UNICODE_ENVIRONMENT, block.empty() ? nullptr : block.data(), folder, &startup, &info);
    started.error = started.ok ? ERROR_SUCCESS : GetLastError();
    if (started.ok) {
        const Handle process(info.hProcess), thread(info.hThread);
        EXPECT_EQ(WaitForSingleObject(process, kPatience), WAIT_OBJECT_0);
        EXPECT_TRUE(GetExitCodeProcess(process, &started.exit_code));
    }
    return started;
}

TEST(CreateProcess, SplitsTheCommandLineByTheRules) {
    EXPECT_EQ(RunProgram(nullptr, _T("\"") + OwnPath() + _T("\" --child=CheckArguments") + kWritten).exit_code, 0U);
    EXPECT_EQ(RunProgram(OwnPath().c_str(), _T("anything --child=CheckArguments") + kWritten).exit_code, 0U);

    int count = 0;
    LPWSTR* const list = CommandLineToArgvW((_T("\"C:\\a b\\c.exe\"") + kWritten).c_str(), &count);
    ASSERT_NE(list, nullptr);
    ASSERT_EQ(count, static_cast<int>(kRead.size()) + 1);
    EXPECT_EQ(Text(list[0]), _T("C:\\a b\\c.exe"));
    EXPECT_EQ(ChildArgs(list + 1, list + count), kRead);
    LocalFree(list);
}

TEST(CreateProcess, GivesEnvironmentAndDirectory) {
    const TempFolder folder;
    folder.Write(_T("here"), "");
    const Text line = _T("\"") + OwnPath() + _T("\" --child=CheckSurroundings \"") + kValue + _T("\" here");
    Text environment;
    for (const TCHAR* variable : {_T("PATH"), _T("SystemRoot"), _T("WINEPREFIX")}) {  // what a process cannot do without
        TCHAR value[8192];
        if (const DWORD length = GetEnvironmentVariableW(variable, value, 8192)) {
            environment += Text(variable) + _T("=") + Text(value, length) + TCHAR{0};
        }
    }
    environment += _T("KADATA_TEST=") + kValue + TCHAR{0};
    EXPECT_EQ(RunProgram(nullptr, line, environment, folder.Path().c_str()).exit_code, 0U);
    EXPECT_EQ(RunProgram(nullptr, line, environment).exit_code, 1U) << "another directory";
    EXPECT_EQ(RunProgram(nullptr, line, {}, folder.Path().c_str()).exit_code, 1U) << "this process's environment";
    EXPECT_EQ(RunProgram(nullptr, line, environment, folder.Path(_T("here")).c_str()).error, ERROR_DIRECTORY);
}

TEST(CreateProcess, SaysWhyItCannot) {
    const TempFolder folder;
    EXPECT_EQ(RunProgram(nullptr, _T("no-such-program-anywhere a b")).error, ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RunProgram(folder.Path(_T("none")).c_str(), {}).error, ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RunProgram(folder.Path(_T("no\\ne")).c_str(), {}).error, ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(RunProgram(folder.Path().c_str(), {}).error, ERROR_ACCESS_DENIED);
}

TEST(Process, HasAnExitCodeWhenItHasEnded) {
    const Text name = UniqueName(_T("Exit"));
    const Handle go(CreateEventW(nullptr, TRUE, FALSE, name.c_str()));
    const ChildProcess child({_T("WaitForIt"), name});
    DWORD code = 0;
    EXPECT_TRUE(GetExitCodeProcess(child.Process(), &code));
    EXPECT_EQ(code, STILL_ACTIVE);
    EXPECT_EQ(WaitForSingleObject(child.Process(), 1), WAIT_TIMEOUT);
    SetEvent(go);
    EXPECT_EQ(child.Wait(kPatience), WAIT_OBJECT_0);
    EXPECT_EQ(ChildProcess({_T("ReturnCode"), _T("seventeen letters")}).Wait(kPatience), 17U);
}

TEST(Process, IsOpenedByNumberWithTheRightsAskedFor) {
    const Text name = UniqueName(_T("Open"));
    const Handle never(CreateEventW(nullptr, TRUE, FALSE, name.c_str()));
    DWORD id = 0;
    {
        const ChildProcess child({_T("WaitForIt"), name});
        id = child.Id();
        EXPECT_EQ(GetProcessId(child.Process()), id);
        const Handle waiter(OpenProcess(SYNCHRONIZE, FALSE, id));
        ASSERT_TRUE(waiter);
        EXPECT_FALSE(TerminateProcess(waiter, 5));
        EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
        DWORD code = 0;
        EXPECT_FALSE(GetExitCodeProcess(waiter, &code));
        EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);

        const Handle killer(OpenProcess(PROCESS_TERMINATE | PROCESS_QUERY_LIMITED_INFORMATION, FALSE, id));
        EXPECT_EQ(WaitForSingleObject(killer, 0), WAIT_FAILED);
        EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
        EXPECT_TRUE(TerminateProcess(killer, 77));
        EXPECT_EQ(WaitForSingleObject(waiter, kPatience), WAIT_OBJECT_0);
        EXPECT_TRUE(GetExitCodeProcess(killer, &code));
        EXPECT_EQ(code, 77U);
        EXPECT_FALSE(TerminateProcess(killer, 78)) << "it has ended";
        EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
    }
    EXPECT_EQ(OpenProcess(SYNCHRONIZE, FALSE, id), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

TEST(Process, KnowsItselfAndItsThreads) {
    EXPECT_EQ(GetProcessId(GetCurrentProcess()), GetCurrentProcessId());
    DWORD other = 0;
    std::thread([&] { other = GetCurrentThreadId(); }).join();
    EXPECT_NE(other, GetCurrentThreadId());
    EXPECT_NE(other, 0U);
    EXPECT_NE(Text(GetCommandLineW()), Text());
}

Text Value(const TCHAR* name) {
    TCHAR value[64];
    return Text(value, GetEnvironmentVariableW(name, value, 64));
}

TEST(Environment, StoresFindsAndForgets) {
    ASSERT_TRUE(SetEnvironmentVariableW(_T("KaData_Test_Ä"), kValue.c_str()));
    EXPECT_EQ(Value(_T("kadata_test_ä")), kValue);
    EXPECT_TRUE(SetEnvironmentVariableW(_T("KADATA_TEST_Ä"), _T("second"))) << "the same variable";
    EXPECT_EQ(Value(_T("KaData_Test_Ä")), _T("second"));

    TCHAR buffer[7];
    EXPECT_EQ(GetEnvironmentVariableW(_T("KaData_Test_Ä"), buffer, 6), 7U);
    EXPECT_EQ(GetEnvironmentVariableW(_T("KaData_Test_Ä"), nullptr, 0), 7U);
    EXPECT_EQ(GetEnvironmentVariableW(_T("KaData_Test_Ä"), buffer, 7), 6U);

    EXPECT_TRUE(SetEnvironmentVariableW(_T("KaData_Test_Ä"), nullptr));
    SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(GetEnvironmentVariableW(_T("KaData_Test_Ä"), buffer, 7), 0U);
    EXPECT_EQ(GetLastError(), ERROR_ENVVAR_NOT_FOUND);
    for (const TCHAR* name : {_T(""), _T("a=b")}) {
        EXPECT_FALSE(SetEnvironmentVariableW(name, _T("x")));
        EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
    }
}

TEST(Environment, ExpandsWhatExists) {
    SetEnvironmentVariableW(_T("KADATA_A"), _T("one"));
    SetEnvironmentVariableW(_T("KADATA_B"), _T("%KADATA_A%"));
    const struct {
        const TCHAR *source, *expanded;
    } rows[] = {
        {_T(""), _T("")},
        {_T("x%kadata_a%y"), _T("xoney")},
        {_T("%KADATA_B%"), _T("%KADATA_A%")},
        {_T("%KADATA_NONE%%KADATA_A%"), _T("%KADATA_NONE%one")},
        {_T("100%"), _T("100%")},
        {_T("%%"), _T("%%")},
        {_T("50%KADATA_A%%"), _T("50one%")},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(test::Narrow(row.source));
        TCHAR target[64];
        const DWORD needed = ExpandEnvironmentStringsW(row.source, target, 64);
        EXPECT_EQ(Text(target), row.expanded);
        EXPECT_EQ(needed, Text(row.expanded).size() + 1);
        EXPECT_EQ(ExpandEnvironmentStringsW(row.source, nullptr, 0), needed);
    }
    SetEnvironmentVariableW(_T("KADATA_A"), nullptr);
    SetEnvironmentVariableW(_T("KADATA_B"), nullptr);
}

TEST(Environment, MayChangeWhileOthersRead) {
    std::thread writer([] {
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
    writer.join();
}

}  // namespace
