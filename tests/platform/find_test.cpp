#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <set>
#include <string>
#include <vector>

#include "support/last_error.h"
#include "support/temp_folder.h"
#include "support/wine.h"

namespace {

using test::ErrorOf, test::Narrow, test::TempFolder, test::Text, test::UnlessWine;

// Calls `visit` with each entry; the error that ended the listing.
template <class Visit>
DWORD ForEach(const Text& pattern, Visit visit) {
    WIN32_FIND_DATAW data;
    const HANDLE search = FindFirstFileW(pattern.c_str(), &data);
    if (search == INVALID_HANDLE_VALUE)
        return GetLastError();
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
    for (const std::string& name : names)
        joined += name == "." || name == ".." ? "" : name + " ";
    return joined;
}

TEST(Find, MatchesPatternsWithoutRegardToCase) {
    const TempFolder folder;
    const Text longest = _T("n") + Text(250, _T('x')) + _T(".bin");  // 255 characters
    for (const Text& name : {Text(_T("Scan1.dat")), Text(_T("scan12.DAT")), Text(_T("noext")), Text(_T("a.b.txt")),
                             Text(_T("\u00DCbung.log")), Text(_T("x [1].log")), longest})
        folder.Write(name, "");
    const std::string all = "Scan1.dat a.b.txt noext " + Narrow(longest) + " scan12.DAT x [1].log \u00DCbung.log ";
    const std::pair<Text, std::string> rows[] = {
        {_T("*"), all},
        {_T("*.*"), all},
        {_T("*."), UnlessWine<std::string>("noext ", all)},
        {_T("SCAN1*"), "Scan1.dat scan12.DAT "},
        {_T("scan1??.dat"), UnlessWine<std::string>("Scan1.dat scan12.DAT ", "")},
        {_T("?can12.dat"), "scan12.DAT "},
        {_T("a?b*"), UnlessWine<std::string>("", "a.b.txt ")},
        {_T("*a*b*t*t"), "a.b.txt "},
        {_T("\u00FC*.LOG"), "\u00DCbung.log "},
        {_T("x [1].*"), "x [1].log "},
        {_T("noext?"), UnlessWine<std::string>("noext ", "")},
        {_T("N*X.bin"), Narrow(longest) + " "},
        {_T("*x*x*x*x*x*x*x*x*x*x*x*x*x*x*x*x*y"), ""},  // made to take for ever
    };
    for (const auto& [pattern, found] : rows) {
        SCOPED_TRACE(Narrow(pattern));
        EXPECT_EQ(Found(folder.Path(pattern)), found);
    }
    EXPECT_EQ(Found(folder.Path() + _T("/*.TXT")), "a.b.txt ");
}

TEST(Find, TellsSizeTimesAndKindOfAnEntry) {
    const TempFolder folder;
    const Text paths[] = {folder.Write(_T("five.bin"), "12345"), folder.MakeFolder(_T("sub"))};
    for (const Text& path : paths) {
        WIN32_FILE_ATTRIBUTE_DATA expected;
        ASSERT_TRUE(GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &expected));
        for (const Text& pattern : {path, path.substr(0, path.size() - 1) + _T("*")}) {
            WIN32_FIND_DATAW data{};
            ASSERT_EQ(ForEach(pattern, [&data](const WIN32_FIND_DATAW& found) { data = found; }), ERROR_NO_MORE_FILES);
            EXPECT_EQ(folder.Path(data.cFileName), path);
            EXPECT_EQ(data.dwFileAttributes, expected.dwFileAttributes);
            EXPECT_EQ(data.nFileSizeLow, &path == paths ? 5u : expected.nFileSizeLow);
            EXPECT_EQ(CompareFileTime(&data.ftLastWriteTime, &expected.ftLastWriteTime), 0);
        }
    }
}

TEST(Find, SaysWhyThereIsNothing) {
    const TempFolder folder;
    const std::pair<Text, DWORD> rows[] = {
        {folder.Path(_T("*.none")), ERROR_FILE_NOT_FOUND},
        {_T("C:\\"), ERROR_FILE_NOT_FOUND},
        {folder.Path(_T("")), ERROR_FILE_NOT_FOUND},  // a separator at the end
        {folder.Path(_T("none\\name")), ERROR_PATH_NOT_FOUND},
        {folder.Write(_T("file"), "x") + _T("\\*"), UnlessWine<DWORD>(ERROR_DIRECTORY, ERROR_INVALID_NAME)},
        {folder.Path(_T("*\\name")), ERROR_INVALID_NAME},
        {_T(""), ERROR_PATH_NOT_FOUND},
    };
    WIN32_FIND_DATAW data;
    for (const auto& [pattern, error] : rows) {
        SCOPED_TRACE(Narrow(pattern));
        EXPECT_EQ(ErrorOf(FindFirstFileW(pattern.c_str(), &data) != INVALID_HANDLE_VALUE), error);
    }
    EXPECT_EQ(ErrorOf(FindNextFileW(INVALID_HANDLE_VALUE, &data)), ERROR_INVALID_HANDLE);
}

TEST(Find, ListsTheDotsFirstButNotInADriveRoot) {
    const TempFolder folder;
    folder.Write(_T("a"), "");
    std::vector<std::string> names;
    ForEach(folder.Path(_T("*")), [&names](const WIN32_FIND_DATAW& data) { names.push_back(Narrow(data.cFileName)); });
    EXPECT_EQ(names, (std::vector<std::string>{".", "..", "a"}));
    ForEach(_T("C:\\*"), [](const WIN32_FIND_DATAW& data) { EXPECT_NE(Text(data.cFileName), _T(".")); });
}

}  // namespace
