// What only this file system can hold, and the fine print of patterns.

#include <gtest/gtest.h>
#include <stdio.h>
#include <unistd.h>
#include <windows.h>

#include <fstream>
#include <string>
#include <vector>

#include "support/native_path_linux.h"
#include "support/temp_folder.h"

namespace {

using test::Narrow;
using test::Native;
using test::TempFolder;
using test::Text;

std::vector<WIN32_FIND_DATAW> List(const Text& pattern) {
    std::vector<WIN32_FIND_DATAW> entries;
    WIN32_FIND_DATAW data;
    const HANDLE search = FindFirstFileW(pattern.c_str(), &data);
    for (BOOL more = search != INVALID_HANDLE_VALUE; more; more = FindNextFileW(search, &data)) {
        entries.push_back(data);
    }
    FindClose(search);
    return entries;
}

bool Matches(const char* name, const TCHAR* pattern) {
    const TempFolder folder;
    folder.Write(test::Widen(name), "");
    const std::vector<WIN32_FIND_DATAW> entries = List(folder.Path(pattern));
    return !entries.empty() && Narrow(entries.back().cFileName) == name;
}

TEST(FindLinux, FollowsTheSystemsRulesForQuestionMarksAndDots) {
    const struct {
        const char* name;
        const TCHAR* pattern;
        bool matches;
    } rows[] = {
        {"noext", _T("*."), true},
        {"a.b", _T("*."), false},
        {"abc", _T("a???????"), true},
        {"abc.d", _T("abc??.d"), true},
        {"a.c", _T("a?c"), false},
        {"ab.txt", _T("?.txt"), false},
        {"a", _T("a.?"), true},
        {"a.b", _T("a.??"), true},
        {"a.b.c", _T("*.?"), true},
        {"ab", _T("?b?"), true},
        {"b", _T("?b"), false},
        {"a", _T("a.*"), true},
        {"archive.tar.gz", _T("<.gz"), true},
        {"archive.tar.gz", _T("<gz"), false},
        {".hidden", _T("*.hidden"), true},
        {"ab", _T("??"), true},
        {"abc", _T("??"), false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.name) + " by " + Narrow(row.pattern));
        EXPECT_EQ(Matches(row.name, row.pattern), row.matches);
    }
}

TEST(FindLinux, TakesNoLongerForAPatternMadeToHurt) {
    EXPECT_FALSE(Matches(std::string(255, 'a').c_str(), _T("*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*ab")));
    EXPECT_FALSE(Matches(std::string(255, 'a').c_str(), _T("*a?*a?*a?*a?*a?*a?*a?*a?*a?*a?*a?*ab")));
}

TEST(FindLinux, LooksUpANameWithoutWildcardsAsStored) {
    const TempFolder folder;
    folder.Write(_T("Name"), "12");
    folder.Write(_T("NAME"), "1");
    EXPECT_EQ(List(folder.Path(_T("Name"))).at(0).nFileSizeLow, 2u);
    EXPECT_EQ(List(folder.Path(_T("NAME"))).at(0).nFileSizeLow, 1u);
    EXPECT_TRUE(List(folder.Path(_T("name"))).empty());
    EXPECT_EQ(List(folder.Path(_T("name*"))).size(), 2u);
}

TEST(FindLinux, FindsNamesThatAreNoUtf8AndOpensThemByWhatItFound) {
    const TempFolder folder;
    std::ofstream(Native(folder.Path()) + "/r\xF6ntgen.dat") << "123";
    const std::vector<WIN32_FIND_DATAW> entries = List(folder.Path(_T("R?NTGEN.*")));
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(List(folder.Path(entries[0].cFileName)).at(0).nFileSizeLow, 3u);
}

TEST(FindLinux, ShowsALinkItself) {
    const TempFolder folder;
    const Text target = folder.MakeFolder(_T("target"));
    ASSERT_EQ(symlink(Native(target).c_str(), Native(folder.Path(_T("link"))).c_str()), 0);
    ASSERT_EQ(symlink("nowhere", Native(folder.Path(_T("lost"))).c_str()), 0);
    const WIN32_FIND_DATAW link = List(folder.Path(_T("link"))).at(0);
    EXPECT_EQ(link.dwFileAttributes, FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT);
    EXPECT_EQ(link.dwReserved0, IO_REPARSE_TAG_SYMLINK);
    EXPECT_EQ(List(folder.Path(_T("los*"))).at(0).dwFileAttributes, FILE_ATTRIBUTE_REPARSE_POINT);
}

TEST(FindLinux, EndsAlthoughEveryEntryIsRenamedAsItIsFound) {
    const TempFolder folder;
    for (int i = 0; i < 3000; ++i) {
        folder.Write(test::Widen(std::to_string(i)), "");
    }
    int found = 0;
    WIN32_FIND_DATAW data;
    const HANDLE search = FindFirstFileW(folder.Path(_T("*")).c_str(), &data);
    for (BOOL more = search != INVALID_HANDLE_VALUE; more; more = FindNextFileW(search, &data)) {
        const Text path = folder.Path(data.cFileName);
        found += (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0 &&
                 rename(Native(path).c_str(), Native(path + _T("+")).c_str()) == 0;
    }
    EXPECT_TRUE(FindClose(search));
    EXPECT_EQ(found, 3000);
}

}  // namespace
