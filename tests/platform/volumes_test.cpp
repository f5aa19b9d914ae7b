#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "support/temp_folder.h"

namespace {

using test::Narrow;
using test::TempFolder;
using test::Text;

TEST(Volumes, DriveStringsNameTheDrivesOfTheBits) {
    TCHAR strings[26 * 4 + 1];
    const DWORD length = GetLogicalDriveStringsW(static_cast<DWORD>(std::size(strings)), strings);
    DWORD bits = 0;
    for (DWORD i = 0; i < length; i += 4) {
        EXPECT_EQ(Narrow(strings + i).substr(1), ":\\");
        bits |= 1U << (strings[i] - _T('A'));
    }
    EXPECT_EQ(strings[length], _T('\0'));
    EXPECT_EQ(bits, GetLogicalDrives());
    EXPECT_NE(bits & (1U << 2), 0u);  // C:
    EXPECT_EQ(GetLogicalDriveStringsW(length, strings), length + 1);
}

TEST(Volumes, OnlyARootHasADriveType) {
    const TempFolder folder;
    EXPECT_NE(GetDriveTypeW(_T("C:\\")), DRIVE_NO_ROOT_DIR);
    EXPECT_EQ(GetDriveTypeW(_T("c:\\")), GetDriveTypeW(_T("C:\\")));
    EXPECT_EQ(GetDriveTypeW(folder.Path(_T("none\\")).c_str()), DRIVE_NO_ROOT_DIR);
    EXPECT_EQ(GetDriveTypeW(_T("Q:\\")), DRIVE_NO_ROOT_DIR);
}

TEST(Volumes, FreeSpaceIsThatOfTheFoldersVolume) {
    const TempFolder folder;
    ULARGE_INTEGER to_caller, total, free;
    ASSERT_TRUE(GetDiskFreeSpaceExW(folder.Path().c_str(), &to_caller, &total, &free));
    EXPECT_GT(to_caller.QuadPart, 0u);
    EXPECT_LE(to_caller.QuadPart, free.QuadPart);
    EXPECT_LT(free.QuadPart, total.QuadPart);
    EXPECT_TRUE(GetDiskFreeSpaceExW(nullptr, nullptr, nullptr, nullptr));

    EXPECT_FALSE(GetDiskFreeSpaceExW(folder.Path(_T("none")).c_str(), &to_caller, nullptr, nullptr));
    EXPECT_EQ(GetLastError(), ERROR_PATH_NOT_FOUND);
    const Text file = folder.Write(_T("file"), "");
    EXPECT_FALSE(GetDiskFreeSpaceExW(file.c_str(), &to_caller, nullptr, nullptr));
    EXPECT_EQ(GetLastError(), ERROR_DIRECTORY);
}

TEST(Volumes, ClustersMakeUpTheWholeSize) {
    DWORD sectors = 0, bytes = 0, free = 0, clusters = 0;
    ULARGE_INTEGER total;
    ASSERT_TRUE(GetDiskFreeSpaceW(_T("C:\\"), &sectors, &bytes, &free, &clusters));
    ASSERT_TRUE(GetDiskFreeSpaceExW(_T("C:\\"), nullptr, &total, nullptr));
    const ULONGLONG cluster = ULONGLONG{sectors} * bytes;
    EXPECT_LE(free, clusters);
    EXPECT_EQ(ULONGLONG{clusters} * cluster, total.QuadPart / cluster * cluster);
    EXPECT_FALSE(GetDiskFreeSpaceW(_T("Q:\\"), &sectors, &bytes, &free, &clusters));
    EXPECT_EQ(GetLastError(), ERROR_PATH_NOT_FOUND);
}

TEST(Volumes, InformationIsToldOfARootOnly) {
    const TempFolder folder;
    TCHAR label[MAX_PATH];
    TCHAR file_system[MAX_PATH];
    DWORD serial = 0, longest = 0, flags = 0;
    ASSERT_TRUE(GetVolumeInformationW(_T("C:\\"), label, MAX_PATH, &serial, &longest, &flags, file_system, MAX_PATH));
    EXPECT_EQ(longest, 255u);
    EXPECT_NE(file_system[0], _T('\0'));
    EXPECT_NE(flags & FILE_CASE_PRESERVED_NAMES, 0u);
    EXPECT_TRUE(GetVolumeInformationW(nullptr, nullptr, 0, nullptr, nullptr, nullptr, nullptr, 0));

    const struct {
        Text root;
        DWORD error;
    } rows[] = {
        {_T("C:"), ERROR_INVALID_NAME},
        {_T("Q:\\"), ERROR_PATH_NOT_FOUND},
        {folder.Path(_T("")), ERROR_DIR_NOT_ROOT},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(Narrow(row.root));
        EXPECT_FALSE(GetVolumeInformationW(row.root.c_str(), label, MAX_PATH, &serial, nullptr, nullptr, nullptr, 0));
        EXPECT_EQ(GetLastError(), row.error);
    }
}

}  // namespace
