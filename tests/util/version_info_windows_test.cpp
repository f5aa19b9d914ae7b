#include <gtest/gtest.h>
#include <kadata/version_info.h>

// The library's own file has the version of the project.
TEST(VersionInfo, OfTheLibraryIsThere) {
    TCHAR path[MAX_PATH];
    ASSERT_GT(GetModuleFileNameW(GetModuleHandleW(_T("KaData.dll")), path, MAX_PATH), 0U);
    const CFileVersionInfo info(path, 0);
    WORD version[4] = {};
    info.GetFileVersion(version, sizeof version);
    EXPECT_TRUE(info.IsValid());
    EXPECT_EQ(info.GetLanguage(), 0x0409);
    EXPECT_GE(version[0], 1);
    EXPECT_EQ(info.ToString(false).Find(_T("KaData.dll        : FileVer 1.")), 0);
}
// The build asks for Windows 10, and a program without a manifest is told of 6.2 there.
TEST(OSInfo, IsAboveWindows7) {
    EXPECT_TRUE(KaCOSInfo::IsWindowsXPOrAbove() && KaCOSInfo::IsWindowsVistaOrAbove() && KaCOSInfo::IsWindows7OrAbove());
    EXPECT_FALSE(KaCOSInfo::IsWindowsServer2003());
}
