#pragma once

// What tests of the foundation classes ask again and again.

#include <afx_exception.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

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
        if (path != nullptr)
            *path = exception->m_strFileName;
        exception->Delete();
        return cause;
    }
    return CFileException::none;
}

// A row of texts with a bar between each two.
inline std::string Joined(std::initializer_list<CString> texts) {
    std::string joined;
    for (const CString& text : texts)
        joined += (&text == texts.begin() ? "" : "|") + Narrow(text.View());
    return joined;
}

}  // namespace test
