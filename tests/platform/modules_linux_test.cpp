// Shared objects, and where they are looked for.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <tchar.h>
#include <windows.h>

#include <filesystem>
#include <string>

#include "support/last_error.h"
#include "support/native_path_linux.h"
#include "support/temp_folder.h"

namespace {

using test::ErrorOf, test::Narrow, test::Native, test::TempFolder, test::Text;

// zlib, which the library itself needs, by the name that the linker knows.
constexpr TCHAR kZlib[] = _T("libz.so.1");

std::string NativeZlib() {
    const HMODULE module = LoadLibraryW(kZlib);
    EXPECT_NE(module, nullptr);
    TCHAR path[4 * MAX_PATH] = {};
    EXPECT_GT(GetModuleFileNameW(module, path, 4 * MAX_PATH), 0u);
    EXPECT_TRUE(FreeLibrary(module));
    return Native(path);
}

TEST(LinuxModules, GiveTheFunctionsOfASharedObjectButNotOfWhatItNeeds) {
    const HMODULE module = LoadLibraryW(kZlib);
    ASSERT_NE(module, nullptr);
    const auto version = reinterpret_cast<const char* (*)()>(reinterpret_cast<void*>(GetProcAddress(module, "zlibVersion")));
    ASSERT_NE(version, nullptr);
    EXPECT_EQ(version()[0], '1');
    EXPECT_EQ(ErrorOf(GetProcAddress(module, "strlen")), ERROR_PROC_NOT_FOUND);  // of a library that it needs
    EXPECT_EQ(LoadLibraryW(_T("LIBZ.SO.1")), module);
    EXPECT_EQ(ErrorOf(FindResourceW(module, MAKEINTRESOURCEW(1), RT_STRING)), ERROR_RESOURCE_DATA_NOT_FOUND);
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_EQ(ErrorOf(GetProcAddress(module, "zlibVersion")), ERROR_MOD_NOT_FOUND);
}

TEST(LinuxModules, AreSharedObjectsOfSeveralNamesInTheFolderThatIsNamed) {
    const TempFolder folder;
    const std::string zlib = NativeZlib();
    const std::string native = Native(folder.Path());
    for (const char* const name : {"/libplain.so", "/liblua5.1.so.0", "/libdirect.so.2"})
        std::filesystem::copy_file(zlib, native + name);
    for (const TCHAR* const name : {_T("plain.dll"), _T("plain"), _T("lua5.1.dll"), _T("LUA5.1.DLL"), _T("libdirect.so.2")}) {
        SCOPED_TRACE(Narrow(name));
        const HMODULE module = LoadLibraryW(folder.Path(name).c_str());
        ASSERT_NE(module, nullptr);
        EXPECT_NE(GetProcAddress(module, "crc32"), nullptr);
        EXPECT_EQ(GetModuleHandleW(name), module);
        EXPECT_TRUE(FreeLibrary(module));
    }
}

TEST(LinuxModules, AreNoDamagedOrForeignFiles) {
    const TempFolder folder;
    const std::string zlib = test::ReadBytes(Text(_T("C:")) + test::Widen(NativeZlib()));
    std::string foreign = zlib;
    foreign.replace(18, 2, "\xB7\0", 2);  // for another machine
    for (const std::string& damaged : {zlib.substr(0, 200), foreign})
        EXPECT_EQ(ErrorOf(LoadLibraryW(folder.Write(_T("damaged.so"), damaged).c_str())), ERROR_BAD_EXE_FORMAT);
    const Text whole = folder.Write(_T("whole.so"), zlib);
    EXPECT_EQ(ErrorOf(LoadLibraryExW(whole.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE)), ERROR_BAD_EXE_FORMAT);
    ASSERT_EQ(mkfifo(Native(folder.Path(_T("pipe.so"))).c_str(), 0600), 0);
    EXPECT_EQ(ErrorOf(LoadLibraryW(folder.Path(_T("pipe.so")).c_str())), ERROR_MOD_NOT_FOUND);
}

TEST(LinuxModules, AreNeverLookedForInTheCurrentFolder) {
    const TempFolder folder;
    const std::string native = Native(folder.Path());
    std::filesystem::create_directory(native + "/sub");
    for (const char* const name : {"/libplanted.so", "/sub/libplanted.so"})
        std::filesystem::copy_file(NativeZlib(), native + name);
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(native);
    for (const TCHAR* const name :
         {_T("planted"), _T("libplanted.so"), _T(".\\planted.dll"), _T("sub\\planted.dll"), _T("C:planted.dll")}) {
        SCOPED_TRACE(Narrow(name));
        EXPECT_EQ(ErrorOf(LoadLibraryW(name)), ERROR_MOD_NOT_FOUND);
        EXPECT_EQ(ErrorOf(LoadLibraryExW(name, nullptr, LOAD_LIBRARY_AS_DATAFILE)), ERROR_FILE_NOT_FOUND);
    }
    std::filesystem::current_path(before);
}

}  // namespace
