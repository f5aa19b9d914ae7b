#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include "child_process.h"
#include "time_zone.h"

// The program is its own child (child_process.h).
int main(int argc, char** argv) {
    test::UseSystemZone();
    SetEnvironmentVariableW(_T("KADATA_SCREEN"), _T("1920x1080"));  // windows are drawn off screen, whatever display there is
    if (const std::optional<int> result = test::RunChild()) {
        return *result;
    }
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
