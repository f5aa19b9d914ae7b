#pragma once

// Hives in a folder of the test's own, and numbers in one key of the user's.

#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <optional>

#include "environment.h"
#include "temp_folder.h"

namespace test {

bool SetNumber(const TCHAR* name, DWORD number, HANDLE transaction = nullptr);
std::optional<DWORD> Number(const TCHAR* name, HANDLE transaction = nullptr);

class LinuxHives : public testing::Test {
protected:
    static void UseFolder(const Text& folder) { SetEnvironmentVariableW(_T("KADATA_REGISTRY_DIR"), folder.c_str()); }

    const TempFolder folder_;
    const Text hives_ = folder_.Path(_T("new\\hives"));  // made by the first write

private:
    const InEnvironment environment_{_T("KADATA_REGISTRY_DIR"), hives_.c_str()};
};

}  // namespace test
