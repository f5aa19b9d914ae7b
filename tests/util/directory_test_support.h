#pragma once

// What the tests of CDirectory share.

#include <gtest/gtest.h>
#include <kadata/directory.h>

#include <algorithm>
#include <numeric>
#include <set>
#include <string>
#include <vector>

#include "support/handles.h"
#include "support/temp_folder.h"
#include "support/unprivileged.h"

namespace test {

inline std::string Narrow(LPCTSTR text) {
    return Narrow(Text(text));
}
inline std::string Narrow(const CString& text) {
    return Narrow(text.GetString());
}

// Rows of (what came out, what is expected).
inline void ExpectTexts(const std::vector<std::pair<CString, const char*>>& rows) {
    for (const auto& [actual, expected] : rows)
        EXPECT_EQ(Narrow(actual), expected);
}

// The action must throw for that path, which is returned for a closer look where the error number is not known beforehand.
template <class Action>
LONG ExpectAccessDenied(const CString& path, Action action) {
    try {
        action();
    } catch (CFileException* e) {
        EXPECT_EQ(e->m_cause, CFileException::accessDenied);
        EXPECT_EQ(Narrow(e->m_strFileName), Narrow(path));
        const LONG osError = e->m_lOsError;
        e->Delete();
        return osError;
    }
    ADD_FAILURE() << "nothing thrown for " << Narrow(path);
    return 0;
}

// An open handle that lets nobody else in.
inline Handle Exclusive(const Text& path) {
    return Handle(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
}

// The names that CDirectory lists, sorted, each followed by a blank.
inline std::string NamesIn(const CString& dir, const CString& pattern = _T("*"), DWORD attributeMask = 0xFFFFFFFF) {
    CStringArray names;
    const int count = CDirectory::ListFiles(dir, names, pattern, attributeMask);
    std::multiset<std::string> sorted;
    for (int i = 0; i < count; ++i)
        sorted.insert(Narrow(names[i]) + " ");
    return std::accumulate(sorted.begin(), sorted.end(), std::string());
}

}  // namespace test
