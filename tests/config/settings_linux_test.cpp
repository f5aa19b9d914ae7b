// Where the registry's folder of the Linux layer decides.

#include "settings_fixture.h"

namespace {

using test::Narrow;

class LinuxHives : public test::SettingsTest {};

TEST_F(LinuxHives, AreReadAsDefaultsWhereNoneCanBeKept) {
    const test::InEnvironment nowhere(_T("KADATA_REGISTRY_DIR"), (folder_.Write(_T("file"), "") + _T("\\below")).c_str());
    EXPECT_FALSE(settings_.WriteMainFrameShowCmd(1));
    EXPECT_FALSE(settings_.WriteLastPatient(CPatient(_T("Miller"))));
    EXPECT_EQ(Narrow(settings_.GetDataPath(FALSE)), "..\\Data\\");
}

TEST_F(LinuxHives, FollowTheScreenThatTheEnvironmentNames) {
    for (const LPCTSTR size : {_T("1280x1024"), _T("1x32767")}) {
        const test::InEnvironment screen(_T("KADATA_SCREEN"), size);
        EXPECT_EQ(settings_.GetScreenResolutionString(), size);
    }
    for (const LPCTSTR nonsense : {_T(""), _T("1280"), _T("x1"), _T("0x5"), _T("32768x5"), _T("5x5x"), _T(" 5x5")}) {
        const test::InEnvironment screen(_T("KADATA_SCREEN"), nonsense);
        EXPECT_EQ(Narrow(settings_.GetScreenResolutionString()), "1920x1080");
    }
    EXPECT_EQ(GetSystemMetrics(-1), 0);
}

TEST_F(LinuxHives, KnowTheBrowsersVersion) {
    EXPECT_TRUE(CKalidoRegistry::GetIEVersion().IsEmpty());
    SetText(HKEY_LOCAL_MACHINE, _T("SOFTWARE\\Microsoft\\Internet Explorer"), _T("Version"), _T("9.11"));
    EXPECT_EQ(Narrow(CKalidoRegistry::GetIEVersion()), "9.11");
}

}  // namespace
