// What only this file system can hold, and the fine print of patterns.

#include <gtest/gtest.h>
#include <stdio.h>
#include <unistd.h>
#include <tchar.h>
#include <windows.h>

#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "support/native_path_linux.h"
#include "support/temp_folder.h"

namespace {

using test::Narrow;
using test::Native;
using test::TempFolder;
using test::Text;

// The entries, each shown to `visit` while the search goes on.
std::vector<WIN32_FIND_DATAW> List(const Text& pattern, const std::function<void(const WIN32_FIND_DATAW&)>& visit = {}) {
    std::vector<WIN32_FIND_DATAW> entries;
    WIN32_FIND_DATAW data;
    const HANDLE search = FindFirstFileW(pattern.c_str(), &data);
    for (BOOL more = search != INVALID_HANDLE_VALUE; more; more = FindNextFileW(search, &data)) {
        entries.push_back(data);
        visit ? visit(data) : void();
    }
    EXPECT_EQ(FindClose(search) != FALSE, search != INVALID_HANDLE_VALUE);
    return entries;
}

TEST(FindLinux, FollowsTheSystemsRulesForQuestionMarksAndDots) {
    const struct {
        std::string name;
        const TCHAR* pattern;
        bool matches;
    } rows[] = {
        {"noext", _T("*."), true},
        {"a.b", _T("*."), false},
        {"abc.d", _T("abc??.d"), true},
        {"a.c", _T("a?c"), false},
        {"ab.txt", _T("?.txt"), false},
        {"a", _T("a.?"), true},
        {"a.b.c", _T("*.?"), true},
        {"ab", _T("?b?"), true},
        {"b", _T("?b"), false},
        {"a", _T("a.*"), true},
        {"archive.tar.gz", _T("<.gz"), true},
        {"archive.tar.gz", _T("<gz"), false},
        {".hidden", _T("*.hidden"), true},
        {std::string(255, 'a'), _T("*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*ab"), false},  // made to take for ever
        {std::string(255, 'a'), _T("*a?*a?*a?*a?*a?*a?*a?*a?*a?*a?*a?*ab"), false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name + " by " + Narrow(row.pattern));
        const TempFolder folder;
        folder.Write(test::Widen(row.name), "");
        const std::vector<WIN32_FIND_DATAW> entries = List(folder.Path(row.pattern));
        EXPECT_EQ(!entries.empty() && Narrow(entries.back().cFileName) == row.name, row.matches);
    }
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
    List(folder.Path(_T("*")), [&](const WIN32_FIND_DATAW& data) {
        const std::string path = Native(folder.Path(data.cFileName));
        found += (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0 && rename(path.c_str(), (path + "+").c_str()) == 0;
    });
    EXPECT_EQ(found, 3000);
}

}  // namespace
