#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "support/environment.h"
#include "support/temp_folder.h"

namespace {

using test::InEnvironment;
using test::Narrow;
using test::TempFolder;
using test::Text;

// The last error of a call that must fail.
template <class Call>
DWORD ErrorOf(Call call) {
    SetLastError(ERROR_SUCCESS);
    EXPECT_FALSE(call());
    return GetLastError();
}

Text CurrentDirectory() {
    TCHAR buffer[4 * MAX_PATH];
    const DWORD length = GetCurrentDirectoryW(static_cast<DWORD>(std::size(buffer)), buffer);
    EXPECT_EQ(length, static_cast<DWORD>(lstrlenW(buffer)));
    return buffer;
}

class InDirectory {
public:
    explicit InDirectory(const Text& path) : before_(CurrentDirectory()) {
        EXPECT_TRUE(SetCurrentDirectoryW(path.c_str())) << GetLastError();
    }
    ~InDirectory() { EXPECT_TRUE(SetCurrentDirectoryW(before_.c_str())); }

private:
    Text before_;
};

TEST(Directories, AreCreatedOnceAndOnlyInWhatIsThere) {
    const TempFolder folder;
    folder.Write(_T("file"), "");
    EXPECT_TRUE(CreateDirectoryW(folder.Path(_T("new \u00E4")).c_str(), nullptr));
    EXPECT_NE(GetFileAttributesW(folder.Path(_T("new \u00E4")).c_str()) & FILE_ATTRIBUTE_DIRECTORY, 0u);
    const struct {
        Text path;
        DWORD error;
    } rows[] = {
        {folder.Path(_T("new \u00E4")), ERROR_ALREADY_EXISTS}, {folder.Path(_T("file")), ERROR_ALREADY_EXISTS},
        {folder.Path(_T("none\\new")), ERROR_PATH_NOT_FOUND},  {folder.Path(_T("file\\new")), ERROR_PATH_NOT_FOUND},
        {folder.Path(_T("a?b")), ERROR_INVALID_NAME},          {_T(""), ERROR_PATH_NOT_FOUND},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(Narrow(row.path));
        EXPECT_EQ(ErrorOf([&row] { return CreateDirectoryW(row.path.c_str(), nullptr); }), row.error);
    }
}

TEST(Directories, AreRemovedWhenEmpty) {
    const TempFolder folder;
    folder.MakeFolder(_T("full\\sub"));
    folder.Write(_T("file"), "");
    const struct {
        const TCHAR* name;
        DWORD error;
    } rows[] = {
        {_T("full"), ERROR_DIR_NOT_EMPTY},
        {_T("file"), ERROR_DIRECTORY},
        {_T("none"), ERROR_FILE_NOT_FOUND},
        {_T("none\\none"), ERROR_PATH_NOT_FOUND},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(Narrow(row.name));
        EXPECT_EQ(ErrorOf([&] { return RemoveDirectoryW(folder.Path(row.name).c_str()); }), row.error);
    }
    EXPECT_TRUE(RemoveDirectoryW(folder.Path(_T("full\\sub\\")).c_str()));
    EXPECT_TRUE(RemoveDirectoryW(folder.Path(_T("full")).c_str()));
    EXPECT_FALSE(folder.Has(_T("full")));
}

TEST(Directories, CurrentOneCanBeChangedButNotRemoved) {
    const TempFolder folder;
    const Text sub = folder.MakeFolder(_T("sub \u00FC"));
    folder.Write(_T("file"), "");
    {
        const InDirectory inside(folder.Path());
        EXPECT_EQ(Narrow(CurrentDirectory()), Narrow(folder.Path()));
        EXPECT_TRUE(SetCurrentDirectoryW(_T("sub \u00FC\\")));
        EXPECT_EQ(Narrow(CurrentDirectory()), Narrow(sub));
        EXPECT_EQ(ErrorOf([&sub] { return RemoveDirectoryW(sub.c_str()); }), ERROR_SHARING_VIOLATION);
        EXPECT_EQ(ErrorOf([] { return SetCurrentDirectoryW(_T("..\\file")); }), ERROR_DIRECTORY);
        EXPECT_EQ(ErrorOf([] { return SetCurrentDirectoryW(_T("none")); }), ERROR_FILE_NOT_FOUND);
        EXPECT_EQ(ErrorOf([] { return SetCurrentDirectoryW(_T("none\\none")); }), ERROR_PATH_NOT_FOUND);

        TCHAR small[4] = {_T('k')};
        EXPECT_EQ(GetCurrentDirectoryW(4, small), sub.size() + 1);
    }
    EXPECT_TRUE(RemoveDirectoryW(sub.c_str()));
    const InDirectory root(_T("C:\\"));
    EXPECT_EQ(Narrow(CurrentDirectory()), "C:\\");
}

TEST(Directories, FullPathsAreMadeFromTheText) {
    const TempFolder folder;
    const InDirectory inside(folder.Path());
    const struct {
        const TCHAR* path;
        Text full;
        const char* file_part;  // null where the path ends in a backslash
    } rows[] = {
        {_T("C:\\a\\.\\b\\..\\c.txt"), _T("C:\\a\\c.txt"), "c.txt"},
        {_T("C:/a//b/"), _T("C:\\a\\b\\"), nullptr},
        {_T("C:\\..\\.."), _T("C:\\"), nullptr},
        {_T("x\\*.dat"), folder.Path(_T("x\\*.dat")), "*.dat"},
        {_T("..\\none"), folder.Path().substr(0, folder.Path().rfind(_T('\\'))) + _T("\\none"), "none"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(Narrow(row.path));
        TCHAR full[4 * MAX_PATH];
        TCHAR* part = full;
        EXPECT_EQ(GetFullPathNameW(row.path, static_cast<DWORD>(std::size(full)), full, &part), row.full.size());
        EXPECT_EQ(Narrow(full), Narrow(row.full));
        EXPECT_EQ(part == nullptr ? "" : Narrow(part), row.file_part == nullptr ? "" : row.file_part);
        EXPECT_EQ(part == nullptr, row.file_part == nullptr);
        EXPECT_EQ(GetFullPathNameW(row.path, 3, full, nullptr), row.full.size() + 1);
    }
    EXPECT_EQ(ErrorOf([] { return GetFullPathNameW(_T(""), 0, nullptr, nullptr); }), ERROR_INVALID_NAME);
}

TEST(Directories, TempPathIsTheFirstThatTheEnvironmentNames) {
    const InEnvironment first(_T("TMP"), _T("C:\\first"));
    const InEnvironment second(_T("TEMP"), _T("C:\\second\\"));
    TCHAR path[MAX_PATH + 2];
    EXPECT_EQ(GetTempPathW(MAX_PATH, path), 9u);
    EXPECT_EQ(Narrow(path), "C:\\first\\");
    EXPECT_EQ(GetTempPathW(9, path), 10u);
    const InEnvironment without(_T("TMP"), nullptr);
    EXPECT_EQ(GetTempPathW(MAX_PATH, path), 10u);
    EXPECT_EQ(Narrow(path), "C:\\second\\");
}

TEST(Directories, TempNamesAreNewFilesOrMadeFromTheGivenNumber) {
    const TempFolder folder;
    TCHAR name[MAX_PATH];
    TCHAR other[MAX_PATH];
    EXPECT_NE(GetTempFileNameW(folder.Path().c_str(), _T("kadata"), 0, name), 0u);
    EXPECT_NE(GetTempFileNameW(folder.Path(_T("")).c_str(), _T("kadata"), 0, other), 0u);
    EXPECT_NE(Narrow(name), Narrow(other));
    EXPECT_EQ(Narrow(name).compare(0, folder.Path().size() + 4, Narrow(folder.Path(_T("kad")))), 0);
    EXPECT_EQ(test::ReadBytes(name), "");
    EXPECT_EQ(test::ReadBytes(other), "");

    EXPECT_EQ(GetTempFileNameW(folder.Path().c_str(), _T("k"), 0x12, name), 0x12u);
    EXPECT_EQ(Narrow(name), Narrow(folder.Path(_T("k12.tmp"))));
    EXPECT_EQ(GetFileAttributesW(name), INVALID_FILE_ATTRIBUTES);

    EXPECT_EQ(ErrorOf([&] { return GetTempFileNameW(folder.Path(_T("none")).c_str(), _T("k"), 0, name); }), ERROR_DIRECTORY);
    const Text long_folder = folder.Path(Text(MAX_PATH, _T('x')));
    EXPECT_EQ(ErrorOf([&] { return GetTempFileNameW(long_folder.c_str(), _T("k"), 0, name); }), ERROR_BUFFER_OVERFLOW);
}

}  // namespace
