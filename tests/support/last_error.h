#pragma once

#include <gtest/gtest.h>
#include <windows.h>

namespace test {

// The last error of a call that must fail, given its result: EXPECT_EQ(ErrorOf(CloseHandle(nullptr)), ERROR_INVALID_HANDLE).
// Forgets it, so that the next call has to set its own.
template <class Result>
DWORD ErrorOf(Result result) {
    const DWORD error = GetLastError();
    EXPECT_FALSE(result);
    SetLastError(ERROR_SUCCESS);
    return error;
}

}  // namespace test
