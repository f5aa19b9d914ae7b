#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <tchar.h>
#include <unistd.h>
#include <windows.h>

#include <filesystem>
#include <optional>

#include "support/child_process.h"
#include "support/handles.h"
#include "support/last_error.h"
#include "support/native_path_linux.h"
#include "support/temp_folder.h"

namespace {

using test::ChildArgs, test::ChildProcess, test::ErrorOf, test::Handle;

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
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd"))
        count += std::stoi(entry.path().filename()) > STDERR_FILENO ? 1 : 0;
    return count - 1;
}
REGISTER_CHILD(CountFiles)

TEST(LinuxProcesses, HaveNoFilesOfTheirParent) {
    const int inheritable = dup(STDOUT_FILENO);
    const Handle event(CreateEventW(nullptr, TRUE, FALSE, test::UniqueName(_T("Files")).c_str()));
    EXPECT_EQ(ChildProcess({_T("CountFiles")}).Wait(kPatience), 0U);
    close(inheritable);
}

TEST(LinuxRights, DecideWhetherAFileCountsAsAProgram) {
    const test::TempFolder folder;
    const auto path = folder.Write(_T("note.exe"), "no program");
    STARTUPINFOW startup{};
    PROCESS_INFORMATION info{};
    for (const auto& [mode, error] : {std::pair{0600, ERROR_ACCESS_DENIED}, {0700, ERROR_BAD_EXE_FORMAT}}) {
        chmod(test::Native(path).c_str(), static_cast<mode_t>(mode));
        EXPECT_EQ(ErrorOf(CreateProcessW(path.c_str(), nullptr, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &info)),
                  error);
    }
}

TEST(LinuxProcesses, EndedByASignalAreCollectedWithTheirLastHandle) {
    std::optional<ChildProcess> child(std::in_place, ChildArgs{_T("EndBySignal")});
    const DWORD id = child->Id();
    EXPECT_EQ(child->Wait(kPatience), 128U + SIGTERM);
    EXPECT_TRUE(Handle(OpenProcess(SYNCHRONIZE, FALSE, id))) << "its number is kept";
    child.reset();
    EXPECT_EQ(ErrorOf(OpenProcess(SYNCHRONIZE, FALSE, id)), ERROR_INVALID_PARAMETER);
}

TEST(LinuxRights, MakeANamedObjectTheOwnersAlone) {
    const std::string name = "kadata." + std::to_string(geteuid()) + ".Left~behind.";
    const auto find = [&name] {
        for (const auto& entry : std::filesystem::directory_iterator("/dev/shm"))
            if (entry.path().filename().string().starts_with(name))
                return entry.path();
        return std::filesystem::path();
    };
    Handle event(CreateEventW(nullptr, TRUE, FALSE, _T("Left behind")));
    struct stat status {};
    ASSERT_EQ(stat(find().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600U);
    event.Close();
    EXPECT_EQ(find(), "");
}

// No Windows: every question for a version is answered with no.
TEST(LinuxProcess, IsNoVersionOfWindows) {
    OSVERSIONINFOW version = {};
    for (const auto& [size, error] : {std::pair<DWORD, DWORD>{sizeof(version), ERROR_CALL_NOT_IMPLEMENTED},
                                      std::pair<DWORD, DWORD>{sizeof(version) - 1, ERROR_INSUFFICIENT_BUFFER}}) {
        version.dwOSVersionInfoSize = size;
        EXPECT_FALSE(GetVersionExW(&version));
        EXPECT_EQ(GetLastError(), error);
        EXPECT_EQ(version.dwMajorVersion, 0U);
    }
    EXPECT_FALSE(GetVersionExW(nullptr));
}

}  // namespace
