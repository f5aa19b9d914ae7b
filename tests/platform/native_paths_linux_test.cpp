// How system paths lie in the native file system, and names that only it can hold.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <tchar.h>
#include <unistd.h>
#include <windows.h>

#include <string>

#include "support/file_calls.h"
#include "support/native_path_linux.h"
#include "support/temp_folder.h"

namespace {

using test::Narrow;
using test::Native;
using test::Open;
using test::TempFolder;
using test::Text;

DWORD ErrorOf(const Text& path) {
    return test::Outcome(BOOL{GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES});
}

Text FinalPath(const Text& path) {
    const test::Handle file(Open(path, 0));
    Text final(1024, 0);
    final.resize(GetFinalPathNameByHandleW(file, final.data(), static_cast<DWORD>(final.size()), 0));
    return final;
}

TEST(LinuxFiles, AndNetworkPathsLieBelowTheirRoots) {
    const TempFolder folder;
    const std::string root = Native(folder.Path());
    folder.MakeFolder(_T("drive\\sub"));
    folder.MakeFolder(_T("net\\server\\share"));
    folder.Write(_T("drive\\sub\\x"), "");
    folder.Write(_T("net\\server\\share\\y"), "");
    folder.Write(_T("top"), "");
    setenv("KADATA_DRIVES", ("Q=" + root + "/drive/").c_str(), 1);
    const struct {
        const TCHAR* path;
        DWORD without_root, error;
    } rows[] = {
        {_T("q:/sub/x"), ERROR_SUCCESS, ERROR_SUCCESS},
        {_T("Q:sub\\x"), ERROR_SUCCESS, ERROR_SUCCESS},  // the current folder lies elsewhere
        {_T("\\\\?\\Q:\\sub\\x"), ERROR_SUCCESS, ERROR_SUCCESS},
        {_T("Q:\\..\\top"), ERROR_FILE_NOT_FOUND, ERROR_FILE_NOT_FOUND},
        {_T("R:\\x"), ERROR_PATH_NOT_FOUND, ERROR_PATH_NOT_FOUND},
        {_T("\\\\.\\PhysicalDrive0"), ERROR_PATH_NOT_FOUND, ERROR_PATH_NOT_FOUND},
        {_T("//server/share/y"), ERROR_BAD_NETPATH, ERROR_SUCCESS},
        {_T("\\\\?\\UNC\\server\\share\\y"), ERROR_BAD_NETPATH, ERROR_SUCCESS},
        {_T("\\\\server\\share"), ERROR_BAD_NETPATH, ERROR_SUCCESS},
        {_T("\\\\server\\share\\..\\..\\..\\top"), ERROR_BAD_NETPATH, ERROR_FILE_NOT_FOUND},
        {_T("\\\\..\\..\\drive\\sub\\x"), ERROR_BAD_NETPATH, ERROR_BAD_NETPATH},
        {_T("\\\\server"), ERROR_BAD_NETPATH, ERROR_BAD_NETPATH},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(Narrow(row.path));
        EXPECT_EQ(ErrorOf(row.path), row.without_root);
        setenv("KADATA_UNC_ROOT", (root + "/net").c_str(), 1);
        EXPECT_EQ(ErrorOf(row.path), row.error);
        unsetenv("KADATA_UNC_ROOT");
    }
    EXPECT_EQ(Narrow(FinalPath(folder.Path(_T("drive\\sub\\x")))), "\\\\?\\Q:\\sub\\x");
    EXPECT_EQ(Narrow(FinalPath(folder.Path(_T("drive")))), "\\\\?\\Q:\\");
    unsetenv("KADATA_DRIVES");
}

TEST(LinuxFiles, AreKeptAndFoundAsTheyAreStored) {
    const TempFolder folder;
    const struct {
        std::string native;
        Text name;
    } rows[] = {
        {"trailing. ", _T("trailing. ")},
        {"CON", _T("CON")},
        {"a:b", _T("a:b")},
        {"gr\u00FC\u00DFe \U0001F9B7", _T("gr\u00FC\u00DFe \U0001F9B7")},
        {"caf\xE9 \xC3", {u'c', u'a', u'f', u'\xDCE9', u' ', u'\xDCC3'}},  // no UTF-8: each such byte is a lone surrogate
        {std::string(255, 'n'), Text(255, u'n')},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.native);
        const Text path = folder.Path(row.name);
        ASSERT_EQ(close(open((Native(folder.Path()) + "/" + row.native).c_str(), O_CREAT | O_WRONLY, 0600)), 0);
        EXPECT_EQ(FinalPath(path), _T("\\\\?\\") + path);
        WIN32_FIND_DATAW found{};
        EXPECT_TRUE(FindClose(FindFirstFileW((path.substr(0, path.size() - 1) + _T("?")).c_str(), &found)));
        EXPECT_EQ(Text(found.cFileName), row.name);
        EXPECT_TRUE(DeleteFileW(path.c_str()));
        EXPECT_EQ(ErrorOf(path), ERROR_FILE_NOT_FOUND);
    }
    EXPECT_EQ(ErrorOf(folder.Path(Text(256, u'n'))), ERROR_FILENAME_EXCED_RANGE);
    EXPECT_EQ(ErrorOf(folder.Path(Text(32768, u'n'))), ERROR_FILENAME_EXCED_RANGE);
}

TEST(LinuxFiles, TakenByAnotherMeanwhileAreSparedByADisposal) {
    const TempFolder folder;
    const std::string victim = Native(folder.Write(_T("x"), "first"));
    const test::Handle base(Open(folder.Path(), FILE_LIST_DIRECTORY | SYNCHRONIZE));
    test::Handle opened;
    ASSERT_EQ(OpenIn(base, _T("x"), FILE_OPEN_REPARSE_POINT, opened), ERROR_SUCCESS);
    ASSERT_EQ(rename(victim.c_str(), (victim + "-moved").c_str()), 0);
    folder.Write(_T("x"), "second");
    EXPECT_EQ(Dispose(opened), ERROR_SUCCESS);
    opened.Close();
    EXPECT_EQ(folder.Read(_T("x")), "second");
    EXPECT_EQ(folder.Read(_T("x-moved")), "first") << "what was moved out of reach is not looked for";
}

TEST(LinuxFiles, ThatAListingShowsCanAllBeOpened) {
    const TempFolder folder;
    const test::Handle base(Open(folder.Path(), FILE_LIST_DIRECTORY | SYNCHRONIZE));
    for (const std::string name : {"what?", "a\\b", "*", "caf\xE9", "\"<|>"}) {
        ASSERT_EQ(close(open((Native(folder.Path()) + "/" + name).c_str(), O_CREAT | O_WRONLY, 0600)), 0);
    }
    int calls = 0;
    for (const auto& [name, size] : test::List(base, 4096, calls)) {
        test::Handle opened;
        if (name != _T(".") && name != _T("..")) {
            EXPECT_EQ(OpenIn(base, name, FILE_OPEN_REPARSE_POINT, opened), ERROR_SUCCESS) << Narrow(name);
            EXPECT_EQ(Dispose(opened), ERROR_SUCCESS) << Narrow(name);
        }
    }
    EXPECT_EQ(test::List(base, 4096, calls).size(), 2U) << "the dots";
}

TEST(LinuxFiles, AreFoundOnceAlthoughEachIsRenamedAsItIsFound) {
    const TempFolder folder;
    for (int i = 0; i < 3000; ++i) {
        folder.Write(_T("f") + test::Widen(std::to_string(i)), "");
    }
    int found = 0;
    WIN32_FIND_DATAW data;
    const HANDLE search = FindFirstFileW(folder.Path(_T("f*")).c_str(), &data);
    for (BOOL more = TRUE; more && found < 4000; more = FindNextFileW(search, &data)) {
        const std::string path = Native(folder.Path(data.cFileName));
        found += rename(path.c_str(), (path + "+").c_str()) == 0;
    }
    EXPECT_EQ(found, 3000);
    EXPECT_TRUE(FindClose(search));
}

}  // namespace
