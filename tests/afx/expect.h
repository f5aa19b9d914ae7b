#pragma once

// What tests of the foundation classes ask again and again.

#include <afx_exception.h>
#include <gtest/gtest.h>

#include <vector>

#include "support/temp_folder.h"

namespace test {

// Whether a call throws the invalid-argument exception.
template <class Call>
bool IsInvalid(Call call) {
    try {
        call();
        return false;
    } catch (CInvalidArgException* exception) {
        exception->Delete();
        return true;
    }
}

// The cause of the CFileException that a call throws, CFileException::none without one; and the path that it names.
template <class Call>
int FileCause(Call call, CString* path = nullptr) {
    try {
        call();
    } catch (CFileException* exception) {
        const int cause = exception->m_cause;
        if (path != nullptr) {
            *path = exception->m_strFileName;
        }
        exception->Delete();
        return cause;
    }
    return CFileException::none;
}

struct TextRow {
    CString actual;
    LPCTSTR expected;
};

inline void ExpectRows(const std::vector<TextRow>& rows) {
    for (const TextRow& row : rows)
        EXPECT_EQ(Narrow(row.actual.View()), Narrow(row.expected)) << "row " << &row - rows.data() + 1;
}

}  // namespace test
