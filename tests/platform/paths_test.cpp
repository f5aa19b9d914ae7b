#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <string>

#include "support/file_calls.h"
#include "support/temp_folder.h"

namespace {

using test::Narrow;
using test::TempFolder;
using test::Text;

// Only the case of a drive's letter is the system's own affair.
std::string FullPath(const Text& path) {
    TCHAR full[1024] = {};
    EXPECT_NE(GetFullPathNameW(path.c_str(), 1024, full, nullptr), 0U);
    full[0] = full[0] == _T('c') ? _T('C') : full[0];
    return Narrow(full);
}

TEST(Paths, ResolveDotsInTheTextAlone) {
    const struct {
        const TCHAR* path;
        const char* full;
    } rows[] = {
        {_T("c:/a//b\\\\c"), "C:\\a\\b\\c"},
        {_T("C:\\a\\.\\b\\..\\c"), "C:\\a\\c"},
        {_T("C:\\..\\..\\a"), "C:\\a"},
        {_T("C:\\a\\.."), "C:\\"},
        {_T("C:\\a\\"), "C:\\a\\"},
        {_T("C:\\no such folder\\..\\a*b?"), "C:\\a*b?"},
        {_T("\\\\server\\share\\a\\..\\..\\b"), "\\\\server\\share\\b"},
        {_T("//server/share"), "\\\\server\\share"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(FullPath(row.path), row.full) << Narrow(row.path);
    }
}

TEST(Paths, AreRelativeToTheCurrentFolder) {
    const TempFolder folder;
    const Text before = test::Widen(FullPath(_T(".")));
    ASSERT_TRUE(SetCurrentDirectoryW(folder.MakeFolder(_T("in")).c_str()));
    folder.Write(_T("x"), "");
    const std::string base = FullPath(_T(".."));
    const Text drive = test::Widen(base.substr(0, 2));
    EXPECT_EQ(FullPath(_T(".\\a/")), base + "\\in\\a\\");
    EXPECT_EQ(FullPath(_T("..\\x")), base + "\\x");
    EXPECT_EQ(FullPath(drive + _T("a")), base + "\\in\\a");
    EXPECT_EQ(FullPath(_T("\\a")), base.substr(0, 2) + "\\a");
    for (const Text& path : {Text(_T(".\\../.\\x")), _T("\\\\?\\") + test::Widen(base) + _T("\\x")}) {
        EXPECT_NE(GetFileAttributesW(path.c_str()), INVALID_FILE_ATTRIBUTES) << Narrow(path);
    }
    EXPECT_TRUE(SetCurrentDirectoryW(before.c_str()));
}

TEST(Paths, FailByWhatIsWrongWithThem) {
    const TempFolder folder;
    folder.Write(_T("file"), "");
    EXPECT_EQ(test::Outcome(test::Open(_T(""), GENERIC_READ)), ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(test::Outcome(test::Open(folder.Path(_T("file\\x")), GENERIC_READ)), ERROR_PATH_NOT_FOUND);
    for (const TCHAR wrong : Text(_T("<>\"|?*\n"))) {
        const Text path = folder.Path(_T("a")) + wrong;
        EXPECT_EQ(test::Outcome(test::Open(path, GENERIC_READ)), ERROR_INVALID_NAME) << Narrow(path);
    }
}

}  // namespace
