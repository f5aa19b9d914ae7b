// How system paths lie in the native file system.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>
#include <tchar.h>
#include <windows.h>

#include <string>

#include "support/file_calls.h"
#include "support/native_path_linux.h"
#include "support/temp_folder.h"

namespace {

using test::Narrow;
using test::TempFolder;
using test::Text;

DWORD ErrorOf(const Text& path) {
    return test::Outcome(BOOL{GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES});
}

Text FinalPath(const Text& path) {
    const test::Handle file(test::Open(path, 0));
    Text final(1024, 0);
    final.resize(GetFinalPathNameByHandleW(file, final.data(), static_cast<DWORD>(final.size()), 0));
    return final;
}

TEST(NativePaths, LettersAndNetworkPathsLieBelowTheirRoots) {
    const TempFolder folder;
    const std::string root = test::Native(folder.Path());
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

TEST(NativePaths, KeepNamesAsTheyAreStored) {
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
        ASSERT_EQ(close(open((test::Native(folder.Path()) + "/" + row.native).c_str(), O_CREAT | O_WRONLY, 0600)), 0);
        EXPECT_EQ(FinalPath(path), _T("\\\\?\\") + path);
        EXPECT_TRUE(DeleteFileW(path.c_str()));
        EXPECT_EQ(ErrorOf(path), ERROR_FILE_NOT_FOUND);
    }
    EXPECT_EQ(ErrorOf(folder.Path(Text(256, u'n'))), ERROR_FILENAME_EXCED_RANGE);
    EXPECT_EQ(ErrorOf(folder.Path(Text(32768, u'n'))), ERROR_FILENAME_EXCED_RANGE);
}

}  // namespace
