#include <vector>

#include "settings_fixture.h"
#include "support/child_process.h"

namespace {

using test::Narrow;
using test::Settings;
using test::SettingsTest;
using test::Text;

constexpr DWORD kPatience = 60000;  // milliseconds
constexpr LPCTSTR kSharedKey = _T("Software\\Kalido Dental Systems\\Common\\Database");
constexpr LPCTSTR kImagingKey = _T("Software\\Classes\\CLSID\\{6B7C1B52-3F0E-4C8A-9E57-5D2A4F61C0B3}");
const CString kServerKey = kImagingKey + CString(_T("\\LocalServer32"));

// The program's folder: 0 when every path is resolved from there, else the number of the first that is not.
int ResolveDataPaths(const test::ChildArgs& args) {
    const CString program = CString(args[0].c_str()) + _T("\\");
    const CString above = program.Left(program.Left(program.GetLength() - 1).ReverseFind(_T('\\')) + 1);
    const CString root = program.Left(3);
    CString up(_T('x'), 60);
    up.Replace(_T("x"), _T("..\\"));
    const std::pair<CString, CString> rows[] = {
        {_T("..\\Data\\"), above + _T("Data\\")},
        {_T("..\\Data"), above + _T("Data\\")},
        {_T(""), program},
        {_T("."), program},
        {_T(".."), above},
        {_T(".\\a\\.\\b\\..\\c"), program + _T("a\\c\\")},
        {_T("..a\\.b\\c..\\d."), program + _T("..a\\.b\\c..\\d.\\")},
        {_T("...\\x"), program + _T("...\\x\\")},
        {_T("a\\\\b"), program + _T("a\\b\\")},
        {_T("\u00DC b"), program + _T("\u00DC b\\")},
        {up + _T("x"), root + _T("x\\")},
        {up, root},
        {_T("\\x"), root + _T("x\\")},
        {_T("\\x\\"), root + _T("x\\")},
        {_T("\\"), root},
        {_T("D:"), program + _T("D:\\")},
        {_T("D:\\x"), _T("D:\\x")},
        {_T("d:x"), _T("d:x")},
        {_T("\\\\s"), _T("\\\\s")},
        {_T("\\\\server\\share\\x"), _T("\\\\server\\share\\x")},
    };
    Settings settings(_T("any"));
    int number = 0;
    for (const auto& [path, resolved] : rows) {
        ++number;
        const bool asWritten = settings.WriteDataPath(path) && settings.GetDataPath(FALSE) == path;
        if (!asWritten || settings.GetDataPath(TRUE) != resolved)
            return number;
    }
    return 0;
}
REGISTER_CHILD(ResolveDataPaths)

TEST_F(SettingsTest, ResolveTheDataPathFromTheProgramsFolder) {
    const CString own = CDirectory::GetExePath();
    EXPECT_EQ(settings_.GetDataPath(TRUE), own.Left(own.Left(own.GetLength() - 1).ReverseFind(_T('\\')) + 1) + _T("Data\\"));
    const Text folder = folder_.MakeFolder(_T("Pr\u00F6gram  \u4E2D.x"));
    const Text program = folder + _T("\\") + CDirectory::GetExeNameWithoutPath(1).GetString();
    ASSERT_TRUE(CopyFileW(test::OwnPath().c_str(), program.c_str(), TRUE));
    EXPECT_EQ(test::ChildProcess({_T("ResolveDataPaths"), folder}, program).Wait(kPatience), 0u);
}

TEST_F(SettingsTest, NameTheLanguage) {
    const std::pair<LPCTSTR, LANGID> rows[] = {
        {_T("D"), LANGID{7}},    {_T("GER"), LANGID{7}}, {_T("US"), LANGID{1033}}, {_T("UK"), LANGID{2057}},
        {_T("F"), LANGID{12}},   {_T("E"), LANGID{10}},  {_T("I"), LANGID{16}},    {_T("J"), LANGID{17}},
        {_T("RUS"), LANGID{25}}, {_T("NL"), LANGID{19}}, {_T("ger"), 0},           {_T(""), 0},
        {_T("GER "), 0},
    };
    EXPECT_EQ(settings_.GetLanguageID(), 7);
    for (const auto& [name, id] : rows) {
        SetText(HKEY_LOCAL_MACHINE, section_, _T("Language"), name);
        EXPECT_EQ(settings_.GetLanguageID(), id != 0 ? id : GetUserDefaultLangID()) << Narrow(CString(name));
        EXPECT_EQ(settings_.GetLanguage(), name);
    }
}

TEST_F(SettingsTest, FindTheImagingSoftwareAndItsDataSource) {
    const Text dir = folder_.MakeFolder(_T("Im\u00E4ge X"));
    const CString quoted = _T("\"") + CString(dir.c_str()) + _T("\\Q.exe\" /a \"C:\\x y\"");
    const std::pair<CString, const char*> servers[] = {
        {_T("C:\\Prog Files\\Q.EXE /Automation C:\\x"), "C:\\Prog Files"},
        {_T("C:\\a.exe.d\\Q.exe"), "C:\\a.exe.d"},
        {_T(" \"C:\\Q\\Q\""), "C:\\Q"},
        {_T("C:\\Q.exe"), "C:\\"},
        {_T("Q.exe"), "C:\\Quintar"},
        {_T("\""), "C:\\Quintar"},
        {_T(""), "C:\\Quintar"},
    };
    EXPECT_EQ(Narrow(CKalidoRegistry::GetQuintarRootDirectory()), "C:\\Quintar");
    EXPECT_EQ(Narrow(CKalidoRegistry::GetQuintarFileDbIni()), "C:\\Quintar\\KaFileDB.ini");
    EXPECT_EQ(Narrow(settings_.GetDataBaseName()), "PDATA");
    for (const auto& [server, folder] : servers) {
        SetText(HKEY_LOCAL_MACHINE, kServerKey, _T(""), server);
        EXPECT_EQ(Narrow(CKalidoRegistry::GetQuintarRootDirectory()), folder) << Narrow(server);
    }
    SetText(HKEY_LOCAL_MACHINE, kServerKey, _T(""), quoted);
    EXPECT_EQ(CKalidoRegistry::GetQuintarRootDirectory(), dir.c_str());
    EXPECT_EQ(Narrow(settings_.GetDataBaseName()), "PDATA");
    test::WriteBytes(CKalidoRegistry::GetQuintarFileDbIni().GetString(),
                     "[Location]\r\nODBCSrc = \"" + std::string(300, 's') + "\"\r\n");
    EXPECT_EQ(Narrow(settings_.GetDataBaseName()), std::string(260, 's'));
    SetText(HKEY_LOCAL_MACHINE, kSharedKey, _T("DataSource"), _T("shared"));
    EXPECT_EQ(Narrow(settings_.GetDataBaseName()), "shared");
    SetText(HKEY_LOCAL_MACHINE, kSharedKey, _T("DataSource"), _T(""));
    EXPECT_EQ(settings_.GetDataBaseName().GetLength(), 260);
    EXPECT_EQ(RegDeleteTreeW(HKEY_LOCAL_MACHINE, kImagingKey), 0);
    EXPECT_EQ(RegDeleteTreeW(HKEY_LOCAL_MACHINE, kSharedKey), 0);
}

TEST_F(SettingsTest, KnowPlacesOfTheSystem) {
    constexpr LPCTSTR sound = _T("AppEvents\\Schemes\\Apps\\.Default\\CCSelect\\.Current");
    SetText(HKEY_CURRENT_USER, sound, _T(""), _T("C:\\ding.wav"));
    for (int time = 0; time < 2; ++time) {
        EXPECT_TRUE(CKalidoRegistry::ResetVistaCCSelectNotifySound());
        EXPECT_EQ(Narrow(settings_.GetProfileStringW(sound, _T(""), _T(""), _T("none"), HKEY_CURRENT_USER)), "none");
    }
    EXPECT_EQ(Narrow(CKalidoRegistry::GetMyComputerDirectory()), "::{20D04FE0-3AEA-1069-A2D8-08002B30309D}");
    const CString screen = settings_.GetScreenResolutionString();
    CString expected;
    expected.Format(_T("%dx%d"), GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN));
    EXPECT_EQ(screen, expected);
}

}  // namespace
