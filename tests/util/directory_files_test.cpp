#include "directory_test_support.h"

using test::NamesIn;
using test::TempFolder;

namespace {

constexpr LONGLONG kNow = 1'700'000'000, kDay = 86'400;

void SetWrittenAt(const test::Text& path, LONGLONG secondsSince1970) {
    constexpr LONGLONG kFrom1601To1970 = 11'644'473'600;
    const auto ticks = static_cast<ULONGLONG>((secondsSince1970 + kFrom1601To1970) * 10'000'000);
    const FILETIME written = {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
    const test::Handle file = test::Exclusive(path);
    EXPECT_TRUE(SetFileTime(file, nullptr, nullptr, &written));
}

// The result, and after it what became of *equal.
std::pair<int, int> Compare(const test::Text& first, const test::Text& second) {
    int equal = 7;
    const int result = CDirectory::Compare(first.c_str(), second.c_str(), &equal);
    return {result, equal};
}

}  // namespace

TEST(DirectoryFiles, AreToldFromDirectories) {
    const TempFolder folder;
    folder.Write(_T("file"), "");
    folder.MakeFolder(_T("sub"));
    const CString dir = folder.Path().c_str();
    const std::pair<CString, int> directories[] = {{dir, 16},     {dir + _T("\\file"), 0}, {dir + _T("\\"), 0},   {_T(""), 0},
                                                   {_T("c:"), 1}, {_T("C:\\"), 1},         {dir + _T("\\s*"), 16}};
    for (const auto& [path, expected] : directories)
        EXPECT_EQ(CDirectory::Exist(path), expected) << test::Narrow(path);
    for (const CString& in : {dir, dir + _T("\\")})
        EXPECT_TRUE(CDirectory::FileExist(in, _T("file")) && !CDirectory::FileExist(in, _T("sub")));
    EXPECT_TRUE(CDirectory::FileExist(dir + _T("\\file"), _T("")) && !CDirectory::FileExist(_T(""), _T("")));
}

TEST(DirectoryFiles, AreListedAndDeletedByPattern) {
    const TempFolder folder;
    const std::string longName = "name with blanks \xC3\xBC" + std::string(232, 'x') + ".dat";  // 255 bytes
    for (const std::string& name : {std::string("a.dat"), std::string("b.txt"), longName})
        folder.Write(test::Widen(name), "");
    folder.MakeFolder(_T("sub.dat"));
    const CString dir = folder.Path().c_str();
    EXPECT_EQ(NamesIn(dir, _T("*.DAT")), "a.dat " + longName + " sub.dat ");
    EXPECT_EQ(NamesIn(dir + _T("\\"), _T("*.*"), FILE_ATTRIBUTE_DIRECTORY), "sub.dat ");
    EXPECT_EQ(NamesIn(dir + _T("\\none")), "");
    CStringArray names;
    names.Add(_T("before"));
    EXPECT_EQ(CDirectory::ListFiles(dir, names, _T("b.*"), 0xFFFFFFFF), 2);
    CDirectory::DeleteFiles(folder.Path(_T("*.dat")).c_str());
    CDirectory::DeleteFiles(folder.Path(_T("none\\*.txt")).c_str());
    EXPECT_EQ(NamesIn(dir), "b.txt sub.dat ");
    const test::Text locked = folder.Path(_T("b.txt"));
    const test::Handle holder = test::Exclusive(locked);
    const auto deleteIt = [&] { CDirectory::DeleteFiles(folder.Path(_T("*.t?t")).c_str()); };
    EXPECT_EQ(test::ExpectAccessDenied(locked.c_str(), deleteIt), LONG{ERROR_SHARING_VIOLATION});
}

TEST(DirectoryFiles, AreDeletedByAge) {
    const TempFolder folder;
    const std::pair<LPCTSTR, LONGLONG> files[] = {{_T("border.x"), kNow - 2 * kDay},     {_T("older.x"), kNow - 2 * kDay - 1},
                                                  {_T("before 1970.x"), -1'000'000'000}, {_T("locked.x"), 0},
                                                  {_T("future.x"), kNow + kDay},         {_T("old.other"), 0}};
    for (const auto& [name, writtenAt] : files)
        SetWrittenAt(folder.Write(name, "x"), writtenAt);
    folder.MakeFolder(_T("sub"));
    const CString dir = folder.Path().c_str();
    {
        const test::Handle holder = test::Exclusive(folder.Path(_T("locked.x")));
        EXPECT_EQ(CDirectory::DeleteOlderFiles(dir, _T("*.x"), 2, kNow), 2);
    }
    EXPECT_EQ(CDirectory::DeleteOlderFiles(dir, _T("*.*"), 0xFFFFFFFF, kNow), 0);
    EXPECT_EQ(NamesIn(dir), "border.x future.x locked.x old.other sub ");
    EXPECT_EQ(CDirectory::DeleteOlderFiles(dir, _T("*.*"), 1), 4);
    folder.Write(_T("new"), "");
    EXPECT_EQ(CDirectory::DeleteOlderFiles(dir + _T("\\"), _T("*.*"), 0, kNow), 1);
    EXPECT_EQ(NamesIn(dir), "sub ");
}

TEST(DirectoryFiles, AreComparedByteByByte) {
    using Pair = std::pair<int, int>;
    const TempFolder folder;
    const std::string block(65'536, 'b');
    const std::pair<std::string, std::string> rows[] = {
        {"", ""}, {"a", "b"}, {"a", "aa"}, {block, block}, {block + "x", block + "x"}, {block + "x", block + "y"},
    };
    for (const auto& [first, second] : rows)
        EXPECT_EQ(Compare(folder.Write(_T("1"), first), folder.Write(_T("2"), second)), Pair(1, first == second));
    const test::Text file = folder.Path(_T("1"));
    EXPECT_EQ(Compare(file, folder.Path(_T("none"))), Pair(0, 0));
    EXPECT_EQ(Compare(folder.Path(), file), Pair(0, 0));
    EXPECT_EQ(CDirectory::Compare(file.c_str(), nullptr, nullptr), 0);
    const test::Text huge = folder.Write(_T("huge"), ""), empty = folder.Write(_T("empty"), "");
    {
        const test::Handle holder = test::Exclusive(huge);
        EXPECT_EQ(Compare(file, huge), Pair(0, 0));
        LARGE_INTEGER size = {};
        size.QuadPart = 1LL << 32;
        ASSERT_TRUE(SetFilePointerEx(holder, size, nullptr, FILE_BEGIN) && SetEndOfFile(holder));
    }
    EXPECT_EQ(Compare(huge, empty), Pair(1, 1));  // Deliberate: only the lower 32 bits of sizes count
    EXPECT_EQ(CDirectory::GetFileSize(huge.c_str()), 1LL << 32);
}

TEST(DirectoryFiles, HaveRoomSizeAndAttributes) {
    const TempFolder folder;
    const test::Text path = folder.Write(_T("file"), "12345"), missing = folder.Path(_T("none\\file"));
    EXPECT_TRUE(CDirectory::EnoughRoomForFile(path.c_str(), 1));
    EXPECT_FALSE(CDirectory::EnoughRoomForFile(missing.c_str(), 0) || CDirectory::EnoughRoomForFile(_T("file"), 0));
    EXPECT_TRUE(CDirectory::GetFileSize(path.c_str()) == 5 && CDirectory::GetFileSize(missing.c_str()) == 0);
    for (const int set : {1, 0}) {
        const DWORD after = CDirectory::ModifyFileAttributes(path.c_str(), FILE_ATTRIBUTE_READONLY, set);
        EXPECT_EQ((after & FILE_ATTRIBUTE_READONLY) != 0, set != 0);
        EXPECT_EQ((GetFileAttributesW(path.c_str()) & FILE_ATTRIBUTE_READONLY) != 0, set != 0);
    }
    EXPECT_EQ(CDirectory::ModifyFileAttributes(missing.c_str(), FILE_ATTRIBUTE_READONLY, 1), 0xFFFFFFFF);
}
