#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <psapi.h>

#include <algorithm>
#include <optional>
#include <vector>

#include "support/child_process.h"
#include "support/handles.h"
#include "support/last_error.h"
#include "support/temp_folder.h"
#include "support/wine.h"

namespace {

using test::ChildArgs, test::ChildProcess, test::ErrorOf, test::Handle, test::Text;

constexpr DWORD kPatience = 20000;
constexpr DWORD kRights = PROCESS_QUERY_INFORMATION | PROCESS_VM_READ;

int StayForAWhile(const ChildArgs& args) {
    WaitForSingleObject(Handle(OpenEventW(SYNCHRONIZE, FALSE, args[0].c_str())), kPatience);
    return 0;
}
REGISTER_CHILD(StayForAWhile)

bool IsListed(DWORD id) {
    std::vector<DWORD> ids(16'384);
    DWORD size = 0;
    EXPECT_TRUE(EnumProcesses(ids.data(), static_cast<DWORD>(ids.size() * sizeof(DWORD)), &size));
    EXPECT_EQ(size % sizeof(DWORD), 0U);
    ids.resize(size / sizeof(DWORD));
    return std::count(ids.begin(), ids.end(), id) == 1;
}

Text NameOf(HANDLE process, DWORD capacity = MAX_PATH) {
    HMODULE program = nullptr;
    DWORD size = 0;
    TCHAR name[MAX_PATH + 1];
    std::fill(std::begin(name), std::end(name), _T('#'));
    // A process that has just been started does not know its modules yet.
    for (const ULONGLONG end = GetTickCount64() + kPatience; program == nullptr && GetTickCount64() < end;
         WaitForSingleObject(process, 1)) {
        EnumProcessModules(process, &program, sizeof program, &size);
    }
    EXPECT_TRUE(program != nullptr && size >= sizeof program);
    const DWORD length = GetModuleBaseNameW(process, program, name, capacity);
    EXPECT_EQ(Text(name).size(), length);
    EXPECT_EQ(name[capacity], _T('#'));
    return name;
}

TEST(ProcessList, HasTheProcessesThatLive) {
    const Text name = test::UniqueName(_T("Stay"));
    const Handle event(CreateEventW(nullptr, TRUE, FALSE, name.c_str()));
    std::optional<ChildProcess> child(std::in_place, ChildArgs{_T("StayForAWhile"), name});
    const DWORD id = child->Id();
    EXPECT_TRUE(IsListed(GetCurrentProcessId()) && IsListed(id));
    child->Kill();
    EXPECT_FALSE(IsListed(id));
    DWORD first[2] = {0, MAXDWORD};
    DWORD size = 0;
    EXPECT_TRUE(EnumProcesses(first, sizeof(DWORD), &size));
    EXPECT_EQ(size, sizeof(DWORD));
    EXPECT_EQ(first[1], MAXDWORD);
}

TEST(ProcessList, NamesThePrograms) {
    const Text path = test::OwnPath();
    const Text own = path.substr(path.rfind(_T('\\')) + 1);
    const Text event_name = test::UniqueName(_T("Stay"));
    const Handle event(CreateEventW(nullptr, TRUE, FALSE, event_name.c_str()));
    const ChildProcess child({_T("StayForAWhile"), event_name});
    const Handle process(OpenProcess(kRights, FALSE, child.Id()));
    EXPECT_EQ(NameOf(process), own);
    EXPECT_EQ(NameOf(GetCurrentProcess()), own);

    HMODULE module = nullptr;
    DWORD size = 0;
    TCHAR name[4];
    const Handle waiter(OpenProcess(SYNCHRONIZE, FALSE, child.Id()));
    EXPECT_EQ(ErrorOf(EnumProcessModules(waiter, &module, sizeof module, &size)), ERROR_ACCESS_DENIED);
    EXPECT_EQ(ErrorOf(GetModuleBaseNameW(waiter, nullptr, name, 4)), ERROR_ACCESS_DENIED);
    EXPECT_EQ(ErrorOf(EnumProcessModules(nullptr, &module, sizeof module, &size)), ERROR_INVALID_HANDLE);
    EXPECT_EQ(ErrorOf(GetModuleBaseNameW(process, reinterpret_cast<HMODULE>(&size), name, 4)), ERROR_INVALID_HANDLE);
    if (test::UnlessWine(true, false)) {  // it writes past the room that it is given
        EXPECT_EQ(NameOf(process, 5), own.substr(0, 4));
        EXPECT_EQ(ErrorOf(GetModuleBaseNameW(process, nullptr, nullptr, 4)), ERROR_INVALID_PARAMETER);
        EXPECT_EQ(ErrorOf(GetModuleBaseNameW(process, nullptr, name, 0)), ERROR_INVALID_PARAMETER);
    }
    child.Kill();
    EXPECT_EQ(ErrorOf(EnumProcessModules(process, &module, sizeof module, &size)), ERROR_ACCESS_DENIED);
}

}  // namespace
