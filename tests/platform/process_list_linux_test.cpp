#include <gtest/gtest.h>
#include <sys/stat.h>
#include <tchar.h>
#include <windows.h>

#include <psapi.h>

#include "support/environment.h"
#include "support/handles.h"
#include "support/native_path_linux.h"
#include "support/temp_folder.h"

namespace {

using test::Handle, test::Text;

// A keyboard that is a script, as some are: it waits on a pipe until it is ended.
Text WriteKeyboard(const test::TempFolder& folder, const Text& name) {
    const Text pipe = folder.Path(_T("pipe"));
    mkfifo(test::Native(pipe).c_str(), 0600);
    const Text path = folder.Write(name, "#!/bin/sh\nread line < " + test::Native(pipe) + "\n");
    chmod(test::Native(path).c_str(), 0700);
    return path;
}

TEST(LinuxKeyboard, IsTheFirstOfThePathUnderTheNameOfTheSystem) {
    for (const TCHAR* const name : {_T("osk"), _T("onboard"), _T("matchbox-keyboard")}) {
        const test::TempFolder folder;
        WriteKeyboard(folder, name);
        const test::InEnvironment path(_T("PATH"), test::Widen(test::Native(folder.Path())).c_str());
        TCHAR line[] = _T("OSK.exe");
        STARTUPINFOW startup{};
        PROCESS_INFORMATION info{};
        ASSERT_TRUE(CreateProcessW(nullptr, line, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &info));
        const Handle process(info.hProcess), thread(info.hThread);
        TCHAR found[MAX_PATH] = {};
        EXPECT_NE(GetModuleBaseNameW(process, nullptr, found, MAX_PATH), 0U);
        EXPECT_EQ(Text(found), _T("osk.exe"));
        TerminateProcess(process, 0);
        WaitForSingleObject(process, INFINITE);
    }
}

}  // namespace
