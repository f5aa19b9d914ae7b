#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <string>

#include "support/temp_folder.h"

namespace {

using test::Narrow;
using test::TempFolder;
using test::Text;

Text FullPath(const Text& path) {
    Text full(1024, 0);
    full.resize(GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    return full;
}

// Makes a folder the current one until the end.
class CurrentFolder {
public:
    explicit CurrentFolder(const Text& path) : before_(FullPath(_T("."))) { EXPECT_TRUE(SetCurrentDirectoryW(path.c_str())); }
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;
    ~CurrentFolder() { SetCurrentDirectoryW(before_.c_str()); }

private:
    Text before_;
};

TEST(Paths, ResolveDotsInTheTextAlone) {
    const struct {
        const TCHAR* path;
        const char* full;
    } rows[] = {
        {_T("C:\\"), "C:\\"},
        {_T("c:/a//b\\\\c"), "C:\\a\\b\\c"},
        {_T("C:\\a\\.\\b\\..\\c"), "C:\\a\\c"},
        {_T("C:\\..\\..\\a"), "C:\\a"},
        {_T("C:\\a\\.."), "C:\\"},
        {_T("C:\\a\\..\\"), "C:\\"},
        {_T("C:\\a\\"), "C:\\a\\"},
        {_T("C:\\no such folder\\..\\a b"), "C:\\a b"},
        {_T("C:\\a*b?"), "C:\\a*b?"},
        {_T("\\\\server\\share\\a\\..\\..\\b"), "\\\\server\\share\\b"},
        {_T("//server/share"), "\\\\server\\share"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(Narrow(row.path));
        // Only the case of a drive's letter is the system's own affair.
        std::string full = Narrow(FullPath(row.path));
        full[0] = full[0] == 'c' ? 'C' : full[0];
        EXPECT_EQ(full, row.full);
    }
}

TEST(Paths, AreRelativeToTheCurrentFolder) {
    const TempFolder folder;
    folder.MakeFolder(_T("in"));
    folder.Write(_T("x"), "");
    const CurrentFolder here(folder.Path(_T("in")));
    const Text base = FullPath(_T(".."));
    const Text drive = base.substr(0, 2);
    const struct {
        Text path;
        Text full;
    } rows[] = {
        {_T("a"), base + _T("\\in\\a")},         {_T(".\\a/"), base + _T("\\in\\a\\")}, {_T("..\\x"), base + _T("\\x")},
        {drive + _T("a"), base + _T("\\in\\a")}, {_T("\\a"), drive + _T("\\a")},        {drive + _T(".."), base},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(Narrow(row.path));
        EXPECT_EQ(Narrow(FullPath(row.path)), Narrow(row.full));
    }
    for (const Text& path : {Text(_T("../x")), Text(_T(".\\..\\.\\x")), _T("\\\\?\\") + base + _T("\\x")}) {
        EXPECT_NE(GetFileAttributesW(path.c_str()), INVALID_FILE_ATTRIBUTES) << Narrow(path);
    }
}

TEST(Paths, FailByWhatIsWrongWithThem) {
    const TempFolder folder;
    folder.Write(_T("file"), "");
    const struct {
        Text path;
        DWORD error;
    } rows[] = {
        {_T(""), ERROR_PATH_NOT_FOUND},
        {folder.Path(_T("missing")), ERROR_FILE_NOT_FOUND},
        {folder.Path(_T("missing\\x")), ERROR_PATH_NOT_FOUND},
        {folder.Path(_T("file\\x")), ERROR_PATH_NOT_FOUND},
        {folder.Path(_T("a<b")), ERROR_INVALID_NAME},
        {folder.Path(_T("a>b")), ERROR_INVALID_NAME},
        {folder.Path(_T("a\"b")), ERROR_INVALID_NAME},
        {folder.Path(_T("a|b")), ERROR_INVALID_NAME},
        {folder.Path(_T("a?b")), ERROR_INVALID_NAME},
        {folder.Path(_T("a*b")), ERROR_INVALID_NAME},
        {folder.Path(_T("a\nb")), ERROR_INVALID_NAME},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(Narrow(row.path));
        SetLastError(ERROR_SUCCESS);
        EXPECT_EQ(CreateFileW(row.path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr), INVALID_HANDLE_VALUE);
        EXPECT_EQ(GetLastError(), row.error);
    }
}

}  // namespace
