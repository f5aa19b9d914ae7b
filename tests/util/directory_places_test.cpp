#include <shlobj.h>

#include "directory_test_support.h"
#include "support/environment.h"

using test::TempFolder;

namespace {

constexpr LPCTSTR kSettings = _T("Software\\Kalido Dental Systems\\Tarvo\\Settings");
constexpr LPCTSTR kCentral = _T("TLibCentralStorage"), kPath = _T("TLibDataPath");

CString ResourceText(UINT id) {
    CString text;
    text.LoadString(id);
    return text;
}

}  // namespace

TEST(DirectoryPlaces, KnowsTheProgram) {
    TCHAR path[MAX_PATH];
    ASSERT_GT(GetModuleFileNameW(nullptr, path, MAX_PATH), 0U);
    const CString name = CDirectory::GetExeNameWithoutPath(1);
    EXPECT_EQ(CDirectory::GetExePath() + name, path);
    EXPECT_EQ(name.Find(_T('\\')), -1);
    // Deliberate: four characters are taken for the extension.
    EXPECT_EQ(CDirectory::GetExeNameWithoutPath(0), name.Left(name.GetLength() - 4));
}

TEST(DirectoryPlaces, NamesTemporaryFilesThatAreNotThereAndTheFoldersOfTheSystem) {
    const TempFolder folder;
    const CString dir = folder.Path().c_str();
    EXPECT_EQ(CDirectory::GetTempFileNameW(dir, _T("tmp")), dir + _T("\\~TMPKA1.tmp"));
    folder.Write(_T("~TMPKA1.tmp"), "");
    folder.Write(_T("~TMPKA2.tmp"), "");
    EXPECT_EQ(CDirectory::GetTempFileNameW(dir + _T("\\"), _T("tmp")), dir + _T("\\~TMPKA3.tmp"));
    for (const CString& system : {CDirectory::GetTempPathW(), CDirectory::GetSpecialDirectory(CSIDL_PROFILE)}) {
        EXPECT_TRUE(CDirectory::Exist(system.Left(system.GetLength() - 1)));
        EXPECT_EQ(system.Right(1), _T("\\"));
    }
    EXPECT_TRUE(CDirectory::GetSpecialDirectory(0x7FFF).IsEmpty());
}

TEST(DirectoryPlaces, HaveTheToothLibraryWhereTheSettingsSay) {
    const TempFolder registry;  // of its own
    const test::InEnvironment chosen(_T("KADATA_REGISTRY_DIR"), registry.Path().c_str());
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, kSettings, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr), 0);
    const auto set = [&](LPCTSTR name, DWORD type, const void* data, std::size_t size) {
        EXPECT_EQ(RegSetValueExW(key, name, 0, type, static_cast<const BYTE*>(data), static_cast<DWORD>(size)), 0);
    };
    const CString exePath = CDirectory::GetExePath();
    const CString exeDir = exePath.Left(exePath.GetLength() - 1);
    const CString beside = exeDir.Left(exeDir.ReverseFind(_T('\\')) + 1);
    const DWORD on = 1, off = 0;
    TCHAR longest[260] = {}, tooLong[261] = {};
    std::fill_n(longest, 259, _T('l'));
    std::fill_n(tooLong, 260, _T('l'));
    const struct {
        const char* what;
        DWORD centralType, central, type;
        LPCTSTR path;
        std::size_t size;
        CString base;
    } rows[] = {{"central", REG_DWORD, on, REG_SZ, _T("D:\\lib\\"), 8 * sizeof(TCHAR), _T("D:\\lib\\")},
                {"expandable", REG_DWORD, on, REG_EXPAND_SZ, _T("%X%"), 4 * sizeof(TCHAR), _T("%X%")},
                {"off", REG_DWORD, off, REG_SZ, _T("D:\\lib\\"), 8 * sizeof(TCHAR), beside},
                {"switch of another type", REG_BINARY, on, REG_SZ, _T("D:\\lib\\"), 8 * sizeof(TCHAR), beside},
                {"path of another type", REG_DWORD, on, REG_BINARY, _T("D:\\lib\\"), 8 * sizeof(TCHAR), beside},
                {"not terminated", REG_DWORD, on, REG_SZ, _T("D:\\library"), 7 * sizeof(TCHAR), beside},
                {"520 bytes", REG_DWORD, on, REG_SZ, longest, sizeof longest, longest},
                {"522 bytes", REG_DWORD, on, REG_SZ, tooLong, sizeof tooLong, beside}};
    EXPECT_EQ(CDirectory::GetToothLibPath(), beside + ResourceText(20559));
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        set(kCentral, row.centralType, &row.central, sizeof row.central);
        set(kPath, row.type, row.path, row.size);
        const CString expected = row.base + ResourceText(20559);
        EXPECT_EQ(CDirectory::GetToothLibPath(), expected);
        EXPECT_EQ(CDirectory::GetExternBlockGeometryPath(), CDirectory::Concat(expected, ResourceText(20557)));
    }
    RegDeleteValueW(key, kCentral);
    RegDeleteValueW(key, kPath);
    RegCloseKey(key);
}
