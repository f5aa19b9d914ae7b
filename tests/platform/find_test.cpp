#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "support/temp_folder.h"

namespace {

using test::Narrow;
using test::TempFolder;
using test::Text;

// Calls `visit` with each entry; the error that ended the listing.
template <class Visit>
DWORD ForEach(const Text& pattern, Visit visit) {
    WIN32_FIND_DATAW data;
    const HANDLE search = FindFirstFileW(pattern.c_str(), &data);
    if (search == INVALID_HANDLE_VALUE) {
        return GetLastError();
    }
    do {
        visit(data);
    } while (FindNextFileW(search, &data));
    const DWORD end = GetLastError();
    EXPECT_TRUE(FindClose(search));
    return end;
}

// The names found without "." and "..", sorted, each followed by a blank.
std::string Found(const Text& pattern) {
    std::set<std::string> names;
    ForEach(pattern, [&names](const WIN32_FIND_DATAW& data) { names.insert(Narrow(data.cFileName)); });
    std::string joined;
    for (const std::string& name : names) {
        joined += name == "." || name == ".." ? "" : name + " ";
    }
    return joined;
}

DWORD ErrorOf(const Text& pattern) {
    SetLastError(ERROR_SUCCESS);
    const DWORD error = ForEach(pattern, [](const WIN32_FIND_DATAW&) {});
    return error;
}

TEST(Find, MatchesPatternsWithoutRegardToCase) {
    const TempFolder folder;
    for (const TCHAR* const name :
         {_T("Scan1.dat"), _T("scan12.DAT"), _T("noext"), _T("a.b.txt"), _T("\u00DCbung.log"), _T("x [1].log")}) {
        folder.Write(name, "");
    }
    const struct {
        const TCHAR* pattern;
        const char* found;
    } rows[] = {
        {_T("*"), "Scan1.dat a.b.txt noext scan12.DAT x [1].log \u00DCbung.log "},
        {_T("*.*"), "Scan1.dat a.b.txt noext scan12.DAT x [1].log \u00DCbung.log "},
        {_T("*.dat"), "Scan1.dat scan12.DAT "},
        {_T("SCAN1*"), "Scan1.dat scan12.DAT "},
        {_T("scan?.dat"), "Scan1.dat "},
        {_T("scan??.dat"), "Scan1.dat scan12.DAT "},
        {_T("*a*b*t*t"), "a.b.txt "},
        {_T("\u00FC*.LOG"), "\u00DCbung.log "},
        {_T("x [1].*"), "x [1].log "},
        {_T("**.tx*"), "a.b.txt "},
        {_T("*.txtx"), ""},
        {_T("noext?"), "noext "},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(Narrow(row.pattern));
        EXPECT_EQ(Found(folder.Path(row.pattern)), row.found);
    }
    Text slashes = folder.Path(_T("*.TXT"));
    std::replace(slashes.begin(), slashes.end(), _T('\\'), _T('/'));
    EXPECT_EQ(Found(slashes), "a.b.txt ");
}

TEST(Find, TellsSizeTimesAndKindOfAnEntry) {
    const TempFolder folder;
    const Text file = folder.Write(_T("five.bin"), "12345");
    folder.MakeFolder(_T("sub"));
    WIN32_FILE_ATTRIBUTE_DATA expected;
    ASSERT_TRUE(GetFileAttributesExW(file.c_str(), GetFileExInfoStandard, &expected));

    for (const TCHAR* const name : {_T("five.bin"), _T("FIVE.*")}) {
        WIN32_FIND_DATAW data;
        ASSERT_EQ(ForEach(folder.Path(name), [&data](const WIN32_FIND_DATAW& found) { data = found; }), ERROR_NO_MORE_FILES);
        EXPECT_EQ(Narrow(data.cFileName), "five.bin");
        EXPECT_EQ(data.dwFileAttributes, expected.dwFileAttributes);
        EXPECT_EQ(data.nFileSizeLow, 5u);
        EXPECT_EQ(data.nFileSizeHigh, 0u);
        EXPECT_EQ(CompareFileTime(&data.ftLastWriteTime, &expected.ftLastWriteTime), 0);
        EXPECT_EQ(CompareFileTime(&data.ftCreationTime, &expected.ftCreationTime), 0);
    }
    WIN32_FIND_DATAW data{};
    ForEach(folder.Path(_T("sub")), [&data](const WIN32_FIND_DATAW& found) { data = found; });
    EXPECT_EQ(data.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_NORMAL), FILE_ATTRIBUTE_DIRECTORY);
}

TEST(Find, SaysWhyThereIsNothing) {
    const TempFolder folder;
    const Text file = folder.Write(_T("file"), "x");
    const struct {
        Text pattern;
        DWORD error;
    } rows[] = {
        {folder.Path(_T("none")), ERROR_FILE_NOT_FOUND},
        {folder.Path(_T("*.none")), ERROR_FILE_NOT_FOUND},
        {folder.Path(_T("")), ERROR_FILE_NOT_FOUND},  // a separator at the end
        {_T("C:\\"), ERROR_FILE_NOT_FOUND},
        {folder.Path(_T("none\\*")), ERROR_PATH_NOT_FOUND},
        {folder.Path(_T("none\\name")), ERROR_PATH_NOT_FOUND},
        {file + _T("\\*"), ERROR_DIRECTORY},
        {folder.Path(_T("*\\name")), ERROR_INVALID_NAME},
        {_T(""), ERROR_PATH_NOT_FOUND},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(Narrow(row.pattern));
        EXPECT_EQ(ErrorOf(row.pattern), row.error);
    }
    EXPECT_EQ(ErrorOf(folder.Path(_T("*"))), ERROR_NO_MORE_FILES);
}

TEST(Find, ListsTheDotsFirstButNotInADriveRoot) {
    const TempFolder folder;
    folder.Write(_T("a"), "");
    std::vector<std::string> names;
    ForEach(folder.Path(_T("*")), [&names](const WIN32_FIND_DATAW& data) { names.push_back(Narrow(data.cFileName)); });
    EXPECT_EQ(names, (std::vector<std::string>{".", "..", "a"}));

    ForEach(_T("C:\\*"), [](const WIN32_FIND_DATAW& data) {
        EXPECT_NE(Narrow(data.cFileName), ".");
        EXPECT_NE(Narrow(data.cFileName), "..");
    });
}

TEST(Find, TakesOnlyASearchForASearch) {
    const TempFolder folder;
    folder.Write(_T("a"), "");
    WIN32_FIND_DATAW data;
    const HANDLE search = FindFirstFileExW(folder.Path(_T("*")).c_str(), FindExInfoBasic, &data, FindExSearchNameMatch, nullptr,
                                           FIND_FIRST_EX_LARGE_FETCH);
    ASSERT_NE(search, INVALID_HANDLE_VALUE);
    EXPECT_FALSE(CloseHandle(search));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
    EXPECT_TRUE(FindNextFileW(search, &data));
    EXPECT_TRUE(FindClose(search));

    EXPECT_FALSE(FindClose(INVALID_HANDLE_VALUE));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
    EXPECT_FALSE(FindNextFileW(INVALID_HANDLE_VALUE, &data));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
}

TEST(Find, ListsTwentyThousandEntriesWhileTheyAreDeleted) {
    constexpr int kEntries = 20000;
    const TempFolder folder;
    for (int i = 0; i < kEntries; ++i) {
        folder.Write(test::Widen("entry number " + std::to_string(i)), "");
    }
    std::set<std::string> names;
    const DWORD end = ForEach(folder.Path(_T("*")), [&](const WIN32_FIND_DATAW& data) {
        if ((data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
            EXPECT_TRUE(DeleteFileW(folder.Path(data.cFileName).c_str()));
            EXPECT_TRUE(names.insert(Narrow(data.cFileName)).second) << "twice: " << Narrow(data.cFileName);
        }
    });
    EXPECT_EQ(end, ERROR_NO_MORE_FILES);
    EXPECT_EQ(names.size(), static_cast<std::size_t>(kEntries));
    EXPECT_EQ(Found(folder.Path(_T("*"))), "");
}

TEST(Find, FindsTheLongestNames) {
    const TempFolder folder;
    const Text name = _T("n") + Text(250, _T('x')) + _T(".dat");  // 255 characters
    folder.Write(name, "");
    EXPECT_EQ(Found(folder.Path(_T("N*X.dat"))), Narrow(name) + " ");
    EXPECT_EQ(Found(folder.Path(name)), Narrow(name) + " ");
}

}  // namespace
