#include "directory_test_support.h"

using test::ExpectAccessDenied;
using test::TempFolder;

TEST(DirectoryTree, IsMadeWithAllItsParentsAndNamesThePartThatCannotBeMade) {
    const TempFolder folder;
    const CString dir = folder.Path(_T("a\\b c\\\u00FC")).c_str();
    EXPECT_EQ(CDirectory::Make(dir + _T("\\")), 1);
    EXPECT_TRUE(CDirectory::Exist(dir));
    EXPECT_EQ(CDirectory::Make(dir), 1);
    EXPECT_EQ(CDirectory::Make(_T("C:\\")), 1);
    const CString file = folder.Write(_T("file"), "").c_str();
    const UINT mode = SetErrorMode(SEM_NOOPENFILEERRORBOX);
    const std::pair<CString, CString> rows[] = {{file + _T("\\a\\b"), file},
                                                {file, file},
                                                {_T(""), _T("")},
                                                // Server and share are not made.
                                                {_T("\\\\no-server\\share\\a\\b"), _T("\\\\no-server\\share\\a")},
                                                {_T("\\\\no-server\\share"), _T("\\\\no-server\\share")}};
    for (const auto& [path, failing] : rows)
        ExpectAccessDenied(failing, [&path = path] { CDirectory::Make(path); });
    EXPECT_EQ(ExpectAccessDenied(file, [&] { CDirectory::Make(file); }), LONG{ERROR_ALREADY_EXISTS});
    EXPECT_EQ(SetErrorMode(mode), UINT{SEM_NOOPENFILEERRORBOX});
}

TEST(DirectoryTree, IsNotRemovedWhenItIsNone) {
    for (const LPCTSTR root : {_T("C:\\"), _T("C:"), _T("\\"), _T(""), _T("C:\\x\\.."), _T("\\\\?\\C:\\")})
        EXPECT_EQ(ExpectAccessDenied(root, [&] { CDirectory::Remove(root); }), LONG{ERROR_ACCESS_DENIED});
    const TempFolder folder;
    folder.Write(_T("file"), "");
    for (const LPCTSTR name : {_T("file"), _T("none"), _T("f*")})
        EXPECT_EQ(CDirectory::Remove(folder.Path(name).c_str()), 0);
    EXPECT_TRUE(folder.Has(_T("file")));
}

TEST(DirectoryTree, IsRemovedWhenLargeAndDeep) {
    const TempFolder folder;
    test::Text deep = _T("tree");
    for (int i = 0; i < 100; ++i)
        deep += _T("\\deep");
    CDirectory::Make(folder.Path(deep).c_str());
    folder.Write(deep + _T("\\end"), "x");
    for (int i = 0; i < 400; ++i)  // a listing of several blocks
        folder.Write(test::Widen("tree\\entry " + std::string(200, 'x') + std::to_string(i)), "");
    folder.Write(test::Widen("tree\\name with blanks \xC3\xBC" + std::string(236, 'x')), "");  // 255 bytes
    EXPECT_EQ(CDirectory::Remove(folder.Path(_T("tree\\")).c_str()), 1);
    EXPECT_FALSE(folder.Has(_T("tree")));
}

TEST(DirectoryTree, StaysFromALockedFileOn) {
    const TempFolder folder;
    folder.MakeFolder(_T("tree\\sub"));
    const test::Text locked = folder.Write(_T("tree\\sub\\locked"), "x");
    const CString tree = folder.Path(_T("tree")).c_str();
    {
        const test::Handle holder = test::Exclusive(locked);
        EXPECT_EQ(ExpectAccessDenied(locked.c_str(), [&] { CDirectory::Remove(tree); }), LONG{ERROR_SHARING_VIOLATION});
    }
    EXPECT_EQ(CDirectory::Remove(tree), 1);
}
