#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <map>
#include <string>
#include <tuple>

#include "support/file_calls.h"
#include "support/handles.h"
#include "support/temp_folder.h"
#include "support/wine.h"

namespace {

using test::Dispose, test::List, test::Narrow, test::Open, test::Outcome, test::TempFolder, test::Text, test::UnlessWine;

LONGLONG ValueOf(const FILETIME& time) {
    return static_cast<LONGLONG>((static_cast<ULONGLONG>(time.dwHighDateTime) << 32) | time.dwLowDateTime);
}

TEST(Attributes, TellTheKindAndComeBackAsSet) {
    const TempFolder folder;
    const Text path = folder.Write(_T("file"), "");
    constexpr DWORD kNotOurs = FILE_ATTRIBUTE_NORMAL | FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;
    for (const DWORD set : {FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE, FILE_ATTRIBUTE_NORMAL}) {
        EXPECT_TRUE(SetFileAttributesW(path.c_str(), set));
        EXPECT_EQ(GetFileAttributesW(path.c_str()) & ~kNotOurs, set & FILE_ATTRIBUTE_READONLY);
    }
    EXPECT_NE(GetFileAttributesW(path.c_str()), 0U) << "a file without attributes is NORMAL";
    EXPECT_EQ(GetFileAttributesW(folder.Path().c_str()) & ~kNotOurs, FILE_ATTRIBUTE_DIRECTORY);
    const Text name = folder.Path(_T("missing"));
    WIN32_FILE_ATTRIBUTE_DATA data;
    EXPECT_EQ(Outcome(BOOL{GetFileAttributesW(name.c_str()) != INVALID_FILE_ATTRIBUTES}), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(Outcome(GetFileAttributesExW(name.c_str(), GetFileExInfoStandard, &data)), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(Outcome(SetFileAttributesW(name.c_str(), FILE_ATTRIBUTE_NORMAL)), ERROR_FILE_NOT_FOUND);
}

TEST(FileByHandle, TimesAndSizesGoInAndComeOutByEveryWay) {
    const TempFolder folder;
    const Text path = folder.Write(_T("file"), "12345");
    const FILETIME written{0x89ABCDE0, 0x01BF0000};   // in 2000
    const FILETIME accessed{0x00000010, 0x01DA0000};  // in 2023
    const test::Handle file(Open(path, GENERIC_READ | GENERIC_WRITE));
    FILE_END_OF_FILE_INFO end{};
    end.EndOfFile.QuadPart = 3;
    EXPECT_TRUE(SetFileInformationByHandle(file, FileEndOfFileInfo, &end, sizeof end));
    ASSERT_TRUE(SetFileTime(file, nullptr, &accessed, &written));

    WIN32_FILE_ATTRIBUTE_DATA by_name;
    BY_HANDLE_FILE_INFORMATION by_handle;
    FILE_BASIC_INFO basic{};
    ASSERT_TRUE(GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &by_name));
    ASSERT_TRUE(GetFileInformationByHandle(file, &by_handle));
    ASSERT_TRUE(GetFileInformationByHandleEx(file, FileBasicInfo, &basic, sizeof basic));
    EXPECT_EQ(ValueOf(by_name.ftLastWriteTime), ValueOf(written));
    EXPECT_EQ(ValueOf(by_handle.ftLastWriteTime), ValueOf(written));
    EXPECT_EQ(basic.LastWriteTime.QuadPart, ValueOf(written));
    EXPECT_EQ(ValueOf(by_name.ftLastAccessTime), ValueOf(accessed));
    EXPECT_EQ(basic.CreationTime.QuadPart, ValueOf(by_handle.ftCreationTime));
    EXPECT_TRUE(by_name.nFileSizeLow == 3 && by_handle.nFileSizeLow == 3 && by_handle.nNumberOfLinks == 1);
    FILE_STANDARD_INFO standard;
    EXPECT_EQ(Outcome(GetFileInformationByHandleEx(file, FileStandardInfo, &standard, 4)), ERROR_BAD_LENGTH);
    ASSERT_TRUE(GetFileInformationByHandleEx(file, FileStandardInfo, &standard, sizeof standard));
    EXPECT_EQ(standard.EndOfFile.QuadPart, 3);
    EXPECT_FALSE(standard.Directory || standard.DeletePending);
    ASSERT_TRUE(GetFileInformationByHandleEx(test::Handle(Open(folder.Path(), 0)), FileStandardInfo, &standard, sizeof standard));
    EXPECT_TRUE(standard.Directory);

    FILE_BASIC_INFO change{};
    change.LastWriteTime.QuadPart = ValueOf(accessed) + 10;
    for (const DWORD attributes : {FILE_ATTRIBUTE_READONLY, FILE_ATTRIBUTE_NORMAL}) {
        change.FileAttributes = attributes;
        EXPECT_TRUE(SetFileInformationByHandle(file, FileBasicInfo, &change, sizeof change));
        EXPECT_EQ(GetFileAttributesW(path.c_str()) & FILE_ATTRIBUTE_READONLY, attributes & FILE_ATTRIBUTE_READONLY);
    }
    FILETIME now_accessed, now_written;
    EXPECT_TRUE(GetFileTime(file, nullptr, &now_accessed, &now_written));
    EXPECT_EQ(ValueOf(now_written), ValueOf(accessed) + 10);
    EXPECT_EQ(ValueOf(now_accessed), ValueOf(accessed)) << "0 keeps a time";
}

TEST(FileByHandle, ListsAFolderInStepsOfAnySize) {
    const TempFolder folder;
    std::map<Text, LONGLONG> expected{{_T("."), 0}, {_T(".."), 0}};
    for (std::size_t i = 1; i <= 40; ++i) {
        const Text name = Text(i, _T('n')) + _T("\u00E9");
        folder.Write(name, std::string(i, 'x'));
        expected[name] = static_cast<LONGLONG>(i);
    }
    const test::Handle listed(Open(folder.Path(), FILE_LIST_DIRECTORY | SYNCHRONIZE));
    for (const DWORD size : {65536U, 256U}) {
        SCOPED_TRACE(size);
        int calls = 0;
        auto found = List(listed, size, calls);
        found[_T(".")] = found[_T("..")] = 0;  // their size is the file system's own affair
        EXPECT_TRUE(found == expected) << found.size();
        EXPECT_EQ(GetLastError(), ERROR_NO_MORE_FILES);
        EXPECT_EQ(calls == 1, size == 65536);
    }
    int calls = 0;
    EXPECT_LT(List(listed, 112, calls).size(), expected.size());
    EXPECT_EQ(GetLastError(), ERROR_MORE_DATA) << "of a name that does not fit";
    EXPECT_EQ(List(listed, 65536, calls).size(), expected.size()) << "begins anew from the middle";
    const test::Handle file(Open(folder.Write(_T("file"), ""), GENERIC_READ));
    EXPECT_TRUE(List(file, 256, calls).empty());
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

TEST(FileByHandle, DisposesWhenTheHandleIsClosed) {
    const TempFolder folder;
    const Text file = folder.Write(_T("file"), ""), read_only = folder.Write(_T("read-only"), "");
    ASSERT_TRUE(SetFileAttributesW(read_only.c_str(), FILE_ATTRIBUTE_READONLY));
    const Text full = folder.MakeFolder(_T("full"));
    folder.Write(_T("full\\x"), "");
    const std::tuple<Text, DWORD, DWORD> rows[] = {
        {file, GENERIC_READ, ERROR_ACCESS_DENIED},
        {read_only, DELETE, ERROR_ACCESS_DENIED},
        {full, DELETE, ERROR_DIR_NOT_EMPTY},
        {folder.MakeFolder(_T("empty")), DELETE, ERROR_SUCCESS},
        {file, DELETE, ERROR_SUCCESS},
    };
    for (const auto& [path, access, error] : rows) {
        SCOPED_TRACE(Narrow(path));
        test::Handle handle(Open(path, access));
        EXPECT_EQ(Dispose(handle), error);
        handle.Close();
        EXPECT_EQ(GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES, error == ERROR_SUCCESS);
    }
    test::Handle handle(Open(folder.Write(_T("kept"), ""), DELETE));
    EXPECT_EQ(Dispose(handle), ERROR_SUCCESS);
    EXPECT_EQ(Dispose(handle, false), ERROR_SUCCESS);
    handle.Close();
    EXPECT_TRUE(folder.Has(_T("kept")));
    EXPECT_TRUE(SetFileAttributesW(read_only.c_str(), FILE_ATTRIBUTE_NORMAL));
}

TEST(RelativeOpen, LooksOnlyIntoTheFolderThatWasOpened) {
    const TempFolder folder;
    folder.MakeFolder(_T("base\\folder"));
    folder.Write(_T("base\\file"), "");
    folder.Write(_T("outside"), "");
    const test::Handle base(Open(folder.Path(_T("base")), FILE_LIST_DIRECTORY | FILE_TRAVERSE | SYNCHRONIZE));
    const std::tuple<HANDLE, const TCHAR*, ULONG, DWORD> rows[] = {
        {base, _T("file"), FILE_NON_DIRECTORY_FILE | FILE_OPEN_REPARSE_POINT, ERROR_SUCCESS},
        {base, _T("file"), FILE_DIRECTORY_FILE, ERROR_DIRECTORY},
        {base, _T("folder"), FILE_DIRECTORY_FILE | FILE_OPEN_REPARSE_POINT, ERROR_SUCCESS},
        {base, _T("folder"), FILE_NON_DIRECTORY_FILE, ERROR_ACCESS_DENIED},
        {base, _T("missing"), 0, ERROR_FILE_NOT_FOUND},
        {base, _T("../outside"), 0, ERROR_INVALID_NAME},
        {nullptr, _T("file"), 0, ERROR_BAD_PATHNAME},
    };
    for (const auto& [root, name, options, error] : rows) {
        SCOPED_TRACE(Narrow(name) + " " + std::to_string(options));
        test::Handle opened;
        EXPECT_EQ(OpenIn(root, name, options, opened), error);
    }
    ASSERT_TRUE(MoveFileW(folder.Path(_T("base")).c_str(), folder.Path(_T("moved")).c_str()));
    TCHAR final[1024] = {};
    const DWORD length = GetFinalPathNameByHandleW(base, final, 1024, FILE_NAME_NORMALIZED | VOLUME_NAME_DOS);
    EXPECT_EQ(Narrow(final).substr(0, 4), "\\\\?\\");
    EXPECT_EQ(Narrow(final).substr(length - 5), UnlessWine<std::string>("moved", "\\base"));
    EXPECT_EQ(GetFinalPathNameByHandleW(base, final, 8, 0), length + 1) << "too small";
    folder.MakeFolder(_T("base"));
    folder.Write(_T("base\\file"), "");  // a new folder under the old name
    test::Handle opened;
    EXPECT_EQ(OpenIn(base, _T("file"), FILE_NON_DIRECTORY_FILE, opened), ERROR_SUCCESS);
    EXPECT_EQ(Dispose(opened), ERROR_SUCCESS);
    opened.Close();
    EXPECT_EQ(folder.Has(_T("moved\\file")), UnlessWine(false, true));
    EXPECT_TRUE(folder.Has(_T("base\\file")));
}

}  // namespace
