#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <string>

#include "support/last_error.h"
#include "support/temp_folder.h"
#include "support/wine.h"

namespace {

using test::ErrorOf;
using test::Narrow;
using test::TempFolder;
using test::Text;

Text CurrentDirectory() {
    TCHAR buffer[4 * MAX_PATH];
    return Text(buffer, GetCurrentDirectoryW(static_cast<DWORD>(std::size(buffer)), buffer));
}

class InDirectory {
public:
    explicit InDirectory(const Text& path) { EXPECT_TRUE(SetCurrentDirectoryW(path.c_str())) << GetLastError(); }
    ~InDirectory() { EXPECT_TRUE(SetCurrentDirectoryW(before_.c_str())); }

private:
    const Text before_ = CurrentDirectory();
};

TEST(Directories, AreCreatedOnceAndRemovedWhenEmpty) {
    const TempFolder folder;
    folder.Write(_T("file"), "");
    EXPECT_TRUE(CreateDirectoryW(folder.Path(_T("new \u00E4")).c_str(), nullptr));
    EXPECT_TRUE(CreateDirectoryW(folder.Path(_T("new \u00E4\\sub")).c_str(), nullptr));
    const struct {
        const TCHAR* name;
        DWORD creation, removal;
    } rows[] = {
        {_T("new \u00E4"), ERROR_ALREADY_EXISTS, ERROR_DIR_NOT_EMPTY},
        {_T("file"), ERROR_ALREADY_EXISTS, ERROR_DIRECTORY},
        {_T("none\\none"), ERROR_PATH_NOT_FOUND, ERROR_PATH_NOT_FOUND},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(Narrow(row.name));
        EXPECT_EQ(ErrorOf(CreateDirectoryW(folder.Path(row.name).c_str(), nullptr)), row.creation);
        EXPECT_EQ(ErrorOf(RemoveDirectoryW(folder.Path(row.name).c_str())), row.removal);
    }
    EXPECT_EQ(ErrorOf(CreateDirectoryW(folder.Path(_T("a?b")).c_str(), nullptr)), ERROR_INVALID_NAME);
    EXPECT_EQ(ErrorOf(CreateDirectoryW(_T(""), nullptr)), ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(ErrorOf(RemoveDirectoryW(folder.Path(_T("none")).c_str())), ERROR_FILE_NOT_FOUND);
    EXPECT_TRUE(RemoveDirectoryW(folder.Path(_T("new \u00E4\\sub\\")).c_str()));
    EXPECT_TRUE(RemoveDirectoryW(folder.Path(_T("new \u00E4")).c_str()));
    EXPECT_FALSE(folder.Has(_T("new \u00E4")));
}

TEST(Directories, CurrentOneCanBeChangedButNotRemoved) {
    const TempFolder folder;
    const Text sub = folder.MakeFolder(_T("sub \u00FC"));
    folder.Write(_T("file"), "");
    {
        const InDirectory inside(folder.Path());
        EXPECT_TRUE(SetCurrentDirectoryW(_T("sub \u00FC\\")));
        EXPECT_EQ(Narrow(CurrentDirectory()), Narrow(sub));
        EXPECT_EQ(ErrorOf(RemoveDirectoryW(sub.c_str())), ERROR_SHARING_VIOLATION);
        EXPECT_EQ(ErrorOf(SetCurrentDirectoryW(_T("..\\file"))), ERROR_DIRECTORY);
        EXPECT_EQ(ErrorOf(SetCurrentDirectoryW(_T("none"))), ERROR_FILE_NOT_FOUND);
        EXPECT_EQ(ErrorOf(SetCurrentDirectoryW(_T("none\\none"))), ERROR_PATH_NOT_FOUND);
        TCHAR small[4] = {_T('k')};
        EXPECT_EQ(GetCurrentDirectoryW(4, small), sub.size() + 1);
        TCHAR full[MAX_PATH];
        TCHAR* part = nullptr;
        EXPECT_EQ(GetFullPathNameW(_T("x\\*.dat"), MAX_PATH, full, &part), sub.size() + 8);
        EXPECT_EQ(part, full + sub.size() + 3);
        EXPECT_EQ(GetFullPathNameW(_T("C:/a/"), MAX_PATH, full, &part), 5u);
        EXPECT_EQ(part, nullptr) << "a backslash at the end";
    }
    EXPECT_TRUE(RemoveDirectoryW(sub.c_str()));
    const InDirectory root(_T("C:\\"));
    EXPECT_EQ(Narrow(CurrentDirectory()), "C:\\");
}

TEST(Directories, TempNamesAreNewFilesOrMadeFromTheGivenNumber) {
    const TempFolder folder;
    TCHAR name[MAX_PATH], other[MAX_PATH];
    EXPECT_NE(GetTempFileNameW(folder.Path().c_str(), _T("kadata"), 0, name), 0u);
    EXPECT_NE(GetTempFileNameW(folder.Path(_T("")).c_str(), _T("kadata"), 0, other), 0u);
    EXPECT_NE(Narrow(name), Narrow(other));
    EXPECT_EQ(Narrow(name).compare(0, folder.Path().size() + 4, Narrow(folder.Path(_T("kad")))), 0);
    EXPECT_EQ(test::ReadBytes(name) + test::ReadBytes(other), "");

    EXPECT_EQ(GetTempFileNameW(folder.Path().c_str(), _T("k"), 0x12, name), 0x12u);
    EXPECT_EQ(Narrow(name), Narrow(folder.Path(_T("k12.tmp"))));
    EXPECT_EQ(GetFileAttributesW(name), INVALID_FILE_ATTRIBUTES);

    EXPECT_EQ(ErrorOf(GetTempFileNameW(folder.Path(_T("none")).c_str(), _T("k"), 0, name)), ERROR_DIRECTORY);
    const Text long_folder = folder.Path(Text(MAX_PATH, _T('x')));
    EXPECT_EQ(ErrorOf(GetTempFileNameW(long_folder.c_str(), _T("k"), 0, name)),
              test::UnlessWine<DWORD>(ERROR_BUFFER_OVERFLOW, ERROR_DIRECTORY));
}

}  // namespace
