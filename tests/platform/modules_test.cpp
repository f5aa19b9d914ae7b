#include <gtest/gtest.h>
#include <kadata/directory.h>
#include <tchar.h>
#include <windows.h>

#include <atomic>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

#include "support/last_error.h"
#include "support/temp_folder.h"
#include "support/wine.h"

namespace {

using test::ErrorOf;
using test::TempFolder;
using test::Text;

Text FileName(HMODULE module) {
    TCHAR path[4 * MAX_PATH];
    return Text(path, GetModuleFileNameW(module, path, 4 * MAX_PATH));
}

// A module of resources that the build puts beside this program.
Text ResourceModule() {
    const Text program = FileName(nullptr);
    return program.substr(0, program.find_last_of(_T('\\')) + 1) + _T("resource_module.dll");
}

TEST(ModuleFileNames, AreFullPathsAndCutWhenTheyDoNotFit) {
    const Text path = FileName(nullptr);
    ASSERT_GT(path.size(), 4u);
    EXPECT_EQ(path.substr(1, 2), _T(":\\"));
    EXPECT_NE(GetFileAttributesW(path.c_str()), static_cast<DWORD>(-1));
    EXPECT_EQ(FileName(GetModuleHandleW(nullptr)), path);

    TCHAR cut[6] = {_T('x'), _T('x'), _T('x'), _T('x'), _T('x'), _T('x')};
    EXPECT_EQ(GetModuleFileNameW(nullptr, cut, 5), 5u);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
    EXPECT_EQ(Text(cut, 6), path.substr(0, 4) + Text(test::UnlessWine(Text(_T("\0x"), 2), path.substr(4, 1) + _T("x"))));
}

TEST(Modules, AreCountedFoundByNameAndHaveOnlyTheFunctionsThatTheyExport) {
    EXPECT_EQ(ErrorOf(GetModuleHandleW(_T("resource_module"))), ERROR_MOD_NOT_FOUND);
    const HMODULE module = LoadLibraryW(_T("resource_module.dll"));
    ASSERT_NE(module, nullptr);
    EXPECT_EQ(LoadLibraryW(ResourceModule().c_str()), module);
    EXPECT_EQ(GetModuleHandleW(_T("RESOURCE_Module")), module);
    EXPECT_EQ(GetModuleHandleW(ResourceModule().c_str()), module);
    EXPECT_EQ(FileName(module), ResourceModule());
    EXPECT_EQ(ErrorOf(GetProcAddress(module, "Nothing")), ERROR_PROC_NOT_FOUND);
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_EQ(GetModuleHandleW(_T("resource_module.dll")), module);
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_EQ(GetModuleHandleW(_T("resource_module.dll")), nullptr);
    EXPECT_EQ(ErrorOf(FreeLibrary(module)), ERROR_MOD_NOT_FOUND);
    EXPECT_EQ(ErrorOf(FreeLibrary(nullptr)), ERROR_INVALID_HANDLE);
    EXPECT_EQ(ErrorOf(GetProcAddress(nullptr, "NoSuchFunctionAnywhere")), ERROR_PROC_NOT_FOUND);
}

TEST(Modules, AreSharedBetweenThreads) {
    std::atomic<int> failures{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&failures] {
            for (int round = 0; round < 100; ++round) {
                const HMODULE module = LoadLibraryW(_T("resource_module"));
                const bool found = module != nullptr && FindResourceW(module, MAKEINTRESOURCEW(7), RT_RCDATA) != nullptr;
                failures += !found || !FreeLibrary(module);
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(failures, 0);
    EXPECT_EQ(GetModuleHandleW(_T("resource_module")), nullptr);
}

TEST(Modules, TellWhyTheyDoNotLoad) {
    const TempFolder folder;
    const Text text = folder.Write(_T("text.dll"), std::string(300, 'x'));
    const Text half = folder.Write(_T("half.dll"), test::ReadBytes(ResourceModule()).substr(0, 100));
    const struct {
        const TCHAR* name;
        DWORD flags, error;
    } rows[] = {{nullptr, 0, ERROR_INVALID_PARAMETER},
                {_T("no_such_module_at_all"), 0, ERROR_MOD_NOT_FOUND},
                {text.c_str(), 0, ERROR_BAD_EXE_FORMAT},
                {half.c_str(), 0, ERROR_BAD_EXE_FORMAT},
                {text.c_str(), LOAD_LIBRARY_AS_DATAFILE, ERROR_BAD_EXE_FORMAT}};
    for (const auto& row : rows)
        EXPECT_EQ(ErrorOf(LoadLibraryExW(row.name, nullptr, row.flags)), row.error) << &row - rows;
    const DWORD error = ErrorOf(LoadLibraryExW(folder.Path(_T("none.dll")).c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE));
    EXPECT_EQ(error, static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
}

BOOL HandleOf(DWORD flags, const void* what, HMODULE& module) {
    module = GetModuleHandleW(nullptr);  // so that a null is seen
    return GetModuleHandleExW(flags, static_cast<LPCWSTR>(what), &module);
}

TEST(Modules, AreKnownByAnAddressInThem) {
    constexpr DWORD kAddress = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, kUncounted = GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    static const int here = 0;
    const void* const library = reinterpret_cast<const void*>(&CDirectory::GetExePath);
    const HMODULE program = GetModuleHandleW(nullptr);
    HMODULE found = nullptr;
    for (const DWORD flags : {kAddress, kAddress | kUncounted}) {
        EXPECT_TRUE(HandleOf(flags, &here, found));
        EXPECT_EQ(found, program);
        ASSERT_TRUE(HandleOf(flags, library, found));
        EXPECT_NE(FileName(found).find(_T("KaData.")), Text::npos);
    }
    EXPECT_TRUE(FreeLibrary(found));  // the counted one
    EXPECT_TRUE(HandleOf(0, nullptr, found) && found == program);

    ASSERT_TRUE(LoadLibraryW(_T("resource_module")) && HandleOf(0, _T("resource_module.dll"), found));
    HMODULE same = nullptr;
    EXPECT_TRUE(HandleOf(kUncounted, ResourceModule().c_str(), same) && same == found);
    EXPECT_TRUE(FreeLibrary(found) && FreeLibrary(found));
    EXPECT_FALSE(HandleOf(0, _T("resource_module.dll"), found));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_MOD_NOT_FOUND));
    EXPECT_EQ(found, nullptr);

    int local = 0;
    for (const auto& [flags, what, error] : {std::tuple<DWORD, const void*, DWORD>{kAddress, &local, ERROR_MOD_NOT_FOUND},
                                             {kUncounted | GET_MODULE_HANDLE_EX_FLAG_PIN, nullptr, ERROR_INVALID_PARAMETER},
                                             {0x100, nullptr, ERROR_INVALID_PARAMETER}}) {
        EXPECT_FALSE(HandleOf(flags, what, found));
        EXPECT_EQ(GetLastError(), error) << flags;
        EXPECT_EQ(found, nullptr);
    }
    EXPECT_EQ(ErrorOf(GetModuleHandleExW(0, nullptr, nullptr)), ERROR_INVALID_PARAMETER);
}

TEST(Modules, AreFoundInTheDefaultPlaces) {
    const HMODULE module = LoadLibraryExW(_T("resource_module.dll"), nullptr, LOAD_LIBRARY_SEARCH_DEFAULT_DIRS);
    EXPECT_EQ(FileName(module), ResourceModule());
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_EQ(ErrorOf(LoadLibraryExW(_T("no_such_module"), nullptr, LOAD_LIBRARY_SEARCH_DEFAULT_DIRS)), ERROR_MOD_NOT_FOUND);
}

}  // namespace
