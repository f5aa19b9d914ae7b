#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <windows.h>

#include <filesystem>

#include "support/child_process.h"
#include "support/handles.h"
#include "support/temp_folder.h"

namespace {

using test::ChildArgs;
using test::ChildProcess;
using test::Handle;
using test::UniqueName;

constexpr DWORD kPatience = 20000;

int EndBySignal(const ChildArgs& /*args*/) {
    signal(SIGTERM, SIG_DFL);
    raise(SIGTERM);
    return 0;
}
REGISTER_CHILD(EndBySignal)

// How many files it has besides the standard streams and the folder that it reads.
int CountFiles(const ChildArgs& /*args*/) {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        count += std::stoi(entry.path().filename()) > STDERR_FILENO ? 1 : 0;
    }
    return count - 1;
}
REGISTER_CHILD(CountFiles)

TEST(ProcessOnLinux, ASignalIsAnExitCodeAbove128) {
    EXPECT_EQ(ChildProcess({_T("EndBySignal")}).Wait(kPatience), 128U + SIGTERM);
}

TEST(ProcessOnLinux, AChildHasNoFilesOfItsParent) {
    const int inheritable = dup(STDOUT_FILENO);
    const Handle event(CreateEventW(nullptr, TRUE, FALSE, UniqueName(_T("Files")).c_str()));
    EXPECT_EQ(ChildProcess({_T("CountFiles")}).Wait(kPatience), 0U);
    close(inheritable);
}

TEST(ProcessOnLinux, AFileThatIsNoProgramHasABadFormat) {
    const test::TempFolder folder;
    const auto path = folder.Write(_T("note.exe"), "no program");
    STARTUPINFOW startup{};
    PROCESS_INFORMATION info{};
    const auto start = [&] {
        return CreateProcessW(path.c_str(), nullptr, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &info);
    };
    EXPECT_FALSE(start());
    EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED) << "not executable";
    std::string native = test::Narrow(path.substr(2));
    std::replace(native.begin(), native.end(), '\\', '/');
    chmod(native.c_str(), 0700);
    EXPECT_FALSE(start());
    EXPECT_EQ(GetLastError(), ERROR_BAD_EXE_FORMAT);
}

TEST(ProcessOnLinux, AnEndedChildIsCollectedWithItsLastHandle) {
    DWORD id = 0;
    {
        const ChildProcess child({_T("EndBySignal")});
        id = child.Id();
        child.Wait(kPatience);
        EXPECT_EQ(kill(static_cast<pid_t>(id), 0), 0) << "its number is kept";
    }
    EXPECT_EQ(kill(static_cast<pid_t>(id), 0), -1);
}

TEST(ProcessOnLinux, AForkHasNumbersOfItsOwn) {
    const DWORD process = GetCurrentProcessId();
    const DWORD thread = GetCurrentThreadId();
    const pid_t child = fork();
    if (child == 0) {
        const auto own = static_cast<DWORD>(getpid());
        _exit(GetCurrentProcessId() == own && GetCurrentThreadId() == own && own != process && own != thread ? 0 : 1);
    }
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
}

TEST(NamedObjectOnLinux, LeavesNoFileAndIsTheOwnersAlone) {
    const std::string name = "kadata." + std::to_string(geteuid()) + ".Left~behind.";
    const auto find = [&name] {
        for (const auto& entry : std::filesystem::directory_iterator("/dev/shm")) {
            if (entry.path().filename().string().starts_with(name)) {
                return entry.path();
            }
        }
        return std::filesystem::path();
    };
    Handle event(CreateEventW(nullptr, TRUE, FALSE, _T("Left behind")));
    struct stat status {};
    ASSERT_EQ(stat(find().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600U);
    event.Close();
    EXPECT_EQ(find(), "");
}

}  // namespace
