#pragma once

// What the tests of CDirectory share.

#include <gtest/gtest.h>
#include <kadata/directory.h>

#include <algorithm>
#include <string>
#include <vector>

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
        ADD_FAILURE() << "nothing thrown for " << Narrow(path);
        return 0;
    } catch (CFileException* e) {
        EXPECT_EQ(e->m_cause, CFileException::accessDenied);
        EXPECT_EQ(Narrow(e->m_strFileName), Narrow(path));
        const LONG osError = e->m_lOsError;
        e->Delete();
        return osError;
    }
}

// An open handle that lets nobody else in.
class ExclusiveHandle {
public:
    explicit ExclusiveHandle(const Text& path)
        : m_handle(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr)) {
        EXPECT_NE(m_handle, INVALID_HANDLE_VALUE);
    }
    ~ExclusiveHandle() { CloseHandle(m_handle); }
    HANDLE Get() const { return m_handle; }

private:
    HANDLE m_handle;
};

// The names that CDirectory lists, sorted, each followed by a blank.
inline std::string NamesIn(const CString& dir, const CString& pattern = _T("*"), DWORD attributeMask = 0xFFFFFFFF) {
    CStringArray names;
    const int count = CDirectory::ListFiles(dir, names, pattern, attributeMask);
    std::vector<std::string> sorted;
    for (int i = 0; i < count; ++i)
        sorted.push_back(Narrow(names[i]) + " ");
    std::sort(sorted.begin(), sorted.end());
    std::string joined;
    for (const std::string& name : sorted)
        joined += name;
    return joined;
}

}  // namespace test
