#include "settings_fixture.h"
#include "support/child_process.h"

namespace {

using test::Narrow;
using test::Settings;
using test::SettingsTest;
using test::Text;

constexpr LPCTSTR kSharedKey = _T("Software\\Kalido Dental Systems\\Common\\Database");
constexpr LPCTSTR kImagingKey = _T("Software\\Classes\\CLSID\\{6B7C1B52-3F0E-4C8A-9E57-5D2A4F61C0B3}");

// Run from a folder of the test: 0 when every path is resolved from there, else the number of the first that is not.
int ResolveDataPaths(const test::ChildArgs&) {
    Settings settings(_T("any"));
    const CString program = CDirectory::GetExePath(), root = program.Left(3);
    const CString above = program.Left(program.Left(program.GetLength() - 1).ReverseFind(_T('\\')) + 1);
    CString up(_T('x'), 60);
    up.Replace(_T("x"), _T("..\\"));
    if (settings.GetDataPath(TRUE) != above + _T("Data\\"))
        return 1;
    const std::pair<CString, CString> rows[] = {
        {_T("..\\Pr\u00F6 \u4E2D\\"), above + _T("Pr\u00F6 \u4E2D\\")},
        {_T(""), program},
        {_T(".\\a\\.\\b\\..\\c"), program + _T("a\\c\\")},
        {_T("..a\\.b\\c..\\d."), program + _T("..a\\.b\\c..\\d.\\")},
        {_T("...\\\\x"), program + _T("...\\x\\")},
        {up + _T("x"), root + _T("x\\")},
        {_T("\\x"), root + _T("x\\")},
        {_T("\\"), root},
        {_T("D:"), program + _T("D:\\")},
        {_T("d:x"), _T("d:x")},
        {_T("\\\\s"), _T("\\\\s")},
    };
    int number = 1;
    for (const auto& [path, resolved] : rows) {
        ++number;
        if (!settings.WriteDataPath(path) || settings.GetDataPath(FALSE) != path || settings.GetDataPath(TRUE) != resolved)
            return number;
    }
    return 0;
}
REGISTER_CHILD(ResolveDataPaths)

TEST_F(SettingsTest, ResolveTheDataPathFromTheProgramsFolder) {
    const Text program =
        folder_.MakeFolder(_T("Pr\u00F6gram  \u4E2D.x")) + _T("\\") + CDirectory::GetExeNameWithoutPath(1).GetString();
    ASSERT_TRUE(CopyFileW(test::OwnPath().c_str(), program.c_str(), TRUE));
    EXPECT_EQ(test::ChildProcess({_T("ResolveDataPaths")}, program).Wait(60000), 0U);
}

TEST_F(SettingsTest, NameTheLanguage) {
    const std::pair<LPCTSTR, LANGID> rows[] = {
        {_T("D"), LANGID{7}},     {_T("GER"), LANGID{7}},
        {_T("US"), LANGID{1033}}, {_T("UK"), LANGID{2057}},
        {_T("F"), LANGID{12}},    {_T("E"), LANGID{10}},
        {_T("I"), LANGID{16}},    {_T("J"), LANGID{17}},
        {_T("ger"), 0},           {_T(""), 0},
        {_T("RUS"), LANGID{25}},  {_T("NL"), LANGID{19}},
    };
    EXPECT_EQ(settings_.GetLanguageID(), 7);
    for (const auto& [name, id] : rows) {
        SetText(HKEY_LOCAL_MACHINE, section_, _T("Language"), name);
        EXPECT_EQ(settings_.GetLanguageID(), id != 0 ? id : GetUserDefaultLangID()) << Narrow(name);
        EXPECT_EQ(settings_.GetLanguage(), name);
    }
}

TEST_F(SettingsTest, FindTheImagingSoftwareAndItsDataSource) {
    const Text dir = folder_.MakeFolder(_T("Im\u00E4ge X"));
    const std::pair<CString, CString> servers[] = {
        {_T("C:\\Prog Files\\Q.EXE /Automation C:\\x"), _T("C:\\Prog Files")},
        {_T("C:\\a.exe.d\\Q.exe"), _T("C:\\a.exe.d")},
        {_T(" \"C:\\Q\\Q\""), _T("C:\\Q")},
        {_T("C:\\Q.exe"), _T("C:\\")},
        {_T("Q.exe"), _T("C:\\Quintar")},
        {_T("\""), _T("C:\\Quintar")},
        {_T("\"") + CString(dir.c_str()) + _T("\\Q.exe\" /a \"C:\\x y\""), dir.c_str()},
    };
    EXPECT_EQ(Narrow(CKalidoRegistry::GetQuintarFileDbIni()), "C:\\Quintar\\KaFileDB.ini");
    for (const auto& [server, folder] : servers) {
        SetText(HKEY_LOCAL_MACHINE, kImagingKey + CString(_T("\\LocalServer32")), _T(""), server);
        EXPECT_EQ(CKalidoRegistry::GetQuintarRootDirectory(), folder) << Narrow(server);
    }
    EXPECT_EQ(Narrow(settings_.GetDataBaseName()), "PDATA");
    test::WriteBytes(CKalidoRegistry::GetQuintarFileDbIni().GetString(),
                     "[Location]\r\nODBCSrc = \"" + std::string(300, 's') + "\"\r\n");
    const std::string cut(260, 's');
    for (const LPCTSTR shared : {_T(""), _T("shared")}) {
        SetText(HKEY_LOCAL_MACHINE, kSharedKey, _T("DataSource"), shared);
        EXPECT_EQ(Narrow(settings_.GetDataBaseName()), *shared != 0 ? Narrow(shared) : cut);
    }
    EXPECT_EQ(RegDeleteTreeW(HKEY_LOCAL_MACHINE, kImagingKey), 0);
    EXPECT_EQ(RegDeleteTreeW(HKEY_LOCAL_MACHINE, kSharedKey), 0);
    EXPECT_EQ(Narrow(settings_.GetDataBaseName()), "PDATA");
}

TEST_F(SettingsTest, KnowPlacesOfTheSystem) {
    constexpr LPCTSTR sound = _T("AppEvents\\Schemes\\Apps\\.Default\\CCSelect\\.Current");
    SetText(HKEY_CURRENT_USER, sound, _T(""), _T("C:\\ding.wav"));
    for (int time = 0; time < 2; ++time) {
        EXPECT_TRUE(CKalidoRegistry::ResetVistaCCSelectNotifySound());
        EXPECT_EQ(Narrow(settings_.GetProfileStringW(sound, _T(""), _T(""), _T("none"), HKEY_CURRENT_USER)), "none");
    }
    EXPECT_EQ(Narrow(CKalidoRegistry::GetMyComputerDirectory()), "::{20D04FE0-3AEA-1069-A2D8-08002B30309D}");
    CString screen;
    screen.Format(_T("%dx%d"), GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN));
    EXPECT_EQ(settings_.GetScreenResolutionString(), screen);
}

}  // namespace
