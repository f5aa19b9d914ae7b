#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <string>

#include "support/last_error.h"
#include "support/temp_folder.h"

namespace {

using test::ErrorOf;
using test::TempFolder;

TEST(Volumes, DriveStringsNameTheDrivesOfTheBits) {
    TCHAR strings[26 * 4 + 1];
    const DWORD length = GetLogicalDriveStringsW(static_cast<DWORD>(std::size(strings)), strings);
    DWORD bits = 0;
    for (DWORD i = 0; i < length; i += 4) {
        EXPECT_NE(GetDriveTypeW(strings + i), DRIVE_NO_ROOT_DIR);
        bits |= 1U << (strings[i] - _T('A'));
    }
    EXPECT_EQ(strings[length], _T('\0'));
    EXPECT_EQ(bits, GetLogicalDrives());
    EXPECT_NE(bits & (1U << 2), 0u);  // C:
    EXPECT_EQ(GetLogicalDriveStringsW(length, strings), length + 1);
    EXPECT_EQ(GetDriveTypeW(_T("Q:\\")), DRIVE_NO_ROOT_DIR);
}

TEST(Volumes, FreeSpaceIsThatOfTheFoldersVolume) {
    const TempFolder folder;
    ULARGE_INTEGER to_caller, total, free;
    ASSERT_TRUE(GetDiskFreeSpaceExW(folder.Path().c_str(), &to_caller, &total, &free));
    EXPECT_GT(to_caller.QuadPart, 0u);
    EXPECT_LE(to_caller.QuadPart, free.QuadPart);
    EXPECT_LT(free.QuadPart, total.QuadPart);
    const auto error = [&](const test::Text& path) {
        return ErrorOf(GetDiskFreeSpaceExW(path.c_str(), &to_caller, nullptr, nullptr));
    };
    EXPECT_EQ(error(folder.Path(_T("none"))), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(error(folder.Path(_T("none\\none"))), ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(error(folder.Write(_T("file"), "")), ERROR_DIRECTORY);
}

TEST(Volumes, InformationIsToldOfARootOnly) {
    TCHAR file_system[MAX_PATH];
    DWORD serial = 0, longest = 0, flags = 0;
    ASSERT_TRUE(GetVolumeInformationW(_T("C:\\"), nullptr, 0, &serial, &longest, &flags, file_system, MAX_PATH));
    EXPECT_EQ(longest, 255u);
    EXPECT_NE(file_system[0], _T('\0'));
    EXPECT_NE(flags & FILE_CASE_PRESERVED_NAMES, 0u);
    const TempFolder folder;
    const std::pair<test::Text, DWORD> rows[] = {
        {_T("Q:\\"), ERROR_PATH_NOT_FOUND},
        {folder.Path(_T("")), ERROR_DIR_NOT_ROOT},
    };
    for (const auto& [root, error] : rows) {
        EXPECT_EQ(ErrorOf(GetVolumeInformationW(root.c_str(), nullptr, 0, &serial, nullptr, nullptr, nullptr, 0)), error);
    }
}

}  // namespace
